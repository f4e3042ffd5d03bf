#include <algorithm>
#include <iostream>

#include "cli/Output.h"
#include "setupgen/Report.h"
#include "support/basStr.h"
#include "text/Text.h"

namespace bxvbwiz {
namespace {

// The nodes below `nodes`, with the lines that join them to those above.
void PrintTree(const TreeNodes& nodes, const std::string& indent) {
  for (const auto& node : nodes) {
    const bool last = node == nodes.back();
    std::cout << indent << (last ? "└─ " : "├─ ") << node->text << '\n';
    PrintTree(node->children, indent + (last ? "   " : "│  "));
  }
}

void PrintView(const char* title, const Tree& view) {
  std::cout << title << '\n';
  for (const auto& root : view.Nodes()) {
    std::cout << root->text << '\n';
    PrintTree(root->children, "");
  }
  std::cout << '\n';
}

// The files below a folder as a tree, one level a folder.
TreeNode FileTree(const std::vector<std::string>& files) {
  TreeNode root;
  for (const std::string& file : files) {
    TreeNode* level = &root;
    std::size_t start = 0;
    for (std::size_t end = file.find('\\'); end != std::string::npos; end = file.find('\\', start)) {
      const std::string folder = file.substr(start, end - start);
      const bool isOpen = !level->children.empty() && level->children.back()->text == folder;
      level = isOpen ? level->children.back().get() : &level->Add("", folder, NodeImage::Heading);
      start = end + 1;
    }
    level->Add("", file.substr(start), NodeImage::File);
  }
  return root;
}

void PrintViews(const Analysis& analysis) {
  if (analysis.ProjectView().Nodes().empty()) return;
  PrintView("VB project view", analysis.ProjectView());
  PrintView("File group view", analysis.FileGroupView());
}

void PrintFacts(const InstalledFile& installed) {
  const CFile& file = *installed.record;
  std::cout << file.FileName << "\n  destination "
            << (file.Destination.empty() ? "(application)" : file.Destination) << " = " << installed.symbol
            << "\n  from " << file.FileLinkPath << (file.LinkResolves ? "" : " (not found)") << "\n  group "
            << file.FileGroup << ", register code " << file.SelfRegister
            << (file.SharedFile ? ", shared" : "") << '\n';
}

// One line each: the sign, what it is, where it is, and the values.
void PrintDifference(const Difference& difference, const StringTable& strings) {
  std::cout << static_cast<char>(difference.sign) << ' ' << difference.kind << ' ' << difference.name;
  if (!difference.owner.empty()) std::cout << TextOf(strings, {TextId::DifferenceOwner, {difference.owner}});
  if (difference.sign == Difference::Sign::Other)
    std::cout << TextOf(strings, {TextId::DifferenceValues, {difference.present, difference.expected}});
  std::cout << '\n';
}

void PrintComparison(Comparison comparison, const StringTable& strings) {
  const TextId verdict = comparison.IsEqual() ? TextId::SetupIsEqual : TextId::SetupDiffers;
  std::cout << TextOf(strings, {verdict, {comparison.setupFolder}}) << '\n';
  std::vector<Difference>& all = comparison.differences;
  const auto byHand = std::stable_partition(all.begin(), all.end(),
                                            [](const Difference& difference) { return !difference.byHand; });
  for (auto difference = all.begin(); difference != all.end(); ++difference) {
    if (difference == byHand) std::cout << strings.Text(TextId::MadeByHand) << '\n';
    PrintDifference(*difference, strings);
  }
}

void PrintList(const char* title, const std::vector<std::string>& names) {
  if (names.empty()) return;
  std::cout << "  " << title << ":\n";
  std::string lines;  // one call for all of them: a DLL exports thousands
  for (const std::string& name : names) lines.append("    ").append(name).append(1, '\n');
  std::cout << lines;
}

// Prints an indented line, broken at blanks when it is too long.
void PrintLine(const std::string& text) {
  constexpr std::size_t kWidth = 100;
  std::string line = "  " + text;
  const std::size_t indent = line.find_first_not_of(' ');
  while (CharacterCount(line) > kWidth) {
    const std::size_t at = line.rfind(' ', kWidth);
    if (at == std::string::npos || at < line.find_first_not_of(' ')) break;
    std::cout << line.substr(0, at) << '\n';
    line.replace(0, at + 1, indent + 2, ' ');
  }
  std::cout << line << '\n';
}

void PrintGroup(const StringTable& strings, TextId heading, const std::vector<std::string>& lines) {
  if (lines.empty()) return;
  std::cout << '\n' << strings.Text(heading) << '\n';
  for (const std::string& line : lines) PrintLine(line);
}

void AddAskers(const TreeNodes& askers, const std::string& indent, std::vector<std::string>& lines) {
  for (const auto& asker : askers) {
    lines.push_back(indent + asker->text);
    AddAskers(asker->children, indent + "  ", lines);
  }
}

void AddLookup(const StringTable& strings, const LibraryLookup& lookup, std::vector<std::string>& lines) {
  const auto orNone = [&](const std::string& text) {
    return text.empty() ? strings.Text(TextId::NoneThere) : text;
  };
  lines.push_back(TextOf(
      strings, {TextId::ExplainLibrary,
                {orNone(lookup.identifier), orNone(lookup.version), orNone(Joined(lookup.registered))}}));
  const TextId path = lookup.hasRegisteredPath ? TextId::ExplainRegisteredPath : TextId::ExplainSystemPath;
  if (!lookup.path.empty()) lines.push_back(TextOf(strings, {path, {orNone(lookup.taken), lookup.path}}));
}

const char* FormatName(int exeType) {
  constexpr const char* kNames[] = {
      "not an executable", "DOS program", "NE (16-bit Windows)", "LE", "XE", "PE"};
  return exeType >= 0 && exeType < static_cast<int>(std::size(kNames)) ? kNames[exeType] : "unknown";
}

}  // namespace

void PrintText(const Options& options, const Outcome& outcome, const StringTable& strings) {
  if (options.command == Command::Check) {
    if (outcome.finished) PrintComparison(outcome.comparison, strings);
    return;
  }
  if (outcome.analysis != nullptr) PrintViews(*outcome.analysis);
  if (options.verbose) {
    for (const InstalledFile& file : outcome.files) PrintFacts(file);
    std::cout << '\n';
  }
  const GeneratedSetup& setup = outcome.setup;
  if (!setup.report.empty()) {
    std::cout << "Report\n" << *ReplaceAll(FormatFor80CharDisplay(setup.report), "\r\n", "\n") << "\n\n";
  }
  if (setup.folder.empty()) return;
  std::cout << "Written to " << setup.folder << '\n';
  PrintTree(FileTree(outcome.writtenFiles).children, "");
  if (!outcome.projectFileHere.empty()) std::cout << "\nSetup project: " << outcome.projectFileHere << '\n';
}

void PrintText(const Explanation& explanation, const StringTable& strings) {
  std::cout << explanation.name << '\n';
  PrintLine(TextOf(strings, explanation.verdict));
  for (const std::string& name : explanation.near) PrintLine(TextOf(strings, {TextId::ExplainNear, {name}}));
  std::vector<std::string> askers;
  AddAskers(explanation.askers.children, "", askers);
  if (explanation.hasMoreAskers) askers.push_back(strings.Text(TextId::ExplainOthers));
  PrintGroup(strings, TextId::ExplainAskedBy, askers);
  std::vector<std::string> lookups;
  for (const LibraryLookup& lookup : explanation.lookups) AddLookup(strings, lookup, lookups);
  PrintGroup(strings, TextId::ExplainLookUp, lookups);
  std::vector<std::string> why;
  for (const Sentence& reason : explanation.why) why.push_back(TextOf(strings, reason));
  PrintGroup(strings, TextId::ExplainDecided, why);
  std::vector<std::string> findings;
  for (const Finding& finding : explanation.findings) {
    for (const std::string& line : LinesOf(strings, finding)) findings.push_back(line);
  }
  PrintGroup(strings, TextId::ExplainFindings, findings);
}

void PrintText(const Inspection& inspection) {
  const EXEFile& file = inspection.executable;
  std::cout << inspection.file << ": " << FormatName(file.ExeType);
  if (!inspection.reason.empty()) std::cout << " (" << inspection.reason << ")";
  std::cout << ", register code " << inspection.selfRegister << '\n';
  std::vector<std::string> libraries = inspection.typeLibraries.faults;
  for (const TypeLibraryFacts& library : inspection.typeLibraries.libraries)
    libraries.push_back(library.identifier + " version " + library.version + ", language " +
                        library.language + ", \"" + library.description + "\"");
  std::vector<std::string> imports;
  for (const Dependency& import : file.Dependencies) imports.push_back(import.ShortName);
  std::vector<std::string> exports;
  for (const std::string& name : file.Exports) exports.push_back(name);
  PrintList("type libraries", libraries);
  PrintList("imports", imports);
  PrintList("exports", exports);
}

}  // namespace bxvbwiz
