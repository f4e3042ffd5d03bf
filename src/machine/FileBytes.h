#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "machine/host/Host.h"
#include "platform/FileSystem.h"

namespace bxvbwiz {

// Bytes of the smallest file that no 32-bit program could hold: 2 GB.
constexpr std::uint64_t kTooLarge = 0x80000000;

// Reads the whole of a regular file of this computer into a text whose memory is reused. NotEnoughMemory when
// there is none for it, and for a file of kTooLarge bytes or more. `status`, if given, is taken before the
// bytes are read.
SystemError ReadWholeFile(const std::string& hostPath, std::string& bytes,
                          host::FileStatus* status = nullptr);

// The same, into memory that is not cleared first.
SystemError ReadWholeFile(const std::string& hostPath, std::unique_ptr<FileView>& view);

// Makes `bytes` the content of a new file or of one that may be written, whole or not at all. A link stays
// one. AccessDenied for anything except a regular file.
SystemError WriteWholeFile(const std::string& hostPath, std::string_view bytes);

}  // namespace bxvbwiz
