#pragma once

#include <stdexcept>

namespace bxvbwiz {

// A machine folder that cannot be used; the text names the file and the reason.
class MachineError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace bxvbwiz
