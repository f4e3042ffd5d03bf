#include "TestMachine.h"

#include <fstream>
#include <random>
#include <sstream>

namespace bxvbwiz {

namespace fs = std::filesystem;

std::string ReadBytes(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  std::ostringstream bytes;
  bytes << file.rdbuf();
  return bytes.str();
}

Snapshot TakeSnapshot(const std::string& folder) {
  Snapshot files;
  for (const auto& entry : fs::recursive_directory_iterator(folder)) {
    const std::string path = entry.path().generic_u8string().substr(folder.size() + 1);
    if (entry.is_directory()) {
      files[path + "/"];
    } else {
      files[path] = ReadBytes(entry.path());
    }
  }
  return files;
}

TestMachine::TestMachine() {
  std::random_device random;
  do {
    folder_ = (fs::temp_directory_path() / ("bxvbwiz-" + std::to_string(random()))).generic_string();
  } while (!fs::create_directory(folder_));
  fs::create_directories(folder_ + "/drive_c/windows/system32");
  Write("machine.ini", "[Folders]\r\nWindows=C:\\windows\r\nSystem=C:\\windows\\system32\r\n");
}

TestMachine::~TestMachine() {
  machine_.reset();
  std::error_code ignored;
#ifdef _WIN32  // where a read-only file is not removed
  for (fs::recursive_directory_iterator entry(folder_, ignored), end; entry != end; entry.increment(ignored))
    fs::permissions(entry->path(), fs::perms::all, ignored);
#endif
  fs::remove_all(folder_, ignored);
}

void TestMachine::Write(const std::string& relativePath, const std::string& bytes) {
  const fs::path path = fs::path(folder_) / fs::u8path(relativePath);
  fs::create_directories(path.parent_path());
  std::ofstream(path, std::ios::binary) << bytes;
}

void TestMachine::Registry(const std::string& lines) {
  registry_ += lines;
}

void TestMachine::LogSettings(const std::map<std::string, std::string>& settings) {
  Registry("[HKEY_CURRENT_USER\\Software\\VB and VBA Program Settings\\Bx6vbwiz\\Logging]\r\n");
  for (const auto& [name, text] : settings) Registry("\"" + name + "\"=\"" + text + "\"\r\n");
}

void TestMachine::InstallProduct() {
  Registry(
      "[HKEY_LOCAL_MACHINE\\SOFTWARE\\Borvex\\Borvex Professional\\6.0\\VBWiz]\r\n"
      "\"DepFile\"=\"C:\\\\Borvex\"\r\n\"TemplateSource\"=\"C:\\\\Borvex\\\\Template\"\r\n"
      "[HKEY_LOCAL_MACHINE\\SOFTWARE\\Borvex\\Borvex Professional\\6.0\\Main]\r\n"
      "\"Path\"=\"C:\\\\Borvex\"\r\n\"DataLink\"=\"C:\\\\Links\"\r\n"
      "[HKEY_CURRENT_USER\\SOFTWARE\\Borvex\\Borvex "
      "Professional\\6.0\\Main]\r\n\"DataFile\"=\"C:\\\\Setups\"\r\n"
      "[HKEY_LOCAL_MACHINE\\SOFTWARE\\Microsoft\\Windows\\CurrentVersion]\r\n"
      "\"CommonFilesDir\"=\"C:\\\\Program Files\\\\Common Files\"\r\n\"ProgramFilesDir\"=\"C:\\\\Program "
      "Files\"\r\n"
      "[HKEY_CLASSES_ROOT\\.vbp]\r\n@=\"VisualBasic.Project\"\r\n"
      "[HKEY_CLASSES_ROOT\\VisualBasic.Project\\shell\\Make\\command]\r\n@=\"\\\"C:\\\\VB98\\\\VB6.EXE\\\" "
      "/make "
      "\\\"%1\\\"\"\r\n");
  Write("drive_c/Borvex/VBWizDep.ini", "[System]\r\n1File=KERNEL32.DLL\r\n2File=USER32.DLL\r\n");
  Write("drive_c/Borvex/Template/Base.bxp", "[Data]\r\nType=\r\n");
  Write("drive_c/Borvex/Template/Script Files/Setup.bxs", "The setup script.\r\n");
  for (const char* name :
       {"Component Definitions", "File Groups", "String Tables/0009-English", "Text Substitutions"}) {
    fs::create_directories(folder_ + "/drive_c/Borvex/Template/" + name);
  }
  Write("drive_c/VB98/VB6.EXE", "");
  fs::create_directories(folder_ + "/drive_c/Setups");
}

std::string TestMachine::Read(const std::string& relativePath) const {
  return ReadBytes(fs::path(folder_) / fs::u8path(relativePath));
}

bool TestMachine::Exists(const std::string& relativePath) const {
  return fs::exists(fs::path(folder_) / fs::u8path(relativePath));
}

void TestMachine::Store() {
  Write("registry.reg", registry_);
}

Machine& TestMachine::machine() {
  if (machine_ == nullptr) {
    Store();
    machine_ = std::make_unique<Machine>(folder_);
  }
  return *machine_;
}

Platform& TestMachine::platform() {
  return machine().platform();
}

}  // namespace bxvbwiz
