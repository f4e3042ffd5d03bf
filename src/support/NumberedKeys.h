#pragma once

#include <string>
#include <unordered_map>
#include <vector>

#include "platform/ProfileStrings.h"

namespace bxvbwiz {

// Numbered lists in INI sections ("file0", "file1", ... or "0component", "1component", ...). A list ends at
// the first key that is missing, reads "NONE" or is blank; a new entry takes that number. Reading the list
// again for every new entry would take quadratic time, so what was read is remembered. A written entry is
// read back, so that the outcome is the same as if the whole list were read again (a value that the buffer
// cuts never equals itself, "NONE" ends the list, an entry after a gap comes back).
//
// Valid as long as nothing else writes to these lists; Forget() starts again.
class NumberedKeys {
 public:
  enum class Spelling { NameThenNumber, NumberThenName };  // "file0", "0component"

  struct List {
    std::string file;  // full path
    std::string section;
    std::string name;  // the key without its number
    Spelling spelling = Spelling::NameThenNumber;
    std::size_t size = 255;  // read buffer in bytes, the NUL included
    int first = 0;           // number of the first key
  };

  explicit NumberedKeys(ProfileStrings& profiles) : profiles_(profiles) {}

  // Looks for `value` (exact). True: `number` is that of the first equal key. False: the number of a new
  // entry.
  bool Find(const List& list, const std::string& value, int& number);
  // Appends `value` at the list's end, even when it is there. Gives its number.
  int Append(const List& list, const std::string& value);
  // Appends `value` unless it is there. True when it was there.
  bool AppendIfMissing(const List& list, const std::string& value);
  // All values before the list's end.
  const std::vector<std::string>& Entries(const List& list);
  // Empties or creates the bare section and forgets its lists.
  void EmptySection(const std::string& file, const std::string& section);
  void Forget() { sections_.clear(); }

 private:
  struct Known {
    std::size_t size = 0;
    int first = 0;
    std::vector<std::string> entries;
    std::unordered_map<std::string, int> firstNumber;
  };
  using Lists = std::unordered_map<std::string, Known>;

  Known& Read(const List& list);
  void ReadOn(const List& list, Known& known);

  ProfileStrings& profiles_;
  std::unordered_map<std::string, Lists> sections_;  // by file and section, then by key
};

}  // namespace bxvbwiz
