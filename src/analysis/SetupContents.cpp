#include "analysis/SetupContents.h"

#include "setupgen/SetupFiles.h"
#include "support/Findings.h"
#include "text/ProfileLine.h"
#include "text/Utf16Text.h"

namespace bxvbwiz {
namespace {

// A file of profile strings: its sections.
using Profile = std::map<std::string, ProfileSection, IgnoringCase>;

// Reads a whole file as the profile calls see it, of which each would find one key: of sections and keys of
// one name the first counts. Empty when it cannot be read, which is told. A missing one is merely empty,
// unless `isUnreadable` is given, which says whether it could be read.
Profile ReadProfile(Platform& platform, const std::string& path, bool* isUnreadable = nullptr) {
  Profile profile;
  std::string bytes;
  const SystemError error = platform.files.Read(path, bytes);
  const bool failed = error != SystemError::Success && (isUnreadable != nullptr || !MeansMissing(error));
  if (failed) AddFinding(FindingId::FileUnreadable, {path, ErrorCode(error)});
  if (isUnreadable != nullptr) *isUnreadable = failed;
  const bool isWide = StartsWith(bytes, kUtf16Mark);
  const std::string text =
      isWide ? FromUtf16(bytes.substr(kUtf16Mark.size())) : platform.codePage.Decode(bytes);
  ProfileSection* section = nullptr;
  LineReader reader(text);
  for (std::string_view line; reader.Next(line);) {
    const std::string_view content = TrimProfileText(line);
    if (StartsWith(content, "[")) {
      const auto [place, isNew] =
          profile.try_emplace(std::string(TrimProfileText(content.substr(1, content.find(']') - 1))));
      section = isNew ? &place->second : nullptr;
    } else if (section != nullptr && !StartsWith(content, ";") &&
               content.find('=') != std::string_view::npos) {
      section->emplace(KeyName(line), KeyValue(line));
    }
  }
  return profile;
}

// The values of a numbered list, "name0" and so on, and those of "0name" behind them.
std::vector<std::string> List(const Profile& profile, const std::string& section, const std::string& name) {
  std::vector<std::string> values;
  const auto found = profile.find(section);
  if (found == profile.end()) return values;
  for (const bool isNameFirst : {true, false}) {
    for (int number = 0;; ++number) {
      const std::string digits = std::to_string(number);
      std::string value = ValueOf(found->second, isNameFirst ? name + digits : digits + name);
      if (value.empty() || value == "NONE") break;
      values.push_back(std::move(value));
    }
  }
  return values;
}

SetupGroup& Group(SetupContents& contents, const std::string& name) {
  for (SetupGroup& group : contents.groups) {
    if (EqualsIgnoreCase(group.name, name)) return group;
  }
  contents.groups.emplace_back().name = name;
  return contents.groups.back();
}

void ReadGroups(Platform& platform, const std::string& folder, SetupContents& contents) {
  Profile definitions = ReadProfile(platform, folder + "Default.fdf");
  for (const std::string& name : List(definitions, "FileGroups", "group"))
    Group(contents, name).isEntered = true;
  std::vector<FoundFile> found;
  if (platform.files.Find(folder + "*.fgl", found) != SystemError::Success) found.clear();
  for (const FoundFile& file : found) {
    if ((file.attributes & kAttributeDirectory) != 0) continue;
    SetupGroup& group = Group(contents, ParsePath(file.name, PathPart::Title));
    group.files = List(ReadProfile(platform, folder + file.name, &group.isUnreadable), "TopDir", "file");
  }
  for (SetupGroup& group : contents.groups) group.settings = definitions[group.name];
}

void ReadComponents(Profile definitions, SetupContents& contents) {
  for (const std::string& name : List(definitions, "Components", "component")) {
    SetupComponent& component = contents.components.emplace_back();
    component.name = name;
    component.groups = List(definitions, name, "filegroup");
    component.members = List(definitions, name, "MEMBER");
    component.required = List(definitions, name, "required");
    for (const auto& [key, value] : definitions[name]) {
      const bool isOfList = key.find_first_of("0123456789") != std::string::npos;
      if (!isOfList) component.settings.emplace(key, value);
    }
  }
  constexpr std::string_view kSetupType = "SETUPTYPEITEM-";
  for (const auto& [section, keys] : definitions) {
    if (StartsWith(UpperCase(section), kSetupType))
      contents.setupTypes.emplace(section.substr(kSetupType.size()), List(definitions, section, "ITEM"));
  }
}

}  // namespace

bool IgnoringCase::operator()(const std::string& left, const std::string& right) const {
  return UpperCase(left) < UpperCase(right);
}

std::string ValueOf(const ProfileSection& section, const std::string& key) {
  const auto found = section.find(key);
  return found == section.end() ? "" : found->second;
}

bool Holds(const std::vector<std::string>& names, const std::string& name) {
  return std::any_of(names.begin(), names.end(),
                     [&](const std::string& other) { return EqualsIgnoreCase(name, other); });
}

SetupContents ReadSetup(Platform& platform, const std::string& setupFolder) {
  const std::string folder = FixPath(setupFolder);
  SetupContents contents;
  contents.projectFile = Dir(platform.files, folder + "*.bxp");
  if (!contents.projectFile.empty())
    contents.data = ReadProfile(platform, folder + contents.projectFile)["Data"];
  ReadGroups(platform, GroupsFolder(folder), contents);
  ReadComponents(ReadProfile(platform, ComponentsFile(folder)), contents);
  const Profile folders = ReadProfile(platform, folder + "Component Definitions\\Default.fgl");
  for (const std::string& path : List(folders, "USERDEFINED", "SubDir"))
    contents.folders.push_back(GetPathFileName(path));
  Profile substitutions = ReadProfile(platform, folder + "Text Substitutions\\Setup.tsb");
  for (const std::string& name : List(substitutions, "Data", "Key"))
    contents.substitutions.emplace(name, ValueOf(substitutions[name], "Value"));
  for (const auto& [section, keys] : ReadProfile(platform, folder + "Shell Objects\\Default.shl")) {
    const std::string target = ValueOf(keys, "Target");
    if (!target.empty()) contents.targets.emplace(section, target);
  }
  return contents;
}

}  // namespace bxvbwiz
