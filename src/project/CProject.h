#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "project/CForms.h"
#include "project/CObjects.h"
#include "project/CReferences.h"
#include "project/Sources.h"

namespace bxvbwiz {

// The error of every failed reading of a project: the object-error base plus 100.
constexpr std::int32_t kProjectReadError = -2147221404;

// The company that a project file names; empty when it names none or cannot be read.
std::string CompanyOfProject(Platform& platform, const std::string& projectFile);

// The folder of a project's output with a trailing backslash: `exePath` as the project file writes it, a
// relative one against the project's folder, an empty one that folder itself. Raises what resolving a path
// raises.
std::string OutputFolder(FileSystem& files, const std::string& projectFile, const std::string& exePath);

// One Visual Basic project. Assigning the file name reads it.
class CProject {
 public:
  static constexpr std::int16_t PTStandardExe = 1;
  static constexpr std::int16_t PTActiveXExe = 2;
  static constexpr std::int16_t PTActiveXDLL = 3;
  static constexpr std::int16_t PTUserControl = 4;
  static constexpr std::int16_t PTActiveXDocExe = 5;
  static constexpr std::int16_t PTActiveXDocDll = 6;

  // Begins a fresh collection of all controls and loads the system-file list if that was not done.
  explicit CProject(const AnalysisContext& context);
  CProject(const CProject&) = delete;
  CProject& operator=(const CProject&) = delete;

  std::string WinSysDir;
  std::string ExeName;  // the compiled output, without folder
  std::string Name;
  std::string VersionCompanyName;
  std::string MajorVer;
  std::string MinorVer;
  std::string RevisionVer;
  std::string ExePath;           // the output folder as written: relative, absolute or empty
  std::int64_t Version = 0;      // never filled by the reader
  std::int16_t ProjectType = 0;  // a PT... constant; 0 without a type line
  bool ReadsUnbuilt = false;     // whether the members are read although the output was not found
  bool IsMisread = false;        // files are missing only because their names are in another code page
  bool NeedsRebuild = false;     // the output was not found; only ever set by the reader, never cleared

  CForms& Forms() { return forms_; }
  CObjects& Objects() { return objects_; }
  // Those of the project and of its forms, each once.
  const CObjects& AllControls() const { return allControls_; }
  CReferences& References() { return references_; }
  const CReferences& References() const { return references_; }

  // What the source files ask for.
  const Sources& sources() const { return sources_; }

  // Reads the project file: adds to the collections and overwrites the properties whose keys occur. The
  // forms, controls and references are read only when NeedsRebuild is false or ReadsUnbuilt is set. Raises
  // kProjectReadError with the reason, which names every form that cannot be read.
  void SetFileName(const std::string& fileName);
  const std::string& FileName() const { return fileName_; }

  // The output file's full path: ExePath (against the project's folder) and ExeName.
  std::string OutputPath() const;

 private:
  enum class ServerKind;

  void ReadFacts(std::string_view bytes);
  void ReadType(std::string_view line, ServerKind& server);
  void ReadMembers(std::string_view bytes);
  void ReadSource(std::string_view line);
  void AddReference(const std::string& rawLine);
  std::string UnreadableForms(std::string_view bytes);
  // Of the project file.
  std::string Folder();

  AnalysisContext context_;
  Sources sources_;
  CObjects allControls_;
  CForms forms_;
  CObjects objects_;
  CReferences references_;
  std::string fileName_;
};

}  // namespace bxvbwiz
