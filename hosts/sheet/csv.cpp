#include "hosts/sheet/csv.h"

#include "hosts/sheet/calendar.h"
#include "hosts/sheet/text.h"

#include <algorithm>
#include <cmath>

namespace qx::sheet {

namespace {

/// Windows-1252 from 0x80 to 0x9F; 0 where it has no character.
constexpr std::uint16_t windows_characters[] = {0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                                0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0,      0x017D, 0,
                                                0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                                0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178};

std::string utf8_of(std::string_view text) {
    std::string valid = valid_utf8(text);
    if (valid == text) return valid;
    std::string converted;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t length = character_offset(text.substr(at), 1);
        const std::string_view piece = text.substr(at, length);
        at += length;
        if (length > 1 || static_cast<unsigned char>(piece[0]) < 0x80) {
            converted += piece;
            continue;
        }
        unsigned c = static_cast<unsigned char>(piece[0]);
        if (c < 0xA0) c = windows_characters[c - 0x80];
        if (c == 0) c = 0xFFFD;
        if (c >= 0x800) {
            converted += static_cast<char>(0xE0 | (c >> 12));
            converted += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
        } else {
            converted += static_cast<char>(0xC0 | (c >> 6));
        }
        converted += static_cast<char>(0x80 | (c & 0x3F));
    }
    return converted;
}

class CsvReader {
  public:
    CsvReader(std::string_view text, std::vector<Problem>& problems) : text_(text), problems_(problems) {
        if (text_.starts_with("\xEF\xBB\xBF")) at_ = line_start_ = 3;
    }

    CsvRows read() {
        CsvRows rows;
        while (at_ < text_.size()) {
            if (rows.size() == max_rows) {
                report(0, rows.size() - 1, "the sheet has no more rows; the rest is not read", at_);
                break;
            }
            read_row(rows);
        }
        return rows;
    }

  private:
    bool at_line_end() const { return at_ >= text_.size() || text_[at_] == '\n' || text_[at_] == '\r'; }

    void report(std::size_t column, std::size_t row, const std::string& message, std::size_t at) {
        if (at < counted_to_ || counted_to_ < line_start_) { // else from the last message on, since a line may be long
            counted_to_ = line_start_;
            counted_ = 0;
        }
        if (at > counted_to_) {
            counted_ += character_count(text_.substr(counted_to_, at - counted_to_));
            counted_to_ = at;
        }
        const std::size_t character = at < line_start_ ? 0 : counted_;
        problems_.push_back(
            {{static_cast<std::uint32_t>(row),
              static_cast<std::uint16_t>(std::min<std::size_t>(column, max_columns - 1)), 0},
             "line " + std::to_string(line_) + ", column " + std::to_string(character + 1) + ": " + message});
    }

    void end_line() {
        if (at_ < text_.size() && text_[at_] == '\r') ++at_;
        if (at_ < text_.size() && text_[at_] == '\n') ++at_;
        ++line_;
        line_start_ = at_;
    }

    void read_row(CsvRows& rows) {
        std::vector<std::string>& row = rows.emplace_back();
        for (;;) {
            std::string field =
                at_ < text_.size() && text_[at_] == '"' ? quoted(row.size(), rows.size() - 1) : std::string();
            const std::size_t start = at_;
            while (!at_line_end() && text_[at_] != ',') ++at_;
            if (!field.empty() || start != at_) field += text_.substr(start, at_ - start);
            if (row.size() < max_columns)
                row.push_back(std::move(field));
            else if (row.size() == max_columns && !too_wide_) {
                too_wide_ = true;
                report(row.size(), rows.size() - 1, "the sheet has no more columns; the rest is not read", start);
            }
            if (at_line_end()) break;
            ++at_;
        }
        end_line();
    }

    /// A field in quotes, up to the closing one.
    std::string quoted(std::size_t column, std::size_t row) {
        const std::size_t opened = at_, line = line_, line_start = line_start_;
        std::string field;
        for (++at_; at_ < text_.size(); ++at_) {
            const char c = text_[at_];
            if (c == '"') {
                if (at_ + 1 < text_.size() && text_[at_ + 1] == '"') {
                    ++at_;
                } else {
                    ++at_;
                    if (!at_line_end() && text_[at_] != ',') report(column, row, "text after the closing quote", at_);
                    return field;
                }
            }
            field += c;
            if (c == '\n' || (c == '\r' && !(at_ + 1 < text_.size() && text_[at_ + 1] == '\n'))) {
                ++line_;
                line_start_ = at_ + 1;
            }
        }
        // Never closed: the field is taken to end with its line, so that the lines below are read.
        at_ = opened + 1;
        line_ = line;
        line_start_ = line_start;
        report(column, row, "the quote is not closed", opened);
        const std::size_t start = at_;
        while (!at_line_end()) ++at_;
        return std::string(text_.substr(start, at_ - start));
    }

    std::string_view text_;
    std::vector<Problem>& problems_;
    std::size_t at_ = 0, line_ = 1, line_start_ = 0;
    std::size_t counted_to_ = 0, counted_ = 0; ///< characters of the line up to a place
    bool too_wide_ = false;
};

bool is_formula(std::string_view text) { return text.size() > 1 && text[0] == '='; }
bool is_array_formula(std::string_view text) { return text.size() > 3 && text.starts_with("{=") && text.back() == '}'; }

/// Reads the array formulas of a table.
class ArrayFormulas {
  public:
    explicit ArrayFormulas(const CsvRows& rows) : rows_(rows), covered_(rows.size()) {
        for (std::uint32_t row = 0; row < rows.size(); ++row)
            for (std::uint32_t column = 0; column < rows[row].size(); ++column) {
                const std::string_view text = at(row, column);
                if (is_array_formula(text) && !covered(row, column)) add(row, column, text);
            }
    }

    std::string_view at(std::uint32_t row, std::uint32_t column) const {
        return row < rows_.size() && column < rows_[row].size() ? trimmed(rows_[row][column]) : std::string_view();
    }
    bool covered(std::uint32_t row, std::uint32_t column) const {
        return row < covered_.size() && column < covered_[row].size() && covered_[row][column];
    }

    std::vector<Area> areas;

  private:
    void add(std::uint32_t row, std::uint32_t column, std::string_view text) {
        const auto continues = [&](std::uint32_t r, std::uint32_t c) {
            return (at(r, c) == "{}" || at(r, c) == text) && !covered(r, c);
        };
        std::uint32_t last_column = column, last_row = row;
        while (continues(row, last_column + 1)) ++last_column;
        for (;; ++last_row) {
            bool whole = true;
            for (std::uint32_t c = column; whole && c <= last_column; ++c) whole = continues(last_row + 1, c);
            if (!whole) break;
        }
        areas.emplace_back(0, row, static_cast<std::uint16_t>(column), last_row,
                           static_cast<std::uint16_t>(last_column));
        for (std::uint32_t r = row; r <= last_row; ++r) {
            covered_[r].resize(rows_[r].size());
            std::fill(covered_[r].begin() + column, covered_[r].begin() + last_column + 1, true);
        }
    }

    const CsvRows& rows_;
    std::vector<std::vector<bool>> covered_;
};

/// A formula in a message: a long one is shown around the character in question.
std::string excerpt(std::string_view formula, std::size_t character) {
    constexpr std::size_t most = 120, before = 60;
    std::string text = valid_utf8(formula);
    if (character_count(text) <= most) return text;
    const std::size_t first = character_offset(text, character > before ? character - before : 0);
    const std::size_t end = character_offset(text, character + before);
    return (first > 0 ? "..." : "") + text.substr(first, end - first) + (end < text.size() ? "..." : "");
}

std::string formula_problem(const FormulaError& error, std::string_view text) {
    const std::size_t bracket = text.starts_with('{'); // of an array formula, not read with it
    const std::size_t column = error.column + bracket;
    std::string message = "character " + std::to_string(column) + " of " + excerpt(text, column) + ": " + error.what();
    if (text.find('(') != std::string_view::npos && text.find(',') == std::string_view::npos &&
        std::count(text.begin(), text.end(), '(') > std::count(text.begin(), text.end(), ')'))
        message += " (a formula with commas needs quotes)";
    return message;
}

/// Reports a file without commas whose formulas follow another separator: each line would be a single field.
void tell_other_separator(const CsvRows& rows, std::uint16_t sheet, std::vector<Problem>& problems) {
    if (std::any_of(rows.begin(), rows.end(), [](const auto& row) { return row.size() > 1; })) return;
    for (std::uint32_t row = 0; row < rows.size(); ++row) {
        const std::string_view line = rows[row].empty() ? std::string_view{} : rows[row][0];
        const bool semicolons = line.find(";=") != line.npos;
        if (is_formula(line) || (!semicolons && line.find("\t=") == line.npos)) continue;
        problems.push_back(
            {{row, 0, sheet},
             std::string("fields are separated by commas, not by ") + (semicolons ? "semicolons" : "tabs")});
        return;
    }
}

} // namespace

CsvRows read_csv(std::string_view text, std::vector<Problem>& problems) { return CsvReader(text, problems).read(); }

void enter(Workbook& book, CellAddress cell, std::string_view text) {
    const std::string_view content = trimmed(text);
    std::uint16_t error = 0;
    if (content.empty()) return;
    if (is_formula(content)) {
        book.set_formula(cell, content);
    } else if (equal_ignoring_case(content, "TRUE") || equal_ignoring_case(content, "FALSE")) {
        book.set_value(cell, Value::boolean(content.size() == 4));
    } else if (content[0] == '#' && match_error(content, error) == content.size()) {
        book.set_value(cell, Value::error(error));
    } else if (const auto number = read_number(content)) {
        book.set_value(cell, number->is_date ? Value::date(number->value) : Value::number(number->value));
        if (content.back() == '%') book.set_format(cell, Format::percent);
    } else {
        book.set_value(cell, Value::text(text));
    }
}

std::vector<Problem> load_csv(Workbook& book, std::uint16_t sheet, std::string_view text) {
    std::vector<Problem> problems;
    if (text.starts_with("\xFF\xFE") || text.starts_with("\xFE\xFF")) {
        problems.push_back({{0, 0, sheet}, "the file is UTF-16; save it as CSV in UTF-8"});
        return problems;
    }
    const std::string converted = utf8_of(text);
    const CsvRows rows = read_csv(converted, problems);
    tell_other_separator(rows, sheet, problems);
    const auto guarded = [&](CellAddress cell, std::string_view formula, auto&& put) {
        try {
            put();
        } catch (const FormulaError& error) {
            problems.push_back({cell, formula_problem(error, formula)});
            book.set_value(cell, Value::error(xlerrName));
        }
    };
    const ArrayFormulas arrays(rows);
    for (std::uint32_t row = 0; row < rows.size(); ++row)
        for (std::uint32_t column = 0; column < rows[row].size(); ++column) {
            const CellAddress cell{row, static_cast<std::uint16_t>(column), sheet};
            const std::string& field = rows[row][column];
            if (trimmed(field) == "{}" && !arrays.covered(row, column))
                problems.push_back({cell, "{} belongs to no array formula"});
            else if (!arrays.covered(row, column))
                guarded(cell, field, [&] { enter(book, cell, field); });
        }
    for (Area area : arrays.areas) {
        area.sheet = sheet;
        const std::string_view formula = arrays.at(area.first_row, area.first_column);
        guarded(area.first(), formula, [&] { book.set_array_formula(area, formula.substr(1, formula.size() - 2)); });
    }
    return problems;
}

std::string csv_value(const Value& value, bool dates) {
    if (dates && value.is_date() && value.number() == std::floor(value.number()) && value.number() >= 1.0 &&
        value.number() <= last_serial)
        return date_text(value.number());
    if (value.is_number()) return shortest_text(value.number());
    return valid_utf8(display_text(value));
}

std::string csv_field(std::string_view text) {
    if (text.empty() ||
        (text.find_first_of(",\"\r\n") == std::string_view::npos && text.front() != ' ' && text.back() != ' '))
        return std::string(text);
    std::string field = "\"";
    for (const char c : text) field.append(c == '"' ? 2 : 1, c);
    return field + '"';
}

std::string csv_text(const CsvRows& rows, std::string_view former, std::string_view line_end) {
    std::string text = former.starts_with("\xEF\xBB\xBF") ? "\xEF\xBB\xBF" : "";
    for (const std::vector<std::string>& row : rows) {
        for (std::size_t i = 0; i < row.size(); ++i) text += (i > 0 ? "," : "") + csv_field(row[i]);
        text += line_end;
    }
    return text;
}

std::string save_csv(Workbook& book, std::uint16_t sheet, bool dates) {
    std::string text;
    const std::uint32_t rows = book.grid(sheet).rows(), columns = book.grid(sheet).columns();
    for (std::uint32_t row = 0; row < rows; ++row) {
        std::size_t end = text.size(); // trailing empty cells are omitted
        for (std::uint32_t column = 0; column < columns; ++column) {
            if (column > 0) text += ',';
            const std::string value = csv_value(book.value({row, static_cast<std::uint16_t>(column), sheet}), dates);
            if (value.empty()) continue;
            text += csv_field(value);
            end = text.size();
        }
        text.resize(end);
        text += "\r\n";
    }
    return text;
}

} // namespace qx::sheet
