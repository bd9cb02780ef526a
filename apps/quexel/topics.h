// The topics of help: what the program does, and what many functions have in common, each explained once.
#pragma once

#include "core/switches.h"

#include <ostream>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace qx::app {

struct Topic {
    const char* name;
    const char* summary;
    const char* text; ///< paragraphs; lines after two blanks are shown as they are
    SwitchTable values = {};
    const char* see_also = ""; ///< functions, comma-separated
    bool on_functions = false; ///< on what functions have in common; otherwise on the program
    bool lists_errors = false; ///< the messages of all errors follow
};

std::span<const Topic> topics();
const Topic* find_topic(const std::string& name); ///< in any case; null if there is none
/// The file of its page.
std::string page_of(const Topic& topic);

/// The values of its switch, and the codes and messages of all errors, as rows.
std::vector<std::pair<std::string, std::string>> value_table(const Topic& topic);
std::vector<std::pair<std::string, std::string>> error_table();

/// The page of a topic in the terminal; false if there is none of this name.
bool print_topic(std::ostream& out, const std::string& name);
void print_topics(std::ostream& out);

} // namespace qx::app
