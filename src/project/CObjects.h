#pragma once

#include <memory>
#include <string>

#include "project/Library.h"
#include "support/KeyedCollection.h"

namespace bxvbwiz {

// An ActiveX control of the project.
class CObject : public Library {
 public:
  explicit CObject(AnalysisContext& context) : Library(context, RecordKind::Control) {}

  // Resolves the control through the registry: `{guid}#version#locale; file`. What fails is shown in a
  // message and leaves Include false.
  void SetRawName(const std::string& rawName);
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
