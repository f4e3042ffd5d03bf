// Adding 1,000 files to a file group through the system's profile strings, beside as many bare writes to such
// a file. Prints both times and their ratio, best of three; fails when the group is not the one that a
// machine folder gives, or takes more than five times the bare writes.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "setupgen/CFileGroups.h"
#include "support/basLogging.h"
#include "TestMachine.h"
#include "win32/Win32Platform.h"

namespace {

using namespace bxvbwiz;
namespace fs = std::filesystem;
using Seconds = std::chrono::duration<double>;

constexpr int kFiles = 1000;
constexpr double kLimit = 5;

class SilentUser : public User {
 public:
  Button Display(const Message&) override { return Button::Yes; }
};

template <class Work>
Seconds TimeOf(Work work) {
  const auto start = std::chrono::steady_clock::now();
  work();
  return std::chrono::steady_clock::now() - start;
}

void AddFiles(Platform& platform, const std::string& setup) {
  SilentUser user;
  Session session(platform, StartMode::Automation);
  const SessionScope scope(session);
  basGlobal global(platform);
  session.user = global.user = &user;
  NumberedKeys lists(platform.profiles);
  Executables executables(platform);
  CFileGroups groups(
      platform, global, [] { return "C:\\App\\App.vbp"; }, lists, executables);
  for (int number = 0; number < kFiles; ++number) {
    CFile file;
    file.FileName = "File" + std::to_string(number) + ".dat";
    file.FileGroup = "Program Files";
    file.FileLinkPath = "C:\\App\\";
    groups.CreateFileGroup(setup, file);
  }
  platform.profiles.Flush();
}

void MakeFolders(const fs::path& setup) {
  fs::remove_all(setup);
  for (const char* name : {"File Groups", "Component Definitions", "Text Substitutions", "Script Files"})
    fs::create_directories(setup / name);
}

std::string ReadAll(const fs::path& path) {
  std::ostringstream bytes;
  bytes << std::ifstream(path, std::ios::binary).rdbuf();
  return bytes.str();
}

}  // namespace

int main() {
  TestMachine machine;
  machine.InstallProduct();
  machine.Write("drive_c/App/App.vbp", "Type=Exe\r\n");
  Win32Platform windows;
  Platform& here = windows.platform();
  Platform& there = machine.platform();
  // What the machine folder knows, written through the system.
  Platform mixed = WithParts(there, here.files, here.profiles, here.guids);
  const std::string folder = "C:\\bxvbwiz group writes";
  const std::string group = "\\File Groups\\Program Files.fgl";
  MakeFolders(fs::path(machine.Folder()) / "drive_c/bxvbwiz group writes");
  AddFiles(there, folder + "\\");
  Seconds ours(1e9);
  Seconds bare(1e9);
  bool same = true;
  for (int round = 0; round < 3; ++round) {
    MakeFolders(folder);
    ours = std::min(ours, TimeOf([&] { AddFiles(mixed, folder + "\\"); }));
    same = same && !ReadAll(folder + group).empty() &&
           ReadAll(folder + group) ==
               ReadAll(machine.Folder() + "/drive_c/bxvbwiz group writes/File Groups/Program Files.fgl");
    bare = std::min(bare, TimeOf([&] {
                      for (int number = 0; number < kFiles; ++number)
                        here.profiles.WriteString("TOPDIR", "file" + std::to_string(number),
                                                  "C:\\App\\File.dat", folder + "\\bare.fgl");
                    }));
  }
  fs::remove_all(folder);
  const double ratio = ours / bare;
  std::printf("%d files in one group %.2f s / bare writes %.2f s = %.2f (at most %.0f)%s\n", kFiles,
              ours.count(), bare.count(), ratio, kLimit,
              same ? "" : "; the group differs from the machine folder's");
  return same && ratio <= kLimit ? 0 : 1;
}
