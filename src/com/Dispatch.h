#pragma once

#include "com/ComPtr.h"

namespace bxvbwiz {

// IDispatch::Invoke by a dual interface's description. Arguments are coerced to the parameters' types and may
// be variables of another type; what a method changes goes back into them, texts excepted: no method changes
// one. Too few or too many arguments, and unknown named ones, give the code that says so. An argument of the
// wrong type gives its position, and DISP_E_EXCEPTION with the code of error 13 (or 6) and a text that names
// it: callers read a text from an exception only. A caller that takes no exception gets the code itself.
HRESULT InvokeTyped(ITypeInfo& description, void* instance, DISPID member, LCID locale, WORD flags,
                    DISPPARAMS* parameters, VARIANT* result, EXCEPINFO* exception, UINT* wrongArgument);

}  // namespace bxvbwiz
