#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "cli/CapturedMachine.h"
#include "platform/CallHook.h"

namespace bxvbwiz {

// Notes what a run asks a machine for in a captured machine. It asks the machine once more for what the call
// gave, so that what is only in the scratch machine is not noted.
class CaptureNotes : public CallHook {
 public:
  // Both must outlive this.
  CaptureNotes(Platform& source, CapturedMachine& captured) : source_(source), captured_(captured) {}
  void After(const SeamCall& call, SystemError error) override;

 private:
  using Note = void (CaptureNotes::*)(const SeamCall& call);
  struct NoteOfCall {
    std::string_view call;
    Note note;
  };
  static const NoteOfCall kNotes[];

  void NoteKey(const SeamCall& call);
  void NoteValue(const SeamCall& call);
  void NoteList(const SeamCall& call);
  void NoteContent(const SeamCall& call);
  void NoteProfile(const SeamCall& call);
  void NoteFound(const SeamCall& call);
  void NoteFolder(const SeamCall& call);
  bool IsOldSetupProject(const std::string& folder);
  void TakeContent(const std::string& path);
  std::string Full(std::string_view path);

  Platform& source_;
  CapturedMachine& captured_;
  std::optional<std::string> dataFolder_;  // once it was asked for, with a backslash at its end
};

}  // namespace bxvbwiz
