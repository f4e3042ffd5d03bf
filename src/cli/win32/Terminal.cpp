#include "cli/Terminal.h"

#include <fcntl.h>
#include <io.h>
#include <stdio.h>
#include <windows.h>

#include <algorithm>
#include <atomic>
#include <iostream>
#include <streambuf>

#include "machine/CommandLine.h"
#include "text/Text.h"
#include "text/win32/WideText.h"

namespace bxvbwiz {
namespace {

std::atomic<int> interrupts = 0;

// How many bytes at the end of `text` begin a character that is not there completely.
std::size_t BegunBytes(std::string_view text) {
  constexpr std::size_t kLongest = 4;
  for (std::size_t back = 1; back <= std::min(kLongest, text.size()); ++back) {
    const auto byte = static_cast<unsigned char>(text[text.size() - back]);
    if ((byte & 0xC0) == 0x80) continue;  // not the first of its character
    const std::size_t length = byte < 0xC0 ? 1 : byte < 0xE0 ? 2 : byte < 0xF0 ? 3 : 4;
    return back < length ? back : 0;
  }
  return 0;
}

// Shows UTF-8 on a console in whole characters, whatever its code page is, which stays the user's.
class ConsoleText : public std::streambuf {
 public:
  explicit ConsoleText(HANDLE console) : console_(console) {}

 protected:
  int_type overflow(int_type character) override {
    if (!traits_type::eq_int_type(character, traits_type::eof())) {
      const char byte = traits_type::to_char_type(character);
      return xsputn(&byte, 1) == 1 ? character : traits_type::eof();
    }
    return sync() == 0 ? traits_type::not_eof(character) : traits_type::eof();
  }
  std::streamsize xsputn(const char* bytes, std::streamsize count) override {
    text_.append(bytes, static_cast<std::size_t>(count));
    return text_.size() < kMost || sync() == 0 ? count : 0;
  }
  int sync() override {
    const std::size_t whole = text_.size() - BegunBytes(text_);
    const std::wstring wide = Widen(std::string_view(text_).substr(0, whole));
    text_.erase(0, whole);
    std::wstring lines;
    for (const wchar_t character : wide) lines.append(character == L'\n' ? L"\r" : L"").append(1, character);
    // Older systems refuse much at once.
    for (std::size_t start = 0; start < lines.size();) {
      const auto count = static_cast<DWORD>(std::min(kMost, lines.size() - start));
      DWORD written = 0;
      if (WriteConsoleW(console_, lines.data() + start, count, &written, nullptr) == FALSE || written == 0)
        return -1;
      start += written;
    }
    return 0;
  }

 private:
  static constexpr std::size_t kMost = 8192;

  HANDLE console_;
  std::string text_;  // not yet shown
};

// While it lives, what goes to the stream is shown on its console. A redirected stream stays as it is.
class ShownOnConsole {
 public:
  ShownOnConsole(std::ostream& stream, DWORD handle) : stream_(stream), text_(GetStdHandle(handle)) {
    DWORD mode = 0;
    if (GetConsoleMode(GetStdHandle(handle), &mode) != FALSE) before_ = stream.rdbuf(&text_);
  }
  ~ShownOnConsole() {
    if (before_ == nullptr) return;
    stream_.flush();
    stream_.rdbuf(before_);
  }
  ShownOnConsole(const ShownOnConsole&) = delete;
  ShownOnConsole& operator=(const ShownOnConsole&) = delete;

 private:
  std::ostream& stream_;
  ConsoleText text_;
  std::streambuf* before_ = nullptr;
};

BOOL WINAPI NoteInterrupt(DWORD event) {
  return event == CTRL_C_EVENT && interrupts++ == 0 ? TRUE : FALSE;
}

}  // namespace

// Not _isatty, which counts the null device as a terminal.
bool IsTerminal(Stream stream) {
  DWORD mode = 0;
  return GetConsoleMode(GetStdHandle(stream == Stream::Input ? STD_INPUT_HANDLE : STD_ERROR_HANDLE), &mode) !=
         FALSE;
}

std::vector<std::string> ProgramArguments(int, char**) {
  _setmode(_fileno(stdout), _O_BINARY);
  _setmode(_fileno(stderr), _O_BINARY);
  // The C library takes the null device for a terminal, and would write to it byte by byte.
  constexpr std::size_t kBlock = 1 << 16;
  setvbuf(stdout, nullptr, _IOFBF, kBlock);
  static const ShownOnConsole output(std::cout, STD_OUTPUT_HANDLE);
  static const ShownOnConsole errors(std::cerr, STD_ERROR_HANDLE);
  const std::string line = Narrow(GetCommandLineW());
  const std::size_t end = StartsWith(line, "\"") ? line.find('"', 1) : line.find_first_of(" \t");
  return end == std::string::npos ? std::vector<std::string>() : SplitArguments(line.substr(end + 1));
}

std::string EnvironmentText(const char* name) {
  const wchar_t* const text = _wgetenv(Widen(name).c_str());
  return text == nullptr ? std::string() : Narrow(text);
}

std::vector<std::string> FilesOf(const std::string& argument) {
  if (argument.find_first_of("*?") == std::string::npos) return {argument};
  WIN32_FIND_DATAW found;
  const HANDLE search = FindFirstFileW(Widen(argument).c_str(), &found);
  if (search == INVALID_HANDLE_VALUE) return {argument};
  const std::string folder = argument.substr(0, argument.find_last_of("\\/:") + 1);
  std::vector<std::string> files;
  do {
    if ((found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0)
      files.push_back(folder + Narrow(found.cFileName));
  } while (FindNextFileW(search, &found) != FALSE);
  FindClose(search);
  return files;
}

void ClearLine() {
  std::cerr.flush();
  const HANDLE console = GetStdHandle(STD_ERROR_HANDLE);
  CONSOLE_SCREEN_BUFFER_INFO screen;
  if (GetConsoleScreenBufferInfo(console, &screen) == FALSE) return;
  const COORD line = {0, screen.dwCursorPosition.Y};
  DWORD written = 0;
  FillConsoleOutputCharacterW(console, L' ', static_cast<DWORD>(screen.dwSize.X), line, &written);
  SetConsoleCursorPosition(console, line);
}

bool CanClearLine() {
  return true;
}

void NoteInterrupts() {
  SetConsoleCtrlHandler(NoteInterrupt, TRUE);
}

bool WasInterrupted() {
  return interrupts != 0;
}

}  // namespace bxvbwiz
