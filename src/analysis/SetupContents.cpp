#include "analysis/SetupContents.h"

#include <tuple>
#include <unordered_map>

#include "setupgen/SetupFiles.h"
#include "support/basFile.h"
#include "support/Findings.h"
#include "support/NumberedKeys.h"
#include "text/Text.h"

namespace bxvbwiz {
namespace {

// Larger than any value that the wizard writes, so that nothing is cut.
constexpr std::size_t kBuffer = 0x1000;
constexpr std::size_t kListBuffer = 0xFFFF;
constexpr const char* kData = "Data";

using Spelling = NumberedKeys::Spelling;

// Reads the files of one setup project.
class SetupReader {
 public:
  SetupReader(Platform& platform, const std::string& setupFolder)
      : platform_(platform), lists_(platform.profiles), folder_(FixPath(setupFolder)) {}

  SetupContents Read() {
    contents_.projectFile = Dir(platform_.files, folder_ + "*.bxp");
    if (!contents_.projectFile.empty()) contents_.data = Keys(folder_ + contents_.projectFile, kData);
    ReadGroups();
    ReadComponents();
    ReadFolders();
    ReadTargets();
    return std::move(contents_);
  }

 private:
  std::string Text(const std::string& file, const std::string& section, const std::string& key) {
    return platform_.profiles.GetString(section, key, "", kBuffer, file);
  }

  // The names of a section's keys, or of the sections.
  std::vector<std::string> Names(const std::string& file, ProfileText section) {
    const std::string list = platform_.profiles.GetString(section, std::nullopt, "", kListBuffer, file);
    std::vector<std::string> names;
    for (std::size_t start = 0; start < list.size();) {
      names.push_back(list.substr(start, list.find('\0', start) - start));
      start += names.back().size() + 1;
    }
    return names;
  }

  ProfileSection Keys(const std::string& file, const std::string& section) {
    ProfileSection keys;
    for (const std::string& key : Names(file, section)) keys.emplace(key, Text(file, section, key));
    return keys;
  }

  std::vector<std::string> List(const std::string& file, const std::string& section, const char* name,
                                Spelling spelling = Spelling::NameThenNumber) {
    NumberedKeys::List list = ListOf(file, section, name, kBuffer);
    list.spelling = spelling;
    return lists_.Entries(list);
  }

  void ReadGroups() {
    const std::string groups = GroupsFolder(folder_);
    const std::string definitions = groups + "Default.fdf";
    for (const std::string& name : List(definitions, "FileGroups", "group")) {
      Group(name).isEntered = true;
    }
    std::vector<FoundFile> found;
    if (platform_.files.Find(groups + "*.fgl", found) != SystemError::Success) found.clear();
    for (const FoundFile& file : found) {
      if ((file.attributes & kAttributeDirectory) == 0)
        Group(ParsePath(file.name, PathPart::Title)).hasList = true;
    }
    for (SetupGroup& group : contents_.groups) {
      if (group.hasList) ReadFiles(groups + group.name + ".fgl", group);
      group.settings = Keys(definitions, group.name);
    }
  }

  // The entries of a list of files, which may be thousands. To ask for each by its key would take longer than
  // to write them.
  void ReadFiles(const std::string& list, SetupGroup& group) {
    std::string bytes;
    const SystemError error = platform_.files.Read(list, bytes);
    group.isUnreadable = error != SystemError::Success;
    if (group.isUnreadable) return AddFinding(FindingId::FileUnreadable, {list, ErrorCode(error)});
    std::unordered_map<std::string, std::string_view> values;
    bool isInList = false;
    LineReader reader(bytes);
    for (std::string_view line; reader.Next(line);) {
      const std::size_t equals = line.find('=');
      if (StartsWith(line, "["))
        isInList = EqualsIgnoreCase(TrimBlanks(line), "[TopDir]");
      else if (isInList && equals != std::string_view::npos)
        values.emplace(LowerCase(TrimBlanks(line.substr(0, equals))), TrimBlanks(line.substr(equals + 1)));
    }
    for (;;) {
      const std::string key = "file" + std::to_string(group.files.size());
      const auto value = values.find(key);
      if (value == values.end() || value->second.empty()) return;
      group.files.push_back(platform_.codePage.Decode(value->second));
    }
  }

  SetupGroup& Group(const std::string& name) {
    for (SetupGroup& group : contents_.groups) {
      if (EqualsIgnoreCase(group.name, name)) return group;
    }
    contents_.groups.emplace_back().name = name;
    return contents_.groups.back();
  }

  void ReadComponents() {
    const std::string file = ComponentsFile(folder_);
    for (const Spelling spelling : {Spelling::NameThenNumber, Spelling::NumberThenName}) {
      for (const std::string& name : List(file, "Components", "component", spelling)) {
        contents_.components.push_back(Component(file, name));
      }
    }
    constexpr std::string_view kSetupType = "SETUPTYPEITEM-";
    for (const std::string& section : Names(file, std::nullopt)) {
      if (!StartsWith(UpperCase(section), kSetupType)) continue;
      contents_.setupTypes.emplace(section.substr(kSetupType.size()), List(file, section, "ITEM"));
    }
  }

  SetupComponent Component(const std::string& file, const std::string& name) {
    SetupComponent component;
    component.name = name;
    component.groups = List(file, name, "filegroup");
    component.members = List(file, name, "MEMBER", Spelling::NumberThenName);
    for (const Spelling spelling : {Spelling::NameThenNumber, Spelling::NumberThenName}) {
      for (const std::string& required : List(file, name, "required", spelling)) {
        component.required.push_back(required);
      }
    }
    for (const std::string& key : Names(file, name)) {
      const bool isOfList = key.find_first_of("0123456789") != std::string::npos;
      if (!isOfList) component.settings.emplace(key, Text(file, name, key));
    }
    return component;
  }

  void ReadFolders() {
    const std::string folders = folder_ + "Component Definitions\\Default.fgl";
    for (const std::string& folder : List(folders, "USERDEFINED", "SubDir")) {
      contents_.folders.push_back(GetPathFileName(folder));
    }
    const std::string substitutions = folder_ + "Text Substitutions\\Setup.tsb";
    for (const std::string& name : List(substitutions, kData, "Key")) {
      contents_.substitutions.emplace(name, Text(substitutions, name, "Value"));
    }
  }

  void ReadTargets() {
    const std::string objects = folder_ + "Shell Objects\\Default.shl";
    for (const std::string& section : Names(objects, std::nullopt)) {
      const std::string target = Text(objects, section, "Target");
      if (!target.empty()) contents_.targets.emplace(section, target);
    }
  }

  Platform& platform_;
  NumberedKeys lists_;
  const std::string folder_;
  SetupContents contents_;
};

}  // namespace

bool IgnoringCase::operator()(const std::string& left, const std::string& right) const {
  return UpperCase(left) < UpperCase(right);
}

std::string ValueOf(const ProfileSection& section, const std::string& key) {
  const auto found = section.find(key);
  return found == section.end() ? "" : found->second;
}

bool operator==(const SetupGroup& left, const SetupGroup& right) {
  return std::tie(left.name, left.hasList, left.isEntered, left.files, left.settings) ==
         std::tie(right.name, right.hasList, right.isEntered, right.files, right.settings);
}

bool operator==(const SetupComponent& left, const SetupComponent& right) {
  return std::tie(left.name, left.groups, left.members, left.required, left.settings) ==
         std::tie(right.name, right.groups, right.members, right.required, right.settings);
}

bool operator==(const SetupContents& left, const SetupContents& right) {
  return std::tie(left.projectFile, left.data, left.groups, left.components, left.setupTypes, left.folders,
                  left.substitutions, left.targets) ==
         std::tie(right.projectFile, right.data, right.groups, right.components, right.setupTypes,
                  right.folders, right.substitutions, right.targets);
}

SetupContents ReadSetup(Platform& platform, const std::string& setupFolder) {
  return SetupReader(platform, setupFolder).Read();
}

}  // namespace bxvbwiz
