// Numbers as text and text as numbers, the way a spreadsheet does it; and UTF-8.
#pragma once

#include "hosts/sheet/value.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace qx::sheet {

/// Number of characters; a byte that is no part of good UTF-8 counts as one.
std::size_t character_count(std::string_view text);
/// Position of the byte at which a character starts, counted from 0; the end if there are fewer.
std::size_t character_offset(std::string_view text, std::size_t character);
/// The text without the blanks and tabs at its ends.
std::string_view trimmed(std::string_view text);
/// The text with every byte that is not UTF-8 replaced by U+FFFD.
std::string valid_utf8(std::string_view text);
std::string upper_case(std::string_view text);
std::string lower_case(std::string_view text);
std::string proper_case(std::string_view text); ///< a capital at the start of each word
bool equal_ignoring_case(std::string_view a, std::string_view b);
int compare_ignoring_case(std::string_view a, std::string_view b);
/// True if the text fits a pattern with * (any characters), ? (one) and ~ (the next character itself).
bool matches_wildcards(std::string_view pattern, std::string_view text);

/// The byte, from one on, at which the first part of a string starts that fits a pattern; npos if there is none.
std::size_t find_wildcards(std::string_view pattern, std::string_view text, std::size_t from);

/// What a string means as a number: 1,234.5, 12%, 1e3, 1 1/2, (500), £5, 2026-11-21, 21-Nov-2026, 13:45.
struct ReadNumber {
    double value;
    bool is_date;
};
std::optional<ReadNumber> read_number(std::string_view text);

/// The number with at most so many significant digits, as a cell without a format shows it.
std::string general_text(double x, int digits = 15);
/// The fewest digits that read back as the same number.
std::string shortest_text(double x);
/// A number in a format such as "#,##0.00;(#,##0.00)", "0.0%", "dd-mmm-yyyy" or "hh:mm". Nothing if it cannot be
/// shown, as a negative date.
std::optional<std::string> formatted_text(double x, std::string_view format);
/// A string in a format: in the section for texts, or in one with @.
std::string formatted_text(std::string_view text, std::string_view format);

/// Rounded to so many decimals, halves away from zero as the number reads in fifteen digits.
double rounded(double x, int places);

/// The value as a cell shows it.
std::string display_text(const Value& value, int digits = 15);

} // namespace qx::sheet
