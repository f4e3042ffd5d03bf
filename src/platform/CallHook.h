#pragma once

#include <string_view>
#include <utility>

#include "platform/SystemError.h"

namespace bxvbwiz {

// A call on its way through a forwarding class.
struct SeamCall {
  std::string_view name;          // of the operation, as "OpenKey"
  std::string_view subject = {};  // what it is about: a path, a pattern, the full path of a registry key
  std::string_view detail = {};   // the key's subkey or value
};

// Sees every call that goes through the forwarding classes that have it. A class that reports, records or
// breaks some calls does it here and need not name the others.
class CallHook {
 public:
  virtual ~CallHook() = default;
  // Gives the error with which the call fails without being made; Success lets it through. Any error will do
  // for a call that has no error codes.
  virtual SystemError Before(const SeamCall&) { return SystemError::Success; }
  // The result: GeneralFailure when a call without error codes failed or found nothing.
  virtual void After(const SeamCall&, SystemError) {}
};

// Lets everything through.
inline CallHook& NoHook() {
  static CallHook none;
  return none;
}

// What the forwarding classes share.
class Hooked {
 protected:
  explicit Hooked(CallHook& hook) : hook_(hook) {}

  // Makes a call that gives an error code.
  template <class Call>
  SystemError Pass(const SeamCall& call, Call make) {
    SystemError error = hook_.Before(call);
    if (error == SystemError::Success) error = make();
    hook_.After(call, error);
    return error;
  }
  // Makes a call that gives `failed` when it fails.
  template <class Answer, class Call>
  Answer Ask(const SeamCall& call, Answer failed, Call make) {
    Answer answer = {};
    const SystemError error = Pass(call, [&] {
      answer = make();
      return answer == failed ? SystemError::GeneralFailure : SystemError::Success;
    });
    return error == SystemError::Success ? std::move(answer) : std::move(failed);
  }

  CallHook& hook_;
};

}  // namespace bxvbwiz
