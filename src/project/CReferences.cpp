#include "project/CReferences.h"

#include <string_view>
#include <utility>

#include "project/TypeLibrary.h"
#include "support/basFile.h"
#include "support/basStr.h"
#include "support/CallStack.h"
#include "support/Findings.h"
#include "text/Text.h"

namespace bxvbwiz {
namespace {

// The data-access families by the identifiers and files of their type libraries. The setup installs such a
// family as a whole, never its files.
constexpr std::pair<std::string_view, bool CReference::*> kDataAccess[] = {
    {"{00000300-0000-0010-8000-00AA006D2EA4}", &CReference::ADO},
    {"{00025E04-0000-0000-C000-000000000046}", &CReference::DAO},
    {"{00025E01-0000-0000-C000-000000000046}", &CReference::DAO},
    {"{EE008642-64A8-11CE-920F-08002B369A33}", &CReference::RDO},
    {"MSADO15.DLL", &CReference::ADO},
    {"DAO2535.TLB", &CReference::DAO},
    {"DAO350.DLL", &CReference::DAO},
    {"MSRDO20.DLL", &CReference::RDO},
};

// Flags the family of `name`. False when it belongs to none.
bool FlagDataAccess(std::string_view name, CReference& reference) {
  for (const auto& [known, family] : kDataAccess) {
    if (known != name) continue;
    reference.*family = true;
    reference.Include = false;
    return true;
  }
  return false;
}

}  // namespace

void CReference::SetRawName(const std::string& rawName) {
  const CallStackEntry entry("CReference:RawName");
  rawName_ = rawName;
  Include = true;
  lookup_ = LibraryLookup(ReadReferenceLine(rawName));
  Name = lookup_.fileName;
  if (context_.global.IsSystemFile(lookup_.fileName)) Include = false;
  const bool dataAccess = FlagDataAccess(lookup_.identifier, *this);

  const LibrarySearch search = FindLibraryFile(context_, lookup_, Name);
  if (search == LibrarySearch::LeftOut) {
    Include = false;
    return;
  }
  if (search == LibrarySearch::FileMissing && !ContinueWithoutFile(dataAccess)) return;
  FlagDataAccess(UpperCase(GetPathFileName(Name)), *this);
  DepFile = DescribeLibrary(context_, Name, *this, dependencies_);
  if (Include) {
    if (LinkResolves) lookup_.outcome = LibraryOutcome::Installed;
  } else {
    TellNotInstalled();
  }
}

bool CReference::ContinueWithoutFile(bool dataAccess) {
  Include = false;
  const std::string library = DescribedName();
  if (!dataAccess) {
    ShowMissingLibrary(context_, lookup_, library);
    return false;
  }
  constexpr TextId kQuestion = TextId::DataAccessVersionUnsupported;
  if (ShowLibraryMessage(context_, kQuestion, FindQuestion(kQuestion)->style, library, "",
                         lookup_.fileName) == Button::Yes) {
    return true;
  }
  ADO = RDO = DAO = false;
  AddFinding(FindingId::DataAccessRefused, {library});
  lookup_.outcome = LibraryOutcome::Refused;
  return false;
}

void CReference::TellNotInstalled() {
  const bool isDataAccess = ADO || DAO || RDO;
  lookup_.outcome = isDataAccess ? LibraryOutcome::DataAccess : LibraryOutcome::System;
  const Sentence reason =
      isDataAccess ? Sentence{TextId::DataAccessAsWhole, {}}
                   : Sentence{TextId::ListedAsSystemFile, {GetPathFileName(context_.global.gDepFilePath())}};
  const std::string name = lookup_.description.empty() ? lookup_.fileName : DescribedName();
  AddFinding(FindingId::ReferenceNotInstalled, {name, TextOf(context_.platform.strings, reason)});
}

std::string CReference::DescribedName() const {
  return lookup_.description + " (" + lookup_.fileName + ")";
}

void CReference::SetProjectPath(const std::string& folder) {
  const CallStackEntry entry("CReference:ProjectPath(Let)");
  projectPath_ = folder;
  const std::size_t secondCharacter = FirstCharacters(Name, 1).size();
  if (Name.compare(secondCharacter, 1, ":") != 0) Name.insert(0, FixPath(folder));
}

std::shared_ptr<CReference> CReferences::Add(const std::string& rawLine) {
  const CallStackEntry entry("CReferences:Add");
  auto reference = std::make_shared<CReference>(context_);
  reference->Key = MakeCollectionKey(context_.platform.codePage, rawLine);
  reference->AddAsker(CurrentOrigin());
  reference->SetRawName(rawLine);
  if (const auto first = FindItem(reference->Key)) {
    RaiseKeyTaken(context_.platform.strings, TextId::LibraryNamedTwice, first->FirstAsker());
  }
  Insert(reference, reference->Key);
  return reference;
}

}  // namespace bxvbwiz
