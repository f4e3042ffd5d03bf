#pragma once

#include <cstddef>
#include <string>
#include <string_view>

// The lines of a profile file, as the system reads them:
// 1. CR LF, LF alone and CR alone end a line; the last line needs no end.
// 2. Blanks, tabs and vertical tabs do not count at both ends of names, values and lines.
// 3. A line that begins with "[" is a heading. Its name ends at the first "]", or with the line.
// 4. A line that begins with ";" is a comment.
// 5. Any other line with "=" is a key of the heading above it, and of none before the first heading.
namespace bxvbwiz {

// Without blanks, tabs and vertical tabs at both ends.
std::string_view TrimProfileText(std::string_view text);
std::string_view WithoutLineEnd(std::string_view line);
// The length of the text's first line with its end.
std::size_t ProfileLineLength(std::string_view text);

// The name in a key's line.
std::string_view KeyName(std::string_view line);
// The value in a key's line, without the quotes around it.
std::string_view KeyValue(std::string_view line);
// A key's line with another value: the text before the old value and the line end stay.
std::string WithValue(std::string_view line, std::string_view value);

// True when the line that is written for these texts does not read back as one key of that name.
bool IsOddKey(std::string_view key, std::string_view value);

}  // namespace bxvbwiz
