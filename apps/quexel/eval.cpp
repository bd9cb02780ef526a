#include "apps/quexel/commands.h"
#include "apps/quexel/output.h"
#include "apps/quexel/tracing.h"

#include "hosts/sheet/text.h"

#include <iostream>

namespace qx::app {

using sheet::Value;

namespace {

std::string message_of(const sheet::FormulaError& error) {
    return "character " + std::to_string(error.column) + ": " + error.what();
}

/// Writes one formula's answer as a line; messages begin with `where`. Returns false if the formula cannot be read.
bool answer(sheet::Workbook& book, std::string_view text, const EvalOptions& options, const std::string& where = {}) {
    try {
        const sheet::Formula formula = book.read(text);
        const Value value = evaluate(book, formula);
        if (options.json) {
            std::cout << json_text(value) << std::endl;
            return true;
        }
        std::vector<std::vector<Field>> rows;
        if (value.is(sheet::Type::array)) {
            for (std::uint32_t row = 0; row < value.rows(); ++row) {
                rows.emplace_back();
                for (std::uint32_t column = 0; column < value.columns(); ++column)
                    rows.back().push_back(field_of(value.cell(row, column), options.dates, 15));
            }
        } else {
            rows.push_back({field_of(value, options.dates, 15)});
        }
        print_table(std::cout, rows);
        for (const std::string& what : formula.unknown) std::cerr << where << what << std::endl;
        for (const std::string& name : book.undefined_names(formula))
            std::cerr << where << "unknown name \"" << name << "\"" << std::endl;
        std::cout.flush();
        return formula.unknown.empty() && book.undefined_names(formula).empty();
    } catch (const sheet::FormulaError& error) {
        if (options.json)
            std::cout << "{\"syntax\":" << json_string(error.what()) << ",\"at\":" << error.column << "}" << std::endl;
        else
            std::cerr << where << message_of(error) << std::endl;
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
        if (number == 0 && line.starts_with("\xEF\xBB\xBF")) line.erase(0, 3); // a byte order mark
        all_good = answer(book, line, options, "line " + std::to_string(++number) + ": ") && all_good;
    }
    return all_good ? 0 : 1;
}

int trace(const TraceOptions& options) {
    sheet::Workbook book;
    try {
        const sheet::Formula formula = book.read(options.formula);
        const TraceTree tree = traced([&] { evaluate(book, formula); });
        for (const std::string& what : formula.unknown) std::cerr << what << '\n';
        const int status = show(tree, options.formula, options.html);
        return formula.unknown.empty() ? status : 1;
    } catch (const sheet::FormulaError& error) {
        std::cerr << message_of(error) << '\n';
        return 1;
    }
}

} // namespace qx::app
