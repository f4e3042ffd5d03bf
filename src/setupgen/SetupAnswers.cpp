#include "setupgen/SetupAnswers.h"

#include <algorithm>

#include "support/basStr.h"
#include "support/Findings.h"
#include "text/DeviceNames.h"
#include "text/Text.h"

namespace bxvbwiz {
namespace {

bool HasControlCharacter(const std::string& text) {
  return std::any_of(text.begin(), text.end(), [](char c) {
    const auto byte = static_cast<unsigned char>(c);
    return byte < 0x20 || byte == 0x7F;
  });
}

bool HasIllegalCharacter(const std::string& text) {
  return ContainsAnyChar(text, kIllegalCharacters) || HasControlCharacter(text);
}

// Windows 95 and its kin have one device more.
bool IsReservedBySystem(const std::string& name) {
  const std::string_view stem = DeviceStem(name);
  return IsDevice(stem) || EqualsIgnoreCase(stem, "CLOCK$");
}

// A project's name as an application name: each illegal character becomes a blank.
std::string CleanApplicationName(const std::string& name) {
  std::string clean = name;
  for (char& c : clean) {
    if (HasIllegalCharacter(std::string(1, c))) c = ' ';
  }
  clean.erase(clean.find_last_not_of(' ') + 1);
  return clean;
}

// What the code page cannot hold would be written as "?".
bool FitsCodePage(const CodePage& codePage, const std::string& text) {
  return codePage.Decode(codePage.Encode(text)) == text;
}

}  // namespace

SetupAnswers InitialAnswers(const StringTable& strings) {
  SetupAnswers answers;
  answers.applicationName = strings.Text(TextId::YourApplicationName);
  answers.companyName = strings.Text(TextId::YourCompany);
  answers.applicationType = strings.Text(TextId::DatabaseApplication);
  answers.applicationVersion = strings.Text(TextId::FirstVersion);
  return answers;
}

SetupAnswers ProposedAnswers(const StringTable& strings, const CProject& project,
                             const std::string& appName) {
  SetupAnswers answers = InitialAnswers(strings);
  const std::string name = CleanApplicationName(appName.empty() ? project.Name : appName);
  if (!name.empty()) answers.applicationName = name;
  if (!project.VersionCompanyName.empty()) answers.companyName = project.VersionCompanyName;
  std::string version;
  for (const std::string& part : {project.MajorVer, project.MinorVer, project.RevisionVer}) {
    if (part.empty()) continue;
    if (!version.empty()) version += '.';
    version += part;
  }
  if (!version.empty()) answers.applicationVersion = version;
  answers.exeName = project.ExeName;
  return answers;
}

std::optional<TextId> RefusalOfNames(const CodePage& codePage, const SetupAnswers& answers,
                                     const SetupAnswers& proposed) {
  const std::string& name = answers.applicationName;
  const bool nameGiven = name != proposed.applicationName;
  if (IsReservedBySystem(name) || !FitsCodePage(codePage, name) ||
      (nameGiven && (HasIllegalCharacter(name) || EndsWith(name, " ")))) {
    return TextId::IllegalApplicationName;
  }
  const std::string& company = answers.companyName;
  if (!FitsCodePage(codePage, company) || (company != proposed.companyName && HasIllegalCharacter(company))) {
    return TextId::IllegalCompanyName;
  }
  return std::nullopt;
}

void NoteUnwritableAnswers(const CodePage& codePage, const SetupAnswers& answers) {
  for (const std::string* text : {&answers.applicationType, &answers.applicationVersion}) {
    if (FitsCodePage(codePage, *text)) continue;
    AddFinding(FindingId::TextNotInCodePage, {*text});
  }
}

}  // namespace bxvbwiz
