#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Platform.h"
#include "project/SourceCode.h"
#include "project/TypeLibrary.h"
#include "support/Findings.h"

namespace bxvbwiz {

// What the source files of a project ask for, each with the line that asks: controls, and what their code
// needs while it runs. The project file need not say the same.
class Sources {
 public:
  enum class Lister { Project, Form, Other };
  // A control that a line asks for.
  struct Control {
    Lister lister;
    LibraryLine line;
    Origin origin;
  };
  struct Use {
    CodeUse::Kind kind;
    std::string name;
    Origin origin;
  };

  using TakeControl = std::function<void(const std::string& rawLine)>;

  explicit Sources(Platform& platform) : platform_(platform) {}

  // Reads a source file and calls `takeControl` with each of its control lines, which is the origin then.
  SystemError Read(Lister lister, const std::string& path, const TakeControl& takeControl);
  // Reads one that is no form. One that cannot be read is told by Unread.
  void ReadModule(const std::string& path);
  // Takes a control line; the current origin is where it stands.
  void AddControl(Lister lister, const std::string& rawLine);

  // The paths of the files that were read.
  const std::vector<std::string>& Paths() const { return paths_; }
  const std::vector<Control>& Controls() const { return controls_; }
  const std::vector<Use>& Uses() const { return uses_; }
  // A finding for each file that could not be read.
  const std::vector<Finding>& Unread() const { return unread_; }

 private:
  Platform& platform_;
  std::string readBuffer_;
  std::vector<std::string> paths_;
  std::vector<Control> controls_;
  std::vector<Use> uses_;
  std::vector<Finding> unread_;
};

// The path of a source file that a line of the project names, a relative one in the project's folder.
std::string SourcePath(const std::string& projectFolder, const std::string& name);

}  // namespace bxvbwiz
