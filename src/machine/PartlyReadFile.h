#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "machine/host/Host.h"
#include "platform/SystemError.h"

namespace bxvbwiz {

// A file of this computer that is read piece by piece, where it is asked for: most of a large executable is
// neither header nor table. It is not mapped, because a mapped file that shrinks ends the program.
class PartlyReadFile {
 public:
  // May be called again, for another file in the same memory. Only regular files are opened; gives the
  // system's code for others, and NotEnoughMemory for 2 GB and more.
  SystemError Open(const std::string& path);
  std::uint64_t Size() const { return size_; }
  // The bytes from `offset` on, at most `size`; fewer where the file ends or cannot be read. They stay valid
  // until the next Open. A file that has shrunk since it was opened ends where it ends now.
  std::string_view Part(std::uint64_t offset, std::size_t size);
  // The first failure to read a part, which is missing then.
  SystemError Error() const { return error_; }

 private:
  void ReadPieces(std::size_t first, std::size_t last);

  std::optional<host::InputFile> file_;
  std::unique_ptr<char[]> bytes_;  // of the whole file; what was not read has no value yet
  std::size_t capacity_ = 0;       // of bytes_
  std::uint64_t size_ = 0;
  std::vector<bool> isRead_;  // a piece each
  SystemError error_ = SystemError::Success;
};

}  // namespace bxvbwiz
