// Runs the target of executables over changed copies of real ones:
//   exe_mutations FOLDER [COUNT [FIRST]]    that many mutations of the folder's DLLs, from number FIRST on
// A mutation depends on its number and the folder only. The number of the one that is being run is kept in
// exe_mutations.number in the current folder, so a crash or a hang leaves it there: "FOLDER 1 NUMBER" runs
// that one again.

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <random>
#include <stdexcept>
#include <string>
#include <vector>

#include "project/PeImage.h"
#include "TestMachine.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

using namespace bxvbwiz;

constexpr std::uint32_t kNewHeaderOffset = 60;
// From the signature: file header, optional header, and the table of as many sections as DLLs have.
constexpr std::size_t kHeadersSize = 24 + 224 + 40 * 16;
constexpr std::size_t kTableSize = 512;  // the part of a table that gets its share of changes

class Mutation {
 public:
  Mutation(std::string& bytes, std::uint32_t number) : bytes_(bytes), random_(number) {
    const std::uint32_t newHeader = GetLongFromBytes(bytes_, kNewHeaderOffset);
    const BytesInMemory file(bytes_);
    const PeImage image(file, newHeader);
    places_ = {{{newHeader, kHeadersSize},
                {0, 64},
                Table(image, PeImage::Directory::Imports),
                Table(image, PeImage::Directory::Exports),
                {0, bytes_.size()}}};
    for (std::size_t changes = 1 + Below(4); changes > 0 && !bytes_.empty(); --changes) Change();
  }

 private:
  using Place = std::pair<std::size_t, std::size_t>;  // offset and size

  Place Table(const PeImage& image, PeImage::Directory directory) const {
    const std::uint32_t address = image.AddressOf(directory);
    const auto table = image.At(address, kTableSize);
    if (address == 0 || !table || table->empty()) return {0, bytes_.size()};
    return {static_cast<std::size_t>(table->data() - bytes_.data()), kTableSize};
  }

  std::size_t Below(std::size_t limit) {
    return std::uniform_int_distribution<std::size_t>(0, limit - 1)(random_);
  }

  // The numbers at which sums and products go wrong, those close to what is there, addresses inside, and any.
  std::uint32_t Number(std::uint32_t present) {
    static constexpr std::array<std::uint32_t, 12> kTelling = {
        0,       1,          0x40,       0xFFF,      0x1000,     0xFFFF,
        0x10000, 0x7FFFFFFF, 0x80000000, 0xFFFFF000, 0xFFFFFFF0, 0xFFFFFFFF};
    const std::uint32_t numbers[] = {
        kTelling[Below(kTelling.size())], present + static_cast<std::uint32_t>(Below(65)) - 32,
        static_cast<std::uint32_t>(Below(bytes_.size() + 1)), static_cast<std::uint32_t>(random_())};
    return numbers[Below(std::size(numbers))];
  }

  void Change() {
    const auto& [offset, size] = places_[Below(places_.size())];
    const std::size_t at = std::min(offset + Below(size + 1), bytes_.size() - 1);
    const std::size_t length = std::min<std::size_t>(1 + Below(256), bytes_.size() - at);
    switch (Below(8)) {
      case 0:
        return bytes_.resize(at);
      case 1:
        bytes_[at] = static_cast<char>(bytes_[at] ^ (1 << Below(8)));
        return;
      case 2:
        bytes_.replace(at, length, length, Below(2) == 0 ? '\0' : '\xFF');
        return;
      case 3: {
        const std::string other = bytes_.substr(Below(bytes_.size()), length);
        bytes_.replace(at, other.size(), other);
        return;
      }
      default:  // fields lie at multiples of their size
        SetLong(at / 4 * 4);
    }
  }

  void SetLong(std::size_t at) {
    std::uint32_t number = Number(GetLongFromBytes(bytes_, at));
    for (std::size_t index = at; index < std::min(at + 4, bytes_.size()); ++index, number >>= 8)
      bytes_[index] = static_cast<char>(number & 0xFFU);
  }

  std::string& bytes_;
  std::mt19937 random_;
  std::array<Place, 5> places_;  // a change hits each as often as any other
};

}  // namespace

int main(int argc, char** argv) try {
  const std::vector<std::string> arguments(argv + 1, argv + argc);
  if (arguments.empty()) throw std::invalid_argument("usage: exe_mutations FOLDER [COUNT [FIRST]]");
  std::vector<std::filesystem::path> libraries;
  for (const auto& entry : std::filesystem::directory_iterator(arguments[0]))
    if (entry.path().extension() == ".dll") libraries.push_back(entry.path());
  if (libraries.empty()) throw std::invalid_argument("no DLLs in " + arguments[0]);
  std::sort(libraries.begin(), libraries.end());
  const unsigned long count = arguments.size() > 1 ? std::stoul(arguments[1]) : 200;
  const unsigned long first = arguments.size() > 2 ? std::stoul(arguments[2]) : 1;
  const std::string keptAs = "exe_mutations.number";
  for (unsigned long number = first; number - first < count; ++number) {
    std::ofstream(keptAs) << number << '\n';
    // 7919 is prime: a small count comes across the whole folder, not its first letters only.
    std::string bytes = ReadBytes(libraries[number * 7919 % libraries.size()]);
    Mutation(bytes, static_cast<std::uint32_t>(number));
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
  }
  std::filesystem::remove(keptAs);
  std::cout << count << " mutations of " << libraries.size() << " DLLs survived\n";
  return 0;
} catch (const std::exception& error) {
  std::cerr << "exe_mutations: " << error.what() << '\n';
  return 1;
}
