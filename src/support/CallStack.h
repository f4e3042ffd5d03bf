#pragma once

#include <string_view>
#include <vector>

namespace bxvbwiz {

// The names of the routines that are running, oldest first.
class CallStack {
 public:
  // `name` must be a literal: the stack does not copy it.
  void Push(std::string_view name) { names_.push_back(name); }
  // Removes the newest name when it is `name`; otherwise nothing happens.
  void Pop(std::string_view name) {
    if (!names_.empty() && names_.back() == name) names_.pop_back();
  }
  const std::vector<std::string_view>& Names() const { return names_; }

 private:
  std::vector<std::string_view> names_;
};

// Makes `stack` (may be null) the call stack of this thread; gives the previous one.
CallStack* SetCurrentCallStack(CallStack* stack);

// On the call stack of this thread; without one nothing happens.
void CSPush(std::string_view name);
void CSPop(std::string_view name);

// The names on the call stack of this thread, oldest first; none without one.
std::vector<std::string_view> RunningRoutines();

// A routine's entry on the call stack; the name must be a literal.
class CallStackEntry {
 public:
  explicit CallStackEntry(std::string_view name) : name_(name) { CSPush(name_); }
  ~CallStackEntry() { CSPop(name_); }
  CallStackEntry(const CallStackEntry&) = delete;
  CallStackEntry& operator=(const CallStackEntry&) = delete;

 private:
  std::string_view name_;
};

// A precondition. It has no effect in the delivered program, where the condition is not evaluated.
#define BXVBWIZ_ASSERT(condition, message) static_cast<void>(sizeof((condition) ? 1 : 0))

}  // namespace bxvbwiz
