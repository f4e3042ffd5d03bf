#pragma once

#include <string>

#include "platform/Platform.h"
#include "project/basGlobal.h"
#include "project/Executables.h"
#include "project/FileGroupBuilder.h"
#include "support/User.h"

namespace bxvbwiz {

// What every reader of a project needs. It outlives the project.
struct AnalysisContext {
  Platform& platform;
  User& user;
  basGlobal& global;
  FileGroupBuilder& builder;
  Executables& executables;
};

}  // namespace bxvbwiz
