#include <windows.h>

#include "machine/host/Host.h"
#include "machine/host/win32/HostPaths.h"
#include "platform/win32/OwnedHandle.h"
#include "platform/win32/WaitForProcess.h"
#include "text/win32/WideText.h"

namespace bxvbwiz::host {
namespace {

class Win32Program : public Program {
 public:
  explicit Win32Program(HANDLE process) : process_(process) {}
  bool Wait(std::uint32_t milliseconds) override {
    return WaitForProcess(process_.Get(), milliseconds) != WAIT_TIMEOUT;
  }

 private:
  OwnedHandle process_;
};

// Quotes an argument for the way in which C libraries split a command line: a backslash is special only
// before a quote.
void AppendArgument(std::wstring& commandLine, const std::wstring& argument) {
  if (!commandLine.empty()) commandLine += L' ';
  if (!argument.empty() && argument.find_first_of(L" \t\"") == std::wstring::npos) {
    commandLine += argument;
    return;
  }
  commandLine += L'"';
  std::size_t backslashes = 0;
  for (const wchar_t c : argument) {
    if (c == L'"') commandLine.append(backslashes + 1, L'\\');
    backslashes = c == L'\\' ? backslashes + 1 : 0;
    commandLine += c;
  }
  commandLine.append(backslashes, L'\\');
  commandLine += L'"';
}

// This process's variables, with `variable` instead of one of the same name; an empty text ends them.
std::wstring EnvironmentWith(const std::wstring& variable) {
  const std::size_t nameLength = variable.find(L'=') + 1;
  std::wstring block;
  wchar_t* const variables = GetEnvironmentStringsW();
  if (variables != nullptr) {
    for (const wchar_t* entry = variables; *entry != L'\0'; entry += wcslen(entry) + 1) {
      if (_wcsnicmp(entry, variable.c_str(), nameLength) != 0) block.append(entry, wcslen(entry) + 1);
    }
    FreeEnvironmentStringsW(variables);
  }
  return block.append(variable).append(2, L'\0');
}

OwnedHandle InheritableErrorStream() {
  HANDLE copy = nullptr;
  DuplicateHandle(GetCurrentProcess(), GetStdHandle(STD_ERROR_HANDLE), GetCurrentProcess(), &copy, 0, TRUE,
                  DUPLICATE_SAME_ACCESS);
  return OwnedHandle(copy);
}

OwnedHandle InheritableNothing() {
  SECURITY_ATTRIBUTES inheritable = {sizeof(inheritable), nullptr, TRUE};
  return OwnedHandle(CreateFileW(L"NUL", GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, &inheritable,
                                 OPEN_EXISTING, 0, nullptr));
}

}  // namespace

std::unique_ptr<Program> Start(const ProgramStart& start) {
  const std::wstring program = SystemPath(start.program);
  const std::wstring folder = SystemPath(start.folder);
  std::wstring commandLine;
  AppendArgument(commandLine, program);
  for (const std::string& argument : start.arguments) AppendArgument(commandLine, Widen(argument));
  std::wstring environment = EnvironmentWith(Widen(start.variable));
  const OwnedHandle input = InheritableNothing();
  const OwnedHandle output = InheritableErrorStream();
  STARTUPINFOW startup = {};
  startup.cb = sizeof(startup);
  startup.dwFlags = STARTF_USESTDHANDLES;
  startup.hStdInput = input.Get();
  startup.hStdOutput = output.Get();
  startup.hStdError = output.Get();
  PROCESS_INFORMATION process = {};
  if (CreateProcessW(program.c_str(), commandLine.data(), nullptr, nullptr, TRUE, CREATE_UNICODE_ENVIRONMENT,
                     environment.data(), folder.c_str(), &startup, &process) == FALSE)
    return nullptr;
  const OwnedHandle thread(process.hThread);
  return std::make_unique<Win32Program>(process.hProcess);
}

}  // namespace bxvbwiz::host
