#include "com/BX6VBWiz.h"
#include "com/Classes.h"
#include "com/DualObject.h"
#include "com/FileRecordArgument.h"
#include "com/SetupArguments.h"
#include "setupgen/CComponents.h"

namespace bxvbwiz {
namespace {

class ComponentsObject : public DualObject<IComponents, IID_IComponents, CLSID_CComponents> {
 public:
  explicit ComponentsObject(std::shared_ptr<Server> owner)
      : DualObject(std::move(owner), "BX6VBWiz.CComponents"),
        lists_(server().core().platform().profiles),
        symbols_(server().core().platform(), server().core().global(),
                 [this] { return CurrentProjectFile(server()); }),
        components_(server().core().platform(), symbols_, lists_) {}

  STDMETHODIMP CreateComponentName(BSTR* fileName, IDispatch* file, BSTR* componentName) override {
    return Give(componentName, [&] {
      return components_.CreateComponentName(Text(fileName, "fileName"), ReadFileRecord(file, "file"));
    });
  }
  STDMETHODIMP CreateComponent(BSTR* projectDir, BSTR* componentName, IDispatch* file,
                               VARIANT_BOOL* created) override {
    return Give(created, [&] {
      const std::string folder = Folder(projectDir);
      return components_.CreateComponent(folder, Text(componentName, "componentName"),
                                         ReadFileRecord(file, "file"));
    });
  }
  STDMETHODIMP AddScriptDefinedVariable(BSTR* projectDir, BSTR* componentName, IDispatch* file,
                                        BSTR* variable) override {
    return Give(variable, [&] {
      const std::string folder = Folder(projectDir);
      return components_.AddScriptDefinedVariable(folder, Text(componentName, "componentName"),
                                                  ReadFileRecord(file, "file"));
    });
  }

 private:
  std::string Folder(const BSTR* projectDir) {
    lists_.Forget();  // the host may have written since the last call
    return SetupFolderArgument(server(), Text(projectDir, "projectDir"), "projectDir");
  }

  NumberedKeys lists_;
  DestinationSymbols symbols_;
  CComponents components_;
};

}  // namespace

IDispatch* MakeComponents(std::shared_ptr<Server> server) {
  return new ComponentsObject(std::move(server));
}

}  // namespace bxvbwiz
