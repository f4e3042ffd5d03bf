#pragma once

#include <windows.h>

#include "platform/win32/OnDemand.h"

namespace bxvbwiz {

// WaitForSingleObject that ends early with WAIT_TIMEOUT when a message comes for the calling thread. A
// caller lets events run after a timeout anyway, and so the thread's windows stay painted.
inline DWORD WaitForProcess(HANDLE process, DWORD milliseconds) {
  static auto& wait = BXVBWIZ_ON_DEMAND("user32.dll", MsgWaitForMultipleObjects);
  const DWORD result = wait(1, &process, FALSE, milliseconds, QS_ALLINPUT);
  return result == WAIT_OBJECT_0 + 1 ? static_cast<DWORD>(WAIT_TIMEOUT) : result;
}

}  // namespace bxvbwiz
