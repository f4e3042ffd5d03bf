#include "com/BX6VBWiz.h"
#include "com/Classes.h"
#include "com/DualObject.h"
#include "wizard/Application.h"

namespace bxvbwiz {
namespace {

class ApplicationObject : public DualObject<IApplication, IID_IApplication, CLSID_Application> {
 public:
  explicit ApplicationObject(std::shared_ptr<Server> owner)
      : DualObject(std::move(owner), "BX6VBWiz.Application"), application_(server().formHost()) {}

  STDMETHODIMP get_ID(BSTR* value) override {
    return Give(value, [&] { return application_.ID; });
  }
  STDMETHODIMP put_ID(BSTR value) override {
    return Call([&] { application_.ID = FromBstr(value); });
  }
  STDMETHODIMP get_Project(BSTR* value) override {
    return Give(value, [&] { return application_.Project; });
  }
  STDMETHODIMP put_Project(BSTR value) override {
    return Call([&] { application_.Project = FromBstr(value); });
  }
  STDMETHODIMP get_ShowPage2(VARIANT_BOOL* value) override {
    return Give(value, [&] { return application_.ShowPage2; });
  }
  STDMETHODIMP put_ShowPage2(VARIANT_BOOL value) override {
    return Call([&] { application_.ShowPage2 = value != VARIANT_FALSE; });
  }
  STDMETHODIMP get_AppName(BSTR* value) override {
    return Give(value, [&] { return application_.AppName; });
  }
  STDMETHODIMP put_AppName(BSTR value) override {
    return Call([&] { application_.AppName = FromBstr(value); });
  }
  STDMETHODIMP get_VBScript(VARIANT_BOOL* value) override {
    return Give(value, [&] { return application_.VBScript; });
  }
  STDMETHODIMP put_VBScript(VARIANT_BOOL value) override {
    return Call([&] { application_.VBScript = value != VARIANT_FALSE; });
  }
  STDMETHODIMP get_StillExecuting(VARIANT_BOOL* value) override {
    return Give(value, [&] { return application_.StillExecuting(); });
  }
  STDMETHODIMP get_ReturnCode(SHORT* value) override {
    return Give(value, [&] { return application_.ReturnCode(); });
  }
  STDMETHODIMP get_ProjectFile(BSTR* value) override {
    return Give(value, [&] { return application_.ProjectFile(); });
  }
  STDMETHODIMP Run() override {
    return Call([&] { application_.Run(); });
  }

 private:
  Application application_;
};

}  // namespace

IDispatch* MakeApplication(std::shared_ptr<Server> server) {
  return new ApplicationObject(std::move(server));
}

}  // namespace bxvbwiz
