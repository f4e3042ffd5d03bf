#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>

#include "machine/CodePages.h"
#include "machine/MachineRegistry.h"
#include "text/Text.h"

// The input is an export. A registry changed in memory equals its text read again.
namespace {

using namespace bxvbwiz;

constexpr RegistryHandle kRoots[] = {kHKeyCurrentUser, kHKeyLocalMachine, kHKeyUsers};
constexpr std::uint32_t kAll = kKeyAllAccess;
constexpr std::size_t kRoom = 1 << 20;
constexpr unsigned kDeepest = 64;

// Everything below the key as one text. When the heading that spells a name first is removed, the spelling of
// the next one counts, so the case of names is not compared.
void Dump(MachineRegistry& registry, RegistryHandle key, unsigned depth, std::string& dump) {
  std::string name;
  std::uint32_t type = 0;
  for (std::uint32_t i = 0; registry.EnumValue(key, i, kRoom, name, type) == SystemError::Success; ++i) {
    RegistryData data;
    // A name that the code page cannot hold is listed with "?" and not found by that.
    registry.QueryValue(key, name, kRoom, data);
    dump += UpperCase(name) + '=' + std::to_string(type) + ':' + data.data + '\n';
  }
  for (std::uint32_t i = 0; registry.EnumKey(key, i, kRoom, name) == SystemError::Success; ++i) {
    dump += '[' + std::to_string(depth) + UpperCase(name) + "]\n";
    RegistryHandle child = 0;
    if (depth < kDeepest && registry.OpenKey(key, name, kAll, child) == SystemError::Success)
      Dump(registry, child, depth + 1, dump);
  }
}

std::string Dump(MachineRegistry& registry) {
  std::string dump;
  for (const RegistryHandle root : kRoots) Dump(registry, root, 0, dump);
  return dump;
}

void RequireSame(const CodePage& codePage, MachineRegistry& registry) {
  MachineRegistry again(registry.Text(), codePage);
  if (Dump(again) != Dump(registry)) std::abort();
}

// From the root down through the first keys: sets the first value of each and a new one, or deletes the first
// values and the last key.
void Change(MachineRegistry& registry, RegistryHandle key, bool remove) {
  std::string name;
  std::uint32_t type = 0;
  for (unsigned depth = 0; depth < kDeepest; ++depth) {
    if (registry.EnumValue(key, 0, kRoom, name, type) == SystemError::Success)
      remove ? registry.DeleteValue(key, name) : registry.SetValue(key, name, {7, "x\n"});
    if (!remove) registry.SetValue(key, "new", {1, std::string("v\0", 2)});
    if (registry.EnumKey(key, 0, kRoom, name) != SystemError::Success) return;
    if (remove && registry.DeleteKey(key, name) == SystemError::Success) return;
    if (registry.OpenKey(key, name, kAll, key) != SystemError::Success) return;
  }
}

// True when a change may alter the meaning of what is before it: of bytes that form a character with what
// follows, or of a value that cannot be read and continues on the next line.
bool MayJoin(const std::string& bytes, const CodePage& codePage, const MachineRegistry& registry) {
  const std::string text = codePage.Decode(bytes);
  if (codePage.Decode(codePage.Encode(text)) != text) return true;
  const bool announcesLine = text.find("\\\r") != std::string::npos || text.find("\\\n") != std::string::npos;
  return announcesLine && registry.Skipped() != 0;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const auto codePage = MakeCodePage(932);
  const std::string bytes(reinterpret_cast<const char*>(data), size);
  std::unique_ptr<MachineRegistry> registry;
  try {
    registry = std::make_unique<MachineRegistry>(bytes, *codePage);
  } catch (const RegTextError&) {
    return 0;
  }
  if (MayJoin(bytes, *codePage, *registry)) return 0;
  RequireSame(*codePage, *registry);
  for (const bool remove : {false, true, true, true}) {
    for (const RegistryHandle root : kRoots) Change(*registry, root, remove);
    RequireSame(*codePage, *registry);
  }
  RegistryHandle key = 0;
  registry->CreateKey(kRoots[2], "made\\below", 0, kAll, key);
  const RegistryData values[] = {
      {1, ""}, {1, "two\r\nlines"}, {1, std::string("a\0b\\", 4)}, {4, "\1"}, {3, std::string(100, 'x')}};
  for (const RegistryData& value : values) registry->SetValue(key, "n\"\\" + value.data.substr(0, 1), value);
  RequireSame(*codePage, *registry);
  return 0;
}
