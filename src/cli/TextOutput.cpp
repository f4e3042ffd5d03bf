#include "cli/TextOutput.h"

#include <algorithm>
#include <iostream>

#include "setupgen/Report.h"
#include "support/basStr.h"

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

void PrintFacts(const CFile& file, const std::string& symbol) {
  std::cout << file.FileName << "\n  destination "
            << (file.Destination.empty() ? "(application)" : file.Destination) << " = " << symbol
            << "\n  from " << file.FileLinkPath << (file.LinkResolves ? "" : " (not found)") << "\n  group "
            << file.FileGroup << ", register code " << file.SelfRegister
            << (file.SharedFile ? ", shared" : "") << '\n';
}

void PrintViews(const Analysis& analysis) {
  if (analysis.ProjectView().Nodes().empty()) return;
  PrintView("VB project view", analysis.ProjectView());
  PrintView("File group view", analysis.FileGroupView());
}

void PrintFiles(const Outcome& outcome) {
  std::size_t index = 0;
  for (const CFile& file : outcome.analysis->Files()) PrintFacts(file, outcome.symbols.at(index++));
}

// One line each: the sign, what it is, where it is, and the values.
void PrintDifferences(const std::vector<Difference>& differences, bool byHand, const StringTable& strings) {
  for (const Difference& difference : differences) {
    if (difference.byHand != byHand) continue;
    std::cout << static_cast<char>(difference.sign) << ' ' << difference.kind << ' ' << difference.name;
    if (!difference.owner.empty())
      std::cout << TextOf(strings, {TextId::DifferenceOwner, {difference.owner}});
    if (difference.sign == Difference::Sign::Other)
      std::cout << TextOf(strings, {TextId::DifferenceValues, {difference.present, difference.expected}});
    std::cout << '\n';
  }
}

void PrintDifferences(const Outcome& outcome, const StringTable& strings) {
  if (!outcome.finished) return;
  const Comparison& comparison = outcome.comparison;
  const TextId verdict = comparison.IsEqual() ? TextId::SetupIsEqual : TextId::SetupDiffers;
  std::cout << TextOf(strings, {verdict, {comparison.setupFolder}}) << '\n';
  PrintDifferences(comparison.differences, false, strings);
  const auto isByHand = [](const Difference& difference) { return difference.byHand; };
  if (std::none_of(comparison.differences.begin(), comparison.differences.end(), isByHand)) return;
  std::cout << TextOf(strings, {TextId::MadeByHand, {}}) << '\n';
  PrintDifferences(comparison.differences, true, strings);
}

void PrintList(const char* title, const std::vector<std::string>& names) {
  if (names.empty()) return;
  std::cout << "  " << title << ":\n";
  std::string lines;  // one call for all of them: a DLL exports thousands
  for (const std::string& name : names) lines.append("    ").append(name).append(1, '\n');
  std::cout << lines;
}

const char* FormatName(int exeType) {
  constexpr const char* kNames[] = {
      "not an executable", "DOS program", "NE (16-bit Windows)", "LE", "XE", "PE"};
  return exeType >= 0 && exeType < static_cast<int>(std::size(kNames)) ? kNames[exeType] : "unknown";
}

}  // namespace

void PrintText(const Options& options, const Outcome& outcome, const StringTable& strings) {
  if (options.command == Command::Check) return PrintDifferences(outcome, strings);
  if (outcome.analysis != nullptr) PrintViews(*outcome.analysis);
  if (options.verbose) {
    if (outcome.analysis != nullptr) PrintFiles(outcome);
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

void PrintText(const Inspection& inspection) {
  std::cout << inspection.file << ": " << FormatName(inspection.exeType);
  if (!inspection.reason.empty()) std::cout << " (" << inspection.reason << ")";
  std::cout << ", register code " << inspection.selfRegister << '\n';
  std::vector<std::string> libraries = inspection.typeLibraries.faults;
  for (const TypeLibraryFacts& library : inspection.typeLibraries.libraries)
    libraries.push_back(library.identifier + " version " + library.version + ", language " +
                        library.language + ", \"" + library.description + "\"");
  PrintList("type libraries", libraries);
  PrintList("imports", inspection.imports);
  PrintList("exports", inspection.exports);
}

}  // namespace bxvbwiz
