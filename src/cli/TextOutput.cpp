#include "cli/TextOutput.h"

#include <iostream>

#include "setupgen/Report.h"
#include "support/basStr.h"

namespace bxvbwiz {
namespace {

void PrintTree(const std::vector<TreeText>& nodes, const std::string& indent) {
  for (std::size_t index = 0; index < nodes.size(); ++index) {
    const bool last = index + 1 == nodes.size();
    std::cout << indent << (last ? "└─ " : "├─ ") << nodes[index].text << '\n';
    PrintTree(nodes[index].children, indent + (last ? "   " : "│  "));
  }
}

void PrintRoots(const char* title, const std::vector<TreeText>& roots) {
  std::cout << title << '\n';
  for (const TreeText& root : roots) {
    std::cout << root.text << '\n';
    PrintTree(root.children, "");
  }
  std::cout << '\n';
}

// The files below a folder as a tree, one level a folder.
std::vector<TreeText> FileTree(const std::vector<std::string>& files) {
  std::vector<TreeText> roots;
  for (const std::string& file : files) {
    std::vector<TreeText>* level = &roots;
    std::size_t start = 0;
    for (std::size_t end = file.find('\\'); end != std::string::npos; end = file.find('\\', start)) {
      const std::string folder = file.substr(start, end - start);
      if (level->empty() || level->back().text != folder) level->push_back({folder, {}});
      level = &level->back().children;
      start = end + 1;
    }
    level->push_back({file.substr(start), {}});
  }
  return roots;
}

void PrintFacts(const FileFacts& file) {
  std::cout << file.fileName << "\n  destination "
            << (file.destination.empty() ? "(application)" : file.destination) << " = " << file.symbol
            << "\n  from " << file.fileLinkPath << (file.linkResolves ? "" : " (not found)") << "\n  group "
            << file.fileGroup << ", register code " << file.selfRegister
            << (file.sharedFile ? ", shared" : "") << '\n';
}

void PrintList(const char* title, const std::vector<std::string>& names) {
  if (names.empty()) return;
  std::cout << "  " << title << ":\n";
  std::string lines;  // one call for all of them: a DLL exports thousands
  for (const std::string& name : names) lines.append("    ").append(name).append(1, '\n');
  std::cout << lines;
}

const char* FormatName(int exeType) {
  constexpr const char* kNames[] = {"no executable", "DOS program", "NE (16-bit Windows)", "LE", "XE", "PE"};
  return exeType >= 0 && exeType < static_cast<int>(std::size(kNames)) ? kNames[exeType] : "unknown";
}

}  // namespace

void PrintText(const Options& options, const Outcome& outcome) {
  if (!outcome.projectView.empty()) {
    PrintRoots("VB project view", outcome.projectView);
    PrintRoots("File group view", outcome.fileGroupView);
  }
  if (options.verbose) {
    for (const FileFacts& file : outcome.files) PrintFacts(file);
    std::cout << '\n';
  }
  if (!outcome.report.empty()) {
    std::cout << "Report\n" << *ReplaceAll(FormatFor80CharDisplay(outcome.report), "\r\n", "\n") << "\n\n";
  }
  if (outcome.setupFolder.empty()) return;
  std::cout << "Written to " << outcome.setupFolder << '\n';
  PrintTree(FileTree(outcome.writtenFiles), "");
  if (!outcome.projectFileHere.empty()) std::cout << "\nSetup project: " << outcome.projectFileHere << '\n';
}

void PrintText(const Inspection& inspection) {
  std::cout << inspection.file << ": " << FormatName(inspection.exeType);
  if (!inspection.reason.empty()) std::cout << " (" << inspection.reason << ")";
  std::cout << ", register code " << inspection.selfRegister << '\n';
  PrintList("imports", inspection.imports);
  PrintList("exports", inspection.exports);
}

}  // namespace bxvbwiz
