#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "support/User.h"
#include "TestMachine.h"
#include "text/Text.h"

namespace bxvbwiz {

// A file of lines, in UTF-8. The blocks may stand in any order, and so may a block's lines behind its first.
struct GeneratedText {
  std::string head;  // the first line
  std::vector<std::vector<std::string>> blocks;
  std::vector<std::string> lineEnds = {"\r\n"};  // one of them behind each line
};

// Files do not differ by case only.
struct IgnoringCase {
  bool operator()(const std::string& one, const std::string& other) const {
    return UpperCase(one) < UpperCase(other);
  }
};

// How the lines of the same project are written.
enum class Lines { AsTheyAre, OtherEnds, OtherOrder };

// A project with all that it names, as they are found in the field; the same for the same seed.
struct GeneratedProject {
  explicit GeneratedProject(std::uint64_t projectSeed);
  // Lays everything on a machine folder that is not opened yet.
  void LayOn(TestMachine& machine, Lines lines) const;

  std::uint64_t seed;
  int codePage = 1252;
  std::string path;                                          // on the machine
  std::map<std::string, GeneratedText, IgnoringCase> texts;  // by path in the machine folder
  std::map<std::string, std::string, IgnoringCase> binaries;
  std::map<TextId, Button> answers;  // to questions

  // What must come out.
  TextId refusal{};    // the message that ends the run; none when it finishes
  bool isRead = true;  // false when the output is missing, so that forms and components stay unread
  std::map<std::string, std::size_t> forms;  // as the project names them; the controls in each
  std::size_t controls = 0;                  // lines of the project file
  std::vector<std::string> named;            // files, of which each is shown or told of
};

}  // namespace bxvbwiz
