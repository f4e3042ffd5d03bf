#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "support/Findings.h"

namespace bxvbwiz {

// How a file registers itself on the target machine.
constexpr std::int32_t kRegisterNone = 0;
constexpr std::int32_t kRegisterDll = 1;          // self-registering DLL or OCX
constexpr std::int32_t kRegisterExe = 2;          // self-registering EXE
constexpr std::int32_t kRegisterTypeLibrary = 3;  // type library to register
constexpr std::int32_t kRegisterRemote = 4;       // remote-automation server file
constexpr std::int32_t kRegisterNoMacro = 5;      // the text is not a register macro
constexpr std::int32_t kRegisterUnknownMacro = 6;

// The destination macro of the application's own folder.
constexpr const char* kApplicationMacro = "$(APPPATH)";

enum class RecordKind { File, Dependency, Control, TypeLibrary };

// How the setup installs one file; the file-group builder decides it.
struct InstallationFacts {
  bool LinkResolves = false;      // the source copy was found
  std::string FileLinkPath;       // folder of the source copy on this machine
  std::string Destination;        // destination macro or plain path; empty means the application folder
  bool SharedFile = false;        // installed as a file that several programs share
  std::string FileGroup;          // name of the file group that receives the file
  std::int32_t SelfRegister = 0;  // a kRegister... code
  std::vector<Sentence> reasons;  // the rules that decided all this, in their order
  std::vector<Finding> doubts;    // what is wrong with a file that is installed so
};

// A file that the setup needs.
struct FileRecord : InstallationFacts {
  explicit FileRecord(RecordKind recordKind = RecordKind::File) : kind(recordKind) {}

  // Notes who asks for the file, once each.
  void AddAsker(const Origin& asker);
  // What brought the file here; unknown when nothing is known to ask for it.
  Origin FirstAsker() const { return askers.empty() ? Origin() : askers.front(); }
  // The first one that stands in the same file as `other`; unknown when none does.
  Origin FirstAskerBeside(const Origin& other) const;
  // The full path of the source copy; `name` is the name or path of the file.
  std::string SourceOf(const std::string& name) const;

  RecordKind kind;
  std::vector<Origin> askers;  // in the order in which they were found
};

// Raises error 457 for a key that two lines have: the current origin and `first`. `text` says what they have
// in common.
[[noreturn]] void RaiseKeyTaken(const StringTable& strings, TextId text, const Origin& first);

}  // namespace bxvbwiz
