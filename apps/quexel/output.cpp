#include "apps/quexel/output.h"

#include "hosts/sheet/calendar.h"
#include "hosts/sheet/csv.h"
#include "hosts/sheet/text.h"

#include <algorithm>
#include <iostream>
#include <sys/ioctl.h>
#include <unistd.h>

namespace qx::app {

using sheet::Area;
using sheet::Type;
using sheet::Value;

Value evaluate(sheet::Workbook& book, const sheet::Formula& formula) {
    const Area caller(sheet::CellAddress{});
    return book.look_up(book.evaluate(formula, caller));
}

std::string plain_text(const Value& value, bool dates, int digits) {
    if (dates && value.is_date() && value.number() >= 1.0 && value.number() < sheet::last_serial + 1.0)
        return sheet::date_text(value.number());
    return sheet::valid_utf8(sheet::display_text(value, digits));
}

Field field_of(const Value& value, bool dates, int digits) {
    return {plain_text(value, dates, digits), value.is_number()};
}

Field field_of(sheet::Workbook& book, sheet::CellAddress cell, bool dates, int digits) {
    const Value value = book.value(cell);
    if (value.is_number() && !value.is_date() && book.format(cell) == sheet::Format::percent)
        return {sheet::general_text(100.0 * value.number(), digits) + "%", true};
    return field_of(value, dates, digits);
}

Rows rows_of(const Value& value, bool dates, int digits) {
    if (!value.is(Type::array)) return {{field_of(value, dates, digits)}};
    Rows rows(value.rows());
    for (std::uint32_t row = 0; row < value.rows(); ++row)
        for (std::uint32_t column = 0; column < value.columns(); ++column)
            rows[row].push_back(field_of(value.cell(row, column), dates, digits));
    return rows;
}

std::size_t terminal_width() {
    winsize size{};
    if (!isatty(STDOUT_FILENO) || ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) != 0) return 0;
    return size.ws_col;
}

namespace {

constexpr std::size_t gap = 2;

std::string cut(const std::string& text, std::size_t width) {
    if (sheet::character_count(text) <= width) return text;
    return text.substr(0, sheet::character_offset(text, width - 1)) + "\u2026";
}

/// Narrows the columns until they fit: first those of long texts, then the last ones go. Returns how many are left.
std::size_t fit(std::vector<std::size_t>& widths, const std::vector<bool>& of_texts, std::size_t width) {
    constexpr std::size_t narrowest = 24;
    std::size_t total = 0;
    for (const std::size_t each : widths) total += each + gap;
    total = total > gap ? total - gap : 0;
    for (std::size_t i = 0; i < widths.size() && total > width; ++i) {
        if (!of_texts[i] || widths[i] <= narrowest) continue;
        const std::size_t by = std::min(widths[i] - narrowest, total - width);
        widths[i] -= by;
        total -= by;
    }
    std::size_t count = widths.size();
    while (count > 1 && total > width) total -= widths[--count] + gap;
    if (count == 1) widths[0] = std::min(widths[0], std::max<std::size_t>(width, 2));
    return count;
}

} // namespace

void print_table(std::ostream& out, const Rows& rows, std::size_t width) {
    std::vector<std::size_t> widths;
    std::vector<bool> of_texts; // no column of numbers is cut
    for (const auto& row : rows) {
        widths.resize(std::max(widths.size(), row.size()));
        of_texts.resize(widths.size(), true);
        for (std::size_t i = 0; i < row.size(); ++i)
            widths[i] = std::max(widths[i], sheet::character_count(row[i].text));
    }
    std::vector<std::size_t> of_numbers(widths.size());
    for (const auto& row : rows)
        for (std::size_t i = 0; i < row.size(); ++i)
            if (row[i].to_the_right) of_numbers[i] = std::max(of_numbers[i], sheet::character_count(row[i].text));
    for (std::size_t i = 0; i < widths.size(); ++i) of_texts[i] = of_numbers[i] < 24 && widths[i] > of_numbers[i];
    const std::vector<std::size_t> full = widths;
    const std::size_t count = width == 0 ? widths.size() : fit(widths, of_texts, width);
    std::string line;
    for (const auto& row : rows) {
        line.clear();
        for (std::size_t i = 0; i < std::min(row.size(), count); ++i) {
            const std::string text = cut(row[i].text, widths[i]);
            const std::string padding(widths[i] - std::min(widths[i], sheet::character_count(text)), ' ');
            if (i > 0) line.append(gap, ' ');
            line += row[i].to_the_right ? padding + text : text + padding;
        }
        line.erase(line.find_last_not_of(' ') + 1);
        out << line << '\n';
    }
    if (count < full.size()) {
        out.flush();
        std::cerr << "(" << count << " of " << full.size() << " columns are shown; --wide shows all)\n";
    } else if (widths != full) {
        out.flush();
        std::cerr << "(long text is cut; --wide shows all)\n";
    }
}

void print_csv(std::ostream& out, const Rows& rows) {
    for (const auto& row : rows) {
        for (std::size_t i = 0; i < row.size(); ++i) out << (i > 0 ? "," : "") << sheet::csv_field(row[i].text);
        out << '\n';
    }
}

void print_markdown(std::ostream& out, const Rows& rows) {
    std::size_t columns = 0;
    for (const auto& row : rows) columns = std::max(columns, row.size());
    if (columns == 0) return;
    const auto escaped = [](const std::string& text) {
        std::string result;
        for (const char c : text) {
            if (c == '|' || c == '\\') result += '\\';
            if (c == '\n')
                result += "<br>";
            else if (c != '\r')
                result += c;
        }
        return result;
    };
    const bool has_head =
        std::none_of(rows[0].begin(), rows[0].end(), [](const Field& field) { return field.to_the_right; });
    out << '|';
    for (std::size_t i = 0; i < columns; ++i) {
        const std::string letters = sheet::address_text({0, static_cast<std::uint16_t>(i), 0});
        out << ' '
            << (!has_head            ? letters.substr(0, letters.size() - 1)
                : i < rows[0].size() ? escaped(rows[0][i].text)
                                     : "")
            << " |";
    }
    out << "\n|";
    for (std::size_t i = 0; i < columns; ++i) {
        const bool numbers = std::any_of(rows.begin(), rows.end(),
                                         [i](const auto& row) { return i < row.size() && row[i].to_the_right; });
        out << (numbers ? " ---: |" : " --- |");
    }
    out << '\n';
    for (std::size_t r = has_head; r < rows.size(); ++r) {
        out << '|';
        for (std::size_t i = 0; i < columns; ++i)
            out << ' ' << (i < rows[r].size() ? escaped(rows[r][i].text) : "") << " |";
        out << '\n';
    }
}

void print_rows(std::ostream& out, const Rows& rows, Output output, bool wide) {
    if (output == Output::csv)
        print_csv(out, rows);
    else if (output == Output::markdown)
        print_markdown(out, rows);
    else
        print_table(out, rows, wide ? 0 : terminal_width());
}

} // namespace qx::app
