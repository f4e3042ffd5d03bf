#include "project/CForms.h"

#include "support/basFile.h"
#include "support/basLogging.h"
#include "support/basStr.h"

namespace bxvbwiz {

void CForm::SetName(const std::string& name) {
  const CallStackEntry entry("CForm:Name (Let)");
  name_ = name;
  const std::string path = SourcePath(projectFolder_, name);
  const auto addControl = [this](const std::string& rawLine) { objects_.Add(rawLine); };
  CheckSystem(sources_.Read(Sources::Lister::Form, path, addControl), path);
}

std::shared_ptr<CForm> CForms::Add(const std::string& fileName, const std::string& projectFolder) {
  const CallStackEntry entry("CForms:Add");
  auto form = std::make_shared<CForm>(context_, allControls_, sources_, projectFolder);
  form->asker = CurrentOrigin();
  form->Key = MakeCollectionKey(context_.platform.codePage, GetPathFileName(fileName));
  form->SetName(fileName);
  if (const auto first = FindItem(form->Key)) {
    RaiseKeyTaken(context_.platform.strings, TextId::FormsOfOneName, first->asker);
  }
  Insert(form, form->Key);
  return form;
}

}  // namespace bxvbwiz
