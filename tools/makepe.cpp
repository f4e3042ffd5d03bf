// makepe OUT [--import A.DLL]... [--export NAME]...: writes a small DLL, and the folders that lead to it.

#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <string>
#include <vector>

#include "tools/PeWriter.h"

int main(int argc, char** argv) try {
  const std::vector<std::string> arguments(argv + 1, argv + argc);
  std::vector<std::string> imports;
  std::vector<std::string> exports;
  bool wellFormed = arguments.size() % 2 == 1;
  for (std::size_t index = 1; wellFormed && index < arguments.size(); index += 2) {
    if (arguments[index] == "--import")
      imports.push_back(arguments[index + 1]);
    else if (arguments[index] == "--export")
      exports.push_back(arguments[index + 1]);
    else
      wellFormed = false;
  }
  if (!wellFormed) {
    std::cerr << "usage: makepe OUT [--import A.DLL]... [--export NAME]...\n";
    return 2;
  }
  const std::filesystem::path out = arguments.front();
  if (out.has_parent_path()) std::filesystem::create_directories(out.parent_path());
  std::ofstream file(out, std::ios::binary);
  file << bxvbwiz::MakePe(imports, exports);
  file.close();
  if (file) return 0;
  std::cerr << "makepe: cannot write " << out.string() << '\n';
  return 1;
} catch (const std::exception& error) {
  std::cerr << "makepe: " << error.what() << '\n';
  return 1;
}
