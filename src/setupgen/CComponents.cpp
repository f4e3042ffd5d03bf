#include "setupgen/CComponents.h"

#include <limits>
#include <vector>

#include "setupgen/Destinations.h"
#include "setupgen/SetupFiles.h"
#include "support/basFile.h"
#include "support/basLogging.h"
#include "support/Findings.h"
#include "text/Text.h"

namespace bxvbwiz {
namespace {

constexpr const char* kVariableStart = "<VBWizVar-";
constexpr const char* kUserDefined = "USERDEFINED";  // the section that lists the script-defined folders

// What a new component is made of; "%" is its name.
constexpr SettingTemplate kComponentSettings[] = {
    {"DESCRIPTION", "%"},
    {"STATUS", "Installing %..."},
    {"DISPLAYTEXT", "%"},
    {"VISIBLE", "Yes"},
    {"FILENEED", "CRITICAL"},
    {"INCLUDEINBUILD", "Yes"},
    {"PASSWORD", ""},
    {"ENCRYPT", "No"},
    {"TARGETDIRCDROM", ""},
    {"FTPLOCATION", ""},
    {"HTTPLOCATION", ""},
    {"MISC", ""},
    {"COMMENT", ""},
    {"SELECTED", "Yes"},
    {"UNINSTALLABLE", "Yes"},
    {"HANDLERONUNINSTALLING", ""},
    {"HANDLERONINSTALLED", ""},
    {"HANDLERONINSTALLING", ""},
    {"HANDLERONUNINSTALLED", ""},
    {"DEFSELECTION", ""},
    {"OBJECT", "No"},
};

constexpr SettingTemplate kFolderSettings[] = {
    {"DISPLAYTEXT", ""}, {"TYPE", "TEXTSUB"}, {"fulldirectory", ""}};

constexpr SettingTemplate kSubstitutionSettings[] = {{"KeyType", "3"}, {"Value", ""}};

// The blanks after which the runtime's proper case begins a word: NUL, tab to carriage return, space.
bool SeparatesWords(char32_t character) {
  return character == 0 || character == ' ' || (character >= '\t' && character <= '\r');
}

std::string ProperCase(std::string_view text) {
  std::string proper;
  proper.reserve(text.size());
  bool beginsWord = true;
  for (std::size_t position = 0; position < text.size();) {
    const char32_t character = NextCharacter(text, position);
    AppendUtf8(proper, beginsWord ? UpperCharacter(character) : LowerCharacter(character));
    beginsWord = SeparatesWords(character);
  }
  return proper;
}

NumberedKeys::List ScriptDefinedFolders(const std::string& projectDir) {
  return ListOf(projectDir + "Component Definitions\\Default.fgl", kUserDefined, "SubDir", kListBuffer);
}

// Whether an upper-case symbol holds one that is a script-defined variable.
bool HoldsVariable(const std::string& symbol) {
  return FindDestination([&](const Destination& place) {
           return place.isVariable && symbol.find(place.symbol) != std::string::npos;
         }) != nullptr;
}

// The next script-defined variable's name, by the number of those that there are.
std::string NextVariable(const std::vector<std::string>& folders) {
  std::size_t count = 0;
  for (const std::string& folder : folders) {
    if (folder.find(kVariableStart) != std::string::npos) ++count;
  }
  return kVariableStart + std::to_string(count) + ">";
}

}  // namespace

std::string CComponents::CreateComponentName(const std::string&, const FileRecord& file) {
  constexpr char kRoutine[] = "CComponents:CreateComponentName";
  const CallStackEntry entry(kRoutine);
  std::string name;
  LogAndGoOn(kRoutine, [&] {
    const Destination* place = DestinationOfMacro(UpperCase(file.Destination));
    name = place != nullptr ? place->component : ProperCaseFolderName(file.FileLinkPath) + " Files";
  });
  return name;
}

bool CComponents::CreateComponent(const std::string& projectDir, const std::string& componentName,
                                  const FileRecord& file) {
  constexpr char kRoutine[] = "CComponents:CreateComponent";
  const CallStackEntry entry(kRoutine);
  bool exists = false;
  LogAndGoOn(kRoutine, [&] {
    const std::string components = ComponentsFile(projectDir);
    const auto append = [&](const std::string& section, const char* listName, const std::string& value) {
      return lists_.AppendIfMissing(ListOf(components, section, listName, kListBuffer), value);
    };
    if (append("Components", "component", componentName)) {
      exists = true;
      return;
    }
    append("TopComponents", "component", componentName);
    lists_.EmptySection(components, componentName);
    WriteSettings(platform_.profiles, components, componentName, kComponentSettings, componentName);
    if (componentName == kProgramFilesComponent) {
      append("SETUPTYPEITEM-CUSTOM", "ITEM", componentName);
    } else {
      append(kProgramFilesComponent, "required", componentName);
      append(componentName, "requiredby", kProgramFilesComponent);
    }
    append("SETUPTYPEITEM-TYPICAL", "ITEM", componentName);
    append("SETUPTYPEITEM-COMPACT", "ITEM", componentName);

    const std::string symbol = symbols_.ConvertDestMacroToBXDestSymbol(file.Destination);
    if (symbol.find('>') == std::string::npos || HoldsVariable(UpperCase(symbol)))
      AddScriptDefinedVariable(projectDir, componentName, file);
    exists = true;
  });
  return exists;
}

std::string CComponents::AddScriptDefinedVariable(const std::string& projectDir,
                                                  const std::string& componentName, const FileRecord& file) {
  constexpr char kRoutine[] = "CComponents:AddScriptDefinedVariable";
  const CallStackEntry entry(kRoutine);
  std::string variable;
  LogAndGoOn(kRoutine, [&] {
    ProfileStrings& profiles = platform_.profiles;
    const NumberedKeys::List folders = ScriptDefinedFolders(projectDir);
    const Destination* place = DestinationOfMacro(UpperCase(file.Destination));
    const bool isNamed = place != nullptr && place->isVariable;
    // The folders are listed with their section's name in front, so "<DAO>" alone is found only where someone
    // else listed it so: each component whose first file goes there gets a folder of its own.
    int number = 0;
    variable = isNamed ? place->symbol : NextVariable(lists_.Entries(folders));
    if (isNamed && lists_.Find(folders, variable, number)) return;

    const std::string folder = std::string(kUserDefined) + "\\" + variable;
    lists_.Append(folders, folder);
    lists_.EmptySection(folders.file, folder);
    WriteSettings(profiles, folders.file, folder, kFolderSettings, variable);

    const std::string components = ComponentsFile(projectDir);
    WriteSetting(profiles, components, componentName, "TARGET", variable);
    WriteSetting(profiles, components, componentName, "TARGETHIDDEN", "Script-defined Folders\\" + variable);

    const std::string substitutions = projectDir + "Text Substitutions\\Setup.tsb";
    lists_.AppendIfMissing(ListOf(substitutions, "Data", "Key", kListBuffer), variable);
    lists_.EmptySection(substitutions, variable);
    WriteSettings(profiles, substitutions, variable, kSubstitutionSettings, variable);
  });
  return variable;
}

void FindScriptDefinedVariables(Platform& platform, const std::string& projectDir, std::int16_t& count) {
  constexpr char kRoutine[] = "frmMain:FindScriptDefinedVariables";
  const CallStackEntry entry(kRoutine);
  count = 0;
  LogAndGoOn(kRoutine, [&] {
    // Read again, because other code has written what this counts.
    NumberedKeys lists(platform.profiles);
    for (const std::string& folder : lists.Entries(ScriptDefinedFolders(projectDir))) {
      if (UpperCase(folder).find("USERDEFINED\\<VBWIZVAR-") == std::string::npos) continue;
      if (count == std::numeric_limits<std::int16_t>::max()) throw RuntimeError(kErrorOverflow, "Overflow");
      ++count;
    }
  });
}

std::string ProperCaseFolderName(const std::string& folder) {
  std::string name = GetPathFileName(StripTrailingBackslash(folder));
  // "C:" is what the splitting of a drive's root leaves.
  if (EndsWith(name, ":")) return {};
  return ProperCase(name);
}

}  // namespace bxvbwiz
