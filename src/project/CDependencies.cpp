#include "project/CDependencies.h"

#include <utility>
#include <vector>

#include "support/basStr.h"
#include "support/CallStack.h"

namespace bxvbwiz {

CDependencies::~CDependencies() {
  std::vector<std::shared_ptr<CDependency>> released;
  const auto release = [&released](CDependencies& collection) {
    for (std::size_t position = 1; position <= collection.Count(); ++position) {
      released.push_back(collection.Item(position));
    }
    collection.Clear();
  };
  release(*this);
  while (!released.empty()) {
    const std::shared_ptr<CDependency> dependency = std::move(released.back());
    released.pop_back();
    if (dependency.use_count() == 1) release(dependency->Dependencies());
  }
}

std::shared_ptr<CDependency> CDependencies::Add(const std::string& name) {
  const CallStackEntry entry("CDependencies:Add");
  auto dependency = std::make_shared<CDependency>(context_);
  dependency->Name = name;
  dependency->Key = MakeCollectionKey(context_.platform.codePage, name);
  AddShared(dependency);
  return dependency;
}

void CDependencies::AddShared(const std::shared_ptr<CDependency>& dependency) {
  Insert(dependency, FindItem(dependency->Key) ? "" : dependency->Key);
  names_.insert(dependency->Name);
}

void CDependencies::Remove(std::size_t position) {
  const auto name = names_.find(Item(position)->Name);
  if (name != names_.end()) names_.erase(name);
  KeyedCollection::Remove(position);
}

void CDependencies::Remove(const std::string& key) {
  const auto name = names_.find(Item(key)->Name);
  if (name != names_.end()) names_.erase(name);
  KeyedCollection::Remove(key);
}

}  // namespace bxvbwiz
