#pragma once

#include <string>

#include "project/AnalysisContext.h"
#include "project/CDependencies.h"

// The walk from a file to the files that it needs.
namespace bxvbwiz {

// Reads the numbered "Uses" keys of the section `name` of `depFile`, adds every file that is not a system
// file and not yet in `allDependencies`, and completes the list from the import table of `filePath` (a path
// or a name); all are added to `ownDependencies`, each with what it needs in turn. With an empty `depFile`
// only the imports count. A file that cannot be found or read has none.
void ReadDependencies(AnalysisContext& context, const std::string& name, const std::string& filePath,
                      const std::string& depFile, CDependencies& ownDependencies,
                      CDependencies& allDependencies);

// The .dep file beside a file, or the one of its title in the system folder; empty when there is
// none. A name without a folder has none beside it.
std::string FindDepFile(AnalysisContext& context, const std::string& filePath);

// The section of `depFile` that describes a file: that of its name. Generated .dep files have sections of the
// name and a language instead ("RICHTX32.OCX <0009>"); of these it is the one of the user's language, of its
// primary language, of English, or the first there is. Empty when there is none.
std::string FindDepSection(Platform& platform, const std::string& depFile, const std::string& name);

// The system folder with a trailing backslash.
std::string SystemFolder(Platform& platform);

}  // namespace bxvbwiz
