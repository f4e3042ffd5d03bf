#include "project/OtherCodePage.h"

#include <map>

#include "project/Sources.h"
#include "support/basFile.h"
#include "support/basStr.h"
#include "text/Text.h"

namespace bxvbwiz {
namespace {

// The code pages that a machine may have. Letters that several hold are most likely those of the first.
constexpr int kCodePages[] = {65001, 1252, 1251, 1250, 1253, 1254, 1255, 1256,
                              1257,  1258, 874,  932,  936,  949,  950};

// Control characters, private ones and the replacement stand for bytes without a character.
bool HoldsOddBytes(const std::string& text) {
  for (std::size_t position = 0; position < text.size();) {
    const char32_t character = NextCharacter(text, position);
    if ((character >= 0x80 && character < 0xA0) || (character >= 0xE000 && character < 0xF900) ||
        character == 0xFFFD)
      return true;
  }
  return false;
}

// The path of the file that a line names when it is read in a code page; empty when there is none.
std::string FileNamed(Platform& platform, const std::string& projectFile, std::string_view line, int number) {
  const std::size_t before = line.find_last_of(line.find(';') == std::string_view::npos ? '=' : ';');
  const std::string bytes = StripQuotes(TrimBlanks(line.substr(before + 1)));
  constexpr std::size_t kExtension = 4;  // with its dot; all files of a project have such a one
  if (bytes.size() <= kExtension || bytes[bytes.size() - kExtension] != '.') return "";
  const std::string path = SourcePath(GetPathFolder(projectFile), platform.codePage.DecodeAs(number, bytes));
  // What the system's own code page lacks becomes "?", which fits any file.
  const bool isThere = FolderHoldsFile(platform.files, FixPath(GetPathFolder(path)), GetPathFileName(path));
  return isThere ? NormalPath(platform.files, path) : "";
}

}  // namespace

bool TellOtherCodePage(Platform& platform, const std::string& projectFile, std::string_view bytes) {
  const CodePage& codePage = platform.codePage;
  const std::string own = std::to_string(codePage.Number());
  std::map<int, std::string_view> lines;  // with a text that is not ASCII and names no file that is there
  LineReader reader(bytes);
  std::string_view line;
  while (reader.Next(line)) {
    const bool isText = line.find('=') != std::string_view::npos && codePage.Decode(line) != line;
    if (isText && FileNamed(platform, projectFile, line, codePage.Number()).empty())
      lines.emplace(reader.Number(), line);
  }
  std::vector<Finding> best;
  for (const int number : kCodePages) {
    std::vector<Finding> found;
    for (const auto& [at, text] : lines) {
      const std::string path = FileNamed(platform, projectFile, text, number);
      const std::vector<std::string> values = {path, std::to_string(number), own};
      if (!path.empty()) found.push_back({FindingId::OtherCodePage, values, LineOrigin(projectFile, at)});
    }
    if (found.size() > best.size()) best = std::move(found);
  }
  const bool isFound = !best.empty();
  for (const auto& [at, text] : lines) {
    if (!best.empty() || !HoldsOddBytes(codePage.Decode(text))) continue;
    const std::string key = codePage.Decode(text.substr(0, text.find('=')));
    best.push_back({FindingId::TextInOtherCodePage, {key, own}, LineOrigin(projectFile, at)});
  }
  for (const Finding& finding : best) AddFinding(finding);
  return isFound;
}

}  // namespace bxvbwiz
