#include "machine/FileBytes.h"

#include <new>
#include <utility>

namespace bxvbwiz {
namespace {

class MemoryView : public FileView {
 public:
  MemoryView(std::unique_ptr<char[]> bytes, std::size_t size) : bytes_(std::move(bytes)), size_(size) {}
  std::string_view Bytes() const override { return {bytes_.get(), size_}; }

 private:
  std::unique_ptr<char[]> bytes_;
  std::size_t size_;
};

SystemError OpenWhole(host::InputFile& file, const std::string& hostPath) {
  const SystemError error = file.Open(hostPath);
  if (error != SystemError::Success) return error;
  return file.Status().size < kTooLarge ? SystemError::Success : SystemError::NotEnoughMemory;
}

}  // namespace

SystemError ReadWholeFile(const std::string& hostPath, std::string& bytes, host::FileStatus* status) {
  host::InputFile file;
  SystemError error = OpenWhole(file, hostPath);
  if (status != nullptr) *status = file.Status();
  if (error != SystemError::Success) return error;
  // Not cleared first: memory that the text already has need not be filled again.
  try {
    bytes.resize(static_cast<std::size_t>(file.Status().size));
  } catch (const std::bad_alloc&) {
    return SystemError::NotEnoughMemory;
  }
  std::size_t count = 0;
  error = file.ReadAt(0, bytes.data(), bytes.size(), count);
  bytes.resize(count);
  return error;
}

SystemError ReadWholeFile(const std::string& hostPath, std::unique_ptr<FileView>& view) {
  host::InputFile file;
  SystemError error = OpenWhole(file, hostPath);
  if (error != SystemError::Success) return error;
  const auto size = static_cast<std::size_t>(file.Status().size);
  std::unique_ptr<char[]> bytes(new (std::nothrow) char[size]);  // make_unique would fill it with zeros
  if (bytes == nullptr) return SystemError::NotEnoughMemory;
  std::size_t count = 0;
  error = file.ReadAt(0, bytes.get(), size, count);
  if (error == SystemError::Success) view = std::make_unique<MemoryView>(std::move(bytes), count);
  return error;
}

SystemError WriteWholeFile(const std::string& hostPath, std::string_view bytes) {
  const std::string real = host::RealPath(hostPath);
  const std::string& path = real.empty() ? hostPath : real;
  const host::FileStatus status = host::StatusOf(path);
  host::ContentOptions options;
  if (status.kind != host::FileKind::Missing) {
    if (status.kind != host::FileKind::File || !status.writable) return SystemError::AccessDenied;
    options.permissions = status.permissions;
  }
  return host::ReplaceContent(path, bytes, options);
}

}  // namespace bxvbwiz
