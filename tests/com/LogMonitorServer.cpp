// A DLL with a class of the log's monitor. It notes in the registry, where tests see it, when the monitor is
// made and when it is let go.
#include <windows.h>
// after windows.h
#include <unknwn.h>

namespace {

void Note(const wchar_t* what) {
  RegSetKeyValueW(HKEY_CURRENT_USER, L"Software\\BxvbwizTests", L"LogMonitor", REG_SZ, what,
                  static_cast<DWORD>((lstrlenW(what) + 1) * static_cast<int>(sizeof(wchar_t))));
}

// Its own factory: of a monitor, nothing is called but what counts its references.
class Monitor : public IClassFactory {
 public:
  virtual ~Monitor() = default;
  STDMETHODIMP QueryInterface(REFIID, void** object) override {
    *object = this;
    AddRef();
    return S_OK;
  }
  STDMETHODIMP_(ULONG) AddRef() override { return ++references_; }
  STDMETHODIMP_(ULONG) Release() override {
    const ULONG left = --references_;
    if (left != 0) return left;
    Note(L"released");
    delete this;
    return 0;
  }
  STDMETHODIMP CreateInstance(IUnknown*, REFIID, void** object) override {
    *object = new Monitor;
    Note(L"made");
    return S_OK;
  }
  STDMETHODIMP LockServer(BOOL) override { return S_OK; }

 private:
  ULONG references_ = 1;
};

}  // namespace

STDAPI DllGetClassObject(REFCLSID, REFIID id, LPVOID* object) {
  static Monitor factory;
  return factory.QueryInterface(id, object);
}
