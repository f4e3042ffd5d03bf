#include <gtest/gtest.h>

#include "platform/machine/CodePages.h"
#include "project/CFiles.h"

namespace bxvbwiz {
namespace {

TEST(CFiles, AFileIsKeyedByItsNameWithoutFolderAndPunctuation) {
  const auto codePage = MakeCodePage(1252);
  CFiles files(*codePage);
  const auto file = files.Add("C:\\A b\\x-1.dll");
  EXPECT_EQ(file->Key, "Kx1dll");
  EXPECT_EQ(file->FileName, "C:\\A b\\x-1.dll");
  EXPECT_EQ(files.Item("Kx1dll"), file);
  EXPECT_NE(files.Add("X-1.DLL"), file);
  try {
    files.Add("x1.dll");
    FAIL() << "two files have one key";
  } catch (const RuntimeError& error) {
    EXPECT_EQ(error.Number(), kErrorDuplicateKey);
  }
  EXPECT_EQ(files.Count(), 2U);
}

}  // namespace
}  // namespace bxvbwiz
