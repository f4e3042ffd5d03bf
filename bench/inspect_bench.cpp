#include <benchmark/benchmark.h>

#include <string>
#include <vector>

#include "project/EXEFile.h"
#include "TestMachine.h"
#include "tools/PeWriter.h"

namespace {

// A DLL with as many imported modules and exported names as the argument says.
void InspectExecutable(benchmark::State& state) {
  std::vector<std::string> imports;
  std::vector<std::string> exports;
  for (std::int64_t number = 0; number < state.range(0); ++number) {
    imports.push_back("Module" + std::to_string(number) + ".dll");
    exports.push_back("Function" + std::to_string(number));
  }
  const std::string bytes = bxvbwiz::MakePe(imports, exports);
  bxvbwiz::TestMachine machine;
  bxvbwiz::Platform& platform = machine.platform();
  for (auto _ : state) {
    bxvbwiz::EXEFile file(platform, nullptr);
    benchmark::DoNotOptimize(file.OpenBytes(bytes, false));
  }
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(bytes.size()));
}
BENCHMARK(InspectExecutable)->Arg(10)->Arg(1000);

}  // namespace

BENCHMARK_MAIN();
