#include "cli/RunWizard.h"

#include <iostream>

#include "cli/Capture.h"
#include "cli/Computer.h"
#include "cli/ConsoleView.h"
#include "cli/JsonOutput.h"
#include "cli/Outcome.h"
#include "cli/TextOutput.h"
#include "machine/Machine.h"
#include "support/basFile.h"
#include "text/Text.h"
#include "wizard/Application.h"

namespace bxvbwiz {
namespace {

// Adds the files below a folder, folders after their files.
void ListFiles(Platform& platform, const std::string& folder, const std::string& prefix, Outcome& outcome) {
  std::vector<FoundFile> found;
  if (platform.files.Find(folder + "*.*", found) != SystemError::Success) {
    outcome.incomplete.push_back(TextOf(platform.strings, {FindingId::WrittenFilesNotListed, {folder}}));
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
    ListFiles(platform, folder + name + "\\", prefix + name + "\\", outcome);
}

// One run of the wizard without a window: presses the buttons that a user would.
class Run {
 public:
  Run(const Options& options, Computer& computer)
      : options_(options),
        computer_(computer),
        component_(computer.platform(), StartMode::Automation, "", [this](frmMain& form) {
          return std::make_unique<ConsoleView>(form, options_, outcome_);
        }) {}

  int Go(const std::string& project) {
    const SessionScope scope(component_.session());
    const int code = Try(project);
    if (app_ != nullptr) {
      outcome_.returnCode = app_->ReturnCode();
      outcome_.projectFile = app_->ProjectFile();
    }
    if (!outcome_.projectFile.empty()) outcome_.projectFileHere = computer_.HostPath(outcome_.projectFile);
    if (!outcome_.setupFolder.empty()) {
      ListFiles(computer_.platform(), outcome_.setupFolder, "", outcome_);
    }
    return code;
  }
  Outcome& Result() { return outcome_; }

 private:
  // What the run has done so far is told whatever happens to it.
  int Try(const std::string& project) {
    try {
      component_.SubMain();
      return Press(project);
    } catch (const WizardEnded&) {
      return kExitNotFinished;  // whoever ended the wizard has said why
    } catch (const std::exception& error) {
      std::cerr << "bxvbwiz: " << error.what() << '\n';
      if (Form() != nullptr) TakeFromForm(*Form(), outcome_);
      return kExitNotFinished;
    }
  }

  // Null once the wizard has ended.
  frmMain* Form() const { return component_.Form(); }

  int Press(const std::string& project) {
    app_ = std::make_unique<Application>(component_);
    app_->ShowPage2 = !options_.skipInfo;
    if (options_.skipInfo) app_->AppName = options_.appName.value_or("");
    FillInformation();
    // Wrong usage is said before the project is read or compiled.
    if (!Form()->NamesAreLegal()) return Stay(kExitUsage);
    Form()->chkRebuild.checked = options_.rebuild;
    Form()->txtVBPname.text = project;
    Form()->txtVBPname_Change();
    Form()->cmdNext_Click(kPanelWelcome);
    if (Form() == nullptr) return kExitNotFinished;
    if (Form()->fraPanel1.visible) return Stay(kExitProject);
    FillInformation();
    const int code = LeaveInformation();
    if (code != kExitFinished) return code;
    return options_.command == Command::Analyse ? EndOfAnalysis() : Finish();
  }

  // The names are given to the boxes with --skip-info as well, so that a name which the page would refuse is
  // not taken in another spelling.
  void FillInformation() {
    frmMain& form = *Form();
    const auto type = [](Control& box, const std::optional<std::string>& text) {
      if (text.has_value()) box.text = *text;
    };
    type(form.txtApplicationName, options_.appName);
    type(form.txtCompanyName, options_.company);
    type(form.txtApplicationVersion, options_.appVersion);
    type(form.cboApplicationType, options_.appType);
    form.txtApplicationName_Change();
  }

  int LeaveInformation() {
    frmMain& form = *Form();
    if (options_.skipInfo) return form.NamesAreLegal() ? kExitFinished : Refused();
    form.cmdNext_Click(kPanelInformation);
    if (Form() == nullptr) return kExitNotFinished;
    return form.fraPanel2.visible ? Refused() : kExitFinished;
  }

  // The page stays. A name that was given is wrong usage, and the page has said so; one that the project has
  // is not the user's fault.
  int Refused() {
    const TextId message = outcome_.messages.empty() ? TextId{} : outcome_.messages.back().message.number;
    const bool isCompany = message == TextId::IllegalCompanyName;
    if ((isCompany ? options_.company : options_.appName).has_value()) return Stay(kExitUsage);
    std::cerr << "bxvbwiz: give another name with " << (isCompany ? "--company" : "--app-name") << '\n';
    return Stay(kExitNotFinished);
  }

  // A page stays, and nobody is there to go on from it.
  int Stay(int code) {
    TakeFromForm(*Form(), outcome_);
    return code;
  }

  int EndOfAnalysis() {
    TakeFromForm(*Form(), outcome_);
    outcome_.finished = true;
    return kExitFinished;
  }

  int Finish() {
    Form()->cmdNext_Click(kPanelSummary);
    if (Form() == nullptr) return kExitNotFinished;
    if (!Form()->fraReport.visible) return Stay(kExitNotFinished);
    Form()->cmdOK_Click();
    outcome_.finished = true;
    return kExitFinished;
  }

  const Options& options_;
  Computer& computer_;
  Outcome outcome_;
  Component component_;
  std::unique_ptr<Application> app_;
};

// What standard error says last: everything that is left to do, and how much that is.
void PrintRest(const Options& options, const Outcome& outcome) {
  for (const std::string& text : outcome.incomplete) std::cerr << "bxvbwiz: " << text << '\n';
  if (!outcome.finished && !outcome.setupFolder.empty() && options.command != Command::Capture) {
    std::cerr << "bxvbwiz: The setup folder " << outcome.setupFolder << " was created and is incomplete.\n";
  }
  const std::size_t count = outcome.incomplete.size();
  if (options.quiet && outcome.finished && count == 0) return;
  if (!outcome.finished) {
    std::cerr << "bxvbwiz: The wizard ended without finishing";
    if (count > 0) std::cerr << "; " << count << (count == 1 ? " thing is" : " things are") << " left to do";
    std::cerr << ".\n";
  } else if (count == 0) {
    std::cerr << "bxvbwiz: Nothing is left to do.\n";
  } else {
    std::cerr << "bxvbwiz: " << count << (count == 1 ? " thing is" : " things are") << " left to do.\n";
  }
}

// Gives the exit code, `code` unless --strict makes another of it.
int Show(const Options& options, const Outcome& outcome, int code) {
  if (options.json) {
    PrintJson(options, outcome);
  } else if (!options.quiet && options.command != Command::Capture) {
    PrintText(options, outcome);
  }
  std::cout.flush();
  PrintRest(options, outcome);
  return code == kExitFinished && options.strict && !outcome.incomplete.empty() ? kExitIncomplete : code;
}

// Null, with a message, when there is no machine to work on.
std::unique_ptr<Computer> OpenComputer(const Options& options) {
  if (!options.machine.empty()) {
    try {
      return OpenMachineFolder(options.machine);
    } catch (const MachineError& error) {
      std::cerr << "bxvbwiz: " << error.what() << '\n';
      return nullptr;
    }
  }
  std::unique_ptr<Computer> computer = OpenThisComputer();
  if (computer == nullptr) {
    std::cerr
        << "bxvbwiz: there is no Windows here: name a machine folder with --machine or $BXVBWIZ_MACHINE\n";
  }
  return computer;
}

}  // namespace

int RunWizard(const Options& options) {
  const std::unique_ptr<Computer> computer = OpenComputer(options);
  if (computer == nullptr) return kExitUsage;
  return options.command == Command::Capture ? Capture(options, *computer) : RunWizardOn(options, *computer);
}

int RunWizardOn(const Options& options, Computer& computer) {
  const std::string project = computer.ProjectPath(options.project);
  if (project.empty()) {
    std::cerr << "bxvbwiz: " << options.project << " lies outside the drives of the machine folder "
              << options.machine << '\n';
    return Show(options, Outcome{}, kExitProject);
  }
  Run run(options, computer);
  int code = run.Go(project);
  try {
    computer.Save();
  } catch (const MachineError& error) {
    std::cerr << "bxvbwiz: " << error.what() << '\n';
    code = kExitNotFinished;
    run.Result().finished = false;
  }
  return Show(options, run.Result(), code);
}

}  // namespace bxvbwiz
