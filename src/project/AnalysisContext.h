#pragma once

#include <string>

#include "platform/Platform.h"
#include "project/basGlobal.h"
#include "project/Executables.h"
#include "project/FileGroupBuilder.h"
#include "project/PassedOver.h"
#include "support/User.h"

namespace bxvbwiz {

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
