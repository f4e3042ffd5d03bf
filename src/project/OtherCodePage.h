#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/Platform.h"

// Project files are in the code page of the computer on which they were written, and do not say which.
namespace bxvbwiz {

// A line of the project whose text the setup uses, in the project's bytes.
struct CodedLine {
  std::string_view text;
  int number;
  std::string path;  // of the file that it names, perhaps in the project's folder; empty for other texts
};

// Adds a finding for each file that is not there, but would be if its name were read in another code page: of
// several the one that finds the most of them. Gives whether there is one. Without one, adds a finding for
// the first line that holds bytes without a character.
bool TellOtherCodePage(Platform& platform, const std::string& projectFile, const std::string& projectFolder,
                       const std::vector<CodedLine>& lines);

}  // namespace bxvbwiz
