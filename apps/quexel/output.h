// Values and trees as the program prints them.
#pragma once

#include "commands/trace_tree.h"
#include "hosts/sheet/workbook.h"

#include <ostream>
#include <string>
#include <vector>

namespace qx::app {

/// The value of a formula with references looked up.
sheet::Value evaluate(sheet::Workbook& book, const sheet::Formula& formula);

/// A value as JSON: 1.5, true, "text", {"error":"#NUM!"}, {"empty":true}, {"uncalculated":true} or
/// {"rows":1,"columns":2,"cells":[1,2]}. Always valid UTF-8.
std::string json_text(const sheet::Value& value);
/// A text as a JSON string.
std::string json_string(std::string_view text);

/// A value as a person reads it, with at most so many digits; dates as 2026-11-21 if asked.
std::string plain_text(const sheet::Value& value, bool dates, int digits);

struct Field {
    std::string text;
    bool to_the_right = false; ///< numbers stand under each other
};
/// Prints rows in columns, each as wide as its widest field.
void print_table(std::ostream& out, const std::vector<std::vector<Field>>& rows);
Field field_of(const sheet::Value& value, bool dates, int digits);

/// Prints the tree, two blanks a level, its three columns under each other.
void print_tree(std::ostream& out, const TraceTree& tree);

} // namespace qx::app
