#include "wizard/Rebuild.h"

#include "support/basFile.h"
#include "support/basShell.h"
#include "support/Findings.h"

namespace bxvbwiz {

namespace {

constexpr const char* kRebuildProject = "frmPanel3!RebuildProject";
constexpr const char* kBuildLog = "_BxVbErr.txt";
constexpr std::size_t kFolderBuffer = 254;

// The compiler's switch that makes the kind of output.
const char* MakeSwitch(std::int16_t projectType) {
  switch (projectType) {
    case CProject::PTActiveXDLL:
    case CProject::PTActiveXDocDll:
    case CProject::PTUserControl:
      return " /l ";
    default:
      return " /m ";
  }
}

// The log's second line says how the build ended.
std::string SecondLine(Platform& platform, const std::string& path) {
  std::string bytes;
  CheckSystem(platform.files.Read(path, bytes), path);
  LineReader lines(bytes);
  std::string_view line;
  if (!lines.Next(line) || !lines.Next(line)) {
    throw RuntimeError(kErrorInputPastEnd, "Input past end of file: " + path);
  }
  return platform.codePage.Decode(line);
}

// Why a build has no result.
std::string WhyNoLog(const StringTable& strings, const std::string& compiler, bool isStarted, TextId advice) {
  const TextId cause = isStarted ? TextId::CompilerLeftNoLog : TextId::CompilerNotStarted;
  const std::string why = TextOf(strings, {cause, {compiler}});
  return advice == TextId{} ? why : why + "; " + strings.Text(advice);
}

// A log that stays tells of an earlier build, unless the compiler can replace it. One that this component
// read before stays open, so that it is always kept.
void DeleteOldLog(FileSystem& files, const std::string& log) {
  const SystemError error = files.Delete(log);
  if (error == SystemError::Success || MeansMissing(error)) return;
  AddFinding(FindingId::BuildLogKept, {log, ErrorCode(error)});
}

}  // namespace

bool RebuildProject(WizardCore& core, User& user, const CProject& project, TextId advice) {
  const CallStackEntry entry(kRebuildProject);
  Platform& platform = core.platform();
  user.ShowStatus(platform.strings.Text(TextId::RebuildingProject));
  user.DoEvents();

  const std::string folder = core.global().FindVB();
  if (folder.empty()) return false;
  const std::string version = core.global().GetVBVer();
  std::string log;
  bool succeeded = version == "5" || version == "6";
  if (succeeded) {
    log = FixPath(platform.facts.WindowsDirectory(kFolderBuffer)) + kBuildLog;
    DeleteOldLog(platform.files, log);
    const std::string compiler = folder + (version == "5" ? "vb5.exe" : "vb6.exe");
    const bool isStarted = ShellAndWait(
        platform.processes, user,
        compiler + MakeSwitch(project.ProjectType) + "\"" + project.FileName() + "\" /out " + log);
    std::string line;
    try {
      line = SecondLine(platform, log);
    } catch (const RuntimeError& error) {
      // Reading again would change nothing: after Retry the build counts as failed.
      const bool isEmpty = error.Number() == kErrorFileNotFound || error.Number() == kErrorInputPastEnd;
      ReportError(kRebuildProject, error,
                  isStarted && !isEmpty ? "" : WhyNoLog(platform.strings, compiler, isStarted, advice));
      return false;
    }
    core.HoldBuildLog(log);
    succeeded = EndsWith(UpperCase(line), UpperCase(platform.strings.Text(TextId::BuildSucceeded)));
  }
  user.ShowStatus("");
  if (!succeeded) {
    const StringTable& strings = platform.strings;
    user.ShowMessage(
        {TextId::RebuildFailed, kStyleCritical,
         strings.Text(TextId::RebuildFailed) + "\r\n\r\n" + strings.Text(TextId::SeeBuildLog) + "\r\n" + log,
         ""});
  }
  return succeeded;
}

}  // namespace bxvbwiz
