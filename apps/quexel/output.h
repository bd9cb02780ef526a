// Values and trees as the program prints them.
#pragma once

#include "apps/quexel/commands.h"
#include "commands/trace_tree.h"
#include "hosts/sheet/workbook.h"

#include <ostream>
#include <string>
#include <vector>

namespace qx::app {

/// The value of a formula with references looked up.
sheet::Value evaluate(sheet::Workbook& book, const sheet::Formula& formula);

/// A value as a person reads it, with at most so many digits; dates as 2026-11-21 if asked.
std::string plain_text(const sheet::Value& value, bool dates, int digits);

struct Field {
    std::string text;
    bool to_the_right = false; ///< numbers are aligned to the right
};
Field field_of(const sheet::Value& value, bool dates, int digits);
/// The same, and numbers as the cell's format asks: per cents with their sign.
Field field_of(sheet::Workbook& book, sheet::CellAddress cell, bool dates, int digits);

using Rows = std::vector<std::vector<Field>>;
/// The rows of an array, or the one of a single value.
Rows rows_of(const sheet::Value& value, bool dates, int digits);

/// How wide a table may be: as wide as the terminal, if standard output is one; 0 for any width.
std::size_t terminal_width();
/// Prints rows in columns, each as wide as its widest field, within `width` if that is not 0: long text is cut, and
/// columns at the right omitted, with a note on standard error.
void print_table(std::ostream& out, const Rows& rows, std::size_t width = 0);
void print_csv(std::ostream& out, const Rows& rows);
/// The first row is the head of the table if it holds texts only, else the letters of the columns are.
void print_markdown(std::ostream& out, const Rows& rows);
/// Prints rows in any form but JSON.
void print_rows(std::ostream& out, const Rows& rows, Output output, bool wide);

} // namespace qx::app
