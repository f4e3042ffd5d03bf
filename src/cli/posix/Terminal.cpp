#include "cli/Terminal.h"

#include <unistd.h>

namespace bxvbwiz {

bool IsTerminal(Stream stream) {
  return isatty(static_cast<int>(stream)) != 0;
}

}  // namespace bxvbwiz
