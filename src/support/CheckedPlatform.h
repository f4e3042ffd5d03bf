#pragma once

#include "platform/Forwarding.h"

namespace bxvbwiz {

// A platform whose failures are not lost. The wizard treats a failed look-up as a missing file, key or value,
// and goes on after a failed write. A failure that leaves open whether the thing is there is reported.
class CheckedPlatform : private CallHook {
 public:
  explicit CheckedPlatform(const Platform& inner) : forwarding_(inner, *this) {}

  Platform& platform() { return forwarding_.platform(); }

 private:
  void After(const SeamCall& call, SystemError error) override;

  ForwardingPlatform forwarding_;
};

}  // namespace bxvbwiz
