#pragma once

#include <map>
#include <string>

#include "platform/Platform.h"
#include "project/basGlobal.h"
#include "project/Executables.h"
#include "project/FileGroupBuilder.h"
#include "project/FileRecord.h"
#include "support/User.h"

namespace bxvbwiz {

// The files that the walk over dependencies leaves out because Windows has them, by name in upper case, and
// who asks for each. To know more of them would cost memory: every program asks for some of these files.
using PassedOver = std::map<std::string, FileRecord>;
constexpr std::size_t kMostAskers = 20;

// What every reader of a project needs. It outlives the project.
struct AnalysisContext {
  Platform& platform;
  User& user;
  basGlobal& global;
  FileGroupBuilder& builder;
  Executables& executables;
  PassedOver* passedOver = nullptr;  // where it is noted which system files are asked for; null for nowhere
};

}  // namespace bxvbwiz
