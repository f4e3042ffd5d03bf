#include "machine/NamedGuid.h"

#include <algorithm>
#include <string>

namespace bxvbwiz {
namespace {

using Words = std::array<std::uint32_t, 5>;

std::uint32_t RotatedLeft(std::uint32_t word, unsigned bits) {
  return word << bits | word >> (32 - bits);
}

// Mixes 64 bytes into the hash.
void AddBlock(const char* bytes, Words& hash) {
  std::array<std::uint32_t, 80> words = {};
  // Numbers, the high byte first.
  for (std::size_t i = 0; i < 64; ++i) words[i / 4] = words[i / 4] << 8 | static_cast<std::uint8_t>(bytes[i]);
  for (std::size_t i = 16; i < words.size(); ++i)
    words[i] = RotatedLeft(words[i - 3] ^ words[i - 8] ^ words[i - 14] ^ words[i - 16], 1);
  auto [a, b, c, d, e] = hash;
  for (std::size_t i = 0; i < words.size(); ++i) {
    std::uint32_t mixed = 0;
    if (i < 20) {
      mixed = ((b & c) | (~b & d)) + 0x5A827999;
    } else if (i < 40) {
      mixed = (b ^ c ^ d) + 0x6ED9EBA1;
    } else if (i < 60) {
      mixed = ((b & c) | (b & d) | (c & d)) + 0x8F1BBCDC;
    } else {
      mixed = (b ^ c ^ d) + 0xCA62C1D6;
    }
    mixed += RotatedLeft(a, 5) + e + words[i];
    e = d;
    d = c;
    c = RotatedLeft(b, 30);
    b = a;
    a = mixed;
  }
  const Words added = {a, b, c, d, e};
  for (std::size_t i = 0; i < hash.size(); ++i) hash[i] += added[i];
}

// The SHA-1 hash, which the standard prescribes.
Words HashOf(std::string text) {
  const std::uint64_t bits = text.size() * 8;
  text += '\x80';
  while (text.size() % 64 != 56) text += '\0';
  for (unsigned shift = 64; shift > 0; shift -= 8) text += static_cast<char>(bits >> (shift - 8) & 0xFF);
  Words hash = {0x67452301, 0xEFCDAB89, 0x98BADCFE, 0x10325476, 0xC3D2E1F0};
  for (std::size_t offset = 0; offset < text.size(); offset += 64) AddBlock(&text[offset], hash);
  return hash;
}

}  // namespace

GuidBytes NamedGuid(const GuidBytes& space, std::string_view name) {
  const Words hash = HashOf(std::string(space.begin(), space.end()).append(name));
  GuidBytes guid;
  for (std::size_t i = 0; i < guid.size(); ++i)
    guid[i] = static_cast<std::uint8_t>(hash[i / 4] >> (24 - 8 * (i % 4)));
  constexpr std::size_t kVersion = 6;
  constexpr std::size_t kVariant = 8;
  guid[kVersion] = static_cast<std::uint8_t>((guid[kVersion] & 0x0F) | 0x50);
  guid[kVariant] = static_cast<std::uint8_t>((guid[kVariant] & 0x3F) | 0x80);
  // The first three parts are numbers, which lie in memory with the low byte first.
  std::reverse(guid.begin(), guid.begin() + 4);
  std::swap(guid[4], guid[5]);
  std::swap(guid[6], guid[7]);
  return guid;
}

}  // namespace bxvbwiz
