#include "setupgen/DestinationSymbols.h"

#include "project/CProject.h"
#include "setupgen/Destinations.h"
#include "support/basFile.h"
#include "support/basLogging.h"
#include "support/basStr.h"
#include "support/Findings.h"
#include "text/Text.h"

namespace bxvbwiz {
namespace {

struct RegisterMacro {
  std::string_view macro;  // upper case
  std::int32_t code;
};

constexpr RegisterMacro kRegisterMacros[] = {
    {"", kRegisterNone},
    {"$(DLLSELFREGISTER)", kRegisterDll},
    {"$(EXESELFREGISTER)", kRegisterExe},
    {"$(TLBREGISTER)", kRegisterTypeLibrary},
    {"$(REMOTE)", kRegisterRemote},
};

// Writes `path` below `folder` as symbol + "\" + rest into `result`. A folder that could not be found out is
// empty and holds nothing, although every path begins with it.
bool ReplaceFolder(const std::string& path, const std::string& folder, std::string_view symbol,
                   std::string& result) {
  const std::string_view head = FirstCharacters(path, CharacterCount(folder));
  if (folder.empty() || !EqualsIgnoreCase(head, folder)) return false;
  result = std::string(symbol).append("\\").append(path, head.size());
  return true;
}

// The value of the project's "Path32=" line without its quotes; empty when there is no such line.
std::string OutputFolderText(std::string_view projectText) {
  constexpr std::string_view kOutputFolderKey = "Path32=";
  LineReader reader(projectText);
  for (std::string_view line; reader.Next(line);) {
    if (StartsWith(line, kOutputFolderKey)) return StripQuotes(line.substr(kOutputFolderKey.size()));
  }
  return {};
}

}  // namespace

std::string DestinationSymbols::ConvertDestMacroToBXDestSymbol(const std::string& macro) {
  constexpr char kRoutine[] = "CFileGroups:ConvertDestMacroToBXDestSymbol";
  const CallStackEntry entry(kRoutine);
  std::string symbol;
  LogAndGoOn(kRoutine, [&] {
    if (macro.empty()) {
      symbol = kApplicationSymbol;
      return;
    }
    // Only a macro begins with "$": "C:\Program Files (x86)\..." is a path.
    const std::size_t end = StartsWith(macro, "$") ? macro.find(')') : std::string::npos;
    if (end == std::string::npos) {
      symbol = ConvertPathToBXDestSymbol(macro);
      return;
    }
    const std::string head = UpperCase(macro.substr(0, end + 1));
    std::string tail = macro.substr(end + 1);
    if (!tail.empty()) tail = FixPath(StartsWith(tail, "\\") ? tail : "\\" + tail);
    if (const Destination* place = DestinationOfMacro(head)) symbol = place->symbol + tail;
  });
  return symbol;
}

std::string DestinationSymbols::ConvertBXDestSymbolToPath(const std::string& symbol) {
  constexpr char kRoutine[] = "CFileGroups:ConvertBXDestSymbolToPath";
  const CallStackEntry entry(kRoutine);
  std::string path;
  LogAndGoOn(kRoutine, [&] {
    if (symbol.empty()) {
      path = AppPath();
      return;
    }
    const std::size_t end = symbol.find('>');
    if (end == std::string::npos) {
      path = symbol;
      return;
    }
    const std::string head = symbol.substr(0, end + 1);
    // The character after ">" is skipped whatever it is; it is a backslash in every symbol that we make.
    std::string tail = symbol.substr(end + 1);
    tail.erase(0, FirstCharacters(tail, 1).size());
    if (!tail.empty()) tail = FixPath(tail);
    // Up to its first ">": "<COMMONFILES>\System" is reached as the folder "System" of the common files.
    const Destination* place = DestinationOfSymbol(head);
    if (place == nullptr) return;
    path = FolderOf(*place) + tail;
  });
  return path;
}

std::string DestinationSymbols::ConvertPathToBXDestSymbol(const std::string& path) {
  constexpr char kRoutine[] = "CFileGroups:ConvertPathToBXDestSymbol";
  const CallStackEntry entry(kRoutine);
  std::string symbol = path;
  LogAndGoOn(kRoutine, [&] {
    for (const Destination& place : kDestinations) {
      if (ReplaceFolder(path, FolderOf(place), place.symbol, symbol)) return;
    }
  });
  return symbol;
}

std::int16_t DestinationSymbols::ConvertRegisterMacro(const std::string& macro) {
  constexpr char kRoutine[] = "CFileGroups:ConvertRegisterMacro";
  const CallStackEntry entry(kRoutine);
  std::int32_t code = kRegisterNone;
  LogAndGoOn(kRoutine, [&] {
    const std::string upperMacro = UpperCase(macro);
    for (const RegisterMacro& row : kRegisterMacros) {
      if (upperMacro != row.macro) continue;
      code = row.code;
      return;
    }
    code = StartsWith(macro, "$") ? kRegisterUnknownMacro : kRegisterNoMacro;
  });
  return static_cast<std::int16_t>(code);
}

std::string DestinationSymbols::ResolveLinkPath(const std::string& sourcePath, const std::string& fileName,
                                                bool& resolves) {
  constexpr char kRoutine[] = "CFileGroups:ResolveLinkPath";
  const CallStackEntry entry(kRoutine);
  std::string folder = sourcePath;
  resolves = false;
  LogAndGoOn(kRoutine, [&] {
    if (sourcePath.empty() || fileName.empty()) return;
    const std::string found = SearchForSourceFile(sourcePath, fileName);
    if (found.empty()) {
      Because(TextId::SourceNotFound, {sourcePath});
      return;
    }
    folder = found;
    resolves = true;
  });
  return folder;
}

std::string DestinationSymbols::SearchForSourceFile(const std::string& linkDir, const std::string& fileName) {
  constexpr char kRoutine[] = "CFileGroups:SearchForSourceFile";
  const CallStackEntry entry(kRoutine);
  std::string folder;
  LogAndGoOn(kRoutine, [&] {
    const std::string& redistributables = global_.RedistributablesFolder();
    if (!redistributables.empty() && FolderHoldsFile(platform_.files, redistributables, fileName)) {
      folder = redistributables;
      Because(TextId::SourceRedistributables, {folder});
      return;
    }
    folder = FolderOrSystemFolder(linkDir, fileName);
    if (EqualsIgnoreCase(folder, FixPath(linkDir))) {
      Because(TextId::SourceExpected, {folder});
    } else if (!folder.empty()) {
      Because(TextId::SourceSystemFolder, {folder, linkDir});
    }
  });
  return folder;
}

std::string DestinationSymbols::SearchForDestPath(const std::string& dir, const std::string& fileName) {
  constexpr char kRoutine[] = "CFileGroups:SearchForDestPath";
  const CallStackEntry entry(kRoutine);
  std::string folder;
  LogAndGoOn(kRoutine, [&] { folder = FolderOrSystemFolder(dir, fileName); });
  return folder;
}

std::string DestinationSymbols::FolderOrSystemFolder(const std::string& dir, const std::string& fileName) {
  if (!dir.empty()) {
    std::string folder = FixPath(dir);
    if (FolderHoldsFile(platform_.files, folder, fileName)) return folder;
  }
  const std::string& systemFolder = System().WinSysDir();
  return FolderHoldsFile(platform_.files, systemFolder, fileName) ? systemFolder : "";
}

std::string DestinationSymbols::FolderOf(const Destination& place) {
  return place.folder == nullptr ? AppPath() : (System().*place.folder)();
}

CSystemInfo& DestinationSymbols::System() {
  return system_ ? *system_ : system_.emplace(platform_);
}

std::string DestinationSymbols::AppPath() {
  if (appPath_.empty()) appPath_ = GetAppPath(projectFile_());
  return appPath_;
}

std::string DestinationSymbols::GetAppPath(const std::string& projectFile) {
  constexpr char kRoutine[] = "CFileGroups:GetAppPath";
  const CallStackEntry entry(kRoutine);
  std::string path = FixPath(GetPathFolder(projectFile));
  LogAndGoOn(kRoutine, [&] {
    if (!projectFile.empty() && GetPathFolder(projectFile).empty()) {
      std::string full;
      CheckSystem(platform_.files.FullPath(projectFile, full), projectFile);
      path = FixPath(GetPathFolder(full));
    }
    std::string bytes;
    CheckSystem(platform_.files.Read(projectFile, bytes), projectFile);
    path = OutputFolder(platform_.files, projectFile, platform_.codePage.Decode(OutputFolderText(bytes)));
  });
  return path;
}

}  // namespace bxvbwiz
