#include "project/CForms.h"

#include "support/basFile.h"
#include "support/basLogging.h"
#include "support/basStr.h"
#include "text/Text.h"

namespace bxvbwiz {
void CForm::SetName(const std::string& name) {
  const CallStackEntry entry("CForm:Name (Let)");
  name_ = name;
  const std::string path = SourcePath(projectFolder_, name);
  CheckSystem(context_.platform.files.Read(path, readBuffer_), path);
  ForEachControlLine(readBuffer_, [&](std::string_view value, int line) {
    const OriginScope origin(LineOrigin(path, line));
    const std::string text = context_.platform.codePage.Decode(value);
    // One character, a blank as form files write it, stands before the value.
    const std::string rawLine = text.substr(FirstCharacters(text, 1).size());
    sources_.AddControl(Sources::Lister::Form, rawLine);
    objects_.Add(rawLine);
  });
  sources_.AddCode(path, readBuffer_);
}

std::shared_ptr<CForm> CForms::Add(const std::string& fileName, const std::string& projectFolder) {
  const CallStackEntry entry("CForms:Add");
  auto form = std::make_shared<CForm>(context_, allControls_, sources_, projectFolder, readBuffer_);
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
