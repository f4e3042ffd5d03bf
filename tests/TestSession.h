#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <optional>
#include <string>
#include <vector>

#include "RecordingUser.h"
#include "support/Findings.h"
#include "TestMachine.h"

namespace bxvbwiz {

inline std::string Join(const std::vector<std::string>& texts) {
  std::string joined;
  for (const std::string& text : texts) joined += (joined.empty() ? "" : ", ") + text;
  return joined;
}

// A session on a machine of its own. Write machine.ini and the registry before the first call of session() or
// platform().
class TestSession : public ::testing::Test {
 protected:
  // Creates a file of drive C:, given by its Windows path.
  void Put(const std::string& path, const std::string& bytes) { disk.Write(OnDisk(path), bytes); }
  // A file of drive C: as it is stored.
  std::string Stored(const std::string& path) {
    platform().profiles.Flush();
    return disk.Read(OnDisk(path));
  }
  Session& session() {
    if (!session_) {
      session_.emplace(disk.platform(), StartMode::Automation);
      scope_.emplace(*session_);
      session_->log.Init();
      session_->user = &user;
      session_->findings = &findings_.emplace(disk.platform().strings);
    }
    return *session_;
  }
  Platform& platform() { return session().platform(); }

  Findings& findings() { return session(), *findings_; }
  void ForgetFindings() { session().findings = &findings_.emplace(disk.platform().strings); }

  TestMachine disk;
  RecordingUser user;

 private:
  static std::string OnDisk(std::string path) {
    std::replace(path.begin(), path.end(), '\\', '/');
    return "drive_c/" + path.substr(3);
  }
  std::optional<Findings> findings_;
  std::optional<Session> session_;
  std::optional<SessionScope> scope_;
};

}  // namespace bxvbwiz
