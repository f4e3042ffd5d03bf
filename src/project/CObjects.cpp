#include "project/CObjects.h"

#include "project/TypeLibrary.h"
#include "support/basStr.h"
#include "support/CallStack.h"

namespace bxvbwiz {

void CObject::SetRawName(const std::string& rawName) {
  const CallStackEntry entry("CObject:RawName (Let)");
  rawName_ = rawName;
  Include = true;
  lookup_ = LibraryLookup(ReadControlLine(rawName));
  Name = lookup_.fileName;

  const LibrarySearch search = FindLibraryFile(context_, lookup_, Name);
  if (search == LibrarySearch::FileMissing) ShowMissingLibrary(context_, lookup_, lookup_.fileName);
  if (search != LibrarySearch::Found) {
    Include = false;
    return;
  }
  DepFile = DescribeLibrary(context_, Name, *this, dependencies_);
  if (LinkResolves) lookup_.outcome = LibraryOutcome::Installed;
}

std::shared_ptr<CObject> CObjects::Add(const std::string& rawLine) {
  const CallStackEntry entry("CObjects:Add");
  const std::string key = MakeCollectionKey(context_.platform.codePage, rawLine);
  std::shared_ptr<CObject> object = allControls_ ? allControls_->FindItem(key) : nullptr;
  if (!object) {
    object = std::make_shared<CObject>(context_);
    object->Key = key;
    object->SetRawName(rawLine);
    if (allControls_) allControls_->Insert(object, key);
  }
  const Origin asker = CurrentOrigin();
  if (FindItem(key)) {
    RaiseKeyTaken(context_.platform.strings, TextId::LibraryNamedTwice, object->FirstAskerBeside(asker));
  }
  object->AddAsker(asker);
  Insert(object, key);
  return object;
}

}  // namespace bxvbwiz
