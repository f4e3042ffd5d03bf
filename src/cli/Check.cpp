#include "cli/Check.h"

#include <algorithm>

#include "support/basFile.h"
#include "text/Text.h"

namespace bxvbwiz {
namespace {

using Names = std::vector<std::string>;
using Sign = Difference::Sign;

// A kind of entry, and the entries of it that the wizard decides; a person may change all others.
struct Kind {
  const char* name;
  const char* decided[4] = {};
};

constexpr const char* kAll = "*";
constexpr Kind kAnswer = {"answer", {"ProductName", "CompanyName", "Type", "Version"}};
constexpr Kind kFileGroup = {"file group", {kAll}};
constexpr Kind kFile = {"file", {kAll}};
constexpr Kind kFactOfGroup = {"value", {"TARGET", "FILETYPE", "SELFREGISTERING"}};
constexpr Kind kComponent = {"component", {kAll}};
constexpr Kind kRequired = {"required component", {kAll}};
constexpr Kind kFactOfComponent = {"value", {"MONIKER"}};
constexpr Kind kFolder = {"script-defined folder", {kAll}};
constexpr Kind kSubstitution = {"text substitution"};
constexpr Kind kTarget = {"target"};

// These are different in every setup project.
constexpr const char* kOwn[] = {"InstallationGUID", "InstallRoot", "GUID"};

template <std::size_t kCount>
bool IsIn(const char* const (&names)[kCount], const std::string& name) {
  return std::any_of(std::begin(names), std::end(names), [&](const char* other) {
    return other != nullptr && (other == kAll || EqualsIgnoreCase(name, other));
  });
}

// Whether an entry that generate would not write is from an earlier run: the names of all groups that the
// wizard makes end alike, and their files are its own.
bool IsOld(const Kind& kind, const std::string& name, const std::string& owner) {
  const std::string& group = &kind == &kFile ? owner : name;
  return (&kind == &kFile || &kind == &kFileGroup) && EndsWith(UpperCase(group), " FILES");
}

// A list as a section without values. An empty name stands for none.
ProfileSection Listed(const Names& names) {
  ProfileSection section;
  for (const std::string& name : names) {
    if (!name.empty()) section.emplace(name, "");
  }
  return section;
}

class Comparer {
 public:
  std::vector<Difference> Run(const SetupContents& present, const SetupContents& expected) {
    Compare(kAnswer, "", present.data, expected.data);
    CompareEach(present.groups, expected.groups);
    CompareEach(present.components, expected.components);
    for (const auto& [type, components] : expected.setupTypes) {
      const auto there = present.setupTypes.find(type);
      const bool isThere = there != present.setupTypes.end();
      Compare(kComponent, "setup type " + type, isThere ? there->second : Names(), components);
    }
    Compare(kFolder, "", present.folders, expected.folders);
    Compare(kSubstitution, "", present.substitutions, expected.substitutions);
    Compare(kTarget, "shell objects", present.targets, expected.targets);
    return std::move(differences_);
  }

 private:
  // Groups or components, those that are expected first.
  template <class Named>
  void CompareEach(const std::vector<Named>& present, const std::vector<Named>& expected) {
    const Named none;
    for (const Named& one : expected) {
      const Named* const there = FindNamed(present, one.name);
      Compare(one.name, there == nullptr ? none : *there, one);
    }
    for (const Named& one : present) {
      if (FindNamed(expected, one.name) == nullptr) Compare(one.name, one, none);
    }
  }

  void Compare(const std::string& name, const SetupGroup& present, const SetupGroup& expected) {
    const bool inBoth = EqualsIgnoreCase(present.name, expected.name);
    const auto entered = [&](const SetupGroup& group) {
      return Names{group.isEntered || !inBoth ? group.name : ""};
    };
    Compare(kFileGroup, "", entered(present), entered(expected));
    Compare(kFile, name, present.files, expected.files);
    if (inBoth) Compare(kFactOfGroup, name, present.settings, expected.settings);
  }

  void Compare(const std::string& name, const SetupComponent& present, const SetupComponent& expected) {
    const bool inBoth = EqualsIgnoreCase(present.name, expected.name);
    Compare(kComponent, "", Names{present.name}, Names{expected.name});
    Compare(kFileGroup, name, present.groups, expected.groups);
    if (expected.name.empty()) return;
    Compare(kComponent, name, present.members, expected.members);
    Compare(kRequired, name, present.required, expected.required);
    if (inBoth) Compare(kFactOfComponent, name, present.settings, expected.settings);
  }

  void Compare(const Kind& kind, const std::string& owner, const Names& present, const Names& expected) {
    Compare(kind, owner, Listed(present), Listed(expected));
  }

  void Compare(const Kind& kind, const std::string& owner, const ProfileSection& present,
               const ProfileSection& expected) {
    for (const auto& [name, value] : expected) {
      const auto there = present.find(name);
      const Sign sign = there == present.end() ? Sign::Added : Sign::Other;
      const std::string before = sign == Sign::Added ? "" : there->second;
      if (!IsIn(kOwn, name) && (sign == Sign::Added || before != value))
        differences_.push_back({sign, !IsIn(kind.decided, name), kind.name, name, owner, before, value});
    }
    for (const auto& [name, value] : present) {
      if (!IsIn(kOwn, name) && expected.count(name) == 0)
        differences_.push_back({Sign::Gone, !IsOld(kind, name, owner), kind.name, name, owner, value, ""});
    }
  }

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
  return Comparer().Run(present, expected);
}

}  // namespace bxvbwiz
