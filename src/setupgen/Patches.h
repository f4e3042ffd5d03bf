#pragma once

#include <string>

#include "platform/Platform.h"
#include "setupgen/SetupAnswers.h"
#include "support/NumberedKeys.h"

namespace bxvbwiz {

// These fill the copied template files. A routine that fails logs the error and returns; what was written
// stays.

// The language code: what stands before the first "-" of the language folder's name.
std::string LanguageCode(const StringTable& strings);
// The project file, by its full path.
void PatchIpr(Platform& platform, NumberedKeys& lists, const SetupAnswers& answers,
              const std::string& projectFile);
// The string table, the media and the shell objects of the setup project in `setupDir`. The generation calls
// only the first; the template's media and shell objects stay as they are.
void PatchShl(Platform& platform, const SetupAnswers& answers, const std::string& setupDir);
void PatchMda(Platform& platform, const SetupAnswers& answers, const std::string& setupDir);
void PatchShell(Platform& platform, const SetupAnswers& answers, const std::string& setupDir);
// Writes the data link file `linkName` that points to `setupDir`. Not called by the generation.
void CreateDataLink(Platform& platform, const std::string& setupDir, const std::string& linkName);

}  // namespace bxvbwiz
