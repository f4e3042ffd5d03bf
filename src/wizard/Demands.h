#pragma once

#include "analysis/Analysis.h"
#include "setupgen/SetupAnswers.h"

namespace bxvbwiz {

// Adds a finding for each object of data access that the report asks the user to insert.
void NoteDataAccess(const Analysis& analysis, const DataAccessNeeds& needs);
// Adds a finding for each answer that is still the text with which its box begins. Call it when nobody has
// seen the boxes.
void NoteInitialTexts(const StringTable& strings, const Analysis& analysis, const SetupAnswers& answers);

}  // namespace bxvbwiz
