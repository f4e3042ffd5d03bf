#include "project/CDependencies.h"

#include <algorithm>
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
  names_.emplace(dependency->Name, dependency.get());
}

void CDependencies::Remove(std::size_t position) {
  ForgetName(*Item(position));
  KeyedCollection::Remove(position);
}

void CDependencies::Remove(const std::string& key) {
  ForgetName(*Item(key));
  KeyedCollection::Remove(key);
}

CDependency* CDependencies::FindName(const std::string& name) const {
  const auto found = names_.find(name);
  return found == names_.end() ? nullptr : found->second;
}

void CDependencies::ForgetName(const CDependency& dependency) {
  const auto [first, last] = names_.equal_range(dependency.Name);
  const auto same = std::find_if(first, last, [&](const auto& entry) { return entry.second == &dependency; });
  if (same != last) names_.erase(same);
}

}  // namespace bxvbwiz
