#include "project/TypeLibrary.h"

#include <charconv>
#include <limits>
#include <memory>

#include "project/basDependency.h"
#include "support/basFile.h"
#include "support/basStr.h"
#include "support/Findings.h"
#include "sysinfo/Key.h"
#include "text/Text.h"

namespace bxvbwiz {
namespace {

// The three characters in front of a reference's identifier: `*\G`.
constexpr std::size_t kReferencePrefix = 3;

bool HoldsOnlyDigits(std::string_view text) {
  return !text.empty() && text.find_first_not_of("0123456789") == std::string_view::npos;
}

// A library inside another file is named by the file, a backslash and the number of its resource
// ("msvbvm60.dll\3").
std::string WithoutResourceNumber(std::string path) {
  const std::size_t separator = path.rfind('\\');
  if (separator == std::string::npos || separator == 0) return path;
  if (HoldsOnlyDigits(std::string_view(path).substr(separator + 1))) path.resize(separator);
  return path;
}

// The number that a text begins with, as Visual Basic's Val reads it, whatever the locale; 0 when there is
// none.
double DecimalNumber(std::string_view text) {
  text = TrimBlanks(text);
  const std::size_t digits = text.find_first_not_of("0123456789.");
  text = text.substr(0, digits);
  double number = 0;
  const std::from_chars_result result =
      std::from_chars(text.data(), text.data() + text.size(), number, std::chars_format::fixed);
  return result.ec == std::errc::result_out_of_range ? std::numeric_limits<double>::infinity() : number;
}

// A requested version in the form in which the subkeys' versions are compared.
std::string ComparableVersion(const std::string& version) {
  std::string decimal;
  const bool holdsLetter = version.find_first_of("abcdefABCDEF") != std::string::npos;
  return holdsLetter && ConvertHexVersion(version, decimal) ? decimal : version;
}

enum class VersionSearch { Exact, Higher, None, Unreadable };

// Walks the version subkeys in their order. `subkey` becomes the name of the one to use, or of the one that
// is no version; without a match it is the requested version, which may still be a key of its own.
VersionSearch ChooseVersion(Key& library, const std::string& requested, std::string& subkey) {
  VersionSearch search = VersionSearch::None;
  std::string best = ComparableVersion(requested);
  subkey = requested;
  for (std::size_t position = 1; position <= library.SubKeys().Count(); ++position) {
    const std::string name = library.SubKeys().Item(position)->Name();
    std::string version;
    if (!ConvertHexVersion(name, version)) {
      subkey = name;
      return VersionSearch::Unreadable;
    }
    // Project files write versions in hexadecimal, as the registry does; some writers convert them.
    if (version == requested || EqualsIgnoreCase(name, requested)) {
      subkey = name;
      return VersionSearch::Exact;
    }
    if (!requested.empty() && IsHigherVersion(version, best)) {
      best = version;
      subkey = name;
      search = VersionSearch::Higher;
    }
  }
  return search;
}

std::string OrNone(const StringTable& strings, const std::string& text) {
  return text.empty() ? strings.Text(TextId::NoneThere) : text;
}

// Of a line that names a project there is none.
std::string ShownIdentifier(const StringTable& strings, const LibraryLookup& lookup) {
  return OrNone(strings, StartsWith(lookup.identifier, "{") ? lookup.identifier : "");
}

// Who asks for which version, and which versions there are.
std::string AskedFor(const StringTable& strings, const LibraryLookup& lookup) {
  return TextOf(strings, {TextId::LibraryAsked,
                          {OrNone(strings, lookup.version), ShownIdentifier(strings, lookup),
                           OrNone(strings, TextOf(strings, CurrentOrigin())),
                           OrNone(strings, Joined(lookup.registered))}});
}

// Chooses the version to use. False when there is none to be had, which the user knows.
bool TakeVersion(AnalysisContext& context, Key& library, LibraryLookup& lookup) {
  for (std::size_t position = 1; position <= library.SubKeys().Count(); ++position)
    lookup.registered.push_back(library.SubKeys().Item(position)->Name());
  std::string version;
  const VersionSearch search = ChooseVersion(library, lookup.version, version);
  if (search == VersionSearch::Unreadable) {
    AddFinding(FindingId::LibraryVersionUnreadable, {lookup.fileName, version});
    return false;
  }
  const StringTable& strings = context.platform.strings;
  if (search == VersionSearch::Higher &&
      ShowLibraryMessage(context, TextId::OtherVersionInstalled,
                         FindQuestion(TextId::OtherVersionInstalled)->style, lookup.fileName,
                         AskedFor(strings, lookup)) != Button::Yes) {
    AddFinding(FindingId::LibraryVersionRefused,
               {lookup.fileName, OrNone(strings, lookup.version), Joined(lookup.registered)});
    lookup.outcome = LibraryOutcome::Refused;
    return false;
  }
  lookup.taken = version;
  if (search == VersionSearch::Exact && !EqualsIgnoreCase(version, lookup.version))
    lookup.takenUnasked = version;
  // All that are registered are lower; a file in the system folder is one of them.
  if (search == VersionSearch::None && !lookup.version.empty() && !lookup.registered.empty())
    lookup.takenUnasked = lookup.registered.back();
  return true;
}

// The registered path of a library's version; empty when it has none.
std::string RegisteredPath(FileSystem& files, Key& library, const std::string& version) {
  // An empty version would make the path of another key.
  if (version.empty()) return "";
  const std::shared_ptr<Key> win32 = library.OpenSubKeyForReading(version + "\\0\\win32");
  if (!win32) return "";
  const std::shared_ptr<Value> value = win32->Values().Default();
  return value ? NormalPath(files, WithoutResourceNumber(value->Text())) : "";
}

// The file name after the ";" of a control line, unquoted.
std::string ControlFileName(std::string_view rawLine) {
  const std::size_t separator = rawLine.find(';');
  if (separator == std::string_view::npos) return GetPathFileName(StripQuotes(rawLine));
  std::string_view file = rawLine.substr(separator + 1);
  if (StartsWith(file, " ")) file.remove_prefix(1);
  if (StartsWith(file, "\"")) {
    file.remove_prefix(1);
    if (!file.empty()) file = FirstCharacters(file, CharacterCount(file) - 1);
  }
  return std::string(file);
}

}  // namespace

LibraryLine ReadReferenceLine(std::string_view rawLine) {
  LibraryLine line;
  const std::string field = GetToken(rawLine, 1, "#");
  line.identifier = field.substr(FirstCharacters(field, kReferencePrefix).size());
  line.version = StripQuotes(GetToken(rawLine, 2, "#"));
  line.fileName = GetPathFileName(WithoutResourceNumber(GetToken(rawLine, 4, "#")));
  line.description = GetToken(rawLine, 5, "#");
  if (line.fileName.empty()) line.fileName = std::string(rawLine);
  return line;
}

LibraryLine ReadControlLine(std::string_view rawLine) {
  LibraryLine line;
  line.identifier = StripQuotes(GetToken(rawLine, 1, "#"));
  line.version = StripQuotes(GetToken(rawLine, 2, "#"));
  line.fileName = ControlFileName(rawLine);
  if (line.fileName.empty()) line.fileName = std::string(rawLine);
  return line;
}

bool IsHigherVersion(std::string_view version, std::string_view other) {
  return DecimalNumber(version) > DecimalNumber(other);
}

Button ShowLibraryMessage(AnalysisContext& context, TextId number, int style, const std::string& library,
                          const std::string& more, const std::string& component) {
  Message message;
  message.number = number;
  message.style = style;
  message.component = component.empty() ? library : component;
  message.text = TokenReplace(context.platform.strings.Text(number), {library});
  if (!more.empty()) message.text += "\r\n" + more;
  return context.user.ShowMessage(message);
}

void ShowMissingLibrary(AnalysisContext& context, const LibraryLookup& lookup, const std::string& library) {
  const StringTable& strings = context.platform.strings;
  ShowLibraryMessage(context, TextId::LibraryNotFound, kStyleExclamation, library, AskedFor(strings, lookup));
  AddFinding(FindingId::LibraryMissing,
             {library, ShownIdentifier(strings, lookup), OrNone(strings, lookup.version)});
}

LibrarySearch FindLibraryFile(AnalysisContext& context, LibraryLookup& lookup, std::string& path) {
  Platform& platform = context.platform;
  std::shared_ptr<Key> library;
  // Without an identifier the path would be that of the key of all libraries.
  if (!lookup.identifier.empty()) {
    library = Key::Root(platform.registry, RegConstants::HKeyClassesRoot)
                  ->OpenSubKeyForReading("TypeLib\\" + lookup.identifier);
  }
  if (!library) {
    ShowMissingLibrary(context, lookup, lookup.fileName);
    return LibrarySearch::LeftOut;
  }
  if (!TakeVersion(context, *library, lookup)) return LibrarySearch::LeftOut;

  path = RegisteredPath(platform.files, *library, lookup.taken);
  lookup.hasRegisteredPath = !path.empty();
  const std::string systemFolder = SystemFolder(platform);
  if (!lookup.hasRegisteredPath) path = systemFolder + lookup.fileName;
  lookup.path = path;
  return lookup.hasRegisteredPath || FolderHoldsFile(platform.files, systemFolder, lookup.fileName)
             ? LibrarySearch::Found
             : LibrarySearch::FileMissing;
}

std::string DescribeLibrary(AnalysisContext& context, const std::string& path, FileRecord& record,
                            CDependencies& dependencies) {
  std::string depFile = FindDepFile(context, path);
  std::string folder = FixPath(GetPathFolder(path));
  // The .dep file decides the destination; and a path without a folder says nothing about it.
  if (!depFile.empty() || folder == "\\") folder.clear();
  context.builder.GetFileGroupInfo(folder, path, depFile, nullptr, record);
  ReadDependencies(context, GetPathFileName(path), path, depFile, dependencies, dependencies);
  return depFile;
}

}  // namespace bxvbwiz
