// makepe OUT [--import A.DLL]... [--export NAME]... [--typelib "GUID VERSION LANGUAGE DESCRIPTION"]...
// [--machine HEX]: writes a small DLL, and the folders that lead to it. Version and language are hexadecimal.
// An OUT that ends in ".tlb" becomes the type library alone; --machine makes it one for another processor.

#include <algorithm>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "tools/PeWriter.h"

using namespace std::string_literals;

namespace {

std::string TypeLibrary(const std::string& text) {
  bxvbwiz::LibraryHead head;
  std::istringstream words(text);
  std::string version;
  words >> head.guid >> version >> std::hex >> head.language >> std::ws;
  std::getline(words, head.description);
  head.guid.erase(std::remove(head.guid.begin(), head.guid.end(), '-'), head.guid.end());
  const std::size_t point = version.find('.');
  if (head.guid.size() != 32 || point == std::string::npos)
    throw std::runtime_error("no type library: " + text);
  head.major = static_cast<std::uint32_t>(std::stoul(version.substr(0, point), nullptr, 16));
  head.minor = static_cast<std::uint32_t>(std::stoul(version.substr(point + 1), nullptr, 16));
  return bxvbwiz::MakeTypeLibrary(head);
}

}  // namespace

int main(int argc, char** argv) try {
  const std::vector<std::string> arguments(argv + 1, argv + argc);
  std::vector<std::string> imports;
  std::vector<std::string> exports;
  std::vector<std::string> libraries;
  int machine = 0;
  bool wellFormed = arguments.size() % 2 == 1;
  for (std::size_t index = 1; wellFormed && index < arguments.size(); index += 2) {
    if (arguments[index] == "--import")
      imports.push_back(arguments[index + 1]);
    else if (arguments[index] == "--export")
      exports.push_back(arguments[index + 1]);
    else if (arguments[index] == "--typelib")
      libraries.push_back(TypeLibrary(arguments[index + 1]));
    else if (arguments[index] == "--machine")
      machine = std::stoi(arguments[index + 1], nullptr, 16);
    else
      wellFormed = false;
  }
  if (!wellFormed) {
    std::cerr
        << "usage: makepe OUT [--import A.DLL]... [--export NAME]... [--typelib TEXT]... [--machine HEX]\n";
    return 2;
  }
  const std::filesystem::path out = arguments.front();
  if (out.has_parent_path()) std::filesystem::create_directories(out.parent_path());
  std::ofstream file(out, std::ios::binary);
  const bool isBare = out.extension() == ".tlb" && libraries.size() == 1;
  std::string bytes = isBare ? libraries.front() : bxvbwiz::MakePe(imports, exports, libraries);
  if (machine != 0) {
    const std::size_t at = bytes.find("PE\0\0"s) + 4;  // the first field behind the signature
    bytes[at] = static_cast<char>(machine % 256);
    bytes[at + 1] = static_cast<char>(machine / 256);
  }
  file << bytes;
  file.close();
  if (file) return 0;
  std::cerr << "makepe: cannot write " << out.string() << '\n';
  return 1;
} catch (const std::exception& error) {
  std::cerr << "makepe: " << error.what() << '\n';
  return 1;
}
