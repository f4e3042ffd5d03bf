// Runs a fuzz target without libFuzzer, so that any compiler with sanitizers does:
//   TARGET FOLDER [COUNT [FIRST]]    COUNT inputs from number FIRST (0) on: each file of the folder, which is
//                                    all without COUNT, and then mutations of them
//   TARGET FILE                      one input
// An input depends on its number and the folder only. The number of one that fails is printed.

#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <iostream>
#include <random>
#include <string>
#include <vector>

#include "TestMachine.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);
// A target may name the places of an input where changes matter most. Without this function all places do.
__attribute__((weak)) std::vector<std::size_t> TellingPlaces(const std::string& input);

namespace {

constexpr unsigned kMostSeconds = 20;    // for one input; more is a hang
constexpr std::size_t kPlaceSize = 512;  // how far from a telling place a change may be

using Corpus = std::vector<std::filesystem::path>;

class Mutation {
 public:
  Mutation(const Corpus& corpus, unsigned long number)
      : corpus_(corpus), random_(static_cast<std::uint32_t>(number)), input_(Other()) {
    if (&TellingPlaces != nullptr) places_ = TellingPlaces(input_);
    for (std::size_t changes = 1 + Below(4); changes > 0; --changes) Change();
  }
  const std::string& Input() const { return input_; }

 private:
  std::size_t Below(std::size_t limit) {
    return std::uniform_int_distribution<std::size_t>(0, limit - 1)(random_);
  }
  std::string Other() { return bxvbwiz::ReadBytes(corpus_[Below(corpus_.size())]); }

  std::size_t Place() {
    if (places_.empty() || Below(4) == 0) return Below(input_.size() + 1);
    return std::min(places_[Below(places_.size())] + Below(kPlaceSize), input_.size());
  }

  // Half of the time a byte that has a meaning in text formats.
  char Byte() {
    static const std::string kTelling("\0\1\x7f\x80\xff\r\n\t\"'[]=;#\\/. 09", 22);
    return Below(2) == 0 ? kTelling[Below(kTelling.size())] : static_cast<char>(Below(256));
  }

  // Writes a number at which sums and products overflow, one close to what is there, a position inside, or
  // any.
  std::string& SetNumber(std::size_t at) {
    static constexpr std::uint32_t kTelling[] = {0,          1,          0xFFFF,    0x7FFFFFFF,
                                                 0x80000000, 0xFFFFF000, 0xFFFFFFFF};
    at -= at % 4;  // fields lie at multiples of their size
    if (input_.size() < at + 4) return input_;
    std::uint32_t number = 0;
    std::memcpy(&number, &input_[at], sizeof number);
    const std::uint32_t numbers[] = {
        kTelling[Below(std::size(kTelling))], number + static_cast<std::uint32_t>(Below(65)) - 32,
        static_cast<std::uint32_t>(Below(input_.size() + 1)), static_cast<std::uint32_t>(random_())};
    number = numbers[Below(std::size(numbers))];
    std::memcpy(&input_[at], &number, sizeof number);
    return input_;
  }

  std::string& Change() {
    const std::size_t kind = Below(8);
    const std::size_t at = Place();
    const std::size_t length = Below(std::min<std::size_t>(input_.size() - at, 64) + 1);
    if (kind == 0) return input_.erase(at);
    if (kind == 1) return input_.erase(at, length);
    if (kind == 2) return input_.insert(at, 1, Byte());
    if (kind == 3) return input_.insert(at, input_.substr(at, length));
    if (kind == 4) return input_.replace(at, length, length, Byte());
    if (kind < 7) return SetNumber(at);
    const std::string other = Other();
    return input_.insert(at, other, Below(other.size() + 1), 1 + Below(64));
  }

  const Corpus& corpus_;
  std::mt19937 random_;
  std::string input_;
  std::vector<std::size_t> places_;
};

Corpus FilesOf(const std::filesystem::path& path) {
  if (!std::filesystem::is_directory(path)) return {path};
  Corpus files;
  for (const auto& entry : std::filesystem::directory_iterator(path)) files.push_back(entry.path());
  std::sort(files.begin(), files.end());
  return files;
}

}  // namespace

int main(int argc, char** argv) {
  const Corpus corpus = argc > 1 ? FilesOf(argv[1]) : Corpus();
  if (corpus.empty()) return std::cerr << "usage: " << argv[0] << " FOLDER [COUNT [FIRST]] | FILE\n", 2;
  const unsigned long count = argc > 2 ? std::strtoul(argv[2], nullptr, 10) : corpus.size();
  const unsigned long first = argc > 3 ? std::strtoul(argv[3], nullptr, 10) : 0;
  // A child process does the work, so that this one notices every way to fail.
  auto* const running = static_cast<volatile unsigned long*>(
      mmap(nullptr, sizeof(unsigned long), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0));
  const pid_t worker = fork();
  if (worker == 0) {
    for (*running = first; *running - first < count; ++*running) {
      alarm(kMostSeconds);
      const std::string input = *running < corpus.size() ? bxvbwiz::ReadBytes(corpus[*running])
                                                         : Mutation(corpus, *running).Input();
      LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(input.data()), input.size());
    }
    return 0;
  }
  int status = 0;
  waitpid(worker, &status, 0);
  if (status != 0)
    std::cerr << "input " << *running << " failed; try: " << argv[1] << " 1 " << *running << '\n';
  if (status == 0) std::cout << count << " inputs passed\n";
  return status == 0 ? 0 : 1;
}
