#pragma once

#include <memory>
#include <string>
#include <unordered_map>

#include "project/AnalysisContext.h"
#include "project/FileRecord.h"
#include "support/KeyedCollection.h"

namespace bxvbwiz {

class CDependency;

// Files that a control, a type library or another file needs. Names that differ only in case are different
// files; each is keyed by its name, and a key that is taken leaves the second file unkeyed rather than lost.
class CDependencies : public KeyedCollection<CDependency> {
 public:
  explicit CDependencies(AnalysisContext& context) : context_(context) {}
  // Lets go of long chains of files one by one: each owns the next, and the stack is finite.
  ~CDependencies();
  CDependencies(const CDependencies&) = delete;
  CDependencies& operator=(const CDependencies&) = delete;

  std::string FileName;  // the .dep file that describes the owner, empty when none
  // What that .dep file names behind the end of its numbered list, as findings.
  std::vector<Finding> afterGap;

  // Adds a new dependency of that name.
  std::shared_ptr<CDependency> Add(const std::string& name);
  // Adds a dependency that another collection holds too.
  void AddShared(const std::shared_ptr<CDependency>& dependency);
  // An element whose Name equals `name` exactly; null when there is none.
  CDependency* FindName(const std::string& name) const;
  // Raise like Item.
  void Remove(std::size_t position);
  void Remove(const std::string& key);

 private:
  AnalysisContext& context_;
  void ForgetName(const CDependency& dependency);

  std::unordered_multimap<std::string, CDependency*> names_;
};

// A file that a control, a type library or another file needs.
class CDependency : public FileRecord {
 public:
  explicit CDependency(AnalysisContext& context)
      : FileRecord(RecordKind::Dependency), dependencies_(context) {}

  std::string Name;      // the file's name; also the name of its section in a .dep file
  std::string FileName;  // the .dep file that describes it, empty when none
  std::string Key;       // that of its name, even where another file has taken it

  CDependencies& Dependencies() { return dependencies_; }

 private:
  CDependencies dependencies_;
};

}  // namespace bxvbwiz
