#include "cli/MachineNew.h"

#include <filesystem>
#include <fstream>
#include <iostream>
#include <string_view>

#include "cli/Options.h"

namespace bxvbwiz {
namespace {

namespace fs = std::filesystem;

struct TemplateFile {
  const char* path;  // below the machine folder
  std::string_view text;
};

constexpr std::string_view kMachineIni =
    R"(; The machine that this folder stands for. Every key may be left out.
[Machine]
; The ANSI code page of text files, profile strings and the registry's text.
CodePage=1252
Language=0409
[Version]
PlatformId=2
MajorVersion=5
MinorVersion=1
BuildNumber=2600
CSDVersion=Service Pack 3
[Folders]
Windows=C:\WINDOWS
System=C:\WINDOWS\system32
[Programs]
; A program's path on the machine = a program of this computer that is run in its place,
; relative to this folder, for example a compiler for the rebuild:
; C:\Program Files\Microsoft Visual Studio\VB98\VB6.EXE=compile.sh
)";

constexpr std::string_view kRegistry = R"(REGEDIT4

[HKEY_LOCAL_MACHINE\SOFTWARE\Borvex\Borvex Professional\6.0\VBWiz]
"DepFile"="C:\\Program Files\\Borvex\\VBWiz"
"TemplateSource"="C:\\Program Files\\Borvex\\VBWiz\\Template"

[HKEY_LOCAL_MACHINE\SOFTWARE\Borvex\Borvex Professional\6.0\Main]
"Path"="C:\\Program Files\\Borvex"
"DataLink"="C:\\Program Files\\Borvex\\Links"

[HKEY_CURRENT_USER\SOFTWARE\Borvex\Borvex Professional\6.0\Main]
"DataFile"="C:\\My Setups"

[HKEY_LOCAL_MACHINE\SOFTWARE\Microsoft\Windows\CurrentVersion]
"CommonFilesDir"="C:\\Program Files\\Common Files"
"ProgramFilesDir"="C:\\Program Files"

[HKEY_CLASSES_ROOT\.vbp]
@="VisualBasic.Project"

[HKEY_CLASSES_ROOT\VisualBasic.Project\shell\Make\command]
@="\"C:\\Program Files\\Microsoft Visual Studio\\VB98\\VB6.EXE\" /make \"%1\""
)";

// Parts of Windows itself, which no setup may install, and of the Visual Basic runtime, which has its own
// component.
constexpr std::string_view kSystemFiles = R"([System]
1File=KERNEL32.DLL
2File=USER32.DLL
3File=GDI32.DLL
4File=ADVAPI32.DLL
5File=OLE32.DLL
6File=OLEAUT32.DLL
7File=SHELL32.DLL
8File=COMCTL32.DLL
9File=COMDLG32.DLL
10File=MSVCRT.DLL
11File=NTDLL.DLL
12File=RPCRT4.DLL
13File=VERSION.DLL
14File=WINSPOOL.DRV
15File=WINMM.DLL
16File=WS2_32.DLL
17File=WSOCK32.DLL
18File=MPR.DLL
19File=SHLWAPI.DLL
20File=IMM32.DLL
21File=MSVBVM50.DLL
22File=MSVBVM60.DLL
23File=STDOLE2.TLB
24File=OLEPRO32.DLL
25File=ASYCFILT.DLL
)";

constexpr std::string_view kProject = R"([Data]
InstallationGUID=
InstallRoot=
CompanyName=
Type=
Version=
ProductName=
[Language]
)";

constexpr std::string_view kStringTable = R"([General]
Version=1.00.000
[Data]
TITLE_MAIN=
UNINST_KEY=
TITLE_CAPTIONBAR=
UNINST_DISPLAY_NAME=
FOLDER_NAME=
PRODUCT_NAME=
COMPANY_NAME=
PRODUCT_VERSION=
PRODUCT_KEY=
)";

constexpr std::string_view kGeneral = "[General]\nVersion=1.00.000\n";
constexpr std::string_view kFolders = "[General]\nType=FILELIST\nVersion=1.00.000\n";
constexpr std::string_view kMedia = "[SetupInfo]\nAPPLICATIONNAME=\n[TagFileInfo]\nAPPLICATIONNAME=\n";
constexpr std::string_view kData = "[General]\nVersion=1.00.000\n[Data]\n";
constexpr std::string_view kScript = "The setup script: write what your setup does here.\n";

#define BXVBWIZ_PRODUCT "drive_c/Program Files/Borvex/"
#define BXVBWIZ_TEMPLATE BXVBWIZ_PRODUCT "VBWiz/Template/"

constexpr TemplateFile kFiles[] = {
    {"machine.ini", kMachineIni},
    {"registry.reg", kRegistry},
    {BXVBWIZ_PRODUCT "VBWiz/VBWizDep.ini", kSystemFiles},
    {BXVBWIZ_PRODUCT "Redistributable/Compressed Files/Language Independent/OS Independent/corecomp.ini",
     "[Win32]\n"},
    {BXVBWIZ_TEMPLATE "Setup.bxp", kProject},
    {BXVBWIZ_TEMPLATE "Component Definitions/Default.cdf", kGeneral},
    {BXVBWIZ_TEMPLATE "Component Definitions/Default.fgl", kFolders},
    {BXVBWIZ_TEMPLATE "File Groups/Default.fdf", kGeneral},
    {BXVBWIZ_TEMPLATE "Media/Default/Default.mda", kMedia},
    {BXVBWIZ_TEMPLATE "Script Files/Setup.bxs", kScript},
    {BXVBWIZ_TEMPLATE "Shell Objects/Default.shl", kData},
    {BXVBWIZ_TEMPLATE "String Tables/0009-English/value.shl", kStringTable},
    {BXVBWIZ_TEMPLATE "Text Substitutions/Setup.tsb", kData},
    // Only its name is used: it gives the version of Visual Basic.
    {"drive_c/Program Files/Microsoft Visual Studio/VB98/VB6.EXE", ""},
};

#undef BXVBWIZ_TEMPLATE
#undef BXVBWIZ_PRODUCT

constexpr const char* kFolderPaths[] = {
    "drive_c/WINDOWS/system32",
    "drive_c/Program Files/Common Files/System",
    "drive_c/Program Files/Borvex/Links",
    "drive_c/Program Files/Microsoft Visual Studio/VB98/Wizards/PDWizard/Redist",
    "drive_c/My Setups",
};

// False when the file cannot be written completely.
bool WriteWithWindowsLines(const fs::path& path, std::string_view text) {
  std::ofstream file(path, std::ios::binary);
  for (const char c : text) {
    if (c == '\n') file.put('\r');
    file.put(c);
  }
  file.close();
  return !file.fail();
}

int Refuse(const std::string& path, const std::string& reason, int code) {
  std::cerr << "bxvbwiz: " << path << ": " << reason << '\n';
  return code;
}

}  // namespace

int MakeMachine(const std::string& folder) {
  std::error_code error;
  const fs::path root = fs::u8path(folder);
  if (fs::exists(root, error) && (!fs::is_directory(root, error) || !fs::is_empty(root, error))) {
    return Refuse(folder, "already exists and is not empty", kExitUsage);
  }
  for (const char* path : kFolderPaths) {
    const fs::path made = root / path;
    if (!fs::create_directories(made, error) && error)
      return Refuse(made.u8string(), error.message(), kExitNotFinished);
  }
  for (const TemplateFile& file : kFiles) {
    const fs::path path = root / file.path;
    fs::create_directories(path.parent_path(), error);
    if (!WriteWithWindowsLines(path, file.text))
      return Refuse(path.u8string(), "cannot be written", kExitNotFinished);
  }
  std::cout << "Made the machine folder " << folder << ".\n";
  return kExitFinished;
}

}  // namespace bxvbwiz
