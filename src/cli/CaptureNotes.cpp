#include "cli/CaptureNotes.h"

#include <algorithm>

#include "project/basGlobal.h"
#include "support/basFile.h"
#include "sysinfo/Key.h"
#include "text/Text.h"

namespace bxvbwiz {
namespace {

constexpr std::size_t kLongestValue = 1 << 20;  // far more than any caller's buffer

struct KeyPath {
  RegistryHandle root = 0;
  std::string path;
};

KeyPath SplitKeyPath(std::string_view full) {
  const std::size_t end = std::min(full.find('\\'), full.size());
  for (const PredefinedKey& root : kPredefinedKeys) {
    if (full.substr(0, end) == root.name)
      return {root.handle, std::string(full.substr(std::min(end + 1, full.size())))};
  }
  return {};
}

}  // namespace

const CaptureNotes::NoteOfCall CaptureNotes::kNotes[] = {
    {"OpenKey", &CaptureNotes::NoteKey},      {"CreateKey", &CaptureNotes::NoteKey},
    {"EnumKey", &CaptureNotes::NoteKey},      {"EnumValue", &CaptureNotes::NoteValue},
    {"QueryValue", &CaptureNotes::NoteValue}, {"Find", &CaptureNotes::NoteList},
    {"Open", &CaptureNotes::NoteList},        {"Read", &CaptureNotes::NoteContent},
    {"Map", &CaptureNotes::NoteContent},      {"GetString", &CaptureNotes::NoteProfile},
    {"Search", &CaptureNotes::NoteFound},     {"ChangeDirectory", &CaptureNotes::NoteFolder},
};

void CaptureNotes::After(const SeamCall& call, SystemError error) {
  // A value that is too long for the caller is there all the same.
  if (error != SystemError::Success && error != SystemError::MoreData) return;
  for (const NoteOfCall& row : kNotes) {
    if (row.call == call.name) (this->*row.note)(call);
  }
}

// The key, or the subkey that was listed.
void CaptureNotes::NoteKey(const SeamCall& call) {
  KeyPath key = SplitKeyPath(call.subject);
  if (!call.detail.empty()) key.path.append(key.path.empty() ? "" : "\\").append(call.detail);
  Registry& captured = captured_.platform().registry;
  RegistryHandle made = 0;
  if (captured.CreateKey(key.root, key.path, 0, kKeyAllAccess, made) == SystemError::Success)
    captured.CloseKey(made);
}

void CaptureNotes::NoteValue(const SeamCall& call) {
  const KeyPath key = SplitKeyPath(call.subject);
  const std::string name(call.detail);
  Registry& captured = captured_.platform().registry;
  RegistryHandle from = 0;
  RegistryHandle to = 0;
  RegistryData data;
  if (source_.registry.OpenKey(key.root, key.path, kKeyRead, from) != SystemError::Success) return;
  if (source_.registry.QueryValue(from, name, kLongestValue, data) == SystemError::Success &&
      captured.CreateKey(key.root, key.path, 0, kKeyAllAccess, to) == SystemError::Success) {
    captured.SetValue(to, name, data);
    captured.CloseKey(to);
  }
  source_.registry.CloseKey(from);
}

void CaptureNotes::NoteList(const SeamCall& call) {
  const std::string folder = FolderOf(Full(call.subject));
  std::vector<FoundFile> found;
  source_.files.Find(std::string(call.subject), found);
  // An old setup project only keeps its name from a new one.
  if (!found.empty() && call.subject.find('*') != std::string_view::npos && IsOldSetupProject(folder))
    return captured_.AddFolder(folder);
  for (const FoundFile& file : found) {
    const std::string path = folder + "\\" + file.name;
    if (file.name == "." || file.name == "..") {
      captured_.AddFolder(folder);
    } else if ((file.attributes & kAttributeDirectory) != 0) {
      captured_.AddFolder(path);
    } else {
      captured_.AddName(path);
      if ((file.attributes & kAttributeReadOnly) != 0) captured_.AddReadOnly(path);
    }
  }
}

// Whether a folder lies in the data folder, as the setup projects do.
bool CaptureNotes::IsOldSetupProject(const std::string& folder) {
  if (!dataFolder_) {
    const auto main = Key::Root(source_.registry, RegConstants::HKeyCurrentUser);
    const auto key = main->OpenSubKeyForReading(kBorvexMainKey);
    const auto value = key == nullptr ? nullptr : key->Values().Item(std::string("DataFile"));
    dataFolder_ = value == nullptr ? "" : Full(FixPath(value->Text()));
  }
  return EqualsIgnoreCase(FixPath(FolderOf(folder)), *dataFolder_);
}

void CaptureNotes::NoteContent(const SeamCall& call) {
  TakeContent(Full(call.subject));
}

void CaptureNotes::NoteProfile(const SeamCall& call) {
  constexpr std::size_t kPathBuffer = 260;  // MAX_PATH
  const bool isBare = call.subject.find_first_of("\\/:") == std::string_view::npos;
  TakeContent(isBare ? source_.facts.WindowsDirectory(kPathBuffer).append("\\").append(call.subject)
                     : Full(call.subject));
}

void CaptureNotes::NoteFound(const SeamCall& call) {
  captured_.AddName(source_.files.Search(std::string(call.subject)));
}

void CaptureNotes::NoteFolder(const SeamCall& /*call*/) {
  captured_.AddFolder(source_.files.CurrentDirectory());
}

void CaptureNotes::TakeContent(const std::string& path) {
  std::string bytes;
  if (!captured_.HasContent(path) && source_.files.Read(path, bytes) == SystemError::Success)
    captured_.AddContent(path, bytes);
}

std::string CaptureNotes::Full(std::string_view path) {
  std::string full;
  const std::string given(path);
  return source_.files.FullPath(given, full) == SystemError::Success ? full : given;
}

}  // namespace bxvbwiz
