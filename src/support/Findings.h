#pragma once

#include <string>
#include <utility>
#include <vector>

#include "platform/Platform.h"
#include "support/basLogging.h"
#include "text/Strings.h"

namespace bxvbwiz {

// Something that was found wrong, or that is left to do by hand; the run goes on.
struct Finding {
  FindingId id;
  std::vector<std::string> values;  // what its text names: the file first
};

// One sentence, filled with the finding's values.
std::string TextOf(const StringTable& strings, const Finding& finding);

// The findings, in order. One whose text is already there is not added again.
class Findings {
 public:
  explicit Findings(const StringTable& strings) : strings_(strings) {}
  // Writes what is new to the log.
  void Add(Finding finding);
  const std::vector<Finding>& All() const { return all_; }
  const std::vector<std::string>& Texts() const { return texts_; }

 private:
  const StringTable& strings_;
  std::vector<Finding> all_;
  std::vector<std::string> texts_;  // of each
};

// Adds a finding to those of the current session. While it collects none, the log alone gets its text.
void AddFinding(FindingId id, std::vector<std::string> values = {});
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
