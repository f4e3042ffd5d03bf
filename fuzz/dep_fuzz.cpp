#include <cstdlib>
#include <set>

#include "AnalysisFakes.h"
#include "project/basDependency.h"

// Reads the input as a .dep file and follows it. Each file must be taken once.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace bxvbwiz;
  AnalysisFakes fakes(std::string_view(reinterpret_cast<const char*>(data), size));
  CDependencies dependencies(fakes.context);
  ReadDependencies(fakes.context, "a.ocx", "C:\\a.ocx", "C:\\a.dep", dependencies, dependencies);
  std::set<std::string> names;
  for (const CDependency& dependency : dependencies) {
    if (!names.insert(dependency.Name).second) std::abort();
  }
  return 0;
}
