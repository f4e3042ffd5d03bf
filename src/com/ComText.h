#pragma once

#include <windows.h>
// after windows.h
#include <oleauto.h>

#include <string>

// Texts of automation: counted, so that a NUL may stand in them, and null for the empty one.
namespace bxvbwiz {

std::string FromBstr(BSTR text);
// The caller frees it. Throws std::bad_alloc.
BSTR ToBstr(const std::string& text);

}  // namespace bxvbwiz
