#include <benchmark/benchmark.h>

#include <string>

#include "machine/MachineRegistry.h"

namespace {

class Latin1 : public bxvbwiz::CodePage {
 public:
  std::string Decode(std::string_view bytes) const override { return std::string(bytes); }
  std::string Encode(std::string_view text) const override { return std::string(text); }
  bool IsAlphaNumeric(char32_t) const override { return true; }
  int Number() const override { return 28591; }
};

// An export of about `size` bytes: registered classes with strings, numbers and bytes.
std::string MakeExport(std::size_t size) {
  std::string text = "REGEDIT4\r\n";
  text.reserve(size + 4096);
  for (unsigned i = 0; text.size() < size; ++i) {
    const std::string number = std::to_string(10000000 + i * 7919 % 89999999);
    const std::string key =
        "[HKEY_LOCAL_MACHINE\\SOFTWARE\\Classes\\CLSID\\{" + number + "-0000-0000-C000-000000000046}";
    text += "\r\n" + key + "]\r\n@=\"Component " + number + "\"\r\n\"Flags\"=dword:" + number + "\r\n";
    text += "\r\n" + key + "\\InprocServer32]\r\n@=\"C:\\\\WINDOWS\\\\system32\\\\component" + number +
            ".ocx\"\r\n";
    text += "\"ThreadingModel\"=\"Apartment\"\r\n\"Data\"=hex:01,02";
    for (int line = 0; line < 8; ++line) {
      text += ",\\\r\n  00,11,22,33,44,55,66,77,88,99,aa,bb,cc,dd,ee,ff,00,11,22,33,44,55,66,77,88";
    }
    text += "\r\n";
  }
  return text;
}

void LoadRegistry(benchmark::State& state) {
  const Latin1 codePage;
  const std::string text = MakeExport(static_cast<std::size_t>(state.range(0)));
  for (auto _ : state) {
    state.PauseTiming();
    std::string bytes = text;
    state.ResumeTiming();
    const bxvbwiz::MachineRegistry registry(std::move(bytes), codePage);
    benchmark::DoNotOptimize(registry.Skipped());
  }
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}
BENCHMARK(LoadRegistry)->Arg(1 << 20)->Arg(100 << 20)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
