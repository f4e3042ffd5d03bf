#include <benchmark/benchmark.h>

#include <string>

#include "WizardRun.h"

namespace {

using bxvbwiz::TestMachine;
using bxvbwiz::WizardRun;

constexpr int kLinesPerForm = 2000;

// A project of `forms` forms, each with code and the same control.
void WriteProject(TestMachine& machine, std::int64_t forms) {
  std::string form = "VERSION 5.00\r\nObject = \"{A}#1.0#0\"; \"Grid.ocx\"\r\n";
  for (int line = 0; line < kLinesPerForm; ++line) form += "    Total = Total + Price(Index) * Count\r\n";
  std::string project = "Type=Exe\r\nExeName32=\"Big.exe\"\r\nName=\"Big\"\r\n";
  for (std::int64_t number = 0; number < forms; ++number) {
    const std::string name = "Form" + std::to_string(number) + ".frm";
    machine.Write("drive_c/Src/" + name, form);
    project += "Form=" + name + "\r\n";
  }
  machine.Write("drive_c/Src/Big.vbp", project);
  machine.Write("drive_c/Src/Big.exe", "MZ");
  machine.Write("drive_c/windows/system32/Grid.ocx", "MZ");
  machine.Registry(
      "[HKEY_CLASSES_ROOT\\TypeLib\\{A}\\1.0\\0\\win32]\r\n"
      "@=\"C:\\\\windows\\\\system32\\\\Grid.ocx\"\r\n");
}

void AnalyseForms(benchmark::State& state) {
  TestMachine machine;
  machine.InstallProduct();
  WriteProject(machine, state.range(0));
  for (auto _ : state) {
    WizardRun run(machine.platform());
    run.Analyse("C:\\Src\\Big.vbp");
  }
  state.SetItemsProcessed(state.iterations() * state.range(0) * kLinesPerForm);
}
BENCHMARK(AnalyseForms)->Arg(10)->Arg(100)->Arg(1000)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
