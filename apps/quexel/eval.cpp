#include "apps/quexel/commands.h"
#include "apps/quexel/output.h"

#include "hosts/files/json.h"
#include "hosts/sheet/text.h"

#include <algorithm>
#include <iostream>

namespace qx::app {

using sheet::Value;

namespace {

std::string message_of(const sheet::FormulaError& error) {
    return "character " + std::to_string(error.column) + ": " + error.what();
}

/// An array as one line, "{1,2;3,4}".
std::string line_of(const Value& value, bool dates) {
    if (!value.is(sheet::Type::array)) return plain_text(value, dates, 15);
    std::string line = "{";
    for (std::uint32_t row = 0; row < value.rows(); ++row)
        for (std::uint32_t column = 0; column < value.columns(); ++column) {
            const Value& cell = value.cell(row, column);
            if (column > 0)
                line += ',';
            else if (row > 0)
                line += ';';
            const std::string text = plain_text(cell, dates, 15);
            line += cell.is_text() ? '"' + text + '"' : text;
        }
    return line + "}";
}

/// The reasons of the errors in a result, each once.
void tell_reasons(const Value& value, const std::string& where) {
    std::vector<std::string> reported;
    const auto tell = [&](const Value& cell) {
        if (!cell.is_error() || cell.reason().empty()) return;
        const std::string line = where + sheet::error_text(cell.error()) + ": " + std::string(cell.reason());
        if (std::find(reported.begin(), reported.end(), line) != reported.end() || reported.size() > 20) return;
        reported.push_back(line);
        std::cerr << line << std::endl;
    };
    if (!value.is(sheet::Type::array)) return tell(value);
    for (std::uint32_t row = 0; row < value.rows(); ++row)
        for (std::uint32_t column = 0; column < value.columns(); ++column) tell(value.cell(row, column));
}

/// Writes one formula's answer; of many, one line each, and messages begin with `where`. Returns false if the formula
/// cannot be read.
bool answer(sheet::Workbook& book, std::string_view text, const EvalOptions& options, const std::string& where = {}) {
    const bool one_of_many = !where.empty();
    const bool json = options.output == Output::json;
    try {
        const sheet::Formula formula = book.read(text);
        const Value value = evaluate(book, formula);
        if (json) {
            std::cout << files::json_text(value, options.dates) << std::endl;
            return true;
        }
        if (one_of_many)
            std::cout << line_of(value, options.dates) << '\n';
        else
            print_rows(std::cout, rows_of(value, options.dates, 15), options.output, options.wide);
        std::cout.flush();
        for (const std::string& what : formula.unknown) std::cerr << where << what << std::endl;
        for (const std::string& name : book.undefined_names(formula))
            std::cerr << where << "unknown name \"" << name << "\"" << std::endl;
        const bool known = formula.unknown.empty() && book.undefined_names(formula).empty();
        if (known) tell_reasons(value, where);
        return known;
    } catch (const sheet::FormulaError& error) {
        if (json) {
            std::cout << "{\"syntax\":" << files::json_string(error.what()) << ",\"at\":" << error.column << "}"
                      << std::endl;
        } else {
            if (one_of_many) std::cout << std::endl; // a line for every line
            std::cerr << where << message_of(error) << std::endl;
        }
        return false;
    }
}

} // namespace

int eval(const EvalOptions& options) {
    sheet::Workbook book;
    if (options.formula != "-") return answer(book, options.formula, options) ? 0 : 1;
    std::ios::sync_with_stdio(false);
    bool all_good = true;
    int number = 0;
    for (std::string line; std::getline(std::cin, line);) {
        if (line.ends_with('\r')) line.pop_back();
        if (number++ == 0 && line.starts_with("\xEF\xBB\xBF")) line.erase(0, 3); // a byte order mark
        if (line.find_first_not_of(" \t") == std::string::npos && options.output != Output::json) {
            std::cout << std::endl;
            continue;
        }
        all_good = answer(book, line, options, "line " + std::to_string(number) + ": ") && all_good;
    }
    return all_good ? 0 : 1;
}

} // namespace qx::app
