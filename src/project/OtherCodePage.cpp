#include "project/OtherCodePage.h"

#include <algorithm>
#include <iterator>

#include "project/Sources.h"
#include "support/basFile.h"
#include "text/Text.h"

namespace bxvbwiz {
namespace {

// The code pages that a machine may have. Letters that several hold are most likely those of the first.
constexpr int kCodePages[] = {65001, 1252, 1251, 1250, 1253, 1254, 1255, 1256,
                              1257,  1258, 874,  932,  936,  949,  950};

// Control characters and private ones stand for bytes without a character.
bool HoldsOddBytes(const std::string& text) {
  for (std::size_t position = 0; position < text.size();) {
    const char32_t character = NextCharacter(text, position);
    if ((character >= 0x80 && character < 0xA0) || (character >= 0xE000 && character < 0xF900)) return true;
  }
  return false;
}

// The path that a line names in a code page; empty when nothing is there.
std::string PathFound(Platform& platform, const std::string& folder, const CodedLine& line, int number) {
  const std::string path = SourcePath(folder, platform.codePage.DecodeAs(number, line.path));
  // What the system's own code page lacks becomes "?", which fits any file.
  const std::string name = GetPathFileName(path);
  const bool isThere = FolderHoldsFile(platform.files, FixPath(GetPathFolder(path)), name);
  return isThere ? NormalPath(platform.files, path) : "";
}

}  // namespace

bool TellOtherCodePage(Platform& platform, const std::string& projectFile, const std::string& projectFolder,
                       const std::vector<CodedLine>& lines) {
  const CodePage& codePage = platform.codePage;
  const std::string own = std::to_string(codePage.Number());
  std::vector<CodedLine> missing;
  std::copy_if(lines.begin(), lines.end(), std::back_inserter(missing), [&](const CodedLine& line) {
    const bool isAscii = codePage.Decode(line.path) == line.path;
    return !isAscii && PathFound(platform, projectFolder, line, codePage.Number()).empty();
  });
  std::vector<Finding> best;
  for (const int number : kCodePages) {
    std::vector<Finding> found;
    for (const CodedLine& line : missing) {
      const std::string path = PathFound(platform, projectFolder, line, number);
      const Origin origin = LineOrigin(projectFile, line.number);
      if (!path.empty())
        found.push_back({FindingId::OtherCodePage, {path, std::to_string(number), own}, origin});
    }
    if (found.size() > best.size()) best = std::move(found);
  }
  for (const Finding& finding : best) AddFinding(finding);
  if (!best.empty()) return true;
  for (const CodedLine& line : lines) {
    if (!HoldsOddBytes(codePage.Decode(line.text))) continue;
    const std::string key(line.text.substr(0, line.text.find('=')));
    AddFinding({FindingId::TextInOtherCodePage, {key, own}, LineOrigin(projectFile, line.number)});
    break;
  }
  return false;
}

}  // namespace bxvbwiz
