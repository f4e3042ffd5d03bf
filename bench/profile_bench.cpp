#include <benchmark/benchmark.h>

#include <string>

#include "machine/MachineProfileStrings.h"
#include "machine/ProfileEngine.h"
#include "text/Text.h"

namespace {

class Latin1 : public bxvbwiz::CodePage {
 public:
  std::string Decode(std::string_view bytes) const override { return std::string(bytes); }
  std::string Encode(std::string_view text) const override { return std::string(text); }
  bool IsAlphaNumeric(char32_t) const override { return true; }
  int Number() const override { return 28591; }
};

// Appends numbered entries to one section, each looked up first, as the lists of a setup project are made.
void AppendEntries(benchmark::State& state) {
  const Latin1 codePage;
  for (auto _ : state) {
    bxvbwiz::ProfileEngine engine(codePage, "[Files]\r\n\r\n[Other]\r\nk=v\r\n");
    for (std::int64_t i = 0; i < state.range(0); ++i) {
      const std::string key = "file" + std::to_string(i);
      if (!engine.Value("Files", key))
        engine.SetValue("Files", key, "C:\\WINDOWS\\system32\\" + key + ".ocx");
    }
    benchmark::DoNotOptimize(engine.Bytes());
  }
  state.SetComplexityN(state.range(0));
}
BENCHMARK(AppendEntries)->Arg(1000)->Arg(10000)->Arg(100000)->Complexity(benchmark::oN);

}  // namespace

BENCHMARK_MAIN();
