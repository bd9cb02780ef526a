// What there is help on, and the search through it.
#pragma once

#include <string>
#include <vector>

namespace qx::app {

struct HelpEntry {
    std::string name;    ///< "MonthEnd", "day-counts"
    std::string kind;    ///< the category of a function; "Built in", "Topic", "Command"
    std::string summary; ///< one sentence
    std::string page;    ///< the file of its page in the folder that --html writes, with #anchor if it is a part of it
    std::string more;    ///< what else is searched: arguments, texts
};

/// Every function, built-in function, topic and command.
std::vector<HelpEntry> help_index();
/// The entries that hold all the words, in any case: those with them in their name first, then in their summary.
std::vector<HelpEntry> search(const std::vector<std::string>& words);

} // namespace qx::app
