#include "com/BX6VBWiz.h"
#include "com/Classes.h"
#include "com/DualObject.h"
#include "sysinfo/CSystemInfo.h"

namespace bxvbwiz {
namespace {

class SystemInfoObject : public DualObject<ISystemInfo, IID_ISystemInfo, CLSID_CSystemInfo> {
 public:
  explicit SystemInfoObject(std::shared_ptr<Server> owner)
      : DualObject(std::move(owner), "BX6VBWiz.CSystemInfo"), info_(server().core().platform()) {}

  STDMETHODIMP get_CommonFilesPath(BSTR* value) override {
    return Give(value, [&] { return info_.CommonFilesPath(); });
  }
  STDMETHODIMP get_CommonFilesSysPath(BSTR* value) override {
    return Give(value, [&] { return info_.CommonFilesSysPath(); });
  }
  STDMETHODIMP get_MSDAOPath(BSTR* value) override {
    return Give(value, [&] { return info_.MSDAOPath(); });
  }
  STDMETHODIMP get_ProgramFilesPath(BSTR* value) override {
    return Give(value, [&] { return info_.ProgramFilesPath(); });
  }
  STDMETHODIMP get_WinDir(BSTR* value) override {
    return Give(value, [&] { return info_.WinDir(); });
  }
  STDMETHODIMP get_WinSysDir(BSTR* value) override {
    return Give(value, [&] { return info_.WinSysDir(); });
  }
  STDMETHODIMP get_IsWindows95(VARIANT_BOOL* value) override {
    return Give(value, [&] { return info_.IsWindows95(); });
  }
  STDMETHODIMP get_IsWindows98(VARIANT_BOOL* value) override {
    return Give(value, [&] { return info_.IsWindows98(); });
  }
  STDMETHODIMP get_IsWindowsNT351(VARIANT_BOOL* value) override {
    return Give(value, [&] { return info_.IsWindowsNT351(); });
  }
  STDMETHODIMP get_IsWindowsNT4(VARIANT_BOOL* value) override {
    return Give(value, [&] { return info_.IsWindowsNT4(); });
  }
  STDMETHODIMP get_IsWindowsNT5(VARIANT_BOOL* value) override {
    return Give(value, [&] { return info_.IsWindowsNT5(); });
  }
  STDMETHODIMP get_WinVerMajor(LONG* value) override {
    return Give(value, [&] { return info_.WinVerMajor(); });
  }
  STDMETHODIMP get_WinVerMinor(LONG* value) override {
    return Give(value, [&] { return info_.WinVerMinor(); });
  }
  STDMETHODIMP get_WinBuildNumber(LONG* value) override {
    return Give(value, [&] { return info_.WinBuildNumber(); });
  }
  STDMETHODIMP get_WinPlatformId(LONG* value) override {
    return Give(value, [&] { return info_.WinPlatformId(); });
  }
  STDMETHODIMP get_WinCSDVersion(LONG* value) override {
    return Give(value, [&] { return info_.WinCSDVersion(); });
  }

 private:
  CSystemInfo info_;
};

}  // namespace

IDispatch* MakeSystemInfo(std::shared_ptr<Server> server) {
  return new SystemInfoObject(std::move(server));
}

}  // namespace bxvbwiz
