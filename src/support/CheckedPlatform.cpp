#include "support/CheckedPlatform.h"

#include <algorithm>
#include <iterator>

#include "support/basFile.h"
#include "support/Findings.h"

namespace bxvbwiz {
namespace {

struct Report {
  std::string_view call;
  FindingId finding;  // names the call's subject
  bool hasCode;       // whether it gives the system's error code
};

constexpr Report kReports[] = {
    {"Find", FindingId::FileSearchFailed, true},
    {"Map", FindingId::FileUnreadable, true},
    {"GetString", FindingId::ProfileUnreadable, false},
    {"WriteString", FindingId::FileNotWritten, false},
    {"WriteSection", FindingId::FileNotWritten, false},
    {"Flush", FindingId::FileNotWritten, false},
    {"OpenKey", FindingId::RegistryKeyUnreadable, true},
    {"CreateKey", FindingId::RegistryKeyUnreadable, true},
    {"EnumKey", FindingId::RegistryKeyUnreadable, true},
    {"EnumValue", FindingId::RegistryKeyUnreadable, true},
    {"QueryValue", FindingId::RegistryKeyUnreadable, true},
};

bool IsFault(SystemError error) {
  return error != SystemError::Success && error != SystemError::NoMoreItems && !MeansMissing(error);
}

}  // namespace

void CheckedPlatform::After(const SeamCall& call, SystemError error) {
  if (!IsFault(error)) return;
  if (call.name == "WindowsDirectory") return AddFinding(FindingId::WindowsFolderUnknown);
  if (call.name == "SystemDirectory") return AddFinding(FindingId::SystemFolderUnknown);
  // A user without administrator rights may not create keys. They are opened for reading then.
  if (call.name == "CreateKey" && error == SystemError::AccessDenied) return;
  const auto report = std::find_if(std::begin(kReports), std::end(kReports),
                                   [&](const Report& row) { return row.call == call.name; });
  if (report == std::end(kReports)) return;
  std::vector<std::string> values{std::string(call.subject)};
  if (call.name == "Find") {
    // Every look-up in a folder that cannot be listed fails. The folder is reported instead, once.
    const std::string folder = FixPath(GetPathFolder(call.subject));
    std::vector<FoundFile> found;
    if (call.subject == folder + "*.*") {
      values = {folder};
    } else if (IsFault(forwarding_.platform().files.Find(folder + "*.*", found))) {
      return;
    }
  }
  if (report->hasCode) values.push_back(ErrorCode(error));
  AddFinding(report->finding, std::move(values));
}

}  // namespace bxvbwiz
