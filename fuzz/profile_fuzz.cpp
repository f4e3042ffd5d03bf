#include <algorithm>
#include <cctype>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

#include "machine/CodePages.h"
#include "machine/MachineError.h"
#include "machine/MachineIni.h"
#include "machine/ProfileEngine.h"

// The input is a section, a key and a value, each ended by a line feed, and then a profile file. What is
// written can be read back, and a file changed in memory equals its bytes read again. As a machine.ini the
// file is read, or refused with a message that names it.
namespace {

using namespace bxvbwiz;

void Require(bool holds) {
  if (!holds) std::abort();
}

std::string TakeLine(std::string_view& rest) {
  const std::string_view line = rest.substr(0, rest.find('\n'));
  rest.remove_prefix(std::min(line.size() + 1, rest.size()));
  return std::string(line);
}

// True when nothing in the text has a special meaning in a profile file, and every code page has it.
bool IsPlain(const std::string& text) {
  const auto isPlain = [](unsigned char c) { return c < 0x80 && std::isalnum(c) != 0; };
  return !text.empty() && std::all_of(text.begin(), text.end(), isPlain);
}

void RequireSame(const CodePage& codePage, const ProfileEngine& engine, bool isUtf16) {
  const std::string bytes = engine.Bytes();
  // Without its first lines a file may happen to begin with the mark of UTF-16.
  if (!isUtf16 && bytes.substr(0, 2) == "\xFF\xFE") return;
  const ProfileEngine again(codePage, bytes);
  Require(again.Bytes() == bytes && again.Sections() == engine.Sections());
  for (const std::string& section : engine.Sections()) {
    const auto keys = engine.Keys(section);
    Require(again.Keys(section) == keys);
    for (const std::string& key : keys.value_or(std::vector<std::string>()))
      Require(again.Value(section, key) == engine.Value(section, key));
  }
}

void ReadAsMachineIni(std::string_view bytes) {
  try {
    const MachineIni ini = ReadMachineIni(bytes, "machine.ini");
    Require(ini.codePage && ini.windowsFolder.size() > 2 && ini.systemFolder.size() > 2);
    for (const auto& [program, host] : ini.programs) Require(program.size() > 2 && !host.empty());
  } catch (const MachineError& error) {
    Require(std::string(error.what()).find("machine.ini") != std::string::npos);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::string_view rest(reinterpret_cast<const char*>(data), size);
  const std::string section = TakeLine(rest);
  const std::string key = TakeLine(rest);
  const std::string value = TakeLine(rest);
  ReadAsMachineIni(rest);
  static const auto codePage = MakeCodePage(932);
  ProfileEngine engine(*codePage, rest);
  const bool isUtf16 = rest.substr(0, 2) == "\xFF\xFE";
  RequireSame(*codePage, engine, isUtf16);
  engine.SetValue(section, key, value);
  RequireSame(*codePage, engine, isUtf16);
  if (IsPlain(section) && IsPlain(key) && IsPlain(value)) Require(engine.Value(section, key) == value);
  engine.SetSection(section, key + '=' + value);
  RequireSame(*codePage, engine, isUtf16);
  engine.RemoveKey(section, key);
  RequireSame(*codePage, engine, isUtf16);
  engine.RemoveSection(section);
  RequireSame(*codePage, engine, isUtf16);
  return 0;
}
