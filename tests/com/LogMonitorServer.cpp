// A DLL with a class of the log's monitor. It notes in the registry, where tests see it, when the monitor is
// made and when it is let go.
#include <windows.h>
// after windows.h
#include <oleauto.h>

namespace {

void Note(const wchar_t* what) {
  RegSetKeyValueW(HKEY_CURRENT_USER, L"Software\\BxvbwizTests", L"LogMonitor", REG_SZ, what,
                  static_cast<DWORD>((lstrlenW(what) + 1) * static_cast<int>(sizeof(wchar_t))));
}

class Monitor : public IDispatch {
 public:
  virtual ~Monitor() = default;
  STDMETHODIMP QueryInterface(REFIID id, void** object) override {
    const bool isKnown = id == IID_IUnknown || id == IID_IDispatch;
    *object = isKnown ? this : nullptr;
    if (isKnown) AddRef();
    return isKnown ? S_OK : E_NOINTERFACE;
  }
  STDMETHODIMP_(ULONG) AddRef() override { return ++references_; }
  STDMETHODIMP_(ULONG) Release() override {
    const ULONG left = --references_;
    if (left == 0) {
      Note(L"released");
      delete this;
    }
    return left;
  }
  STDMETHODIMP GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
  STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return E_NOTIMPL; }
  STDMETHODIMP Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*, UINT*) override {
    return E_NOTIMPL;
  }

 private:
  ULONG references_ = 0;
};

class Factory : public IClassFactory {
 public:
  STDMETHODIMP QueryInterface(REFIID, void** object) override {
    *object = this;
    return S_OK;
  }
  STDMETHODIMP_(ULONG) AddRef() override { return 2; }
  STDMETHODIMP_(ULONG) Release() override { return 1; }
  STDMETHODIMP CreateInstance(IUnknown*, REFIID id, void** object) override {
    Note(L"made");
    return (new Monitor)->QueryInterface(id, object);
  }
  STDMETHODIMP LockServer(BOOL) override { return S_OK; }
};

}  // namespace

STDAPI DllGetClassObject(REFCLSID, REFIID id, LPVOID* object) {
  static Factory factory;
  return factory.QueryInterface(id, object);
}
