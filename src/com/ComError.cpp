#include "com/ComError.h"

#include "com/ComPtr.h"
#include "com/ComText.h"
#include "platform/win32/WideText.h"

namespace bxvbwiz {

HRESULT RunTimeErrorCode(long number) {
  return MAKE_HRESULT(SEVERITY_ERROR, FACILITY_CONTROL, number & 0xFFFF);
}

HRESULT LeaveError(HRESULT code, const std::string& text, const char* source, REFIID interfaceId) noexcept {
  try {
    ComPtr<ICreateErrorInfo> created;
    if (FAILED(CreateErrorInfo(created.Receive()))) return code;
    created->SetGUID(interfaceId);
    created->SetSource(Widen(source).data());
    created->SetDescription(Widen(text).data());
    ComPtr<IErrorInfo> info;
    if (SUCCEEDED(created->QueryInterface(IID_IErrorInfo, info.ReceiveVoid()))) SetErrorInfo(0, info.Get());
  } catch (const std::bad_alloc&) {
    // The code alone must do.
  }
  return code;
}

}  // namespace bxvbwiz
