#pragma once

#include <string>
#include <string_view>

#include "platform/Platform.h"
#include "support/CallStack.h"
#include "support/Errors.h"
#include "support/User.h"

namespace bxvbwiz {

class Findings;
struct Sentence;

// How the program was started (App.StartMode).
enum class StartMode { StandAlone = 0, Automation = 1 };

// The optional log file, in the machine's code page. Disabled until Init finds a level.
class Log {
 public:
  explicit Log(Platform& platform) : platform_(platform) {}
  // InitLogging: reads "LogLevel", "NewLog" and "LogName" of the section "Logging" and opens the log in the
  // Windows folder.
  void Init();
  // OpenLog: opens `path` to append to it, or empties it first. Does nothing while logging is disabled.
  // OpenError says how that went.
  void Open(const std::string& path, bool append = true);
  // WriteLog: one line. Failures are ignored: a log must not stop the wizard.
  void Write(const std::string& text);
  bool Enabled() const { return enabled_; }
  SystemError OpenError() const { return openError_; }
  const std::string& Path() const { return path_; }

 private:
  Platform& platform_;
  bool enabled_ = false;
  std::string path_;
  SystemError openError_ = SystemError::Success;
};

// What lives as long as the program or the loaded library. The entry point makes it; a test makes a fresh
// one.
class Session {
 public:
  Session(Platform& platform, StartMode mode) : log(platform), platform_(platform), startMode_(mode) {}
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;

  CallStack callStack;
  Log log;
  // Who answers the box of an unexpected error; null before the form is loaded: the error is then logged and
  // the wizard ends.
  User* user = nullptr;
  // Where findings are collected; null before the form is loaded: then only the log gets them.
  Findings* findings = nullptr;
  // Where they come from; see OriginScope. Null when that is unknown.
  const Sentence* origin = nullptr;

  Platform& platform() { return platform_; }
  StartMode startMode() const { return startMode_; }

 private:
  Platform& platform_;
  StartMode startMode_;
};

// The session of this thread; null outside every SessionScope.
Session* CurrentSession();

// Makes a session the current one of this thread while it lives.
class SessionScope {
 public:
  explicit SessionScope(Session& session);
  ~SessionScope();
  SessionScope(const SessionScope&) = delete;
  SessionScope& operator=(const SessionScope&) = delete;

 private:
  Session* previous_;
  CallStack* previousStack_;
};

// Writes one line to the current session's log.
void WriteLog(const std::string& text);
// Writes an error to the log, with the routine that failed and those that were running then. `routine`, which
// handles the error, is named when none is known.
void LogError(std::string_view routine, const RuntimeError& error);
// Logs an unexpected error and shows it with Retry and Cancel. Returns after Retry; Cancel ends the wizard
// with return code 0 (throws WizardEnded). `detail` is that of the message.
void ReportError(std::string_view routine, const RuntimeError& error, const std::string& detail = {});

// The exception that is being handled, as a run-time error; passes WizardEnded on.
RuntimeError CurrentError();

// Runs `step`; when it fails the error is reported, and the step runs again after Retry.
// So a step is one call that may be repeated, not a group of calls that add things.
template <class Step>
auto RetryOrCancel(std::string_view routine, Step&& step) {
  for (;;) {
    try {
      return step();
    } catch (const WizardEnded&) {
      throw;
    } catch (...) {
      ReportError(routine, CurrentError());
    }
  }
}

}  // namespace bxvbwiz
