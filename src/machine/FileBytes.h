#pragma once

#include <memory>
#include <string>

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

}  // namespace bxvbwiz
