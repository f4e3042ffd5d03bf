#include "support/Findings.h"

#include <algorithm>

namespace bxvbwiz {

std::string TextOf(const StringTable& strings, const Finding& finding) {
  const std::string text = strings.Text(TextOf(finding.id));
  std::string filled;
  std::size_t start = 0;
  // In one pass, so that nothing in a value is taken for a place.
  for (std::size_t at = text.find("%%"); at != std::string::npos; at = text.find("%%", start)) {
    filled.append(text, start, at - start);
    const std::size_t index = static_cast<std::size_t>(text[at + 2] - '1');
    if (index < finding.values.size()) filled += finding.values[index];
    start = std::min(at + 3, text.size());
  }
  return filled.append(text, start);
}

void Findings::Add(Finding finding) {
  std::string text = TextOf(strings_, finding);
  if (std::find(texts_.begin(), texts_.end(), text) != texts_.end()) return;
  WriteLog(text);
  all_.push_back(std::move(finding));
  texts_.push_back(std::move(text));
}

void AddFinding(FindingId id, std::vector<std::string> values) {
  Session* session = CurrentSession();
  if (session == nullptr) return;
  Finding finding{id, std::move(values)};
  if (session->findings != nullptr) return session->findings->Add(std::move(finding));
  WriteLog(TextOf(session->platform().strings, finding));
}

std::string ErrorCode(SystemError error) {
  return std::to_string(static_cast<std::uint32_t>(error));
}

void PassOver(std::string_view routine, const RuntimeError& error) {
  LogError(routine, error);
  Session* session = CurrentSession();
  // Without a user, the error in the log is enough.
  if (session != nullptr && session->user != nullptr)
    AddFinding(FindingId::StepFailed, {std::string(routine), error.what()});
}

}  // namespace bxvbwiz
