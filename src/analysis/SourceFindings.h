#pragma once

#include "project/AnalysisContext.h"
#include "project/CFiles.h"
#include "project/CProject.h"

namespace bxvbwiz {

// Tells what the source files of a project ask for and neither its lists nor the files of the setup have:
// controls, DLLs, objects; and what these files are to the products that they belong to. The project's folder
// must be the current directory.
void TellOfSources(AnalysisContext& context, CProject& project, const CFiles& files);

}  // namespace bxvbwiz
