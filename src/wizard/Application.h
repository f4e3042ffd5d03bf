#pragma once

#include <cstdint>
#include <string>

#include "ui/FormPartners.h"
#include "wizard/FormHost.h"

namespace bxvbwiz {

// The automation class "BX6VBWiz.Application": input properties of a host, the run, and its results. In a
// stand-alone start its inputs come from the command line, and its results go to the registry when it is
// destroyed.
class Application : public AutomationObject {
 public:
  // Class_Initialize: reads the command line (stand-alone only) and loads the form.
  // `commandLine` is read in a stand-alone start only.
  explicit Application(FormHost& host, std::string commandLine = {});
  // Class_Terminate.
  ~Application() override;
  Application(const Application&) = delete;
  Application& operator=(const Application&) = delete;

  // Shows the wizard and returns when it has ended; returns at once if it had already ended. Raises error 400
  // while a wizard of this host is shown, and error 5 when there is no window to show it in.
  void Run();

  // Inputs.
  std::string ID = "0000";
  std::string Project;
  bool ShowPage2 = true;
  std::string AppName;
  bool VBScript = false;  // stored for the host; the wizard does not read it

  // Results.
  bool StillExecuting() const { return stillExecuting_; }
  std::int16_t ReturnCode() const { return returnCode_; }  // -1 finished, 0 cancelled
  const std::string& ProjectFile() const { return projectFile_; }

  // For the form.
  std::string ProjectPath() const override { return Project; }
  bool ShowsPage2() const override { return ShowPage2; }
  std::string ProposedAppName() const override { return AppName; }
  void SetReturnCode(std::int16_t code) override { returnCode_ = code; }
  void SetProjectFile(const std::string& path) override { projectFile_ = path; }
  void SetStillExecuting(bool executing) override { stillExecuting_ = executing; }

 private:
  void ReadCommandLine();
  void WriteResults();

  FormHost& host_;
  const std::string commandLine_;
  bool stillExecuting_ = true;
  std::int16_t returnCode_ = -1;
  std::string projectFile_;
};

}  // namespace bxvbwiz
