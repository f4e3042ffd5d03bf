#pragma once

#include <string>
#include <utility>
#include <vector>

#include "platform/Platform.h"
#include "support/basLogging.h"
#include "support/Sentence.h"
#include "text/Strings.h"

namespace bxvbwiz {

// What asks for a file or says something of it: "C:\Src\Demo.vbp, line 7". The first value is the path of the
// file that holds it. One without a text is unknown.
using Origin = Sentence;

// Something that was found wrong, or that is left to do by hand; the run goes on.
struct Finding {
  FindingId id;
  std::vector<std::string> values;  // what its text and its advice name: what it is about first
  Origin origin;
};

// What a user reads of a finding: "error [component-missing]: ...", then the origin and the advice, indented.
// The origin has no line when it is unknown.
std::vector<std::string> LinesOf(const StringTable& strings, const Finding& finding);

// The findings, the worst first, those of one severity in the order in which they were found. A finding whose
// text is already there is not added again.
class Findings {
 public:
  explicit Findings(const StringTable& strings) : strings_(strings) {}
  // Writes what is new to the log.
  void Add(Finding finding);
  // Whether there is one of the same text.
  bool Has(const Finding& finding) const;
  const std::vector<Finding>& All() const { return all_; }
  std::size_t Count(Severity severity) const;
  // Whether something is left to do: whether there is an error or a warning.
  bool HoldsWork() const { return Count(Severity::Error) + Count(Severity::Warning) > 0; }

 private:
  const StringTable& strings_;
  std::vector<Finding> all_;
};

// Says, while it lives, where the findings that are added come from, and who asks for the files that are
// found. Scopes nest; the innermost one counts.
class OriginScope {
 public:
  explicit OriginScope(Origin origin);
  ~OriginScope();
  OriginScope(const OriginScope&) = delete;
  OriginScope& operator=(const OriginScope&) = delete;

 private:
  const Origin origin_;
  Session* const session_;
  const Origin* const outer_;
};
// A line of a text file; the first is 1.
Origin LineOrigin(const std::string& file, int line);
// The origin of the innermost scope of the current session; an unknown one outside every scope.
Origin CurrentOrigin();

// Adds a finding to those of the current session, with the present origin. While it collects none, the log
// alone gets its text.
void AddFinding(FindingId id, std::vector<std::string> values = {});
// The same with another origin.
void AddFinding(Finding finding);
// Whether the current session's findings hold one of the same text.
bool IsFound(const Finding& finding);
// The code of a system error, as a value of a finding.
std::string ErrorCode(SystemError error);

// Logs an error of `routine` with the stack, and adds the finding that the step failed.
void PassOver(std::string_view routine, const RuntimeError& error);

// Runs `body`; when it fails the error is passed over, and the routine returns what it has,
// that is, `body` works on variables of its caller.
template <class Body>
void LogAndGoOn(std::string_view routine, Body&& body) {
  try {
    body();
  } catch (const WizardEnded&) {
    throw;
  } catch (...) {
    PassOver(routine, CurrentError());
  }
}

}  // namespace bxvbwiz
