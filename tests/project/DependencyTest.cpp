#include "project/basDependency.h"
#include "ProjectFixture.h"
#include "tools/PeWriter.h"

namespace bxvbwiz {
namespace {

const std::string kSystem = "C:\\windows\\system32\\";
const std::string kRedist = "C:\\VB98\\Wizards\\PDWizard\\Redist\\";

// Names in their order, each followed by what it needs itself.
std::string NamesOf(CDependencies& dependencies) {
  std::vector<std::string> names;
  for (CDependency& dependency : dependencies) {
    const std::string own = NamesOf(dependency.Dependencies());
    names.push_back(dependency.Name + (own.empty() ? "" : "(" + own + ")"));
  }
  return Join(names);
}

class DependencyTest : public ProjectFixture {
 protected:
  // What C:\C\c.ocx needs, its .dep file being C:\C\c.dep when that is there.
  CDependencies& Walk() {
    dependencies = std::make_unique<CDependencies>(context());
    builder.folders = {kRedist, kSystem};
    builder.calls.clear();
    ReadDependencies(context(), "c.ocx", "C:\\C\\c.ocx", FindDepFile(context(), "C:\\C\\c.ocx"),
                     *dependencies, *dependencies);
    return *dependencies;
  }
  std::unique_ptr<CDependencies> dependencies;
};

TEST_F(DependencyTest, WithoutAPlainSectionTheOneOfTheFittestLanguageCounts) {
  const std::tuple<const char*, const char*, const char*> cases[] = {
      {"0407", "[c.ocx <0009>] [c.ocx <0007>] [c.ocx <0407>] [c.ocx]", "c.ocx"},
      {"0407", "[c.ocx <0009>] [c.ocx <0007>] [C.OCX <0407>]", "C.OCX <0407>"},
      {"0c07", "[c.ocx <0009>] [c.ocx <0407>] [c.ocx <0007>]", "c.ocx <0007>"},
      {"0407", "[c.ocx <000C>] [c.ocx <0010>]", "c.ocx <000C>"},
      {"0409", "[c.ocx <0407>] [c.ocx <0809>] [c.ocx <0009>]", "c.ocx <0009>"},
      {"0409", "[c.ocx 0009] [c.ocx<0009>] [c.ocx <009>] [c.ocx <x009>] [c.ocx <0009>x]", ""},
      {"0409", "[cc.ocx <0009>] [.ocx <0009>] [ <0009>]", ""},
  };
  for (const auto& [userLanguage, sections, chosen] : cases) {
    TestMachine machine;
    machine.Write("machine.ini", std::string("[Machine]\nLanguage=") + userLanguage + "\n");
    std::string depFile = sections;
    for (std::size_t at = 0; (at = depFile.find(']', at)) != std::string::npos;) {
      depFile.replace(at, depFile[at + 1] == ' ' ? 2 : 1, "]\nDest=x\n");
      ++at;
    }
    machine.Write("drive_c/c.dep", "[c.ocx <0409>]\n" + depFile);  // an empty section says nothing
    EXPECT_EQ(FindDepSection(machine.platform(), "C:\\c.dep", "c.ocx"), chosen) << sections;
  }
}

TEST_F(DependencyTest, ANeededFileIsDescribedByTheSameDepFileOrItsOwn) {
  Put("C:\\C\\c.dep",
      "[c.ocx]\nUses1=own.dll\nUses2=same.dll\nUses3=c.dll\nUses4=far.dll\nUses5=kernel32.dll\n[same.dll]"
      "\nDest=x\n");
  Put(kRedist + "own.dll", "");
  Put(kRedist + "own.dep", "[own.dll]\nUses1=deep.dll\n");
  Put(kSystem + "far.dep", "[far.dll]\nDest=y\n");
  Put(kSystem + "c.dep", "[other.dll]\nDest=z\n");  // of the same title, but says nothing of c.dll
  EXPECT_EQ(NamesOf(Walk()), "own.dll(deep.dll), deep.dll, same.dll, c.dll, far.dll");
  EXPECT_EQ(Join(builder.calls), "|own.dll|, $(APPPATH)|" + kRedist + "own.dll|" + kRedist +
                                     "own.dep, |deep.dll|, |same.dll|C:\\C\\c.dep, |c.dll|, |far.dll|, "
                                     "|far.dll|" +
                                     kSystem + "far.dep");
  EXPECT_EQ(dependencies->Item(1)->FileName, kRedist + "own.dep");
  EXPECT_EQ(dependencies->Item("Ksamedll")->FileName, "C:\\C\\c.dep");
  EXPECT_EQ(dependencies->Item("Kcdll")->FileName, "");
}

TEST_F(DependencyTest, ImportsCompleteTheList) {
  Put("C:\\C\\c.ocx", MakePe({"beside.dll", "KERNEL32.dll", "redist.dll", "used.dll", "dir\\bare.dll"}, {}));
  Put("C:\\C\\c.dep", "[c.ocx]\nUses1=used.dll\n");
  Put("C:\\C\\beside.dll", MakePe({"next.dll", "used.dll"}, {}));
  Put("C:\\C\\redist.dll", MakePe({"wrong.dll"}, {}));  // beside.dll comes from here, and so does this
  Put(kRedist + "used.dll", MakePe({"last.dll"}, {}));
  Put(kRedist + "next.dll", "no executable");
  Put(kRedist + "last.dll", "");
  EXPECT_EQ(NamesOf(Walk()),
            "used.dll(last.dll), last.dll, beside.dll(next.dll), next.dll, redist.dll(wrong.dll), "
            "wrong.dll, bare.dll");
  // An import beside its importer is named by its path, unless both are redistributables.
  EXPECT_EQ(Join(builder.calls),
            "|used.dll|, |last.dll|, |C:\\C\\beside.dll|, |next.dll|, |C:\\C\\redist.dll|, |wrong.dll|, "
            "|bare.dll|");
}

TEST_F(DependencyTest, AFileWithoutAFolderIsOpenedAmongTheRedistributablesOrInTheSystem) {
  Put(kRedist + "a.dll", MakePe({"redist.dll"}, {}));
  Put(kSystem + "a.dll", MakePe({"wrong.dll"}, {}));
  Put(kSystem + "b.dll", MakePe({"system.dll"}, {}));
  CDependencies all(context());
  for (const char* name : {"a.dll", "b.dll"}) ReadDependencies(context(), name, name, "", all, all);
  EXPECT_EQ(NamesOf(all), "redist.dll, system.dll");
}

TEST_F(DependencyTest, OfTwoNamesWithOneKeyTheSecondStaysWhenTheFirstIsRemoved) {
  CDependencies files(context());
  for (const char* name : {"a-b.dll", "ab.dll"}) files.Add(name);
  files.Remove("Kabdll");
  EXPECT_EQ(NamesOf(files), "ab.dll");
  EXPECT_TRUE(files.FindName("ab.dll") != nullptr && files.FindName("a-b.dll") == nullptr);
}

TEST_F(DependencyTest, AChainOfAnyLengthIsFollowed) {
#ifdef _WIN32
  constexpr int kLength = 500;  // Wine takes a millisecond to look for a file
#else
  constexpr int kLength = 20000;
#endif
  std::string depFile = "[c.ocx]\nUses1=0.dll\n";
  for (int number = 0; number < kLength; ++number) {
    depFile += "[" + std::to_string(number) + ".dll]\nUses1=" + std::to_string(number + 1) + ".dll\n";
  }
  Put("C:\\C\\c.dep", depFile);
  EXPECT_EQ(Walk().Count(), static_cast<std::size_t>(kLength + 1));
  // What remains of the chain when only its first file is held.
  const std::shared_ptr<CDependency> first = dependencies->Item(1);
  dependencies.reset();
  EXPECT_EQ(first->Dependencies().Item(1)->Dependencies().Item(1)->Name, "2.dll");
}

}  // namespace
}  // namespace bxvbwiz
