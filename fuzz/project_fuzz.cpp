#include <cstdlib>
#include <set>

#include "machine/MachineProfileStrings.h"
#include "platform/Forwarding.h"
#include "project/basDependency.h"
#include "project/CProject.h"
#include "RecordingUser.h"
#include "support/basFile.h"
#include "support/basLogging.h"
#include "TestMachine.h"
#include "text/Text.h"

// The input serves as every file: a project, its forms and the .dep files of its controls. It may fail only
// with the error of an unreadable project, a form has the controls that a plain reading finds, and a
// dependency is listed once.
namespace {

using namespace bxvbwiz;

class SameFiles : public ForwardingFileSystem, public ProfileStore {
 public:
  SameFiles(FileSystem& inner, std::string_view bytes) : ForwardingFileSystem(inner), bytes_(bytes) {}
  SystemError Find(const std::string& pattern, std::vector<FoundFile>& found) override {
    found = {{pattern.substr(pattern.rfind('\\') + 1), kAttributeArchive}};
    return SystemError::Success;
  }
  SystemError Read(const std::string&, std::string& bytes) override {
    return bytes = bytes_, SystemError::Success;
  }
  std::string Key(const std::string&) override { return "file"; }
  SystemError Load(const std::string& path, std::string& bytes, FileStamp&) override {
    return Read(path, bytes);
  }
  bool Changed(const std::string&, const FileStamp&) override { return false; }
  SystemError CheckWritable(const std::string&) override { return SystemError::AccessDenied; }
  SystemError Replace(const std::string&, std::string_view, FileStamp&) override {
    return SystemError::AccessDenied;
  }

 private:
  std::string bytes_;
};

struct NoFacts : FileGroupBuilder {
  void GetFileGroupInfo(const std::string&, const std::string&, const std::string&, const FileRecord*,
                        FileRecord&) override {}
};

// Answers Yes and No in turn.
struct AlternatingUser : RecordingUser {
  Button Display(const Message&) override { return (yes = !yes) ? Button::Yes : Button::No; }
  bool yes = false;
};

struct FuzzedMachine : TestMachine {
  FuzzedMachine() {
    Registry(
        "[HKEY_CLASSES_ROOT\\TypeLib\\{A}\\1.0\\0\\win32]\n@=\"C:\\\\a.ocx\\\\1\"\n"
        "[HKEY_CLASSES_ROOT\\TypeLib\\{A}\\2.a\\0\\win32]\n@=\"b.ocx\"\n"
        "[HKEY_CLASSES_ROOT\\TypeLib\\{A}\\3.0]\n[HKEY_CLASSES_ROOT\\TypeLib\\{B}\\junk]\n"
        "[HKEY_LOCAL_MACHINE\\SOFTWARE\\Borvex\\Borvex Professional\\6.0\\VBWiz]\n\"DepFile\"=\"C:\\\\\"\n");
  }
};

void ReadForm(AnalysisContext& context, std::string_view bytes) {
  CObjects all(context, nullptr);
  Sources sources(context.platform);
  CForms forms(context, all, sources);
  std::size_t found = 0;
  try {
    found = forms.Add("Main.frm", "C:\\Prj")->Objects().Count();
  } catch (const RuntimeError& error) {
    if (error.Number() != kErrorDuplicateKey) throw;
    return;
  }
  LineReader reader(bytes);
  for (std::string_view line; reader.Next(line);) found -= StartsWith(line, "Object =") ? 1 : 0;
  if (found != 0) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static FuzzedMachine fuzzed;
  Platform& machine = fuzzed.platform();
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  SameFiles files(machine.files, bytes);
  MachineProfileStrings profiles(machine.codePage, files, "C:\\");
  Platform platform = WithParts(machine, files, profiles);
  Session session(platform, StartMode::Automation);
  const SessionScope scope(session);
  AlternatingUser user;
  NoFacts builder;
  basGlobal global(platform);
  global.user = &user;
  Executables executables(platform);
  AnalysisContext context{platform, user, global, builder, executables};
  try {
    CProject(context).SetFileName("C:\\Prj\\Demo.vbp");
  } catch (const RuntimeError& error) {
    if (error.Number() != kProjectReadError) throw;
  }
  ReadForm(context, bytes);
  CDependencies dependencies(context);
  ReadDependencies(context, "a.ocx", "C:\\a.ocx", "C:\\a.dep", dependencies, dependencies);
  std::set<std::string> names;
  for (const CDependency& dependency : dependencies) {
    if (!names.insert(dependency.Name).second) std::abort();
  }
  return 0;
}
