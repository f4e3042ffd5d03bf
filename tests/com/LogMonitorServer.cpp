// A DLL with a class of the log's monitor. It notes in the registry, where tests see it, when the monitor is
// made and when it is let go. With BXVBWIZ_NO_WINDOW in the environment, the monitor keeps its thread's next
// dialog from being made.
#include <windows.h>
// after windows.h
#include <commctrl.h>
#include <unknwn.h>

namespace {

void Note(const wchar_t* what) {
  RegSetKeyValueW(HKEY_CURRENT_USER, L"Software\\BxvbwizTests", L"LogMonitor", REG_SZ, what,
                  static_cast<DWORD>((lstrlenW(what) + 1) * static_cast<int>(sizeof(wchar_t))));
}

HHOOK hook = nullptr;

LRESULT CALLBACK RefuseDialog(int code, WPARAM window, LPARAM created) {
  if (code != HCBT_CREATEWND || reinterpret_cast<CBT_CREATEWNDW*>(created)->lpcs->lpszClass != WC_DIALOG)
    return CallNextHookEx(hook, code, window, created);
  UnhookWindowsHookEx(hook);
  return 1;
}

// Its own factory: of a monitor, nothing is called but what counts its references.
class Monitor : public IClassFactory {
 public:
  STDMETHODIMP QueryInterface(REFIID, void** object) override {
    *object = this;
    AddRef();
    return S_OK;
  }
  STDMETHODIMP_(ULONG) AddRef() override { return ++references_; }
  STDMETHODIMP_(ULONG) Release() override {
    if (--references_ == 0) Note(L"released");
    return references_;
  }
  STDMETHODIMP CreateInstance(IUnknown*, REFIID id, void** object) override {
    Note(L"made");
    if (GetEnvironmentVariableW(L"BXVBWIZ_NO_WINDOW", nullptr, 0) != 0)
      hook = SetWindowsHookExW(WH_CBT, &RefuseDialog, nullptr, GetCurrentThreadId());
    return QueryInterface(id, object);
  }
  STDMETHODIMP LockServer(BOOL) override { return S_OK; }

 private:
  ULONG references_ = 0;
};

}  // namespace

STDAPI DllGetClassObject(REFCLSID, REFIID id, LPVOID* object) {
  static Monitor monitor;
  return monitor.QueryInterface(id, object);
}
