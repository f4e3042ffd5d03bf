#include "setupgen/SetupAnswers.h"

#include "support/basStr.h"
#include "support/Findings.h"
#include "text/DeviceNames.h"
#include "text/Text.h"

namespace bxvbwiz {
namespace {

// The first control or illegal character of a text, as a person can read it; empty when it has none.
std::string IllegalCharacter(const std::string& text) {
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte < 0x20 || byte == 0x7F) {
      constexpr char kDigits[] = "0123456789ABCDEF";
      return std::string("U+00") + kDigits[byte >> 4] + kDigits[byte & 15];
    }
    if (ContainsAnyChar(std::string(1, c), kIllegalCharacters)) return std::string(1, c);
  }
  return "";
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
    if (!IllegalCharacter(std::string(1, c)).empty()) c = ' ';
  }
  clean.erase(clean.find_last_not_of(' ') + 1);
  return clean;
}

// The first character that would be written as "?", because the code page cannot hold it; empty for none.
std::string UnwritableCharacter(const CodePage& codePage, const std::string& text) {
  for (std::size_t position = 0; position < text.size();) {
    const std::size_t start = position;
    NextCharacter(text, position);
    std::string character = text.substr(start, position - start);
    if (codePage.Decode(codePage.Encode(character)) != character) return character;
  }
  return "";
}

// Why a text may not be used; without a text when it may. A proposal needs only be writable.
Sentence RefusalOf(const CodePage& codePage, const std::string& text, bool isGiven) {
  const std::string unwritable = UnwritableCharacter(codePage, text);
  if (!unwritable.empty()) return {TextId::NameNotInCodePage, {text, unwritable}};
  const std::string illegal = isGiven ? IllegalCharacter(text) : "";
  if (!illegal.empty()) return {TextId::NameHasCharacter, {text, illegal}};
  return {};
}

}  // namespace

DataAccessNeeds DataAccessOf(const CProject& project) {
  DataAccessNeeds needs;
  for (const CReference& reference : project.References()) {
    needs.ado = needs.ado || reference.ADO;
    needs.daoJet = needs.daoJet || reference.DAO;
    needs.rdo = needs.rdo || reference.RDO;
  }
  needs.daoOdbcDirect = needs.daoJet && needs.rdo;
  return needs;
}

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

Message MessageOf(const StringTable& strings, const NameRefusal& refusal) {
  return {refusal.message, kStyleExclamation,
          strings.Text(refusal.message) + "\r\n" + TextOf(strings, refusal.reason), ""};
}

std::optional<NameRefusal> RefusalOfNames(const CodePage& codePage, const SetupAnswers& answers,
                                          const SetupAnswers& proposed) {
  const std::string& name = answers.applicationName;
  const bool isGiven = name != proposed.applicationName;
  Sentence reason = RefusalOf(codePage, name, isGiven);
  if (reason.id == TextId{} && IsReservedBySystem(name)) reason = {TextId::NameIsReserved, {name}};
  if (reason.id == TextId{} && isGiven && EndsWith(name, " ")) reason = {TextId::NameEndsInBlank, {name}};
  if (reason.id != TextId{}) return NameRefusal{TextId::IllegalApplicationName, reason};
  const std::string& company = answers.companyName;
  reason = RefusalOf(codePage, company, company != proposed.companyName);
  if (reason.id != TextId{}) return NameRefusal{TextId::IllegalCompanyName, reason};
  return std::nullopt;
}

void NoteUnwritableAnswers(const CodePage& codePage, const SetupAnswers& answers) {
  for (const std::string* text : {&answers.applicationType, &answers.applicationVersion}) {
    if (UnwritableCharacter(codePage, *text).empty()) continue;
    AddFinding(FindingId::TextNotInCodePage, {*text});
  }
}

}  // namespace bxvbwiz
