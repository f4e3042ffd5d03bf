#pragma once

#include <string>

#include "platform/Platform.h"
#include "support/User.h"

namespace bxvbwiz {

// Copies the tree below `source` into the existing folder `target`, overwriting; both get a trailing
// backslash. Entries whose name begins with "." are left out, copies lose the read-only attribute (the wizard
// patches them). A source that cannot be listed copies nothing. A failing step is reported and may be
// retried.
void CopyFileTree(FileSystem& files, User& user, std::string& source, std::string& target);

// How often CopyFileTree moves the progress bar for the tree below `source`, which ends in a backslash.
int StepsOfCopy(FileSystem& files, const std::string& source);

// Sets the creation, last-access and last-write time of a file to the present; a missing file is left alone.
// A failure becomes a finding.
void SetFileTimesToNow(FileSystem& files, Clock& clock, const std::string& path);

}  // namespace bxvbwiz
