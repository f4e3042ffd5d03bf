#include "project/CForms.h"

#include "support/basFile.h"
#include "support/basLogging.h"
#include "support/basStr.h"
#include "text/Text.h"

namespace bxvbwiz {
namespace {

// How a form file begins the line of a control.
constexpr std::string_view kControlLine = "Object =";

bool IsLineStart(std::string_view bytes, std::size_t position) {
  return position == 0 || bytes[position - 1] == '\n' || bytes[position - 1] == '\r';
}

}  // namespace

void CForm::SetName(const std::string& name) {
  const CallStackEntry entry("CForm:Name (Let)");
  name_ = name;
  const std::string path = IsAbsolutePath(name) ? name : FixPath(projectFolder_) + name;
  CheckSystem(context_.platform.files.Read(path, readBuffer_), path);

  // Forms hold their code, so that files are long and control lines few: a search skips what a reader of
  // lines would touch.
  const std::string_view bytes = readBuffer_;
  int lineNumber = 1;
  std::size_t counted = 0;  // bytes whose line ends are in `lineNumber`
  std::size_t position = bytes.find(kControlLine);
  while (position != std::string_view::npos) {
    const std::size_t value = position + kControlLine.size();
    if (IsLineStart(bytes, position)) {
      const std::size_t end = bytes.find_first_of("\r\n", value);
      const std::size_t size = end == std::string_view::npos ? bytes.size() - value : end - value;
      const std::string text = context_.platform.codePage.Decode(bytes.substr(value, size));
      lineNumber += CountLineEnds(bytes.substr(counted, position - counted));
      counted = position;
      const OriginScope origin(LineOrigin(path, lineNumber));
      // One character, a blank as form files write it, stands before the value.
      objects_.Add(text.substr(FirstCharacters(text, 1).size()));
    }
    position = bytes.find(kControlLine, value);
  }
}

std::shared_ptr<CForm> CForms::Add(const std::string& fileName, const std::string& projectFolder) {
  const CallStackEntry entry("CForms:Add");
  auto form = std::make_shared<CForm>(context_, allControls_, projectFolder, readBuffer_);
  form->Key = MakeCollectionKey(context_.platform.codePage, GetPathFileName(fileName));
  form->SetName(fileName);
  Insert(form, form->Key);
  return form;
}

}  // namespace bxvbwiz
