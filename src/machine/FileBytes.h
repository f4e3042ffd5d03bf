#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "machine/host/Host.h"
#include "platform/FileSystem.h"

namespace bxvbwiz {

// Reads the whole of a regular file of this computer into a text whose memory is reused. NotEnoughMemory when
// there is none for it, and for files of 2 GB and more, which no 32-bit program could hold. `status`, if
// given, is taken before the bytes are read.
SystemError ReadWholeFile(const std::string& hostPath, std::string& bytes,
                          host::FileStatus* status = nullptr);

// The same, into memory that is not cleared first.
SystemError ReadWholeFile(const std::string& hostPath, std::unique_ptr<FileView>& view);

// Makes `bytes` the content of a new file or of one that may be written, whole or not at all. A link stays
// one. AccessDenied for anything except a regular file.
SystemError WriteWholeFile(const std::string& hostPath, std::string_view bytes);

}  // namespace bxvbwiz
