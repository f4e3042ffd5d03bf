#include "setupgen/Report.h"

#include "support/basFile.h"
#include "support/basLogging.h"
#include "support/basStr.h"
#include "text/Text.h"

namespace bxvbwiz {
namespace {

constexpr const char* kBreak = "\r\n";
constexpr const char* kSeparator = "============================================================";
constexpr std::size_t kIndent = 3;

// A text of the string table with its "/n" as line breaks.
std::string TextWithBreaks(const StringTable& strings, TextId id) {
  return *ReplaceAll(strings.Text(id), "/n", kBreak);
}

bool IsHeading(const StringTable& strings, const TreeNode& node, std::int16_t level) {
  return level == 0 || node.text == "Forms" || node.text == "Objects" || node.text == "References" ||
         // Only the support files of Visual Basic 5 are known as a heading.
         node.text == strings.Text(TextId::VisualBasic5SupportFiles);
}

// Adds the lines of a node and its subtree; the trees of the wizard are four levels deep.
void WriteTreeView(const StringTable& strings, const TreeNode& node, std::int16_t level, std::string& lines) {
  const CallStackEntry entry("frmMain:WriteTreeViewToFile");
  const std::string indent(kIndent * static_cast<std::size_t>(level), ' ');
  const bool isHeading = IsHeading(strings, node, level);
  lines += indent + (isHeading ? "[" + node.text + "]" : "-> " + node.text) + kBreak;
  if (node.children.empty() && isHeading)
    lines += indent + std::string(kIndent, ' ') + strings.Text(TextId::None) + kBreak;
  for (const auto& child : node.children) {
    WriteTreeView(strings, *child, static_cast<std::int16_t>(level + 1), lines);
  }
}

}  // namespace

std::vector<std::string> ScriptDefinedVariableNames(std::int16_t oldCount, std::int16_t newCount) {
  std::vector<std::string> names;
  for (int number = oldCount; number < newCount; ++number)
    names.push_back("<VBWizVar-" + std::to_string(number) + ">");
  return names;
}

std::string AssembleReport(const StringTable& strings, const DataAccessNeeds& needs,
                           const std::vector<std::string>& newVariables) {
  std::string report = TextWithBreaks(strings, TextId::ReportIntroduction);
  const auto append = [&](const std::string& text) { report += std::string(kBreak) + kBreak + text; };
  if (needs.daoJet && needs.daoOdbcDirect) {
    append(strings.Text(TextId::DaoJetAndOdbcDirectRequired));
  } else if (needs.daoJet) {
    append(strings.Text(TextId::DaoJetRequired));
  } else if (needs.daoOdbcDirect) {
    append(strings.Text(TextId::DaoOdbcDirectRequired));
  }
  if (needs.rdo) append(strings.Text(TextId::RdoRequired));
  if (needs.ado) append(strings.Text(TextId::AdoRequired));
  if (!newVariables.empty()) {
    std::string names;
    for (const std::string& name : newVariables) names += (names.empty() ? "" : ", ") + name;
    append(strings.Text(TextId::VariablesAdded) + kBreak + " - " + names);
  }
  append(TextWithBreaks(strings, TextId::FurtherSteps));
  return report;
}

// 1. The text's line breaks become "/n", and each "/n/n" two line breaks again; leading blanks go.
// 2. A blank from column 75 on becomes a line break.
// 3. "/n" becomes a line break; any other "/" stays.
// 4. A line feed becomes a line break; a carriage return is dropped but counts a column.
std::string FormatFor80CharDisplay(const std::string& text) {
  constexpr char kRoutine[] = "frmMain:FormatFor80CharDisplay";
  constexpr int kLimit = 75;
  const CallStackEntry entry(kRoutine);
  std::string result;
  LogAndGoOn(kRoutine, [&] {
    std::string source = *ReplaceAll(*ReplaceAll(text, kBreak, "/n"), "/n/n", "\r\n\r\n");
    source.erase(0, source.find_first_not_of(' '));
    int column = 0;
    const auto breakLine = [&] {
      result += kBreak;
      column = 0;
    };
    char previous = '\0';
    for (std::size_t position = 0; position < source.size(); ++position) {
      const char c = source[position];
      const bool isContinuation = (static_cast<unsigned char>(c) & 0xC0) == 0x80;
      if (!isContinuation) ++column;
      const bool beginsMarker = c == '/' && position + 1 < source.size() && source[position + 1] == 'n';
      if (c == '\n' || (c == 'n' && previous == '/') || (c == ' ' && column >= kLimit)) {
        breakLine();
      } else if (beginsMarker) {
        --column;
      } else if (c != '\r') {
        result += c;
      }
      previous = c;
    }
  });
  return result;
}

std::string LeftToDo(const StringTable& strings, const Findings& findings) {
  if (findings.All().empty()) return "";
  std::string text = TextWithBreaks(strings, TextId::LeftToDoHeading);
  for (const Finding& finding : findings.All()) {
    for (const std::string& line : LinesOf(strings, finding)) text += line + kBreak;
    text += kBreak;
  }
  return text;
}

void WriteReport(Platform& platform, const std::string& setupDir, const std::string& report,
                 const TreeNodes& projectView) {
  const StringTable& strings = platform.strings;
  const std::string path = FixPath(setupDir) + "\\Script Files\\Report.txt";
  const std::string separator = std::string(kSeparator) + kBreak + kBreak + kBreak;
  const auto print = [&](TextId id) { return FormatFor80CharDisplay(TextWithBreaks(strings, id)); };

  // Every printed item but the first ends in a line break of its own.
  std::string text = print(TextId::ReportFileHeading);
  const std::string now = platform.clock.LocalDateTimeText();
  if (now.empty()) AddFinding(FindingId::ReportWithoutDate, {path});
  text += now + kBreak + kBreak + kBreak;
  text += separator;
  text += print(TextId::ReportHeading) + kBreak;
  text += FormatFor80CharDisplay(report) + kBreak;
  text += std::string(kBreak) + kBreak;
  text += separator;
  text += print(TextId::ProjectViewHeading) + kBreak;
  // In one write with the trees, so that a retry after a failure does not print the report twice.
  for (const auto& node : projectView) WriteTreeView(strings, *node, 0, text);
  CheckSystem(platform.files.Write(path, platform.codePage.Encode(text), WriteMode::Append), path);
}

std::string LeftToDoFile(const std::string& setupDir) {
  return FixPath(setupDir) + "Script Files\\Left To Do.txt";
}

void WriteLeftToDo(Platform& platform, const std::string& setupDir, const Findings& findings) {
  const std::string text = LeftToDo(platform.strings, findings);
  if (text.empty()) return;
  const std::string path = LeftToDoFile(setupDir);
  CheckSystem(platform.files.Write(path, platform.codePage.Encode(text), WriteMode::Create), path);
}

}  // namespace bxvbwiz
