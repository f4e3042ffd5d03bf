#include "setupgen/VBRuntimeObject.h"

#include <limits>

#include "setupgen/Destinations.h"
#include "setupgen/SetupFiles.h"
#include "support/basFile.h"
#include "support/basGUID.h"
#include "support/basLogging.h"
#include "support/Findings.h"
#include "support/NumberedKeys.h"

namespace bxvbwiz {
namespace {

constexpr const char* kRuntimeComponent = "Program Files\\VB Runtime Object";
// The runtime objects that come with the setup-authoring environment.
constexpr const char* kMoniker5 = "@bxmk:6796A580-1D1B-11D3-8B09-00105A9846E9";
constexpr const char* kMoniker6 = "@bxmk:4F6A11A0-1D1C-11D3-8B09-00105A9846E9";

}  // namespace

bool AddVBRuntimeObject(basGlobal& global, const std::string& templateFolder) {
  const CallStackEntry entry("basGlobal:AddVBRuntimeObject");
  const std::string setupFolder = FixPath(templateFolder);
  const std::string file = ComponentsFile(setupFolder);
  const std::string place = PlaceOf(setupFolder, file, kRuntimeComponent, "GUID");
  const std::string guid = CreateGUID(global.platform().guids, place, true);
  if (guid.empty()) return false;
  const std::string version = global.GetVBVer();
  if (version.empty()) {
    AddFinding(FindingId::RuntimeMissing);
    return false;
  }

  ProfileStrings& profiles = global.platform().profiles;
  // Adds the component to a list unless it is there. True when it was.
  const auto listed = [&](const char* section, const char* keySuffix) {
    std::int16_t number = 0;
    if (FindIniFileEntry(profiles, file, section, keySuffix, kRuntimeComponent, number)) return true;
    profiles.WriteString(section, std::to_string(number) + keySuffix, kRuntimeComponent, file);
    return false;
  };
  if (listed("Components", "component")) return true;
  listed(kProgramFilesComponent, "MEMBER");
  listed(kProgramFilesComponent, "required");
  profiles.WriteSection(kRuntimeComponent, std::string_view(), file);
  WriteSetting(profiles, file, kRuntimeComponent, "MONIKER", version == kVersion5 ? kMoniker5 : kMoniker6);
  WriteSetting(profiles, file, kRuntimeComponent, "GUID", guid);
  WriteSetting(profiles, file, kRuntimeComponent, "VISIBLE", "No");
  WriteSetting(profiles, file, kRuntimeComponent, "OBJECT", "Yes");
  return false;
}

bool FindIniFileEntry(ProfileStrings& profiles, const std::string& file, const std::string& section,
                      const std::string& keySuffix, const std::string& wanted, std::int16_t& index) {
  const CallStackEntry entry("basGlobal:FindIniFileEntry");
  constexpr std::size_t kSize = 254;
  int number = 0;
  const bool found = NumberedKeys(profiles).Find(
      {file, section, keySuffix, NumberedKeys::Spelling::NumberThenName, kSize}, wanted, number);
  if (found) ++number;
  if (number > std::numeric_limits<std::int16_t>::max()) throw RuntimeError(kErrorOverflow, "Overflow");
  index = static_cast<std::int16_t>(number);
  return found;
}

}  // namespace bxvbwiz
