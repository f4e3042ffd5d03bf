#include "cli/Computer.h"

namespace bxvbwiz {

std::unique_ptr<Computer> OpenThisComputer() {
  return nullptr;
}

}  // namespace bxvbwiz
