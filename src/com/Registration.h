#pragma once

#include <windows.h>

namespace bxvbwiz {

// Enters this DLL's classes and type library for the machine, or for the user where that is refused. What
// could not be entered whole is taken out again.
HRESULT RegisterServer() noexcept;
// Takes out what either way has entered. Nothing to take out is no failure.
HRESULT UnregisterServer() noexcept;

}  // namespace bxvbwiz
