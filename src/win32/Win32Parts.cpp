#include "win32/Win32Parts.h"

#include <windows.h>
// Needs windows.h first.
#include <objbase.h>
#include <oleauto.h>

#include <cstring>

#include "platform/win32/OnDemand.h"
#include "platform/win32/WaitForProcess.h"
#include "win32/AnsiText.h"

namespace bxvbwiz {

namespace {

class Win32Process : public Process {
 public:
  explicit Win32Process(HANDLE process) : process_(process) {}
  ~Win32Process() override { CloseHandle(process_); }
  Win32Process(const Win32Process&) = delete;
  Win32Process& operator=(const Win32Process&) = delete;
  WaitResult Wait(std::uint32_t milliseconds) override {
    return static_cast<WaitResult>(WaitForProcess(process_, milliseconds));
  }

 private:
  HANDLE process_;
};

// A folder of the system: the call gives its length, or the size that it needs.
template <class Call>
std::string Folder(Call call, std::size_t size) {
  std::string buffer(size, '\0');
  const UINT length = call(buffer.data(), static_cast<UINT>(size));
  return length >= size ? std::string() : FromAnsi(std::string_view(buffer.data(), length));
}

}  // namespace

VersionInfo Win32SystemFacts::Version() {
  OSVERSIONINFOA info{};
  info.dwOSVersionInfoSize = sizeof info;
  if (GetVersionExA(&info) == FALSE) return {};
  return {
      info.dwMajorVersion, info.dwMinorVersion, info.dwBuildNumber, info.dwPlatformId,
      FromAnsi(std::string_view(info.szCSDVersion, strnlen(info.szCSDVersion, sizeof info.szCSDVersion)))};
}

std::string Win32SystemFacts::WindowsDirectory(std::size_t size) {
  return Folder([](char* buffer, UINT length) { return GetWindowsDirectoryA(buffer, length); }, size);
}

std::string Win32SystemFacts::SystemDirectory(std::size_t size) {
  return Folder([](char* buffer, UINT length) { return GetSystemDirectoryA(buffer, length); }, size);
}

std::uint32_t Win32SystemFacts::UserLanguage() {
  return GetUserDefaultLCID();
}

std::unique_ptr<Process> Win32Processes::Start(const std::string& commandLine) {
  std::string line = ToAnsi(commandLine);  // the call may write into it
  STARTUPINFOA startup{};
  startup.cb = sizeof startup;
  PROCESS_INFORMATION started{};
  if (CreateProcessA(nullptr, line.data(), nullptr, nullptr, TRUE, NORMAL_PRIORITY_CLASS, nullptr, nullptr,
                     &startup, &started) == FALSE) {
    return nullptr;
  }
  CloseHandle(started.hThread);
  return std::make_unique<Win32Process>(started.hProcess);
}

std::optional<GuidBytes> Win32Guids::Create(std::string_view /*place*/) {
  GUID guid;
  static auto& create = BXVBWIZ_ON_DEMAND("ole32.dll", CoCreateGuid);
  if (FAILED(create(&guid))) return std::nullopt;
  GuidBytes bytes{};
  static_assert(sizeof guid == sizeof(GuidBytes));
  std::memcpy(bytes.data(), &guid, sizeof guid);
  return bytes;
}

std::string Win32Settings::Get(const std::string& application, const std::string& section,
                               const std::string& key, const std::string& defaultValue) {
  const std::string path = "Software\\VB and VBA Program Settings\\" + application + "\\" + section;
  HKEY opened = nullptr;
  if (RegOpenKeyExA(HKEY_CURRENT_USER, ToAnsi(path).c_str(), 0, KEY_QUERY_VALUE, &opened) != ERROR_SUCCESS) {
    return defaultValue;
  }
  char buffer[1024];
  DWORD length = sizeof buffer;
  DWORD type = 0;
  const LONG code =
      RegQueryValueExA(opened, ToAnsi(key).c_str(), nullptr, &type, reinterpret_cast<BYTE*>(buffer), &length);
  RegCloseKey(opened);
  if (code != ERROR_SUCCESS || type != REG_SZ) return defaultValue;
  return FromAnsi(std::string_view(buffer, strnlen(buffer, length)));
}

std::optional<FileTime> Win32Clock::SystemTime() {
  SYSTEMTIME now;
  GetSystemTime(&now);
  FILETIME time;
  if (SystemTimeToFileTime(&now, &time) == FALSE) return std::nullopt;
  return static_cast<FileTime>(time.dwHighDateTime) << 32 | time.dwLowDateTime;
}

// The automation library formats a date as Visual Basic does.
std::string Win32Clock::LocalDateTimeText() {
  SYSTEMTIME now;
  GetLocalTime(&now);
  double date = 0;
  BSTR text = nullptr;
  constexpr const char* kAutomation = "oleaut32.dll";
  static auto& toDate = BXVBWIZ_ON_DEMAND(kAutomation, SystemTimeToVariantTime);
  static auto& toText = BXVBWIZ_ON_DEMAND(kAutomation, VarBstrFromDate);
  static auto& release = BXVBWIZ_ON_DEMAND(kAutomation, SysFreeString);
  if (toDate(&now, &date) == FALSE || FAILED(toText(date, LOCALE_USER_DEFAULT, 0, &text))) {
    return {};
  }
  const int size = WideCharToMultiByte(CP_UTF8, 0, text, -1, nullptr, 0, nullptr, nullptr);
  std::string result(static_cast<std::size_t>(size), '\0');
  WideCharToMultiByte(CP_UTF8, 0, text, -1, result.data(), size, nullptr, nullptr);
  release(text);
  result.resize(static_cast<std::size_t>(size - 1));
  return result;
}

std::string Win32CodePage::Decode(std::string_view bytes) const {
  return FromAnsi(bytes);
}

std::string Win32CodePage::Encode(std::string_view text) const {
  return ToAnsi(text);
}

bool Win32CodePage::IsAlphaNumeric(char32_t character) const {
  if (character > 0xFFFF) return false;
  const auto wide = static_cast<wchar_t>(character);
  char ansi[4];
  BOOL replaced = FALSE;
  const int size = WideCharToMultiByte(CP_ACP, 0, &wide, 1, ansi, sizeof ansi, nullptr, &replaced);
  if (size == 0 || replaced != FALSE) return false;
  // The A call takes one byte; a double-byte letter counts as a whole.
  static auto& isLetterA = BXVBWIZ_ON_DEMAND("user32.dll", IsCharAlphaNumericA);
  static auto& isLetterW = BXVBWIZ_ON_DEMAND("user32.dll", IsCharAlphaNumericW);
  return size == 1 ? isLetterA(ansi[0]) != FALSE : isLetterW(wide) != FALSE;
}

int Win32CodePage::Number() const {
  return static_cast<int>(GetACP());
}

std::string Win32CodePage::DecodeAs(int number, std::string_view bytes) const {
  return FromCodePage(static_cast<unsigned>(number), bytes);
}

}  // namespace bxvbwiz
