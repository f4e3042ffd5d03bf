#include <windows.h>

#include "win32/AnsiText.h"
#include "win32/Win32Parts.h"

namespace bxvbwiz {

namespace {

// A string argument that may be NULL, in the ANSI code page.
class Argument {
 public:
  explicit Argument(ProfileText text) : given_(text.has_value()) {
    if (given_) bytes_ = ToAnsi(*text);
    bytes_ += '\0';  // a section's entries end in two NULs
  }
  const char* Get() const { return given_ ? bytes_.c_str() : nullptr; }

 private:
  bool given_;
  std::string bytes_;
};

}  // namespace

std::string Win32ProfileStrings::GetString(ProfileText section, ProfileText key,
                                           std::string_view defaultValue, std::size_t size,
                                           const std::string& file) {
  std::string buffer(size, '\0');
  // The call gives the default both for a missing key and for a file that it may not read; only the error
  // distinguishes them.
  SetLastError(ERROR_SUCCESS);
  const DWORD length =
      GetPrivateProfileStringA(Argument(section).Get(), Argument(key).Get(), ToAnsi(defaultValue).c_str(),
                               buffer.data(), static_cast<DWORD>(size), ToAnsi(file).c_str());
  const DWORD error = GetLastError();
  if (error == ERROR_ACCESS_DENIED || error == ERROR_SHARING_VIOLATION || error == ERROR_LOCK_VIOLATION) {
    unreadable_.insert(file);
  }
  return FromAnsi(std::string_view(buffer.data(), length));
}

std::vector<std::string> Win32ProfileStrings::Unreadable() {
  std::vector<std::string> files(unreadable_.begin(), unreadable_.end());
  unreadable_.clear();
  return files;
}

bool Win32ProfileStrings::WriteString(ProfileText section, ProfileText key, ProfileText value,
                                      const std::string& file) {
  return WritePrivateProfileStringA(Argument(section).Get(), Argument(key).Get(), Argument(value).Get(),
                                    ToAnsi(file).c_str()) != FALSE;
}

bool Win32ProfileStrings::WriteSection(ProfileText section, ProfileText entries, const std::string& file) {
  return WritePrivateProfileSectionA(Argument(section).Get(), Argument(entries).Get(),
                                     ToAnsi(file).c_str()) != FALSE;
}

}  // namespace bxvbwiz
