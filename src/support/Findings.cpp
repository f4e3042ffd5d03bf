#include "support/Findings.h"

#include <algorithm>

#include "support/basStr.h"

namespace bxvbwiz {

const char* CodeOf(FindingId id) {
  switch (id) {
#define FINDING(name, number, code, severity, text) \
  case FindingId::name:                             \
    return code;
#include "text/Findings.inc"
#undef FINDING
  }
  return "";
}

Severity SeverityOf(FindingId id) {
  switch (id) {
#define FINDING(name, number, code, severity, text) \
  case FindingId::name:                             \
    return Severity::severity;
#include "text/Findings.inc"
#undef FINDING
  }
  return Severity::Error;
}

std::string TextOf(const StringTable& strings, const Finding& finding) {
  return TokenReplace(strings.Text(TextOf(finding.id)), finding.values);
}

void Findings::Add(Finding finding) {
  std::string text = TextOf(strings_, finding);
  if (std::find(texts_.begin(), texts_.end(), text) != texts_.end()) return;
  WriteLog(text);
  all_.push_back(std::move(finding));
  texts_.push_back(std::move(text));
}

void Findings::Clear() {
  all_.clear();
  texts_.clear();
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
  // Before anybody listens, the error in the log says it all.
  if (session != nullptr && session->user != nullptr)
    AddFinding(FindingId::StepFailed, {std::string(routine), error.what()});
}

}  // namespace bxvbwiz
