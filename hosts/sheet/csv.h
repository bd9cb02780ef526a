// Workbooks as CSV files.
//
// A cell that begins with = is a formula, with {= an array formula: the first cell of its rectangle holds it, and
// the other cells hold {} or the same text again. Numbers, TRUE, FALSE and error values are read as such; dates as
// 2026-11-21 or 21-Nov-2026; whatever else is text. Fields are separated by commas, and a field with a comma, a quote
// or a line end is in quotes (RFC 4180); so do formulas with commas. The text is UTF-8, with or without a byte
// order mark; bytes that are not are taken for Windows-1252.
#pragma once

#include "hosts/sheet/workbook.h"

#include <string>
#include <string_view>
#include <vector>

namespace qx::sheet {

using CsvRows = std::vector<std::vector<std::string>>;

/// The fields of a string. What is broken is listed in `problems` and read as well as it can be.
CsvRows read_csv(std::string_view text, std::vector<Problem>& problems);

/// Puts the text of a cell into it as a user would enter it. Throws FormulaError.
void enter(Workbook& book, CellAddress cell, std::string_view text);

/// Fills a sheet from a CSV text. Returns what is wrong with the text and with the formulas as they are written; a
/// formula that cannot be read shows #NAME?.
std::vector<Problem> load_csv(Workbook& book, std::uint16_t sheet, std::string_view text);

/// A value as a file holds it: it reads back equal.
std::string csv_value(const Value& value, bool dates);
/// A string as a field, in quotes where it needs them.
std::string csv_field(std::string_view text);
/// The fields as a file holds them, with a byte order mark if the former text has one.
std::string csv_text(const CsvRows& rows, std::string_view former, std::string_view line_end);

/// The calculated values of a sheet as a CSV text that reads back equal: numbers in full, dates as 2026-11-21 or, if
/// so wanted, as numbers too.
std::string save_csv(Workbook& book, std::uint16_t sheet, bool dates = true);

} // namespace qx::sheet
