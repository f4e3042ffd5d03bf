#pragma once

#include <cstdint>
#include <string_view>

#include "machine/PartlyReadFile.h"
#include "project/PeImage.h"

namespace bxvbwiz {

// A file as the readers of executables take it.
class FileSource : public BytesSource {
 public:
  explicit FileSource(PartlyReadFile& file) : file_(file) {}
  std::uint64_t Size() const override { return file_.Size(); }
  std::string_view Part(std::uint64_t offset, std::size_t size) const override {
    return file_.Part(offset, size);
  }

 private:
  PartlyReadFile& file_;
};

}  // namespace bxvbwiz
