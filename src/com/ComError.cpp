#include "com/ComError.h"

#include <new>

#include "com/ComPtr.h"
#include "com/ComText.h"
#include "support/basLogging.h"
#include "text/win32/WideText.h"

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
  } catch (...) {
    // The host gets the code alone.
  }
  return code;
}

HRESULT LeaveException(const std::string& message, const char* source, REFIID interfaceId) noexcept {
  try {
    try {
      throw;
    } catch (const ComError& error) {
      return LeaveError(error.Code(), error.what(), source, interfaceId);
    } catch (const WizardEnded&) {
      return LeaveError(E_ABORT, message.empty() ? "The wizard has ended" : message, source, interfaceId);
    } catch (...) {
      const RuntimeError error = CurrentError();
      return LeaveError(RunTimeErrorCode(error.Number()), error.what(), source, interfaceId);
    }
  } catch (const std::bad_alloc&) {
    return E_OUTOFMEMORY;
  } catch (...) {
    return E_UNEXPECTED;
  }
}

}  // namespace bxvbwiz
