#pragma once

#include <memory>
#include <string>

#include "project/CDependencies.h"
#include "project/LibraryLookup.h"
#include "support/KeyedCollection.h"

namespace bxvbwiz {

// An ActiveX control of the project.
class CObject : public FileRecord {
 public:
  explicit CObject(AnalysisContext& context)
      : FileRecord(RecordKind::Control), context_(context), dependencies_(context) {}

  std::string DepFile;  // full path of the control's .dep file, empty when none was found
  std::string Name;     // the file name of the line, after the resolution its full path
  std::string Key;
  bool Include = false;  // whether the file is to be installed

  CDependencies& Dependencies() { return dependencies_; }
  // What the raw line names and what was found of it.
  const LibraryLookup& Lookup() const { return lookup_; }
  // Resolves the control through the registry: `{guid}#version#locale; file`. What fails is shown in a
  // message and leaves Include false.
  void SetRawName(const std::string& rawName);
  const std::string& RawName() const { return rawName_; }

 private:
  AnalysisContext& context_;
  CDependencies dependencies_;
  std::string rawName_;
  LibraryLookup lookup_;
};

// Controls keyed by their raw line.
class CObjects : public KeyedCollection<CObject> {
 public:
  // `allControls` is the collection of all controls of the project; it resolves each control once. Null for
  // that collection itself.
  CObjects(AnalysisContext& context, CObjects* allControls) : context_(context), allControls_(allControls) {}

  // Adds the control of a raw line, resolving it unless another part of the project did. Raises 457 when this
  // collection holds the line already.
  std::shared_ptr<CObject> Add(const std::string& rawLine);

 private:
  AnalysisContext& context_;
  CObjects* allControls_;
};

}  // namespace bxvbwiz
