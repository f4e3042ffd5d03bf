#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform/Platform.h"
#include "project/PeImage.h"

namespace bxvbwiz {

// What a type library says of itself, as its registration writes it.
struct TypeLibraryFacts {
  std::string identifier;      // its GUID with braces, in upper case
  std::string version;         // hexadecimal: "2.8", "a.0"
  std::string language;        // the LCID in hexadecimal: "0", "409"
  std::string description;     // its name when it has none; may be empty
  std::uint16_t flags = 0;     // LIBFLAGS of oaidl.h
  std::uint32_t resource = 0;  // number of its resource in an executable; 0 when it is the whole file
};

// The type libraries of a file.
struct TypeLibraryFile {
  std::vector<TypeLibraryFacts> libraries;
  std::vector<std::string> faults;  // why what should be a type library is none, a phrase each
};

// Reads the type libraries of a file: of a 32-bit executable each resource of the type "TYPELIB", otherwise
// the file itself. Both formats are known, that which begins with "MSFT" and the older one with "SLTG".
// Nothing in the file is trusted, loaded or run. A file that holds no type library gives neither libraries
// nor faults.
TypeLibraryFile ReadTypeLibraries(const BytesSource& file, const CodePage& codePage);
// The same of a file on the machine. One that cannot be read gives nothing.
TypeLibraryFile ReadTypeLibraries(Platform& platform, const std::string& path);

}  // namespace bxvbwiz
