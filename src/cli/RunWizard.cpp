#include "cli/RunWizard.h"

#include <iostream>
#include <map>
#include <set>
#include <sstream>

#include "cli/Commands.h"
#include "cli/Output.h"
#include "cli/ProjectList.h"
#include "cli/ProjectRun.h"
#include "cli/ScratchComputer.h"
#include "cli/Terminal.h"
#include "machine/MachineError.h"
#include "support/basStr.h"
#include "text/Text.h"

namespace bxvbwiz {
namespace {

// How many findings there are of each severity, the worst first.
using FindingCounts = std::map<Severity, std::size_t>;

void Count(const Outcome& outcome, FindingCounts& counts) {
  if (outcome.Found() == nullptr) return;
  for (const Finding& finding : outcome.Found()->All()) ++counts[SeverityOf(finding.id)];
}

// "1 error, 2 warnings"; empty when nothing was found.
std::string TextOf(const FindingCounts& counts) {
  std::vector<std::string> texts;
  for (const auto& [severity, count] : counts)
    texts.push_back(std::to_string(count) + " " + NameOf(severity) + (count == 1 ? "" : "s"));
  return Joined(texts);
}

// Whether the command leaves the setup project that it makes.
bool IsKept(Command command) {
  return command != Command::Capture && command != Command::Check;
}

// Prints the last lines of standard error: everything that was found, and how many things that is.
void PrintRest(const Options& options, const Outcome& outcome, const StringTable& strings) {
  const Findings none(strings);
  const Findings* const known = outcome.Found();
  const Findings& found = known == nullptr ? none : *known;
  // An explanation holds those that matter to it.
  const bool isExplained = outcome.explanation != nullptr;
  for (const Finding& finding : isExplained ? none.All() : found.All()) {
    const bool isNote = SeverityOf(finding.id) == Severity::Note;
    if (isNote && options.quiet) continue;
    std::vector<std::string> lines = LinesOf(strings, finding);
    if (isNote && !options.verbose) lines.resize(1);
    const char* prefix = "bxvbwiz: ";
    for (const std::string& line : lines) {
      std::cerr << prefix << line << '\n';
      prefix = "";
    }
  }
  if (!outcome.finished && !outcome.setup.folder.empty() && IsKept(options.command)) {
    std::cerr << "bxvbwiz: The setup folder " << outcome.setup.folder << " was created and is incomplete.\n";
  }
  if (options.quiet && outcome.finished && !found.HoldsWork()) return;
  FindingCounts count;
  Count(outcome, count);
  const std::string counts = TextOf(count);
  std::cerr << "bxvbwiz: ";
  if (!outcome.finished) {
    std::cerr << "The wizard ended without finishing" << (counts.empty() ? "" : "; ") << counts << ".\n";
  } else if (found.HoldsWork()) {
    std::cerr << counts << ".\n";
  } else {
    std::cerr << strings.Text(TextId::NothingLeftToDo) << (counts.empty() ? "" : " " + counts + ".") << '\n';
  }
}

// Prints the outcome of a run with that exit code, a JSON document to `json`.
void Show(const Options& options, const Outcome& outcome, const StringTable& strings, int code,
          std::ostream& json) {
  if (options.json) {
    PrintJson(options, outcome, strings, code, json);
  } else if (outcome.explanation != nullptr) {
    PrintText(*outcome.explanation, strings);
  } else if (options.command != Command::Capture && options.command != Command::Explain &&
             options.html != "-" && !(options.quiet && outcome.comparison.IsEqual())) {
    PrintText(options, outcome, strings);
  }
  std::cout.flush();
  PrintRest(options, outcome, strings);
}

// Refuses a list of projects where only one can be: throws MachineError, which is wrong usage.
void CheckList(const Options& options) {
  if (!NamesList(options)) return;
  if (options.command == Command::Explain || options.command == Command::Check) {
    throw MachineError(TokenReplace(CompiledText(TextId::OneProjectOnly),
                                    {NameOf(options.command), options.projects.front()}));
  }
  if (!options.appName && !options.appVersion && options.html.empty()) return;
  throw MachineError(
      TokenReplace(CompiledText(TextId::FactOfOneProject), {options.appName      ? "--app-name"
                                                            : options.appVersion ? "--app-version"
                                                                                 : "--html"}));
}

// Throws MachineError when there is no machine to work on.
std::unique_ptr<Computer> OpenComputer(const Options& options) {
  if (!options.machine.empty()) return OpenMachineFolder(options.machine, options.drives);
  if (!options.drives.empty()) throw MachineError(CompiledText(TextId::DriveNeedsMachine));
  if (std::unique_ptr<Computer> computer = OpenThisComputer()) return computer;
  throw MachineError("not running on Windows: give a machine folder with --machine DIR or BXVBWIZ_MACHINE");
}

// The worse of two exit codes.
int Worse(int code, int other) {
  for (const int worst : {kExitUsage, kExitNotFinished, kExitProject, kExitIncomplete}) {
    if (code == worst || other == worst) return worst;
  }
  return kExitFinished;
}

// Begins what is printed of a project of a list.
void PrintHeading(const Options& options, const std::string& heading, bool isFirst) {
  // Messages are about this project, too.
  if (options.json || options.quiet) {
    std::cerr << "bxvbwiz: " << heading << '\n';
  } else {
    std::cout << (isFirst ? "" : "\n") << heading << std::endl;
  }
}

// Prints how all projects of a list ended.
void PrintSummary(const StringTable& strings, std::size_t count, std::size_t finished,
                  const FindingCounts& counts) {
  const std::string found = TextOf(counts);
  std::cerr << "bxvbwiz: "
            << TextOf(strings, {TextId::ProjectsDone, {std::to_string(count), std::to_string(finished)}})
            << (found.empty() ? "" : " " + found + ".") << '\n';
}

// Adds the file names of a project's components, in upper case.
void AddComponents(const CProject& project, std::set<std::string>& names) {
  for (const CObject& control : project.AllControls()) names.insert(UpperCase(control.Lookup().fileName));
  for (const CReference& reference : project.References())
    names.insert(UpperCase(reference.Lookup().fileName));
}

// Prints which answers are for a component that no project has.
void PrintVainAnswers(const Options& options, const StringTable& strings,
                      const std::set<std::string>& components) {
  for (const auto& answer : options.answers) {
    const auto& [number, component] = answer.first;
    if (component.empty() || components.count(component) != 0) continue;
    const Sentence text = {TextId::AnswerInVain, {std::to_string(NumberOf(number)), component}};
    std::cerr << "bxvbwiz: " << TextOf(strings, text) << '\n';
  }
}

}  // namespace

int RunWizard(const Options& options) {
  CheckList(options);
  const std::unique_ptr<Computer> computer = OpenComputer(options);
  if (options.command == Command::Capture) return Capture(options, *computer, RunWizardOn);
  if (options.command == Command::Check) return RunWizardOn(options, *MakeScratchComputer(*computer));
  return RunWizardOn(options, *computer);
}

int RunWizardOn(const Options& options, Computer& computer) {
  const StringTable& strings = computer.platform().strings;
  const std::vector<ListedProject> projects = ListProjects(options, computer);
  const bool isList = NamesList(options);
  std::vector<std::string> documents;
  FindingCounts counts;
  std::set<std::string> components;
  std::size_t finished = 0;
  int worst = kExitFinished;
  for (const ListedProject& project : projects) {
    if (WasInterrupted()) break;
    if (isList)
      PrintHeading(options, TextOf(strings, {TextId::ProjectHeading, {project.path}}), documents.empty());
    RunProject(options, computer, project, [&](const Outcome& outcome, int code) {
      if (outcome.finished) {
        ++finished;
        AddComponents(*outcome.analysis->Project(), components);
      }
      if (finished == projects.size()) PrintVainAnswers(options, strings, components);
      std::ostringstream document;
      Show(options, outcome, strings, computer.ExitCode(code), isList ? document : std::cout);
      documents.push_back(document.str());
      Count(outcome, counts);
      worst = Worse(worst, code);
    });
  }
  if (!isList) return worst;
  if (options.json) PrintJson(options.command, documents, computer.ExitCode(worst));
  const bool isDone =
      finished == projects.size() && (counts.empty() || counts.begin()->first == Severity::Note);
  if (!options.quiet || !isDone) PrintSummary(strings, projects.size(), finished, counts);
  return worst;
}

}  // namespace bxvbwiz
