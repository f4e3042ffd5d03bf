#include "support/basLogging.h"

#include <new>

#include "support/basFile.h"
#include "support/basStr.h"
#include "support/Conversion.h"
#include "text/Text.h"

namespace bxvbwiz {
namespace {

// Each thread has the session of its own entry point.
thread_local Session* currentSession = nullptr;

constexpr char kApplicationName[] = "Bx6vbwiz";
constexpr char kLoggingSection[] = "Logging";
constexpr long kLoggingOff = -1;

// A level that is not a 16-bit number switches the log off.
long LogLevel(const std::string& text) {
  const std::optional<double> number = TextToNumber(text);
  return number ? RoundToInteger(*number, -32768, 32767).value_or(kLoggingOff) : kLoggingOff;
}

bool IsTrue(const std::string& text) {
  if (EqualsIgnoreCase(TrimBlanks(text), "True")) return true;
  return TextToNumber(text).value_or(0) != 0;
}

}  // namespace

void Log::Init() {
  const auto setting = [this](const char* key, const std::string& defaultValue) {
    return platform_.settings.Get(kApplicationName, kLoggingSection, key, defaultValue);
  };
  enabled_ = LogLevel(setting("LogLevel", "-1")) != kLoggingOff;
  if (!enabled_) return;
  const bool append = !IsTrue(setting("NewLog", "0"));
  const std::string name = setting("LogName", std::string(kApplicationName) + ".LOG");
  constexpr std::size_t kBufferSize = 250;
  Open(FixPath(platform_.facts.WindowsDirectory(kBufferSize)) + name, append);
  // The optional COM class "LogMon.CMonitor", which shows that a log is being written, is made by the
  // automation server: it is late bound, and nothing calls it.
}

void Log::Open(const std::string& path, bool append) {
  if (!enabled_) return;
  path_ = path;
  openError_ = platform_.files.Write(path_, {}, append ? WriteMode::Append : WriteMode::Create);
}

void Log::Write(const std::string& text) {
  if (!enabled_ || path_.empty()) return;
  platform_.files.Write(path_, platform_.codePage.Encode(text) + "\r\n", WriteMode::Append);
}

Session* CurrentSession() {
  return currentSession;
}

SessionScope::SessionScope(Session& session)
    : previous_(currentSession), previousStack_(SetCurrentCallStack(&session.callStack)) {
  currentSession = &session;
}

SessionScope::~SessionScope() {
  currentSession = previous_;
  SetCurrentCallStack(previousStack_);
}

void WriteLog(const std::string& text) {
  if (currentSession != nullptr) currentSession->log.Write(text);
}

void LogError(std::string_view routine, const RuntimeError& error) {
  if (currentSession == nullptr || !currentSession->log.Enabled()) return;
  const std::vector<std::string_view>& names = error.Routines();
  const std::string_view failed = names.empty() ? routine : names.back();
  WriteLog("Unexpected Error " + std::to_string(error.Number()) + ": " + error.what() + " from " +
           error.Source() + " in " + std::string(failed));
  if (names.empty()) return WriteLog("Call stack is empty");
  WriteLog("Call Stack:");
  for (const std::string_view name : names) WriteLog("    " + std::string(name));
}

void ReportError(std::string_view routine, const RuntimeError& error, const std::string& detail) {
  LogError(routine, error);
  if (currentSession == nullptr || currentSession->user == nullptr) throw WizardEnded{};
  const std::string argument = std::to_string(error.Number()) + " : " + error.what() + " : " + error.Source();
  const std::string text =
      TokenReplace(currentSession->platform().strings.Text(TextId::UnexpectedError), {argument});
  User& user = *currentSession->user;
  if (user.ShowMessage({TextId::UnexpectedError, FindQuestion(TextId::UnexpectedError)->style, text,
                        detail}) != Button::Retry)
    CancelWizard(user);
}

RuntimeError CurrentError() {
  try {
    throw;
  } catch (const RuntimeError& error) {
    return error;
  } catch (const std::bad_alloc&) {
    return {kErrorOutOfMemory, "Out of memory"};
  } catch (const std::exception& error) {
    return {kErrorInvalidCall, error.what()};
  }
}

}  // namespace bxvbwiz
