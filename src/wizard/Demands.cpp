#include "wizard/Demands.h"

namespace bxvbwiz {

void NoteDataAccess(const Analysis& analysis, const DataAccessNeeds& needs) {
  const struct {
    bool isNeeded;
    bool CReference::*family;
    const char* object;
  } objects[] = {{needs.ado, &CReference::ADO, "MDAC"},
                 {needs.daoJet || needs.daoOdbcDirect, &CReference::DAO, "DAO"},
                 {needs.rdo, &CReference::RDO, "RDO"}};
  for (const auto& object : objects) {
    if (!object.isNeeded) continue;
    Finding finding{FindingId::DataAccessToInsert, {object.object}, {}};
    for (const CReference& reference : analysis.Project()->References()) {
      if (finding.origin.id == TextId{} && reference.*object.family) finding.origin = reference.FirstAsker();
    }
    AddFinding(std::move(finding));
  }
}

void NoteInitialTexts(const StringTable& strings, const Analysis& analysis, const SetupAnswers& answers) {
  const SetupAnswers initial = InitialAnswers(strings);
  const struct {
    std::string SetupAnswers::*answer;
    FindingId finding;
  } boxes[] = {{&SetupAnswers::applicationName, FindingId::InitialTextLeft},
               {&SetupAnswers::companyName, FindingId::InitialTextLeft},
               {&SetupAnswers::applicationVersion, FindingId::InitialVersionLeft}};
  for (const auto& box : boxes) {
    if (answers.*box.answer != initial.*box.answer) continue;
    AddFinding(
        {box.finding, {answers.*box.answer}, {TextId::OriginProject, {analysis.Project()->FileName()}}});
  }
}

}  // namespace bxvbwiz
