#include "support/Findings.h"

#include <algorithm>

namespace bxvbwiz {
namespace {

std::string TextOf(const StringTable& strings, const Finding& finding) {
  return TextOf(strings, {TextOf(finding.id), finding.values});
}

}  // namespace

std::vector<std::string> LinesOf(const StringTable& strings, const Finding& finding) {
  std::vector<std::string> lines{std::string(NameOf(SeverityOf(finding.id))) + " [" + CodeOf(finding.id) +
                                 "]: " + TextOf(strings, finding)};
  const std::string origin = TextOf(strings, finding.origin);
  if (!origin.empty()) lines.push_back("  from: " + origin);
  lines.push_back("  to do: " + TextOf(strings, {AdviceOf(finding.id), finding.values}));
  return lines;
}

bool Findings::Has(const Finding& finding) const {
  return std::any_of(all_.begin(), all_.end(), [&](const Finding& other) {
    return other.id == finding.id && other.values == finding.values;
  });
}

void Findings::Add(Finding finding) {
  if (Has(finding)) return;
  for (const std::string& line : LinesOf(strings_, finding)) WriteLog(line);
  const auto isWorse = [](const Finding& added, const Finding& other) {
    return SeverityOf(added.id) < SeverityOf(other.id);
  };
  all_.insert(std::upper_bound(all_.begin(), all_.end(), finding, isWorse), std::move(finding));
}

std::size_t Findings::Count(Severity severity) const {
  return static_cast<std::size_t>(std::count_if(all_.begin(), all_.end(), [severity](const Finding& finding) {
    return SeverityOf(finding.id) == severity;
  }));
}

OriginScope::OriginScope(Origin origin)
    : origin_(std::move(origin)),
      session_(CurrentSession()),
      outer_(session_ == nullptr ? nullptr : session_->origin) {
  if (session_ != nullptr) session_->origin = &origin_;
}

OriginScope::~OriginScope() {
  if (session_ != nullptr) session_->origin = outer_;
}

Origin LineOrigin(const std::string& file, int line) {
  return {TextId::OriginLine, {file, std::to_string(line)}};
}

Origin CurrentOrigin() {
  const Session* const session = CurrentSession();
  return session == nullptr || session->origin == nullptr ? Origin() : *session->origin;
}

void AddFinding(FindingId id, std::vector<std::string> values) {
  AddFinding(Finding{id, std::move(values), CurrentOrigin()});
}

void AddFinding(Finding finding) {
  Session* const session = CurrentSession();
  if (session == nullptr) return;
  if (session->findings != nullptr) return session->findings->Add(std::move(finding));
  WriteLog(TextOf(session->platform().strings, finding));
}

bool IsFound(const Finding& finding) {
  Session* const session = CurrentSession();
  return session != nullptr && session->findings != nullptr && session->findings->Has(finding);
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
