#include "com/ClassFactory.h"

namespace bxvbwiz {

STDMETHODIMP ClassFactory::QueryInterface(REFIID id, void** object) {
  if (object == nullptr) return E_POINTER;
  *object = nullptr;
  if (id != IID_IUnknown && id != IID_IClassFactory) return E_NOINTERFACE;
  *object = static_cast<IClassFactory*>(this);
  AddRef();
  return S_OK;
}

STDMETHODIMP_(ULONG) ClassFactory::AddRef() {
  return static_cast<ULONG>(InterlockedIncrement(&references_));
}

STDMETHODIMP_(ULONG) ClassFactory::Release() {
  const LONG left = InterlockedDecrement(&references_);
  if (left == 0) delete this;
  return static_cast<ULONG>(left);
}

STDMETHODIMP ClassFactory::CreateInstance(IUnknown* outer, REFIID id, void** object) {
  if (object == nullptr) return E_POINTER;
  *object = nullptr;
  if (outer != nullptr) return CLASS_E_NOAGGREGATION;
  const std::shared_ptr<Server> server = server_;
  const SessionScope scope(server->core().session());
  server->BeginCall();
  HRESULT result = E_FAIL;
  try {
    ComPtr<IDispatch> made;
    *made.Receive() = class_.make(server);
    result = made->QueryInterface(id, object);
  } catch (...) {
    result = server->TakeException("BX6VBWiz", id);
  }
  server->EndCall();
  return result;
}

STDMETHODIMP ClassFactory::LockServer(BOOL lock) {
  LockModule(lock != FALSE);
  return S_OK;
}

}  // namespace bxvbwiz
