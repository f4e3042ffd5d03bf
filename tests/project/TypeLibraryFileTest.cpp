#include "project/TypeLibraryFile.h"

#include <gtest/gtest.h>

#include "TestMachine.h"
#include "tools/PeWriter.h"

namespace bxvbwiz {
namespace {

constexpr char kGuid[] = "5E9E78A0531B11CF91F6C2863C385E30";

std::string Word(unsigned value) {
  return {static_cast<char>(value & 0xFFU), static_cast<char>(value >> 8U)};
}

// A library in the older format; its block begins at an odd place, after bytes that look like one.
std::string MakeOlderLibrary(const std::string& description) {
  return "SLTG" + std::string(9, 'x') + "\xCC\x51" + std::string(40, '\x7F') + "\xCC\x51" +
         std::string(6, '\0') + Word(static_cast<unsigned>(description.size())) + description + Word(0xFFFF) +
         std::string(4, '\0') + Word(1) + Word(0x409) + std::string(4, '\0') + Word(8) + Word(10) + Word(31) +
         std::string(16, 'G') + "rest";
}

class TypeLibraryFileTest : public ::testing::Test {
 protected:
  // "identifier version language flags resource description" of each library, then the faults.
  std::string Read(const std::string& bytes) {
    const BytesInMemory file(bytes);
    const TypeLibraryFile content = ReadTypeLibraries(file, machine_.platform().codePage);
    std::string text;
    for (const TypeLibraryFacts& library : content.libraries) {
      text += library.identifier + " " + library.version + " " + library.language + " " +
              std::to_string(library.flags) + " " + std::to_string(library.resource) + " " +
              library.description + "\n";
    }
    for (const std::string& fault : content.faults) text += fault + "\n";
    return text;
  }

  TestMachine machine_;
};

TEST_F(TypeLibraryFileTest, BothFormatsAreReadBareAndInExecutables) {
  const std::string newer = MakeTypeLibrary({kGuid, 2, 10, 0x407,
                                             "Gr\xFC\xDF"
                                             "e"});
  const std::string older = MakeOlderLibrary("Old");
  const std::string newerFacts = "{5E9E78A0-531B-11CF-91F6-C2863C385E30} 2.a 407 0 ";
  const std::string olderFacts = "{47474747-4747-4747-4747-474747474747} a.1f 409 8 ";
  EXPECT_EQ(Read(newer), newerFacts +
                             "0 Gr\xC3\xBC\xC3\x9F"
                             "e\n");
  EXPECT_EQ(Read(older), olderFacts + "0 Old\n");
  EXPECT_EQ(Read(MakePe({"a.dll"}, {"b"}, {newer, older})), newerFacts +
                                                                "1 Gr\xC3\xBC\xC3\x9F"
                                                                "e\n" +
                                                                olderFacts + "2 Old\n");
  EXPECT_EQ(Read(MakePe({"a.dll"}, {"b"})) + Read("text") + Read(""), "");
}

TEST_F(TypeLibraryFileTest, WhatIsCutOrLiesIsNamed) {
  const std::string sound = MakeTypeLibrary({kGuid, 1, 0, 0, "Sound"});
  for (std::size_t size = 4; size < sound.size(); ++size)
    EXPECT_EQ(Read(sound.substr(0, size)).find("the type library cannot be read: it"), 0U) << size;
  std::string lying = sound;
  lying.replace(0x08, 4, "\xF0\xFF\xFF\x7F");
  EXPECT_EQ(Read(lying), "the type library cannot be read: its identifier lies outside the file\n");
  EXPECT_EQ(Read(MakePe({}, {}, {"none"})),
            "the type library in its resource 1 cannot be read: it is of an unknown format\n");
  EXPECT_EQ(Read("SLTG\xCC\x51"), "the type library cannot be read: its description of itself is missing\n");
}

}  // namespace
}  // namespace bxvbwiz
