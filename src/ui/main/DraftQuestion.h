#pragma once

#include "analysis/TripText.h"
#include "backup/Drafts.h"
#include "ui/common/Prompts.h"

namespace Tarno
{

/// Returns the question whether the user wants to continue with the draft. `state` is not Saved, and `places`
/// has the names of the locations in the log.
Question QuestionAbout(const Draft& draft, DraftState state, const PlaceNames& places);

} // namespace Tarno
