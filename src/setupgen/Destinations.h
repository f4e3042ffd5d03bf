#pragma once

#include <initializer_list>
#include <string>
#include <string_view>

#include "project/FileRecord.h"
#include "sysinfo/CSystemInfo.h"
#include "text/Text.h"

namespace bxvbwiz {

constexpr const char* kProgramFilesComponent = "Program Files";
constexpr const char* kWindowsFilesComponent = "Windows Files";

constexpr const char* kApplicationSymbol = "<TARGETDIR>";
constexpr int kByName = -1;

// A place in which a setup installs files.
struct Destination {
  const char* symbol;                           // of the setup project
  const std::string& (CSystemInfo::*folder)();  // on this machine; null for the application's own
  const char* groupBase;                        // how the names of its file groups begin
  const char* component;                        // as CreateComponentName names it
  std::string_view macro;                       // of dependency files, in upper case
  std::string_view otherMacro = {};             // a second one of the same meaning
  // 0: no file in it is shared. Otherwise a file may be, and this is when IsSharedFile compares its path with
  // `folder`, from 1; kByName when macro and symbol alone tell that a file lies in it.
  int sharing = 0;
  bool isVariable = false;  // the setup's script gives `symbol` its value
  // How those of its groups begin that belong to the component "Windows Files".
  std::string_view windowsGroup = {};
  std::string_view otherWindowsGroup = {};
};

// A new place is a new row. A path is compared with the folders in this order: a folder comes before those
// that contain it. "<DAO>" and the application come last on purpose, so that a folder of theirs that lies in
// another place is named by that place.
constexpr Destination kDestinations[] = {
    {"<WINSYSDIR>", &CSystemInfo::WinSysDir, "Windows System", "Windows System Files", "$(WINSYSPATH)",
     "$(WINSYSPATHSYSFILE)", 1, false, "Windows System", "Automation"},
    // On a 64-bit Windows the system folder of 32-bit programs.
    {"<WINSYSDIR>", &CSystemInfo::SysWow64Dir, "Windows System", "Windows System Files", "", "", 5},
    {"<WINDIR>", &CSystemInfo::WinDir, "Windows", kWindowsFilesComponent, "$(WINPATH)", "", 0, false,
     "Windows"},
    {"<COMMONFILES>\\System", &CSystemInfo::CommonFilesSysPath, "Commonfiles System",
     "Commonfiles System Files", "$(COMMONFILESSYS)", "", kByName},
    {"<COMMONFILES>", &CSystemInfo::CommonFilesPath, "Commonfiles", "Commonfiles Files", "$(COMMONFILES)", "",
     3},
    {"<PROGRAMFILES>", &CSystemInfo::ProgramFilesPath, "Programfiles", "Programfiles Files",
     "$(PROGRAMFILES)", "", 2},
    {"<DAO>", &CSystemInfo::MSDAOPath, "DAO", "DAO Files", "$(MSDAOPATH)", "", 4, true},
    {kApplicationSymbol, nullptr, "Program", kProgramFilesComponent, kApplicationMacro},
};

// The place that `isIt` holds true of; null when there is none.
template <class Predicate>
const Destination* FindDestination(Predicate&& isIt) {
  for (const Destination& place : kDestinations) {
    if (isIt(place)) return &place;
  }
  return nullptr;
}

// The place of a macro in upper case, compared whole; null for an unknown one.
inline const Destination* DestinationOfMacro(std::string_view macro) {
  return FindDestination([&](const Destination& place) {
    return !macro.empty() && (macro == place.macro || macro == place.otherMacro);
  });
}

// The place of a symbol, compared whole; null for an unknown one.
inline const Destination* DestinationOfSymbol(std::string_view symbol) {
  return FindDestination([&](const Destination& place) { return symbol == place.symbol; });
}

// Whether `text` begins with one of the names, of which an empty one is none.
inline bool BeginsWithOneOf(std::string_view text, std::initializer_list<std::string_view> names) {
  for (const std::string_view name : names) {
    if (!name.empty() && StartsWith(text, name)) return true;
  }
  return false;
}

// The component that receives a file group, the sentence's value, and why. `symbol` is that of the
// destination of the group's files.
inline Sentence ComponentOf(std::string_view symbol, std::string_view group) {
  if (EndsWith(symbol, "\\")) symbol.remove_suffix(1);
  const Destination* place = DestinationOfSymbol(symbol);
  if (place != nullptr && BeginsWithOneOf(group, {place->windowsGroup, place->otherWindowsGroup}))
    return {TextId::ComponentOfWindows, {kWindowsFilesComponent}};
  return {TextId::ComponentOfProgram, {kProgramFilesComponent}};
}

}  // namespace bxvbwiz
