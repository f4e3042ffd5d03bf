#include <filesystem>
#include <fstream>
#include <ostream>
#include <sstream>
#include <string_view>
#include <vector>

#include "cli/Commands.h"
#include "machine/MachineError.h"
#include "sysinfo/WindowsFiles.h"

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
; A drive = the folder of this computer that stands for it, for example a checkout:
; [Drives]
; P=/builds/checkout
; A network share = likewise:
; [Shares]
; \\server\share=/mnt/share
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

[HKEY_CLASSES_ROOT\TypeLib\{00020430-0000-0000-C000-000000000046}\2.0]
@="OLE Automation"

[HKEY_CLASSES_ROOT\TypeLib\{00020430-0000-0000-C000-000000000046}\2.0\0\win32]
@="C:\\WINDOWS\\system32\\stdole2.tlb"
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
    // Only the names of these are used: one gives the version of Visual Basic, every project refers to the
    // other.
    {"drive_c/Program Files/Microsoft Visual Studio/VB98/VB6.EXE", ""},
    {"drive_c/WINDOWS/system32/stdole2.tlb", ""},
};

constexpr const char* kSystemFileList = BXVBWIZ_PRODUCT "VBWiz/VBWizDep.ini";

#undef BXVBWIZ_TEMPLATE
#undef BXVBWIZ_PRODUCT

constexpr const char* kFolderPaths[] = {
    "drive_c/Program Files/Common Files/System",
    "drive_c/Program Files/Borvex/Links",
    "drive_c/Program Files/Microsoft Visual Studio/VB98/Wizards/PDWizard/Redist",
    "drive_c/My Setups",
};

std::string SystemFileList() {
  std::string text = "[System]\n";
  int number = 0;
  for (const WindowsFiles& files : kWindowsFiles) {
    std::istringstream names{std::string(files.names)};
    for (std::string name; files.use == WindowsFileUse::Never && names >> name;) {
      if (name.find('.') == std::string::npos) name += ".DLL";
      text.append(std::to_string(++number)).append("File=").append(name).append("\n");
    }
  }
  return text;
}

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

}  // namespace

int MakeMachine(const Options& options, std::ostream& out) {
  std::error_code error;
  const std::string& folder = options.newMachine;
  const fs::path root = fs::u8path(folder);
  if (fs::exists(root, error) && (!fs::is_directory(root, error) || !fs::is_empty(root, error))) {
    throw MachineError(folder + ": already exists and is not empty");
  }
  for (const char* path : kFolderPaths) {
    const fs::path made = root / path;
    if (!fs::create_directories(made, error) && error)
      throw std::runtime_error(made.u8string() + ": " + error.message());
  }
  const std::string systemFiles = SystemFileList();
  std::vector<TemplateFile> files(std::begin(kFiles), std::end(kFiles));
  files.push_back({kSystemFileList, systemFiles});
  for (const TemplateFile& file : files) {
    const fs::path path = root / file.path;
    fs::create_directories(path.parent_path(), error);
    if (!WriteWithWindowsLines(path, file.text))
      throw std::runtime_error(path.u8string() + ": cannot be written");
  }
  out << "Made the machine folder " << folder << ".\n";
  return kExitFinished;
}

}  // namespace bxvbwiz
