#pragma once

#include <windows.h>

namespace bxvbwiz {

// Enters this DLL's classes and type library for the machine, or for the user where that is refused. What
// could not be entered whole is taken out again.
HRESULT RegisterServer() noexcept;
// Removes what either way has registered. It is not a failure when there is nothing to remove.
HRESULT UnregisterServer() noexcept;

}  // namespace bxvbwiz
