#include <cstdlib>

#include "project/EXEFile.h"
#include "project/PeImage.h"
#include "project/TypeLibraryFile.h"
#include "TestMachine.h"

using namespace bxvbwiz;

// Reads the input as an executable. It may fail only with the reader's own error, and give no more names than
// the file has room for.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static TestMachine machine;
  EXEFile file(machine.platform(), nullptr);
  bool opened = false;
  try {
    opened = file.OpenBytes(std::string_view(reinterpret_cast<const char*>(data), size), false);
  } catch (const RuntimeError& error) {
    if (error.Number() != kExeFileError || file.ErrorType == kExeErrorNone) std::abort();
  }
  if (opened && file.ErrorType != kExeErrorNone) std::abort();
  std::size_t names = 0;
  for (const Dependency& import : file.Dependencies) names += import.ShortName.size() + 1;
  for (const std::string& name : file.Exports) names += name.size() + 1;
  // A byte of the code page takes at most three in UTF-8.
  if (names > 3 * (size + 0x10000)) std::abort();
  const BytesInMemory bytes(file.FileBase);
  const TypeLibraryFile content = ReadTypeLibraries(bytes, machine.platform().codePage);
  for (const TypeLibraryFacts& library : content.libraries) {
    if (library.identifier.size() != 38 || library.version.empty()) std::abort();
  }
  return 0;
}

// Both headers and the three tables.
std::vector<std::size_t> TellingPlaces(const std::string& input) {
  const std::uint32_t newHeader = GetLongFromBytes(input, 60);
  const BytesInMemory file(input);
  const PeImage image(file, newHeader);
  std::vector<std::size_t> places = {0, newHeader};
  for (const PeImage::Directory directory :
       {PeImage::Directory::Imports, PeImage::Directory::Exports, PeImage::Directory::Resources}) {
    const auto table = image.At(image.AddressOf(directory), 1);
    if (table && !table->empty()) places.push_back(static_cast<std::size_t>(table->data() - input.data()));
  }
  return places;
}
