#include <cstdlib>

#include "AnalysisFakes.h"
#include "support/basFile.h"
#include "text/Text.h"

// Reads the input as a form file, and compares the number of its controls with that of a plain reading line
// by line.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace bxvbwiz;
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  AnalysisFakes fakes(bytes);
  CObjects all(fakes.context, nullptr);
  CForms forms(fakes.context, all);
  try {
    const std::size_t found = forms.Add("Main.frm", "C:\\Prj")->Objects().Count();
    std::size_t expected = 0;
    LineReader reader(bytes);
    std::string_view line;
    while (reader.Next(line)) expected += StartsWith(line, "Object =") ? 1 : 0;
    if (found != expected) std::abort();
  } catch (const RuntimeError& error) {
    if (error.Number() != kErrorDuplicateKey) throw;
  }
  return 0;
}
