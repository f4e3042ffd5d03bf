#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace CLI {
class App;
}

namespace bxvbwiz {

// Whether at most that many characters must be added, left out or replaced to make one text of the other.
bool IsLike(std::string_view left, std::string_view right, std::size_t differences);

// The words of a command line in the order in which the parser knows them: the command, then the rest as it
// stands. "help", "/?" and "-?" become the option for it. Throws CLI::ParseError for a command or an option
// that does not exist.
std::vector<std::string> Arranged(const CLI::App& app, const std::vector<std::string>& words);

}  // namespace bxvbwiz
