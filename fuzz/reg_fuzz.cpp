#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>

#include "machine/CodePages.h"
#include "machine/MachineRegistry.h"
#include "text/Text.h"

// The input is an export. It is left as it is when nothing changes, and what was changed in memory is the
// same as its text read again.
namespace {

using namespace bxvbwiz;

void Require(bool holds) {
  if (!holds) std::abort();
}

constexpr RegistryHandle kRoots[] = {static_cast<RegistryHandle>(0x80000001U),
                                     static_cast<RegistryHandle>(0x80000002U),
                                     static_cast<RegistryHandle>(0x80000003U)};
constexpr std::uint32_t kAll = 0x2003F;
constexpr std::size_t kRoom = 1 << 20;
constexpr unsigned kDeepest = 64;

// Everything below the key as one text. When the heading that spelled a name first is gone, the next one's
// spelling counts; the case of names is not compared.
void Dump(MachineRegistry& registry, RegistryHandle key, unsigned depth, std::string& dump) {
  std::string name;
  std::uint32_t type = 0;
  for (std::uint32_t i = 0; registry.EnumValue(key, i, kRoom, name, type) == SystemError::Success; ++i) {
    RegistryData data;
    // A name that the code page cannot hold is not found by its "?".
    registry.QueryValue(key, name, kRoom, data);
    dump += UpperCase(name) + '=' + std::to_string(type) + ':' + data.data + '\n';
  }
  for (std::uint32_t i = 0; registry.EnumKey(key, i, kRoom, name) == SystemError::Success; ++i) {
    dump += '[' + std::to_string(depth) + UpperCase(name) + "]\n";
    RegistryHandle child = 0;
    if (depth < kDeepest && registry.OpenKey(key, name, kAll, child) == SystemError::Success) {
      Dump(registry, child, depth + 1, dump);
    }
  }
}

std::string Dump(MachineRegistry& registry) {
  std::string dump;
  for (const RegistryHandle root : kRoots) Dump(registry, root, 0, dump);
  return dump;
}

void RequireSame(const CodePage& codePage, MachineRegistry& registry) {
  MachineRegistry again(registry.Text(), codePage);
  Require(Dump(again) == Dump(registry));
}

// Deletes the first key on the way down that has no subkeys, and the first value of its parent.
void DeleteFirst(MachineRegistry& registry, RegistryHandle key, unsigned depth = 0) {
  if (depth == kDeepest) return;
  std::string name;
  std::uint32_t type = 0;
  if (registry.EnumValue(key, 0, kRoom, name, type) == SystemError::Success) registry.DeleteValue(key, name);
  RegistryHandle child = 0;
  if (registry.EnumKey(key, 0, kRoom, name) != SystemError::Success) return;
  if (registry.DeleteKey(key, name) == SystemError::Success) return;
  if (registry.OpenKey(key, name, kAll, child) == SystemError::Success)
    DeleteFirst(registry, child, depth + 1);
}

// Sets the first value of each key down the first way, and a new one.
void SetFirst(MachineRegistry& registry, RegistryHandle key, unsigned depth = 0) {
  if (depth == kDeepest) return;
  std::string name;
  std::uint32_t type = 0;
  if (registry.EnumValue(key, 0, kRoom, name, type) == SystemError::Success)
    registry.SetValue(key, name, {7, "x\n"});
  registry.SetValue(key, "new", {1, std::string("v\0", 2)});
  RegistryHandle child = 0;
  if (registry.EnumKey(key, 0, kRoom, name) != SystemError::Success) return;
  if (registry.OpenKey(key, name, kAll, child) == SystemError::Success) SetFirst(registry, child, depth + 1);
}

// True when a change may make something else of what stands before it: of bytes that are no character, which
// become one with what follows, or of a value that cannot be read and announces another line.
bool MayJoin(const std::string& bytes, const CodePage& codePage, const MachineRegistry& registry) {
  const std::string text = codePage.Decode(bytes);
  if (codePage.Decode(codePage.Encode(text)) != text) return true;
  const bool announcesLine = text.find("\\\r") != std::string::npos || text.find("\\\n") != std::string::npos;
  return announcesLine && registry.Skipped() != 0;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const auto page = MakeCodePage(932);
  const CodePage& codePage = *page;
  const std::string bytes(reinterpret_cast<const char*>(data), size);
  std::unique_ptr<MachineRegistry> registry;
  try {
    registry = std::make_unique<MachineRegistry>(bytes, codePage);
  } catch (const RegTextError&) {
    return 0;
  }
  if (MayJoin(bytes, codePage, *registry)) return 0;
  RequireSame(codePage, *registry);
  for (const RegistryHandle root : kRoots) SetFirst(*registry, root);
  RequireSame(codePage, *registry);
  for (int i = 0; i < 3; ++i) {
    for (const RegistryHandle root : kRoots) DeleteFirst(*registry, root);
  }
  RequireSame(codePage, *registry);
  RegistryHandle key = 0;
  registry->CreateKey(kRoots[2], "made\\below", 0, kAll, key);
  registry->SetValue(key, "", {3, std::string(100, 'x')});
  RequireSame(codePage, *registry);
  return 0;
}
