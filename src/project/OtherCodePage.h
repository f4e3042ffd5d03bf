#pragma once

#include <string>
#include <string_view>

#include "platform/Platform.h"

// A project file is in the code page of the computer on which it was written, and does not say which.
namespace bxvbwiz {

// Adds a finding for each file that a line of the project names, and that is there only when the name is read
// in another code page than the machine's: of several the one that finds most of them. Gives whether there is
// one. Without one, adds a finding for the first line that holds bytes without a character.
bool TellOtherCodePage(Platform& platform, const std::string& projectFile, std::string_view bytes);

}  // namespace bxvbwiz
