#include "support/CheckedPlatform.h"

#include <algorithm>
#include <iterator>

#include "support/Findings.h"

namespace bxvbwiz {
namespace {

struct Report {
  std::string_view call;
  FindingId finding;  // names the call's subject
  bool isOnce;        // however often the wizard tries; the others give the system's error code
};

constexpr Report kReports[] = {
    {"Find", FindingId::FileSearchFailed, false},
    {"Map", FindingId::FileUnreadable, false},
    {"GetString", FindingId::ProfileUnreadable, true},
    {"WriteString", FindingId::FileNotWritten, true},
    {"WriteSection", FindingId::FileNotWritten, true},
    {"Flush", FindingId::FileNotWritten, true},
    {"OpenKey", FindingId::RegistryKeyUnreadable, false},
    {"CreateKey", FindingId::RegistryKeyUnreadable, false},
    {"EnumKey", FindingId::RegistryKeyUnreadable, false},
    {"EnumValue", FindingId::RegistryKeyUnreadable, false},
    {"QueryValue", FindingId::RegistryKeyUnreadable, false},
};

}  // namespace

void CheckedPlatform::After(const SeamCall& call, SystemError error) {
  if (error == SystemError::Success || error == SystemError::NoMoreItems || MeansMissing(error)) return;
  if (call.name == "WindowsDirectory") return AddFinding(FindingId::WindowsFolderUnknown);
  if (call.name == "SystemDirectory") return AddFinding(FindingId::SystemFolderUnknown);
  // A user without administrator rights may not create keys. They are opened for reading then.
  if (call.name == "CreateKey" && error == SystemError::AccessDenied) return;
  const auto report = std::find_if(std::begin(kReports), std::end(kReports),
                                   [&](const Report& row) { return row.call == call.name; });
  if (report == std::end(kReports)) return;
  const std::string subject(call.subject);
  if (!report->isOnce) return AddFinding(report->finding, {subject, ErrorCode(error)});
  if (reported_.emplace(report->finding, subject).second) AddFinding(report->finding, {subject});
}

}  // namespace bxvbwiz
