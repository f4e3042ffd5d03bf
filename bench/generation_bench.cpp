#include <benchmark/benchmark.h>

#include <filesystem>
#include <string>

#include "WizardRun.h"

namespace {

using bxvbwiz::TestMachine;
using bxvbwiz::WizardRun;

// A project with one control that needs `files` files, all in one file group.
void WriteProject(TestMachine& machine, std::int64_t files) {
  machine.Write("drive_c/Src/Big.vbp",
                "Type=Exe\r\nObject={A}#1.0#0; Grid.ocx\r\nExeName32=\"Big.exe\"\r\nName=\"Big\"\r\n");
  machine.Write("drive_c/Src/Big.exe", "MZ");
  machine.Write("drive_c/windows/system32/Grid.ocx", "MZ");
  std::string uses = "[Grid.ocx]\r\n";
  std::string sections;
  for (std::int64_t number = 1; number <= files; ++number) {
    const std::string name = "Part" + std::to_string(number) + ".dat";
    uses += "Uses" + std::to_string(number) + "=" + name + "\r\n";
    sections += "[" + name + "]\r\nDest=$(APPPATH)\r\n";
    machine.Write("drive_c/windows/system32/" + name, "x");
  }
  machine.Write("drive_c/windows/system32/Grid.dep", uses + sections);
  machine.Registry(
      "[HKEY_CLASSES_ROOT\\TypeLib\\{A}\\1.0\\0\\win32]\r\n"
      "@=\"C:\\\\windows\\\\system32\\\\Grid.ocx\"\r\n");
}

void GenerateFiles(benchmark::State& state) {
  TestMachine machine;
  machine.InstallProduct();
  WriteProject(machine, state.range(0));
  for (auto _ : state) {
    WizardRun run(machine.platform());
    run.Analyse("C:\\Src\\Big.vbp");
    run.Generate();
    machine.machine().Save();
    state.PauseTiming();
    std::filesystem::remove_all(machine.Folder() + "/drive_c/Setups/Big");
    state.ResumeTiming();
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(GenerateFiles)->Arg(100)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
