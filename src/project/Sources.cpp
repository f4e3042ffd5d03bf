#include "project/Sources.h"

#include "support/basFile.h"
#include "text/Text.h"

namespace bxvbwiz {

SystemError Sources::Read(Lister lister, const std::string& path, const TakeControl& takeControl) {
  const SystemError error = platform_.files.Read(path, readBuffer_);
  if (error != SystemError::Success) return error;
  paths_.push_back(path);
  ForEachControlLine(readBuffer_, [&](std::string_view value, int line) {
    const OriginScope origin(LineOrigin(path, line));
    const std::string text = platform_.codePage.Decode(value);
    // One character, a blank as form files write it, stands before the value.
    const std::string rawLine = text.substr(FirstCharacters(text, 1).size());
    AddControl(lister, rawLine);
    takeControl(rawLine);
  });
  for (const CodeUse& use : FindCodeUses(readBuffer_)) {
    uses_.push_back({use.kind, platform_.codePage.Decode(use.name), LineOrigin(path, use.line)});
  }
  return error;
}

void Sources::ReadModule(const std::string& path) {
  const SystemError error = Read(Lister::Other, path, [](const std::string&) {});
  if (error == SystemError::Success) return;
  if (MeansMissing(error)) {
    unread_.push_back({FindingId::SourceMissing, {path}, CurrentOrigin()});
  } else {
    unread_.push_back({FindingId::SourceUnreadable, {path, ErrorCode(error)}, CurrentOrigin()});
  }
}

void Sources::AddControl(Lister lister, const std::string& rawLine) {
  controls_.push_back({lister, ReadControlLine(rawLine), CurrentOrigin()});
}

std::string SourcePath(const std::string& projectFolder, const std::string& name) {
  return IsAbsolutePath(name) ? name : FixPath(projectFolder) + name;
}

}  // namespace bxvbwiz
