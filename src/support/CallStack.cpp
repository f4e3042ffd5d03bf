#include "support/CallStack.h"

#include <utility>

namespace bxvbwiz {
namespace {

// Each thread has its own.
thread_local CallStack* currentStack = nullptr;

}  // namespace

CallStack* SetCurrentCallStack(CallStack* stack) {
  return std::exchange(currentStack, stack);
}

std::vector<std::string_view> RunningRoutines() {
  return currentStack == nullptr ? std::vector<std::string_view>() : currentStack->Names();
}

void CSPush(std::string_view name) {
  if (currentStack != nullptr) currentStack->Push(name);
}

void CSPop(std::string_view name) {
  if (currentStack != nullptr) currentStack->Pop(name);
}

}  // namespace bxvbwiz
