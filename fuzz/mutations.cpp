// Runs the target of executables over changed copies of real ones:
//   exe_mutations FOLDER [COUNT [FIRST]]    that many mutations of the folder's DLLs, from number FIRST on
// A mutation depends on its number and the folder only. The number of the one that is being run is kept in
// exe_mutations.number in the current folder, so a crash or a hang leaves it there: "FOLDER 1 NUMBER" runs
// that one again. Exits with 77 when the folder holds no DLL.

#include <algorithm>
#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <random>
#include <string>
#include <vector>

#include "project/PeImage.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

constexpr int kNothingToDo = 77;  // CTest's SKIP_RETURN_CODE, see CMakeLists.txt
constexpr std::uint32_t kNewHeaderOffset = 60;
// From the signature: file header, optional header, and the table of as many sections as DLLs have.
constexpr std::size_t kHeadersSize = 24 + 224 + 40 * 16;
constexpr std::size_t kTableSize =
    512;  // the part of an import or export table that gets its share of changes

class Mutation {
 public:
  Mutation(std::string& bytes, std::uint32_t number) : bytes_(bytes), random_(number) {
    const std::uint32_t newHeader = bxvbwiz::GetLongFromBytes(bytes_, kNewHeaderOffset);
    places_[0] = {newHeader, kHeadersSize};
    places_[1] = {0, 64};
    const bxvbwiz::BytesInMemory file(bytes_);
    const bxvbwiz::PeImage image(file, newHeader);
    using Directory = bxvbwiz::PeImage::Directory;
    places_[2] = Table(image, image.AddressOf(Directory::Imports));
    places_[3] = Table(image, image.AddressOf(Directory::Exports));
    places_[4] = {0, bytes_.size()};
  }

  void Make() {
    for (std::size_t changes = 1 + Below(4); changes > 0; --changes) Change();
  }

 private:
  struct Place {
    std::size_t offset = 0;
    std::size_t size = 0;
  };

  Place Table(const bxvbwiz::PeImage& image, std::uint32_t address) const {
    const auto table = image.At(address, kTableSize);
    if (address == 0 || !table || table->empty()) return {0, bytes_.size()};
    return {static_cast<std::size_t>(table->data() - bytes_.data()), kTableSize};
  }

  std::size_t Below(std::size_t limit) {
    return std::uniform_int_distribution<std::size_t>(0, limit - 1)(random_);
  }

  // The numbers at which sums and products go wrong, and those close to what is there.
  std::uint32_t Number(std::uint32_t present) {
    static constexpr std::array<std::uint32_t, 12> kTelling = {
        0,       1,          0x40,       0xFFF,      0x1000,     0xFFFF,
        0x10000, 0x7FFFFFFF, 0x80000000, 0xFFFFF000, 0xFFFFFFF0, 0xFFFFFFFF};
    switch (Below(4)) {
      case 0:
        return present + static_cast<std::uint32_t>(Below(65)) - 32;
      case 1:
        return static_cast<std::uint32_t>(random_());
      case 2:  // an address or offset inside
        return static_cast<std::uint32_t>(Below(bytes_.size() + 1));
      default:
        return kTelling[Below(kTelling.size())];
    }
  }

  void Change() {
    if (bytes_.empty()) return;
    const Place& place = places_[Below(places_.size())];
    const std::size_t at = std::min(place.offset + Below(place.size + 1), bytes_.size() - 1);
    const std::size_t length = std::min<std::size_t>(1 + Below(256), bytes_.size() - at);
    switch (Below(8)) {
      case 0:
        bytes_.resize(at);
        break;
      case 1:
        bytes_[at] = static_cast<char>(bytes_[at] ^ (1 << Below(8)));
        break;
      case 2:
        bytes_.replace(at, length, length, Below(2) == 0 ? '\0' : '\xFF');
        break;
      case 3: {
        const std::string other = bytes_.substr(Below(bytes_.size()), length);
        bytes_.replace(at, other.size(), other);
        break;
      }
      default:  // fields lie at multiples of their size
        SetLong(at / 4 * 4);
    }
  }

  void SetLong(std::size_t at) {
    std::uint32_t number = Number(bxvbwiz::GetLongFromBytes(bytes_, at));
    for (std::size_t index = at; index < std::min(at + 4, bytes_.size()); ++index, number >>= 8)
      bytes_[index] = static_cast<char>(number & 0xFFU);
  }

  std::string& bytes_;
  std::mt19937 random_;
  std::array<Place, 5> places_;  // a change hits each as often as any other
};

std::vector<std::filesystem::path> LibrariesOf(const char* folder) {
  std::vector<std::filesystem::path> libraries;
  std::error_code error;
  for (const auto& entry : std::filesystem::directory_iterator(folder, error))
    if (entry.path().extension() == ".dll") libraries.push_back(entry.path());
  std::sort(libraries.begin(), libraries.end());
  return libraries;
}

std::string ReadWhole(const std::filesystem::path& path) {
  std::string bytes(static_cast<std::size_t>(std::filesystem::file_size(path)), '\0');
  std::ifstream(path, std::ios::binary).read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  return bytes;
}

std::uint32_t NumberArgument(int argc, char** argv, int index, std::uint32_t otherwise) {
  return argc > index ? static_cast<std::uint32_t>(std::strtoul(argv[index], nullptr, 10)) : otherwise;
}

}  // namespace

int main(int argc, char** argv) try {
  if (argc < 2) {
    std::cerr << "usage: " << argv[0] << " FOLDER [COUNT [FIRST]]\n";
    return 2;
  }
  const std::vector<std::filesystem::path> libraries = LibrariesOf(argv[1]);
  if (libraries.empty()) {
    std::cerr << argv[1] << " holds no DLL\n";
    return kNothingToDo;
  }
  const std::uint32_t count = NumberArgument(argc, argv, 2, 200);
  const std::uint32_t first = NumberArgument(argc, argv, 3, 1);
  const std::string keptAs = "exe_mutations.number";
  std::chrono::duration<double> slowest{0};
  for (std::uint32_t number = first; number - first < count; ++number) {
    std::ofstream(keptAs) << number << '\n';
    // 7919 is prime: a small count comes across the whole folder, not its first letters only.
    std::string bytes = ReadWhole(libraries[number * 7919ULL % libraries.size()]);
    Mutation(bytes, number).Make();
    const auto start = std::chrono::steady_clock::now();
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
    slowest = std::max<std::chrono::duration<double>>(slowest, std::chrono::steady_clock::now() - start);
  }
  std::filesystem::remove(keptAs);
  std::cout << count << " mutations of " << libraries.size() << " DLLs survived; the slowest took "
            << slowest.count() << " s\n";
  return 0;
} catch (const std::exception& error) {
  std::cerr << "escaped from the target: " << error.what() << '\n';
  return 1;
}
