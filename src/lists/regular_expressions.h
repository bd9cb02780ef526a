// Regular expressions over cell texts, in Perl's syntax.
//
// With CaseInSensitive the text and the expression are put into lower case first, and so the results are in lower case;
// the expression "\D" then means "\d". All throw errlibregexp for an expression that is not valid and for a search that
// looks at the text more than five million times.
#pragma once

#include "core/pools.h"
#include "core/switches.h"

#include <string>

namespace qx {

/// How often an expression matches in a string.
int RegNMatches(const std::string& Textstring, const std::string& RegSought, bool CaseInSensitive);

/// The first match; an empty string if there is none.
std::string RegSMatch(const std::string& Textstring, const std::string& RegSought, bool CaseInSensitive);

/// All matches.
WorkList<std::string> RegSMatches(const std::string& Textstring, const std::string& RegSought, bool CaseInSensitive);

inline constexpr SwitchValue split_mode_values[] = {{0, "Pieces between the matches"}, {1, "Matches"}};
/// The pieces between the matches (SplitMode 0) or the matches themselves (1). Throws errlibmin, errlibmax for another
/// mode.
WorkList<std::string> RegSplit(const std::string& Textstring, const std::string& RegSought, int SplitMode,
                               bool CaseInSensitive);

/// The text with each match replaced; in the replacement $1 is the first group, $& the match.
std::string RegReplace(const std::string& Textstring, const std::string& RegSought, const std::string& Replacement,
                       bool CaseInSensitive);

/// True if the expression matches the whole text.
bool RegMatchWhole(const std::string& Textstring, const std::string& RegSought, bool CaseInSensitive);

} // namespace qx
