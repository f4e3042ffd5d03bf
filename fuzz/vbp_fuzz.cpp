#include "AnalysisFakes.h"

// Reads the input as a project file, and as each of its forms. Only the error of an unreadable project may
// come out of it.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace bxvbwiz;
  AnalysisFakes fakes(std::string_view(reinterpret_cast<const char*>(data), size));
  try {
    CProject project(fakes.context);
    project.SetFileName("C:\\Prj\\Demo.vbp");
  } catch (const RuntimeError& error) {
    if (error.Number() != kProjectReadError) throw;
  }
  return 0;
}
