#pragma once

#include <memory>
#include <string>

#include "project/Library.h"
#include "support/KeyedCollection.h"

namespace bxvbwiz {

// A type library that the project references.
class CReference : public Library {
 public:
  explicit CReference(AnalysisContext& context) : Library(context, RecordKind::TypeLibrary) {}

  bool ADO = false;  // belongs to a data-access family
  bool DAO = false;
  bool RDO = false;
  bool RemoteServer = false;  // set by callers only

  // Stores the project's folder; a Name without a drive becomes a path in it.
  void SetProjectPath(const std::string& folder);
  const std::string& ProjectPath() const { return projectPath_; }
  // Resolves the library through the registry: `*\G{guid}#version#lcid#path#description`. What fails is
  // shown in a message and leaves Include false.
  void SetRawName(const std::string& rawName);

 private:
  // Reports a library that is registered but missing. True when the user takes the supported one instead.
  bool ContinueWithoutFile(bool dataAccess);
  // Notes that a library that was found is not installed, and why.
  void TellNotInstalled();
  // As the user knows the library: "Description (file)".
  std::string DescribedName() const;

  std::string projectPath_;
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
