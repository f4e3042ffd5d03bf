#pragma once

#include <string>

#include "platform/Platform.h"
#include "support/User.h"

// What the product's registry keys say. A missing key is shown and ends the wizard; a value that is missing
// or no full path raises error 91, one that cannot be read as text error 75.
namespace bxvbwiz {

// The folder under which Borvex keeps its setup projects, with a trailing backslash.
std::string DataFolder(Platform& platform, User& user);
// The folder of the template setup project, with a trailing backslash.
std::string TemplateFolder(Platform& platform, User& user);

}  // namespace bxvbwiz
