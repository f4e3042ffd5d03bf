#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "project/basGlobal.h"
#include "sysinfo/CSystemInfo.h"

namespace bxvbwiz {

struct Destination;

// Translates between the destination macros of dependency files ("$(WINSYSPATH)"), the destination symbols of
// a setup project ("<WINSYSDIR>") and the folders of this machine, and finds where a file's source copy lies.
// A routine that fails logs the error and returns what it had. What the machine answers is asked for once.
class DestinationSymbols {
 public:
  // `projectFile` gives the project's full path, or "", when the application path is first needed.
  DestinationSymbols(Platform& platform, basGlobal& global, std::function<std::string()> projectFile)
      : platform_(platform), global_(global), projectFile_(std::move(projectFile)) {}
  virtual ~DestinationSymbols() = default;

  // "$(APPPATH)\Data" to "<TARGETDIR>\Data\"; an empty macro to "<TARGETDIR>"; a plain path by the reverse
  // rule; an unknown macro to "".
  std::string ConvertDestMacroToBXDestSymbol(const std::string& macro);
  // A symbol to this machine's folder; a text without ">" as it is; an unknown symbol to "".
  std::string ConvertBXDestSymbolToPath(const std::string& symbol);
  // A path below one of the known folders to symbol + "\" + rest, any other path as it is.
  std::string ConvertPathToBXDestSymbol(const std::string& path);
  // A register macro to a kRegister... code.
  std::int16_t ConvertRegisterMacro(const std::string& macro);
  // The folder where the file was found, `resolves` true; otherwise `sourcePath`, `resolves` false.
  std::string ResolveLinkPath(const std::string& sourcePath, const std::string& fileName, bool& resolves);
  // The first of redistributables' folder, `linkDir` and system folder that holds the file; "" when none
  // does.
  std::string SearchForSourceFile(const std::string& linkDir, const std::string& fileName);
  // The first of `dir` and the system folder that holds the file; "" when neither does.
  std::string SearchForDestPath(const std::string& dir, const std::string& fileName);
  // GetAppPath of the project file, asked for once.
  std::string AppPath();
  // The project's "Path32=" folder, or the folder of the project file.
  std::string GetAppPath(const std::string& projectFile);

 protected:
  CSystemInfo& System();
  // Notes why a rule decided as it did, while someone wants to know it.
  void Because(TextId text, std::vector<std::string> values) {
    if (reasons_ != nullptr) reasons_->push_back({text, std::move(values)});
  }

  Platform& platform_;
  basGlobal& global_;
  std::vector<Sentence>* reasons_ = nullptr;

 private:
  // The first of `dir` (unless empty) and the system folder that holds the file, with a trailing backslash.
  std::string FolderOrSystemFolder(const std::string& dir, const std::string& fileName);
  // This machine's folder of the place, with a trailing backslash.
  std::string FolderOf(const Destination& place);

  std::function<std::string()> projectFile_;
  std::string appPath_;
  std::optional<CSystemInfo> system_;
};

}  // namespace bxvbwiz
