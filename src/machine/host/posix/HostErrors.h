#pragma once

#include "platform/SystemError.h"

namespace bxvbwiz::host {

// The code that Windows gives where a POSIX call sets errno to `error`.
SystemError ErrorOf(int error);

}  // namespace bxvbwiz::host
