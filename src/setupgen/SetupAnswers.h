#pragma once

#include <optional>
#include <string>

#include "platform/Platform.h"
#include "project/CProject.h"
#include "support/Sentence.h"
#include "support/User.h"

namespace bxvbwiz {

// The data access that the report asks the user to add.
struct DataAccessNeeds {
  bool daoJet = false;
  bool daoOdbcDirect = false;
  bool rdo = false;
  bool ado = false;
};

// What the project's references need.
DataAccessNeeds DataAccessOf(const CProject& project);

// What the user answered on the project-information and data-access pages, and the project's output file.
struct SetupAnswers {
  std::string applicationName;
  std::string companyName;
  std::string applicationType;
  std::string applicationVersion;
  std::string exeName;  // file name of the compiled program
  DataAccessNeeds dataAccess;
};

// The characters that an application or company name may not contain: both become names of files and folders.
constexpr const char* kIllegalCharacters = "\\/:;*?><'\"|.";

// What the boxes hold before a project is read.
SetupAnswers InitialAnswers(const StringTable& strings);
// What the wizard proposes for a project; `appName` is the name that the host proposes, or empty. What the
// project lacks keeps its initial text.
SetupAnswers ProposedAnswers(const StringTable& strings, const CProject& project, const std::string& appName);

// Why a name may not be used.
struct NameRefusal {
  TextId message{};  // which of the two names it is
  Sentence reason;   // which name, and which character or what else is wrong
};
// The message's own text, and the reason on a second line.
Message MessageOf(const StringTable& strings, const NameRefusal& refusal);

// The refusal of one of the names, or nothing when both may be used. A proposal that
// was left alone is accepted as it is, since it was cleaned or only names the company ("Acme Inc."), unless
// the system would not make a folder of that name.
std::optional<NameRefusal> RefusalOfNames(const CodePage& codePage, const SetupAnswers& answers,
                                          const SetupAnswers& proposed);
// Notes which of the other answers the machine's code page cannot hold.
void NoteUnwritableAnswers(const CodePage& codePage, const SetupAnswers& answers);

}  // namespace bxvbwiz
