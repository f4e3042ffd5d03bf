#include "project/Sources.h"

#include "support/basFile.h"

namespace bxvbwiz {

void Sources::Read(const std::string& path) {
  const SystemError error = platform_.files.Read(path, readBuffer_);
  if (error != SystemError::Success) {
    const bool isMissing = MeansMissing(error);
    unread_.push_back({isMissing ? FindingId::SourceMissing : FindingId::SourceUnreadable,
                       isMissing ? std::vector{path} : std::vector{path, ErrorCode(error)}, CurrentOrigin()});
    return;
  }
  ForEachControlLine(readBuffer_, [&](std::string_view value, int line) {
    const OriginScope origin(LineOrigin(path, line));
    AddControl(Lister::Other, platform_.codePage.Decode(value.substr(value.empty() ? 0 : 1)));
  });
  AddCode(path, readBuffer_);
}

void Sources::AddCode(const std::string& path, std::string_view bytes) {
  for (const CodeUse& use : FindCodeUses(bytes)) {
    uses_.push_back({use.kind, platform_.codePage.Decode(use.name), LineOrigin(path, use.line)});
  }
}

void Sources::AddControl(Lister lister, const std::string& rawLine) {
  controls_.push_back({lister, ReadControlLine(rawLine), CurrentOrigin()});
}

std::string SourcePath(const std::string& projectFolder, const std::string& name) {
  return IsAbsolutePath(name) ? name : FixPath(projectFolder) + name;
}

}  // namespace bxvbwiz
