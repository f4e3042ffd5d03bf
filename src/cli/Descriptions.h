#pragma once

#include <CLI/App.hpp>
#include <string>

namespace bxvbwiz {

// What --generate can make.
constexpr const char* kDescriptions[] = {"man", "bash", "zsh", "fish", "powershell"};

// The manual page of the command line, or a shell's completions of it. `kind` is one of kDescriptions.
std::string Describe(const CLI::App& app, const std::string& kind);

}  // namespace bxvbwiz
