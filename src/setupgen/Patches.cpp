#include "setupgen/Patches.h"

#include "project/basGlobal.h"
#include "setupgen/Destinations.h"
#include "setupgen/SetupFiles.h"
#include "support/basFile.h"
#include "support/basGUID.h"
#include "support/basLogging.h"
#include "support/Findings.h"
#include "sysinfo/Key.h"

namespace bxvbwiz {
namespace {

constexpr const char* kData = "Data";

struct Patch {
  const char* section;
  const char* key;
  std::string value;
};

void Write(Platform& platform, const std::string& file, std::initializer_list<Patch> patches) {
  for (const Patch& patch : patches)
    platform.profiles.WriteString(patch.section, patch.key, patch.value, file);
}

}  // namespace

std::string LanguageCode(const StringTable& strings) {
  const std::string language = strings.Text(TextId::LanguageFolder);
  return language.substr(0, language.find('-'));
}

void PatchIpr(Platform& platform, NumberedKeys& lists, const SetupAnswers& answers,
              const std::string& projectFile) {
  constexpr char kRoutine[] = "frmPanel3!PatchIpr";
  const CallStackEntry entry(kRoutine);
  LogAndGoOn(kRoutine, [&] {
    // A provisional identifier, cut short, which keeps the key's place in front of the others.
    const std::string place = PlaceOf(GetPathFolder(projectFile), projectFile, kData, "InstallationGUID");
    const std::string guid = CreateGUID(platform.guids, place, true);
    Write(platform, projectFile,
          {{kData, "InstallationGUID", guid.size() < 2 ? "" : guid.substr(1, guid.size() - 2)},
           {kData, "InstallRoot", GetPathFolder(projectFile)},
           {kData, "CompanyName", answers.companyName},
           {kData, "Type", answers.applicationType},
           {kData, "Version", answers.applicationVersion},
           {kData, "ProductName", answers.applicationName},
           {kData, "InstallationGUID", CreateGUID(platform.guids, place, true)}});
    lists.AppendIfMissing(ListOf(projectFile, "Language", "LanguageSupport", kListBuffer),
                          LanguageCode(platform.strings));
  });
}

void PatchShl(Platform& platform, const SetupAnswers& answers, const std::string& setupDir) {
  constexpr char kRoutine[] = "frmPanel3!PatchShl";
  const CallStackEntry entry(kRoutine);
  LogAndGoOn(kRoutine, [&] {
    const std::string& name = answers.applicationName;
    const std::string language = platform.strings.Text(TextId::LanguageFolder);
    Write(platform, FixPath(setupDir) + "String Tables\\" + language + "\\value.shl",
          {{kData, "TITLE_MAIN", name},
           {kData, "UNINST_KEY", name},
           {kData, "TITLE_CAPTIONBAR", name + platform.strings.Text(TextId::SetupSuffix)},
           {kData, "UNINST_DISPLAY_NAME", name},
           {kData, "FOLDER_NAME", name},
           {kData, "PRODUCT_NAME", name},
           {kData, "COMPANY_NAME", answers.companyName},
           {kData, "PRODUCT_VERSION", answers.applicationVersion},
           {kData, "PRODUCT_KEY", answers.exeName}});
  });
}

void PatchMda(Platform& platform, const SetupAnswers& answers, const std::string& setupDir) {
  constexpr char kRoutine[] = "frmPanel3!PatchMda";
  const CallStackEntry entry(kRoutine);
  LogAndGoOn(kRoutine, [&] {
    Write(platform, FixPath(setupDir) + "Media\\Default\\Default.mda",
          {{"SetupInfo", "APPLICATIONNAME", answers.applicationName},
           {"TagFileInfo", "APPLICATIONNAME", answers.applicationName}});
  });
}

void PatchShell(Platform& platform, const SetupAnswers& answers, const std::string& setupDir) {
  constexpr char kRoutine[] = "frmPanel3!PatchShell";
  const CallStackEntry entry(kRoutine);
  LogAndGoOn(kRoutine, [&] {
    const std::string& name = answers.applicationName;
    const std::string target = std::string(kApplicationSymbol) + "\\" + answers.exeName;
    Write(platform, FixPath(setupDir) + "Shell Objects\\Default.shl",
          {{"Shortcut0", "DisplayText", name},
           {"Icon0", "DisplayText", name},
           {kData, "Shortcut0", "Folder2\\" + name},
           {kData, "Icon0", "Group0\\" + name},
           {"Shortcut0", "Target", target},
           {"Icon0", "Target", target}});
  });
}

void CreateDataLink(Platform& platform, const std::string& setupDir, const std::string& linkName) {
  constexpr char kRoutine[] = "frmPanel3!CreateDataLink";
  const CallStackEntry entry(kRoutine);
  LogAndGoOn(kRoutine, [&] {
    const auto root = Key::Root(platform.registry, RegConstants::HKeyLocalMachine);
    const auto key = root->OpenSubKeyForReading(kBorvexMainKey);
    const auto folder = key == nullptr ? nullptr : key->Values().Item("DataLink");
    if (folder == nullptr) {
      throw RuntimeError(kErrorObjectNotSet, "Object variable or With block variable not set: " +
                                                 root->Name() + "\\" + kBorvexMainKey + ", DataLink");
    }
    const std::string path = FixPath(folder->Text()) + linkName + ".bxl";
    const std::string text = "[Data]\r\nLocation=" + StripTrailingBackslash(setupDir) +
                             "\r\n\r\n[General]\r\nId=BXLinkFile\r\nVersion=1.00.000\r\n";
    CheckSystem(platform.files.Write(path, platform.codePage.Encode(text), WriteMode::Create), path);
  });
}

}  // namespace bxvbwiz
