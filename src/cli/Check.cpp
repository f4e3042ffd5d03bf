#include "cli/Check.h"

#include <algorithm>

#include "cli/ScratchComputer.h"
#include "support/basFile.h"
#include "text/Text.h"

namespace bxvbwiz {
namespace {

using Sign = Difference::Sign;

// The values that the wizard decides; a person may change all others.
constexpr const char* kAnswers[] = {"ProductName", "CompanyName", "Type", "Version"};
constexpr const char* kFactsOfGroup[] = {"TARGET", "FILETYPE", "SELFREGISTERING"};
constexpr const char* kFactsOfComponent[] = {"MONIKER"};
// These are different in every setup project.
constexpr const char* kOwn[] = {"InstallationGUID", "InstallRoot", "GUID"};

template <std::size_t kCount>
bool IsIn(const char* const (&names)[kCount], const std::string& name) {
  return std::any_of(std::begin(names), std::end(names),
                     [&](const char* other) { return EqualsIgnoreCase(name, other); });
}

bool Holds(const std::vector<std::string>& names, const std::string& wanted) {
  return std::any_of(names.begin(), names.end(),
                     [&](const std::string& name) { return EqualsIgnoreCase(name, wanted); });
}

// How the names of all groups end that the wizard makes.
bool IsWizardGroup(const std::string& group) {
  return EndsWith(UpperCase(group), " FILES");
}

template <class Named>
const Named* FindNamed(const std::vector<Named>& all, const std::string& name) {
  const auto found = std::find_if(all.begin(), all.end(),
                                  [&](const Named& one) { return EqualsIgnoreCase(one.name, name); });
  return found == all.end() ? nullptr : &*found;
}

class Comparer {
 public:
  Comparer(const SetupContents& present, const SetupContents& expected)
      : present_(present), expected_(expected) {}

  std::vector<Difference> Run() {
    Sections("answer", "", present_.data, expected_.data, kAnswers);
    Groups();
    Components();
    for (const auto& [type, components] : expected_.setupTypes) {
      const auto there = present_.setupTypes.find(type);
      const bool isThere = there != present_.setupTypes.end();
      Lists("component", "setup type " + type, isThere ? there->second : std::vector<std::string>(),
            components);
    }
    Lists("script-defined folder", "", present_.folders, expected_.folders);
    Sections("text substitution", "", present_.substitutions, expected_.substitutions, Names());
    Sections("target", "shell objects", present_.targets, expected_.targets, Names());
    return std::move(differences_);
  }

 private:
  using Names = std::vector<std::string>;

  void Add(Sign sign, bool byHand, const std::string& kind, const std::string& name,
           const std::string& owner) {
    differences_.push_back({sign, byHand, kind, name, owner, "", ""});
  }

  void Groups() {
    for (const SetupGroup& group : expected_.groups) {
      const SetupGroup* const there = FindNamed(present_.groups, group.name);
      if (there == nullptr || there->isEntered != group.isEntered)
        Add(group.isEntered ? Sign::Added : Sign::Gone, false, "file group", group.name, "");
      const SetupGroup& present = there == nullptr ? SetupGroup() : *there;
      Lists("file", group.name, present.files, group.files, IsWizardGroup(group.name));
      if (there != nullptr) Sections("value", group.name, present.settings, group.settings, kFactsOfGroup);
    }
    for (const SetupGroup& group : present_.groups) {
      if (FindNamed(expected_.groups, group.name) != nullptr) continue;
      const bool byHand = !IsWizardGroup(group.name);
      Add(Sign::Gone, byHand, "file group", group.name, "");
      for (const std::string& file : group.files) Add(Sign::Gone, byHand, "file", file, group.name);
    }
  }

  void Components() {
    for (const SetupComponent& component : expected_.components) {
      const SetupComponent* const there = FindNamed(present_.components, component.name);
      if (there == nullptr) Add(Sign::Added, false, "component", component.name, "");
      const SetupComponent& present = there == nullptr ? SetupComponent() : *there;
      Lists("file group", component.name, present.groups, component.groups, true);
      Lists("component", component.name, present.members, component.members);
      Lists("required component", component.name, present.required, component.required);
      if (there != nullptr)
        Sections("value", component.name, present.settings, component.settings, kFactsOfComponent);
    }
    for (const SetupComponent& component : present_.components) {
      if (FindNamed(expected_.components, component.name) != nullptr) continue;
      Add(Sign::Gone, true, "component", component.name, "");
      for (const std::string& group : component.groups)
        Add(Sign::Gone, !IsWizardGroup(group), "file group", group, component.name);
    }
  }

  // `isWizards` says that entries which generate would not write are old ones, unless they name a group that
  // is not of the wizard's.
  void Lists(const char* kind, const std::string& owner, const std::vector<std::string>& present,
             const std::vector<std::string>& expected, bool isWizards = false) {
    for (const std::string& name : expected) {
      if (!Holds(present, name)) Add(Sign::Added, false, kind, name, owner);
    }
    for (const std::string& name : present) {
      const bool isGroup = kind == std::string_view("file group");
      if (!Holds(expected, name))
        Add(Sign::Gone, !isWizards || (isGroup && !IsWizardGroup(name)), kind, name, owner);
    }
  }

  void Sections(const char* kind, const std::string& owner, const ProfileSection& present,
                const ProfileSection& expected, const Names& decided) {
    for (const auto& [key, value] : expected) {
      const auto there = present.find(key);
      if (IsIn(kOwn, key)) continue;
      if (there == present.end()) {
        differences_.push_back({Sign::Added, !Holds(decided, key), kind, key, owner, "", value});
      } else if (there->second != value) {
        differences_.push_back({Sign::Other, !Holds(decided, key), kind, key, owner, there->second, value});
      }
    }
    for (const auto& [key, value] : present) {
      if (!IsIn(kOwn, key) && expected.count(key) == 0)
        differences_.push_back({Sign::Gone, true, kind, key, owner, value, ""});
    }
  }
  template <std::size_t kCount>
  void Sections(const char* kind, const std::string& owner, const ProfileSection& present,
                const ProfileSection& expected, const char* const (&decided)[kCount]) {
    Sections(kind, owner, present, expected, Names(std::begin(decided), std::end(decided)));
  }

  const SetupContents& present_;
  const SetupContents& expected_;
  std::vector<Difference> differences_;
};

}  // namespace

bool Comparison::IsEqual() const {
  return std::all_of(differences.begin(), differences.end(),
                     [](const Difference& difference) { return difference.byHand; });
}

std::string SetupFolderOf(Computer& computer, const std::string& path) {
  std::string folder = computer.ProjectPath(path);
  if (folder.empty()) return "";
  if (EndsWith(UpperCase(folder), ".BXP")) folder = GetPathFolder(folder);
  folder = FixPath(folder);
  return Dir(computer.platform().files, folder + "*.bxp").empty() ? "" : folder;
}

std::vector<Difference> DifferencesOf(const SetupContents& present, const SetupContents& expected) {
  return Comparer(present, expected).Run();
}

int CheckSetup(const Options& options, Computer& computer, const WizardRun& run) {
  ScratchComputer scratch(computer, NoHook());
  return run(options, scratch);
}

}  // namespace bxvbwiz
