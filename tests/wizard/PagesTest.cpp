#include <set>

#include "platform/Forwarding.h"
#include "WizardFixture.h"

namespace bxvbwiz {
namespace {

TEST_F(WizardTest, PagesFollowEachOtherAndBack) {
  Start();
  EXPECT_FALSE(Form().cmdNext[kPanelWelcome].enabled) << "no project yet";
  LeaveWelcome();
  EXPECT_TRUE(Form().fraPanel2.visible);
  EXPECT_FALSE(Form().fraPanel1.visible);
  EXPECT_EQ(Form().focus, &Form().txtApplicationName);
  EXPECT_EQ(Form().txtApplicationName.text, "My  App");
  EXPECT_EQ(Form().txtApplicationVersion.text, "2.7");
  EXPECT_EQ(Form().lblExeName.text, "C:\\...\\App.exe");
  Form().cmdBack_Click(kPanelInformation);
  app_->ShowPage2 = false;
  LeaveWelcome();
  EXPECT_TRUE(Form().fraPanel3.visible) << "the information page is skipped";
  Form().cmdBack_Click(kPanelSummary);
  EXPECT_TRUE(Form().fraPanel1.visible);
  LeaveWelcome();
  Form().ShowPanel(kPanelDataAccess);
  Form().cmdNext_Click(kPanelDataAccess);
  EXPECT_TRUE(Form().fraPanel4.visible) << "no step leads on from the data-access page";
  Form().cmdBack_Click(kPanelDataAccess);
  EXPECT_FALSE(Form().fraPanel4.visible);
  EXPECT_FALSE(Form().pbrProgress.visible);
  Form().cmdNext_Click(kPanelSummary);
  EXPECT_TRUE(Form().fraReport.visible);
  EXPECT_EQ(Form().defaultButton, &Form().cmdOK);
  EXPECT_EQ(app_->ProjectFile(), "C:\\Setups\\My  App\\My  App.bxp");
  Form().cmdOK_Click();
  EXPECT_EQ(app_->ReturnCode(), -1);
  EXPECT_FALSE(app_->StillExecuting());
  EXPECT_EQ(host_->Form(), nullptr);
}

TEST_F(WizardTest, ASecondAnalysisKeepsNothingOfTheFirst) {
  machine_.Write("drive_c/Src/Other.vbp", "Type=Exe\r\nName=\"Other\"\r\n");
  machine_.Write("drive_c/Src/Other.exe", "MZ");
  Start();
  LeaveWelcome();
  Form().cmdBack_Click(kPanelInformation);
  LeaveWelcome("C:\\Src\\Other.vbp");
  ASSERT_EQ(Form().tvwFiles.Nodes().size(), 1U);
  ASSERT_EQ(Form().tvwDependencies.Nodes().size(), 1U);
  const TreeNode& files = *Form().tvwFiles.Nodes()[0];
  const TreeNode& project = *Form().tvwDependencies.Nodes()[0];
  EXPECT_EQ(files.text, "Other File Groups");
  ASSERT_EQ(files.children.size(), 1U);
  ASSERT_EQ(files.children[0]->children.size(), 1U);
  EXPECT_EQ(files.children[0]->children[0]->text, "Other.EXE");
  EXPECT_EQ(project.text, "Other");
  for (const auto& heading : project.children) EXPECT_TRUE(heading->children.empty()) << heading->text;
  EXPECT_EQ(Form().Shown()->Files().Count(), 1U);
}

TEST_F(WizardTest, NamesThatCannotBeFoldersOrWrittenAreRefused) {
  Start();
  LeaveWelcome();
  const auto messagesFor = [this](const char* name, const char* company) {
    seen_.messages.clear();
    Form().txtApplicationName.text = name;
    Form().txtCompanyName.text = company;
    Form().cmdNext_Click(kPanelInformation);
    return seen_.messages;
  };
  // The Japanese name is not in code page 1252.
  for (const char* name :
       {"a.b", "a\\b", "a'b", "con", "Lpt1", "NUL ", "blank ", "tab\tin", "\u65E5\u672C"}) {
    EXPECT_EQ(messagesFor(name, "Acme Inc."), std::vector<TextId>{TextId::IllegalApplicationName}) << name;
    EXPECT_TRUE(Form().fraPanel2.visible) << name;
  }
  EXPECT_EQ(messagesFor("Console", "Other Inc."), std::vector<TextId>{TextId::IllegalCompanyName})
      << "only the proposal may keep its full stop";
  EXPECT_EQ(messagesFor(std::string(230, 'x').c_str(), "Acme Inc."),
            std::vector<TextId>{TextId::IllegalApplicationName});
  EXPECT_TRUE(Form().fraPanel2.visible) << "the path of a file would be too long";
  for (const char* reason :
       {"\"a\\b\" has the character \"\\\".", "has the character \"U+0009\"", "reserves the name \"Lpt1\"",
        "\"blank \" ends in a blank", "no character \"\u65E5\"", "has the character \".\".",
        "x.bxp would be longer"}) {
    EXPECT_NE(seen_.told.find(reason), std::string::npos) << reason << " in " << seen_.told;
  }
  EXPECT_TRUE(messagesFor("Console", "Acme Inc.").empty());
  EXPECT_TRUE(Form().fraPanel3.visible);
}

TEST_F(WizardTest, ARefusedNameCanBeMendedWhenThePageWasSkipped) {
  machine_.Write("drive_c/Src/App.vbp", "Type=Exe\nName=\"Nul\"\nExeName32=App.exe\nPath32=Release\\Final\n");
  Start();
  app_->ShowPage2 = false;
  LeaveWelcome();
  Form().cmdNext_Click(kPanelSummary);
  EXPECT_EQ(seen_.messages, std::vector<TextId>{TextId::IllegalApplicationName});
  EXPECT_TRUE(Form().fraPanel2.visible);
  EXPECT_FALSE(Form().fraPanel3.visible);
  Form().txtApplicationName.text = "App";
  Form().cmdNext_Click(kPanelInformation);
  Form().cmdNext_Click(kPanelSummary);
  EXPECT_EQ(app_->ProjectFile(), "C:\\Setups\\App\\App.bxp");
}

TEST_F(WizardTest, AnIllegalKeyIsRefusedAndAnEmptyTextDisablesNext) {
  Start();
  LeaveWelcome();
  char32_t key = U'.';
  Form().txtApplicationName_KeyPress(key);
  EXPECT_EQ(key, 0U);
  key = U'|';
  Form().txtCompanyName_KeyPress(key);
  key = U'\u00E9';
  Form().txtCompanyName_KeyPress(key);
  EXPECT_EQ(key, U'\u00E9');
  EXPECT_EQ(seen_.messages,
            (std::vector<TextId>{TextId::IllegalApplicationName, TextId::IllegalCompanyName}));
  for (const char* version : {"", "3"}) {
    Form().txtApplicationVersion.text = version;
    Form().txtApplicationVersion_Change();
    EXPECT_EQ(Form().cmdNext[kPanelInformation].enabled, *version != '\0');
  }
}

TEST_F(WizardTest, EveryWayToCancelLeavesZeroAndNothingBehind) {
  const std::vector<std::function<void(frmMain&)>> ways = {
      [](frmMain& form) { form.cmdCancel_Click(); }, [](frmMain& form) { form.Form_KeyDown(kKeyEscape); },
      [](frmMain& form) { form.Form_QueryUnload(); }};
  for (const auto& cancel : ways) {
    for (const bool whileScanning : {false, true}) {
      seen_ = Seen();
      Start();
      seen_.whileEventsRun = [&](frmMain& form) {
        if (!whileScanning) return;
        cancel(form);
        form.cmdNext_Click(kPanelWelcome);  // ignored: the handler of the first one still runs
        EXPECT_FALSE(seen_.unloaded) << "the step goes on";
      };
      LeaveWelcome();
      if (!whileScanning) {
        Form().Form_KeyDown(112);  // F1
        cancel(Form());
      }
      EXPECT_TRUE(seen_.unloaded);
      EXPECT_EQ(host_->Form(), nullptr);
      EXPECT_EQ(app_->ReturnCode(), 0);
      EXPECT_FALSE(app_->StillExecuting());
      app_.reset();
    }
  }
  EXPECT_FALSE(machine_.Exists("drive_c/Setups/My  App"));
}

// The names of the controls that a busy form heeds, as a view asks for them.
std::string Heeded(const frmMain& form) {
  std::string heeded;
  for (const auto& [name, control] :
       std::initializer_list<std::pair<const char*, const Control*>>{{"box ", &form.txtVBPname},
                                                                     {"browse ", &form.cmdBrowse},
                                                                     {"rebuild ", &form.chkRebuild},
                                                                     {"type ", &form.cboApplicationType},
                                                                     {"back ", &form.cmdBack[kPanelSummary]},
                                                                     {"next ", &form.cmdNext[kPanelSummary]},
                                                                     {"view ", &form.optFileView},
                                                                     {"cancel ", &form.cmdCancel},
                                                                     {"help ", &form.cmdHelp}}) {
    if (form.Heeds(*control)) heeded += name;
  }
  return heeded;
}

TEST_F(WizardTest, WhatABusyStepIgnoresIsDisabledUntilItEnds) {
  Start();
  std::set<std::string> heeded;
  seen_.whileEventsRun = [&](frmMain& form) {
    heeded.insert(Heeded(form));
    form.cmdBrowse_Click();
    EXPECT_EQ(form.txtVBPname.text, "C:\\Src\\App.vbp") << "Browse is ignored";
  };
  seen_.browsed = "C:\\Src\\Browsed.vbp";
  const std::string all = "box browse rebuild type back next view cancel help ";
  LeaveWelcome();
  EXPECT_EQ(heeded, std::set<std::string>{"view cancel help "});
  EXPECT_EQ(Heeded(Form()), all);
  seen_.answers[TextId::UnexpectedError] = Button::Retry;
  seen_.whileEventsRun = [&](frmMain&) { throw std::bad_alloc(); };
  LeaveWelcome();
  EXPECT_EQ(Heeded(Form()), all) << "after an error";
  seen_.whileEventsRun = nullptr;
  LeaveWelcome();
  Form().cmdNext_Click(kPanelInformation);
  seen_.whileEventsRun = [&](frmMain& form) { heeded = {Heeded(form)}; };
  Form().cmdNext_Click(kPanelSummary);
  EXPECT_EQ(heeded, std::set<std::string>{"view help "}) << "Finish is not cancelled";
  EXPECT_FALSE(Form().Heeds(Form().cmdCancel)) << "nothing is left to cancel";
  EXPECT_EQ(app_->ReturnCode(), -1);
}

TEST_F(WizardTest, AFormThatCannotBeMadeIsAnErrorAndTheNextOneIsMade) {
  bool fails = true;
  WizardCore core(machine_.platform(), StartMode::Automation);
  FormHost host(core, [&](frmMain& form) {
    if (fails) throw std::runtime_error("no view");
    return MakeView(form);
  });
  EXPECT_THROW(Application{host}, std::runtime_error);
  EXPECT_EQ(host.Form(), nullptr);
  fails = false;
  const Application app(host);
  EXPECT_NE(host.Form(), nullptr);
}

TEST_F(WizardTest, AnErrorOfTheAnalysisLeavesNoStatusBehind) {
  Start();
  seen_.answers[TextId::UnexpectedError] = Button::Retry;
  int looks = 0;
  seen_.whileEventsRun = [&looks](frmMain& form) {
    EXPECT_FALSE(form.lblStatus.text.empty());
    if (++looks == 3) throw std::bad_alloc();  // the project has been read by then
  };
  LeaveWelcome();
  EXPECT_EQ(seen_.messages, std::vector<TextId>{TextId::UnexpectedError});
  EXPECT_TRUE(Form().fraPanel1.visible);
  EXPECT_EQ(Form().lblStatus.text, "");
}

TEST_F(WizardTest, FinishNamesItsStepsAndIsNotCancelled) {
  for (const char* name : {"1", "2", "3", "4", "5", "6"})
    machine_.Write(std::string("drive_c/Borvex/Template/More/") + name, "");
  Start();
  LeaveWelcome();
  Form().cmdNext_Click(kPanelInformation);
  int looks = 0;
  seen_.whileEventsRun = [&](frmMain& form) {
    ++looks;
    form.cmdCancel_Click();
  };
  Form().cmdNext_Click(kPanelSummary);
  EXPECT_GT(looks, 0);
  ASSERT_FALSE(seen_.unloaded);
  EXPECT_TRUE(Form().fraReport.visible);
  EXPECT_EQ(app_->ReturnCode(), -1);
  std::vector<std::string> names;
  for (const auto& [value, name] : seen_.progress)
    if (names.empty() || names.back() != name) names.push_back(name);
  EXPECT_EQ(names,
            (std::vector<std::string>{"Creating Installation...", "Copying Files...", "Updating Files..."}));
  EXPECT_EQ(seen_.progress.begin()->first, 1);
  EXPECT_EQ(seen_.progress.rbegin()->first, Form().pbrProgress.maximum) << "from begin to end";
  EXPECT_EQ(seen_.progress.size(), 6U) << "five steps, and a folder of the template with five files";
}

TEST_F(WizardTest, AStandAloneStartReadsItsOptionsAndLeavesItsResults) {
  for (const bool finished : {true, false}) {
    Start(StartMode::StandAlone, "/IABCD /S0 /PC:\\Src\\App.vbp /A" + std::string(finished ? "One" : "Two"));
    EXPECT_FALSE(host_->gApplication->ShowsPage2());
    Form().Form_Activate();
    EXPECT_TRUE(Form().cmdNext[kPanelWelcome].enabled) << "the project is proposed";
    Form().cmdNext_Click(kPanelWelcome);
    if (finished) {
      Form().cmdNext_Click(kPanelSummary);
      Form().cmdOK_Click();
    } else {
      Form().cmdCancel_Click();
    }
    EXPECT_EQ(host_->gApplication, nullptr);
    const auto key = Key::Root(machine_.platform().registry, RegConstants::HKeyCurrentUser)
                         ->OpenSubKeyForReading("SOFTWARE\\Borvex\\Borvex Professional\\6.0\\ABCD");
    ASSERT_NE(key, nullptr);
    EXPECT_EQ(key->Values().Item("ReturnCode")->Text(), finished ? "1" : "0");
    EXPECT_EQ(key->Values().Item("Project")->Text(), finished ? "C:\\Setups\\One\\One.bxp" : "");
  }
}

TEST_F(WizardTest, ABadCommandLineIsReportedAndStopsNothing) {
  seen_.answers[TextId::UnexpectedError] = Button::Retry;
  Start(StartMode::StandAlone, "/IABCD /iEFGH");
  EXPECT_EQ(seen_.messages, std::vector<TextId>{TextId::UnexpectedError});
  ASSERT_NE(host_->Form(), nullptr);
  host_.reset();
  seen_.answers.clear();
  Start(StartMode::StandAlone, "/IABCD /iEFGH");  // answered with Cancel
  EXPECT_EQ(host_->Form(), nullptr);
  EXPECT_EQ(host_->gApplication, nullptr);
}

struct NoWindowsFolder : ForwardingFacts {
  using ForwardingFacts::ForwardingFacts;
  std::string WindowsDirectory(std::size_t) override { return ""; }
};

struct NoFileLists : ForwardingProfileStrings {
  using ForwardingProfileStrings::ForwardingProfileStrings;
  ProfileStrings& For(const std::string& file) override {
    if (file.find("Program Files.fgl") != std::string::npos) throw RuntimeError(kErrorOutOfMemory, "");
    return ForwardingProfileStrings::For(file);
  }
};

TEST_F(WizardTest, WhatTheSystemDoesNotGiveIsFound) {
  constexpr std::size_t kAnySize = 260;
  Platform& whole = machine_.platform();
  NoWindowsFolder facts(whole.facts, NoHook());
  NoFileLists lists(whole.profiles, NoHook());
  Platform less = WithParts(whole, facts, lists);
  Start(StartMode::Automation, "", &less);
  LeaveWelcome();
  {
    const SessionScope scope(core_->session());
    core_->platform().facts.WindowsDirectory(kAnySize);
  }
  Form().cmdNext_Click(kPanelInformation);
  Form().cmdNext_Click(kPanelSummary);
  for (const char* text :
       {"The system did not name its Windows folder.", "could not be entered into its file group"})
    EXPECT_NE(Form().txtReport.text.find(text), std::string::npos) << text;
}

}  // namespace
}  // namespace bxvbwiz
