#pragma once

#include "com/ComPtr.h"

namespace bxvbwiz {

// IDispatch::Invoke by a dual interface's description. Arguments are coerced to the parameters' types and may
// be variables of another type; what a method changes goes back into them, texts excepted: no method changes
// one. A wrong argument gives DISP_E_... with its position, and leaves an error object that names it.
HRESULT InvokeTyped(ITypeInfo& description, void* instance, DISPID member, LCID locale, WORD flags,
                    DISPPARAMS* parameters, VARIANT* result, EXCEPINFO* exception, UINT* wrongArgument);

}  // namespace bxvbwiz
