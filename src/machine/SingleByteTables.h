#pragma once

namespace bxvbwiz {

// The upper half of a code page whose characters are all one byte long; its lower half is ASCII.
struct UpperHalf {
  int codePage;
  char16_t characters[128];  // 0 where the code page leaves the byte undefined
};

// Null when `codePage` is not one of 874 and 1250 to 1258.
const UpperHalf* FindUpperHalf(int codePage);

}  // namespace bxvbwiz
