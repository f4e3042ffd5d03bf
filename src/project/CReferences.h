#pragma once

#include <memory>
#include <string>

#include "project/CDependencies.h"
#include "project/LibraryLookup.h"
#include "support/KeyedCollection.h"

namespace bxvbwiz {

// A type library that the project references.
class CReference : public FileRecord {
 public:
  explicit CReference(AnalysisContext& context)
      : FileRecord(RecordKind::TypeLibrary), context_(context), dependencies_(context) {}

  std::string Name;  // the library's file name, after the resolution its full path
  std::string Key;
  bool Include = false;  // whether the file is to be installed as a plain file
  bool ADO = false;      // belongs to a data-access family
  bool DAO = false;
  bool RDO = false;
  bool RemoteServer = false;  // set by callers only
  std::string DepFile;        // full path of the library's .dep file, empty when none was found

  CDependencies& Dependencies() { return dependencies_; }
  // What the raw line names and what was found of it.
  const LibraryLookup& Lookup() const { return lookup_; }
  // Stores the project's folder; a Name without a drive becomes a path in it.
  void SetProjectPath(const std::string& folder);
  const std::string& ProjectPath() const { return projectPath_; }
  // Resolves the library through the registry: `*\G{guid}#version#lcid#path#description`. What fails is
  // shown in a message and leaves Include false.
  void SetRawName(const std::string& rawName);
  const std::string& RawName() const { return rawName_; }

 private:
  // Reports a library that is registered but missing. True when the user takes the supported one instead.
  bool ContinueWithoutFile(bool dataAccess);
  // Notes that a library that was found is not installed, and why.
  void TellNotInstalled();
  // As the user knows the library: "Description (file)".
  std::string DescribedName() const;

  AnalysisContext& context_;
  CDependencies dependencies_;
  std::string projectPath_;
  std::string rawName_;
  LibraryLookup lookup_;
};

// References keyed by their raw line.
class CReferences : public KeyedCollection<CReference> {
 public:
  explicit CReferences(AnalysisContext& context) : context_(context) {}
  // Adds and resolves the reference of a raw line. Raises 457 when the line is there already.
  std::shared_ptr<CReference> Add(const std::string& rawLine);

 private:
  AnalysisContext& context_;
};

}  // namespace bxvbwiz
