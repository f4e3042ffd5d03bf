#pragma once

#include "platform/SystemError.h"

namespace bxvbwiz::host {

// The code that Windows gives where a POSIX call sets `error` (errno).
SystemError ErrorOf(int error);

}  // namespace bxvbwiz::host
