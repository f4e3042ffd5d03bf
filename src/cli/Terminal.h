#pragma once

namespace bxvbwiz {

enum class Stream { Input = 0, Error = 2 };

// Whether a person sits at that end. One implementation a system.
bool IsTerminal(Stream stream);

}  // namespace bxvbwiz
