#include "cli/ProjectRun.h"

#include <iostream>

#include "cli/Check.h"
#include "cli/ConsoleUser.h"
#include "cli/Explain.h"
#include "cli/Output.h"
#include "machine/MachineError.h"
#include "setupgen/Destinations.h"
#include "support/basFile.h"
#include "text/Text.h"
#include "wizard/ProductValues.h"
#include "wizard/Rebuild.h"
#include "wizard/SetupPaths.h"

namespace bxvbwiz {
namespace {

constexpr std::int16_t kReturnFinished = -1;  // unless SetReturnCode sets another

// Prints why the program cannot go on, and keeps it for the document.
void Tell(Outcome& outcome, const std::string& error) {
  std::cerr << "bxvbwiz: " << error << '\n';
  outcome.error = error;
}

// Adds the files below a folder, folders after their files.
void ListFiles(FileSystem& files, const std::string& folder, const std::string& prefix, Outcome& outcome) {
  std::vector<FoundFile> found;
  if (files.Find(folder + "*.*", found) != SystemError::Success) {
    AddFinding(FindingId::WrittenFilesNotListed, {folder});
  }
  std::vector<std::string> folders;
  for (const FoundFile& file : found) {
    if (file.name == "." || file.name == "..") continue;
    if ((file.attributes & kAttributeDirectory) != 0) {
      folders.push_back(file.name);
    } else {
      outcome.writtenFiles.push_back(prefix + file.name);
    }
  }
  for (const std::string& name : folders)
    ListFiles(files, folder + name + "\\", prefix + name + "\\", outcome);
}

// One run of the wizard without a window, through the steps of its pages.
class Run {
 public:
  Run(const Options& options, Computer& computer)
      : options_(options),
        computer_(computer),
        core_(computer.platform(), StartMode::Automation),
        user_(core_.global(), options, outcome_) {
    core_.SetUser(&user_);
  }
  ~Run() {
    outcome_.analysis.reset();  // before what it works with
    core_.SetUser(nullptr);
  }
  Run(const Run&) = delete;
  Run& operator=(const Run&) = delete;

  int Go(const std::string& project) {
    const SessionScope scope(core_.session());
    outcome_.returnCode = kReturnFinished;
    int code = Try([&] { return Steps(project); });
    user_.ClearBar();
    if (Try([this] { return TakeResults(); }) != kExitFinished) code = kExitNotFinished;
    outcome_.finished = code == kExitFinished;
    if (outcome_.finished && options_.command == Command::Explain) code = ExplainName();
    return code;
  }
  // Lets the projects after this one refer to its program.
  void RegisterProgram() {
    const CProject* const project = outcome_.analysis == nullptr ? nullptr : outcome_.analysis->Project();
    const bool isServer = project != nullptr && project->ProjectType > CProject::PTStandardExe;
    if (isServer && NamesList(options_)) computer_.RegisterProgram(project->OutputPath());
  }
  Outcome& Result() { return outcome_; }

 private:
  // However the run ends, what it has done is printed.
  template <class Work>
  int Try(const Work& work) {
    try {
      return work();
    } catch (const WizardEnded&) {
      return kExitNotFinished;  // the message that ended the wizard was shown
    } catch (const std::exception& error) {
      Tell(outcome_, error.what());
      return kExitNotFinished;
    }
  }

  // A name that the project does not ask for is answered, too, but not with success.
  int ExplainName() {
    outcome_.explanation = std::make_unique<Explanation>(
        Explain(outcome_, core_.platform().strings, options_.name, core_.global().gDepFilePath()));
    return outcome_.explanation->isKnown ? kExitFinished : kExitNotFinished;
  }

  int Steps(const std::string& project) {
    if (options_.command != Command::Check) {
      core_.session().log.Init();
    } else if (!FindSetup()) {
      return kExitUsage;
    }
    // Wrong usage is reported before the project is read or compiled.
    SetupAnswers own;
    if (options_.company) own.companyName = CompanyOfProject(core_.platform(), project);
    if (Refuses(Given(InitialAnswers(core_.platform().strings)), own)) return kExitUsage;
    if (!RunStep([&] { return Analyse(project); })) return kExitProject;
    if (options_.command == Command::Explain) return kExitFinished;
    int code = kExitNotFinished;
    RunStep([&] {
      code = LeaveInformation();
      return true;
    });
    if (code != kExitFinished || options_.command == Command::Analyse) return code;
    return RunStep([this] { return Generate(); }) ? kExitFinished : kExitNotFinished;
  }

  // False when there is no setup project to compare with; the user has seen a message.
  bool FindSetup() {
    outcome_.comparison.setupFolder = SetupFolderOf(computer_, options_.setup);
    if (!outcome_.comparison.setupFolder.empty()) return true;
    Tell(outcome_, TextOf(core_.platform().strings, {TextId::NoSetupProject, {options_.setup}}));
    return false;
  }

  // Runs what a page's Next starts. False when it failed and the error was answered with Retry: in a window
  // the page would stay.
  template <class Handler>
  bool RunStep(const Handler& handler) {
    constexpr const char* kRoutine = "cmdNext_Click";
    const CallStackEntry entry(kRoutine);
    try {
      return handler();
    } catch (const WizardEnded&) {
      throw;
    } catch (...) {
      ReportError(kRoutine, CurrentError());
      return false;
    }
  }

  bool Analyse(const std::string& project) {
    outcome_.analysis = std::make_unique<Analysis>(core_.platform(), user_, core_.global());
    for (Finding& finding : computer_.Found()) AddFinding(std::move(finding));
    Analysis::Rebuild rebuild;
    // Looking at a project starts no program unless it is asked for.
    const bool isLook = options_.command != Command::Generate && options_.command != Command::Capture;
    if (options_.rebuild || !(isLook || options_.noRebuild)) {
      rebuild = [this](const CProject& built) {
        return RebuildProject(core_, user_, built, TextId::RebuildAdvice);
      };
    }
    return outcome_.analysis->LoadTrees(project, options_.rebuild, rebuild) == Analysis::Result::Done;
  }

  // The answers of the project-information page. A refused name is wrong usage when an option gave it, but
  // not when the project has it.
  int LeaveInformation() {
    const SetupAnswers proposed = ProposedAnswers(core_.platform().strings, *outcome_.analysis->Project(),
                                                  options_.skipInfo ? options_.appName.value_or("") : "");
    answers_ = Given(proposed);
    if (const auto refusal = Refuses(answers_, proposed)) {
      const bool isCompany = refusal->message == TextId::IllegalCompanyName;
      if ((isCompany ? options_.company : options_.appName).has_value()) return kExitUsage;
      Tell(outcome_, std::string("give another name with ") + (isCompany ? "--company" : "--app-name"));
      return kExitNotFinished;
    }
    // The page chooses the name; when it is skipped, the generation does.
    return options_.skipInfo && options_.command == Command::Analyse ? kExitFinished : ChooseName();
  }

  // A name that is too long is wrong usage, for another one can be given.
  int ChooseName() {
    Platform& platform = core_.platform();
    name_ = ChooseSetupProjectName(platform, user_, answers_.applicationName);
    const auto refusal = RefusalOfLength(platform, *outcome_.analysis, name_);
    if (refusal) user_.ShowMessage(MessageOf(platform.strings, *refusal));
    return refusal ? kExitUsage : kExitFinished;
  }

  bool Generate() {
    NoteInitialTexts(core_.platform().strings, *outcome_.analysis, Ungiven(answers_));
    computer_.MakeFolder(DataFolder(core_.platform(), user_));
    answers_.dataAccess = outcome_.analysis->DataAccess();
    Generation generation(core_.platform(), core_.global(), user_, *outcome_.analysis, answers_, name_,
                          outcome_.setup);
    generation.MakeSetupProject();
    generation.SaveReport();
    return true;
  }

  // The proposed answers, with those that the options give in their place.
  SetupAnswers Given(SetupAnswers answers) const {
    answers.applicationName = options_.appName.value_or(answers.applicationName);
    answers.companyName = options_.company.value_or(answers.companyName);
    answers.applicationVersion = options_.appVersion.value_or(answers.applicationVersion);
    answers.applicationType = options_.appType.value_or(answers.applicationType);
    return answers;
  }

  // The answers without those that the options give.
  SetupAnswers Ungiven(SetupAnswers answers) const {
    if (options_.appName) answers.applicationName.clear();
    if (options_.company) answers.companyName.clear();
    if (options_.appVersion) answers.applicationVersion.clear();
    return answers;
  }

  // Shows the message that refuses a name.
  std::optional<NameRefusal> Refuses(const SetupAnswers& answers, const SetupAnswers& proposed) {
    auto refusal = RefusalOfNames(core_.platform().codePage, answers, proposed);
    if (refusal) user_.ShowMessage(MessageOf(core_.platform().strings, *refusal));
    return refusal;
  }

  // A file whose symbol could not be found out has an empty one.
  void TakeFiles(Analysis& analysis) {
    for (const CFile& file : analysis.Files()) outcome_.files.push_back({&file, "", {}});
    for (InstalledFile& file : outcome_.files) {
      file.symbol = analysis.FileGroups().ConvertDestMacroToBXDestSymbol(file.record->Destination);
      file.component = ComponentOf(file.symbol, file.record->FileGroup);
    }
  }

  // What is printed and was not made on the way.
  int TakeResults() {
    if (outcome_.analysis != nullptr) TakeFiles(*outcome_.analysis);
    const std::string& folder = outcome_.setup.folder;
    if (options_.command == Command::Check) {
      Comparison& comparison = outcome_.comparison;
      Platform& platform = computer_.platform();
      if (comparison.setupFolder.empty() || outcome_.setup.report.empty()) return kExitFinished;
      comparison.differences =
          DifferencesOf(ReadSetup(platform, comparison.setupFolder), ReadSetup(platform, folder));
      return kExitFinished;
    }
    if (!outcome_.projectFile.empty()) outcome_.projectFileHere = computer_.HostPath(outcome_.projectFile);
    if (!folder.empty()) ListFiles(computer_.platform().files, folder, "", outcome_);
    return kExitFinished;
  }

  const Options& options_;
  Computer& computer_;
  Outcome outcome_;
  WizardCore core_;
  ConsoleUser user_;
  SetupAnswers answers_;
  std::string name_;  // of the new setup project
};

// The exit code of a run that ended with `code`: --strict may turn it into another.
int StrictCode(const Options& options, const Outcome& outcome, int code) {
  const bool isIncomplete = outcome.Found() != nullptr && outcome.Found()->HoldsWork();
  const bool isLess = (options.strict && isIncomplete) || !outcome.comparison.IsEqual();
  return code == kExitFinished && isLess ? kExitIncomplete : code;
}

// False when the page of a run cannot be written; `outcome` then has the reason.
bool SavePage(const Options& options, Outcome& outcome, const StringTable& strings) {
  const SystemError error = WriteHtml(options, outcome, strings);
  if (error == SystemError::Success) return true;
  Tell(outcome, TextOf(strings, {TextId::PageNotWritten, {options.html, ErrorCode(error)}}));
  return false;
}

}  // namespace

void RunProject(const Options& options, Computer& computer, const ListedProject& project,
                const ShowOutcome& show) {
  if (!project.error.empty()) {
    Outcome outcome;
    Tell(outcome, project.error);
    const bool isSaved = options.html.empty() || SavePage(options, outcome, computer.platform().strings);
    return show(outcome, isSaved ? kExitProject : kExitNotFinished);
  }
  Run run(options, computer);
  int code = run.Go(project.path);
  try {
    computer.Save();
    run.RegisterProgram();
  } catch (const MachineError& error) {
    Tell(run.Result(), error.what());
    code = kExitNotFinished;
    run.Result().finished = false;
  }
  code = StrictCode(options, run.Result(), code);
  if (!options.html.empty() && !SavePage(options, run.Result(), computer.platform().strings))
    code = kExitNotFinished;
  show(run.Result(), code);
}

}  // namespace bxvbwiz
