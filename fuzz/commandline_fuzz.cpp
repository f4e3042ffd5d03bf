#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "support/CCmdOptions.h"

// A command line either fails with one of its two errors or gives pieces that join to its beginning again.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace bxvbwiz;
  const std::string commandLine(data, data + size);
  try {
    const CCmdOptions options(commandLine);
    std::string joined;
    for (std::size_t position = 1; position <= static_cast<std::size_t>(options.Count()); ++position) {
      const CCmdOption& option = options.Item(position);
      if (position > 1) joined += ' ';
      joined += option.FullText;
      const std::string tag = option.Tag();
      if (option.Position != position || (!tag.empty() && !options.TagExists(tag))) std::abort();
      if (option.IsDelimited() ? option.FullText.substr(1) != tag + option.Text()
                               : option.FullText != option.Text())
        std::abort();
    }
    if (commandLine.compare(0, joined.size(), joined) != 0) std::abort();
  } catch (const RuntimeError& error) {
    if (error.Number() != kErrorDuplicateKey && error.Number() != kErrorOverflow) std::abort();
  }
  return 0;
}
