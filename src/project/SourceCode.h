#pragma once

#include <functional>
#include <string_view>
#include <vector>

// What the text of a source file says, as it stands in the file: bytes of the machine's code page.
namespace bxvbwiz {

// A file that code asks for while it runs, which no list of the project names.
struct CodeUse {
  enum class Kind {
    Dll,    // Declare ... Lib "name"
    Object  // CreateObject("name") or GetObject(, "name")
  };
  Kind kind;
  std::string_view name;  // in the text
  int line;
};

// The uses in code that a 32-bit program is compiled from, in their order. Comments and texts are none, and a
// name that is put together at run time is not known.
std::vector<CodeUse> FindCodeUses(std::string_view text);

// Calls `use` with what follows "Object =" and a blank, as the first characters of a line, and with the
// line's number.
void ForEachControlLine(std::string_view text, const std::function<void(std::string_view, int)>& use);

}  // namespace bxvbwiz
