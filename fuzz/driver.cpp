// Runs a fuzz target without libFuzzer, so that any compiler with sanitizers does:
//   TARGET CORPUS-FOLDER [SECONDS]    every file of the corpus, then random mutations of them
//   TARGET FILE                       one input, to see a fault again
// What is being run is kept in TARGET.input in the build's folder fuzz, so a crash or a hang leaves its input
// there.

#include <algorithm>
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

#include "TestMachine.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

constexpr std::size_t kLargestInput = 64 * 1024;

void RunOne(const std::string& input, const std::string& keptAs) {
  std::ofstream(keptAs, std::ios::binary) << input;
  LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(input.data()), input.size());
}

// Changes inputs at random; the same corpus gives the same sequence.
class Mutator {
 public:
  explicit Mutator(const std::vector<std::string>& corpus) : corpus_(corpus) {}

  std::string Next() {
    std::string input = corpus_[Below(corpus_.size())];
    for (std::size_t changes = 1 + Below(4); changes > 0; --changes) Change(input);
    if (input.size() > kLargestInput) input.resize(kLargestInput);
    return input;
  }

 private:
  std::size_t Below(std::size_t limit) {
    return std::uniform_int_distribution<std::size_t>(0, limit - 1)(random_);
  }

  // Bytes that text formats and length fields turn on, as often as any other.
  char Byte() {
    static const std::string kTelling("\0\1\x7f\x80\xff\r\n\t\"'[]=;#\\/. 09", 22);
    return Below(2) == 0 ? kTelling[Below(kTelling.size())] : static_cast<char>(Below(256));
  }

  void Change(std::string& input) {
    const std::size_t at = Below(input.size() + 1);
    const std::size_t length = Below(std::min<std::size_t>(input.size() - at, 64) + 1);
    switch (Below(6)) {
      case 0:
        if (at < input.size()) input[at] = Byte();
        break;
      case 1:
        input.insert(at, 1, Byte());
        break;
      case 2:
        input.erase(at, length);
        break;
      case 3:
        input.insert(at, input.substr(at, length));
        break;
      case 4: {
        const std::string& other = corpus_[Below(corpus_.size())];
        input.insert(at, other.substr(Below(other.size() + 1), 1 + Below(64)));
        break;
      }
      default:
        input.resize(at);
    }
  }

  const std::vector<std::string>& corpus_;
  std::mt19937 random_{1};
};

}  // namespace

int main(int argc, char** argv) try {
  if (argc < 2) {
    std::cerr << "usage: " << argv[0] << " CORPUS-FOLDER [SECONDS] | FILE\n";
    return 2;
  }
  const std::string keptAs =
      BXVBWIZ_INPUTS "/" + std::filesystem::path(argv[0]).filename().string() + ".input";
  if (!std::filesystem::is_directory(argv[1])) {
    RunOne(bxvbwiz::ReadBytes(argv[1]), keptAs);
    return 0;
  }
  std::vector<std::string> corpus;
  for (const auto& entry : std::filesystem::directory_iterator(argv[1]))
    corpus.push_back(bxvbwiz::ReadBytes(entry.path()));
  if (corpus.empty()) {
    std::cerr << argv[1] << " holds no input\n";
    return 2;
  }
  std::sort(corpus.begin(), corpus.end());
  for (const std::string& input : corpus) RunOne(input, keptAs);

  const auto end = std::chrono::steady_clock::now() +
                   std::chrono::seconds(argc > 2 ? std::strtol(argv[2], nullptr, 10) : 0);
  Mutator mutator(corpus);
  std::size_t runs = 0;
  for (; std::chrono::steady_clock::now() < end; ++runs) RunOne(mutator.Next(), keptAs);
  std::filesystem::remove(keptAs);
  std::cout << corpus.size() << " inputs of the corpus and " << runs << " mutations survived\n";
  return 0;
} catch (const std::exception& error) {
  std::cerr << "escaped from the target: " << error.what() << '\n';
  return 1;
}
