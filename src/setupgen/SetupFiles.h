#pragma once

#include <string>

#include "platform/ProfileStrings.h"
#include "support/basFile.h"
#include "support/NumberedKeys.h"

// The files of a setup project that the output routines share, and how they are written. `projectDir` ends in
// a backslash.
namespace bxvbwiz {

// The definitions of all components.
inline std::string ComponentsFile(const std::string& projectDir) {
  return projectDir + "Component Definitions\\Default.cdf";
}

// The folder of the file lists, one a group, and of the groups' definitions.
inline std::string GroupsFolder(const std::string& projectDir) {
  return projectDir + "File Groups\\";
}

// Names a value of a setup project, wherever the project's folder lies:
// "OrderDesk\OrderDesk.bxp [Data] InstallationGUID".
inline std::string PlaceOf(const std::string& projectDir, const std::string& file, const std::string& section,
                           const std::string& key) {
  const std::string parent = FixPath(GetPathFolder(StripTrailingBackslash(projectDir)));
  return file.substr(parent.size()) + " [" + section + "] " + key;
}

// How the value of a key says whether something is so.
inline const char* YesOrNo(bool isSo) {
  return isSo ? "Yes" : "No";
}

// A key and its value; the first "%" of the value stands for a name that is known when it is written.
struct SettingTemplate {
  const char* key;
  const char* value;
};

// Writes one key; `value` may be empty. A failure is not checked here: the checked profile strings report
// it.
inline void WriteSetting(ProfileStrings& profiles, const std::string& file, const std::string& section,
                         const char* key, const std::string& value) {
  profiles.WriteString(section, std::string_view(key), value, file);
}

// Writes keys in their order.
template <std::size_t kCount>
void WriteSettings(ProfileStrings& profiles, const std::string& file, const std::string& section,
                   const SettingTemplate (&settings)[kCount], const std::string& name) {
  for (const SettingTemplate& setting : settings) {
    std::string value = setting.value;
    const std::size_t at = value.find('%');
    if (at != std::string::npos) value.replace(at, 1, name);
    WriteSetting(profiles, file, section, setting.key, value);
  }
}

constexpr std::size_t kListBuffer = 255;  // bytes; of most lists

// A list "name0", "name1", ... read into a buffer of `size` bytes.
inline NumberedKeys::List ListOf(const std::string& file, const std::string& section, const char* name,
                                 std::size_t size) {
  NumberedKeys::List list;
  list.file = file;
  list.section = section;
  list.name = name;
  list.size = size;
  return list;
}

}  // namespace bxvbwiz
