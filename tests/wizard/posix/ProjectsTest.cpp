#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <set>
#include <sstream>
#include <tuple>

#include "support/basFile.h"
#include "text/Text.h"
#include "wizard/posix/GeneratedProject.h"
#include "wizard/WizardFixture.h"

// What holds for every project, on projects that are made up. Only where file names are UTF-8: the generator
// makes names of several code pages with the standard library.
namespace bxvbwiz {
namespace {

namespace fs = std::filesystem;

// The same GUIDs and time in every run.
struct CountedGuids : Guids {
  std::optional<GuidBytes> Create() override { return GuidBytes{++last}; }
  std::uint8_t last = 0;
};
struct StoppedClock : Clock {
  std::optional<FileTime> SystemTime() override { return FileTime{}; }
  std::string LocalDateTimeText() override { return "now"; }
};

struct Outcome {
  bool isFinished = false;
  std::string told;  // messages and what is left to do
  std::set<std::string> keys;
  Snapshot setups;
  Snapshot others;
  std::string wrong;

  // What must be the same however often the project is read.
  auto Result() const { return std::tie(isFinished, told, keys, setups); }
};

// One run of the whole wizard, and what breaks the rules in it.
class Run {
 public:
  Run(const GeneratedProject& project, Platform machine) : project_(project), machine_(machine) {}

  Outcome Go() {
    Platform platform{machine_.registry,  machine_.facts,  machine_.files,    machine_.profiles,
                      machine_.processes, guids_,          machine_.settings, clock_,
                      machine_.codePage,  machine_.strings};
    seen_.answers = project_.answers;
    Component component(platform, StartMode::Automation, "",
                        [this](frmMain& form) { return std::make_unique<ScriptedView>(form, seen_); });
    Application app(component);
    frmMain& form = *component.Form();
    form.txtVBPname.text = project_.path;
    form.cmdNext_Click(kPanelWelcome);
    if (component.Form() != nullptr && form.fraPanel2.visible) {
      form.cmdNext_Click(kPanelInformation);
      form.cmdNext_Click(kPanelSummary);
      outcome_.isFinished = form.fraReport.visible;
      for (const std::string& text : form.Found().Texts()) seen_.told += text + "\n";
      CheckFileView(form);
      if (project_.isRead) CheckProjectView(form, form.tvwDependencies.Nodes().at(0)->children);
      CheckGroups(form);
    }
    const bool isRefused = !seen_.messages.empty() && seen_.messages.back() == project_.refusal;
    Expect(outcome_.isFinished ? project_.refusal == TextId{} : isRefused,
           "it ended otherwise: " + seen_.told);
    outcome_.told = seen_.told;
    return std::move(outcome_);
  }

 private:
  void Expect(bool holds, const std::string& what) {
    if (!holds) outcome_.wrong += what + "\n";
  }
  bool IsTold(const std::string& text) const { return seen_.told.find(text) != std::string::npos; }

  // Every file of the collection is shown, under its group; and one that is missing is told of.
  void CheckFileView(frmMain& form) {
    Expect(project_.isRead || IsTold("could not be rebuilt"), "the lists are unread without a word");
    std::map<std::string, int> shown;
    for (const auto& group : form.tvwFiles.Nodes().at(0)->children) {
      for (const auto& file : group->children) {
        ++shown[file->key];
        const auto record = form.Files().FindItem(file->key);
        Expect(record != nullptr && record->FileGroup == group->text, file->text + " is in a wrong group");
      }
    }
    for (const CFile& file : form.Files()) {
      outcome_.keys.insert(UpperCase(file.Key));
      Expect(shown[file.Key] == 1, file.FileName + " is not shown once");
      Expect(file.LinkResolves || IsTold(file.FileName), file.FileName + " is missing without a word");
    }
    Expect(shown.size() == form.Files().Count(), "the file view shows more than the collection");
  }

  // Forms, controls and references are all there or told of, and what they need is installed.
  void CheckProjectView(frmMain& form, const std::vector<std::unique_ptr<TreeNode>>& headings) {
    Expect(headings.at(0)->children.size() == project_.forms.size(), "not every form is shown");
    for (const auto& node : headings.at(0)->children) {
      const auto found = project_.forms.find(node->text);
      const bool isWhole = found != project_.forms.end() && found->second == node->children.size();
      Expect(isWhole, node->text + " is no form, or lacks controls");
      for (const auto& control : node->children) CheckNeeds(form, *control);
    }
    Expect(headings.at(1)->children.size() == project_.controls, "not every control is shown");
    for (const auto& control : headings.at(1)->children) CheckNeeds(form, *control);
    for (const auto& reference : headings.at(2)->children) CheckNeeds(form, *reference);
    std::string everything = UpperCase(seen_.told);
    for (const CFile& file : form.Files()) everything += UpperCase(file.FileName) + "\n";
    for (const std::string& name : project_.named)
      Expect(everything.find(UpperCase(name)) != std::string::npos, name + " got lost");
  }
  void CheckNeeds(frmMain& form, const TreeNode& component) {
    // The collection has one of the spellings of a file; of two files with one key, one is left out and told.
    std::set<std::string> installed;
    for (const CFile& file : form.Files()) installed.insert(UpperCase(GetPathFileName(file.FileName)));
    for (const auto& file : component.children)
      Expect(installed.count(UpperCase(file->text)) != 0 ||
                 form.Files().FindItem(form.Files().KeyOf(file->text)) != nullptr,
             file->text + " is needed and not installed");
  }

  // The lists of the groups hold every file of the collection, and no other.
  void CheckGroups(frmMain& form) {
    std::multiset<std::string> expected, listed;
    for (const CFile& file : form.Files())
      expected.insert(file.FileGroup + ".fgl " + FixPath(file.FileLinkPath) + GetPathFileName(file.FileName));
    const std::string folder = form.setupFolder + "File Groups\\";
    std::vector<FoundFile> lists;
    machine_.files.Find(folder + "*.fgl", lists);
    for (const FoundFile& list : lists) {
      std::string bytes;
      machine_.files.Read(folder + list.name, bytes);
      std::istringstream lines(machine_.codePage.Decode(bytes));
      for (std::string line; std::getline(lines, line);) {
        if (!StartsWith(line, "file")) continue;
        if (EndsWith(line, "\r")) line.pop_back();
        listed.insert(list.name + " " + line.substr(line.find('=') + 1));
      }
    }
    Expect(listed == expected, "the lists differ from the collection");
  }

  const GeneratedProject& project_;
  Platform machine_;
  CountedGuids guids_;
  StoppedClock clock_;
  Seen seen_;
  Outcome outcome_;
};

Outcome RunOn(const GeneratedProject& project, const std::string& folder) {
  Machine machine(folder);
  Outcome outcome = Run(project, machine.platform()).Go();
  machine.Save();
  outcome.setups = TakeSnapshot(folder + "/drive_c/Setups");
  fs::remove_all(folder + "/drive_c/Setups");
  fs::create_directory(folder + "/drive_c/Setups");
  outcome.others = TakeSnapshot(folder);
  return outcome;
}

std::string Violations(const GeneratedProject& project) {
  TestMachine asTheyAre, otherEnds, otherOrder;
  for (const auto& [machine, lines] : {std::pair{&asTheyAre, Lines::AsTheyAre},
                                       {&otherEnds, Lines::OtherEnds},
                                       {&otherOrder, Lines::OtherOrder}}) {
    project.LayOn(*machine, lines);
    machine->Store();
  }
  const Snapshot before = TakeSnapshot(asTheyAre.Folder());
  const Outcome first = RunOn(project, asTheyAre.Folder());
  const Outcome shuffled = RunOn(project, otherOrder.Folder());
  std::string wrong = first.wrong + shuffled.wrong;
  if (first.others != before) wrong += "something besides the setup project was written\n";
  if (first.setups.empty() == first.isFinished) wrong += "a setup project is there for a refused one only\n";
  if (RunOn(project, asTheyAre.Folder()).Result() != first.Result()) wrong += "a second run differs\n";
  if (RunOn(project, otherEnds.Folder()).Result() != first.Result()) wrong += "line ends matter\n";
  const bool isSame = shuffled.keys == first.keys && shuffled.isFinished == first.isFinished;
  return wrong + (isSame ? "" : "the order of the lines changes the files\n");
}

// The environment says how many, and with which the first begins.
std::uint64_t Setting(const char* name, std::uint64_t otherwise) {
  const char* text = std::getenv(name);
  return text == nullptr ? otherwise : std::strtoull(text, nullptr, 10);
}

TEST(Projects, LoseNothingHoweverTheyAreWritten) {
  const std::uint64_t first = Setting("BXVBWIZ_FIRST_PROJECT", 1);
  const std::uint64_t end = first + Setting("BXVBWIZ_PROJECTS", 60);
  for (std::uint64_t seed = first; seed < end; ++seed) {
    ASSERT_EQ(Violations(GeneratedProject(seed)), "") << "project " << seed;
    if (seed % 500 == 0) std::cout << seed << " projects\n" << std::flush;
  }
}

}  // namespace
}  // namespace bxvbwiz
