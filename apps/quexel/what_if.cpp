#include "apps/quexel/what_if.h"
#include "apps/quexel/output.h"

#include "commands/goal_seek.h"
#include "hosts/files/json.h"
#include "hosts/files/safe_file.h"
#include "hosts/sheet/csv.h"
#include "hosts/sheet/text.h"

#include <algorithm>
#include <iostream>
#include <optional>
#include <sstream>

namespace qx::app {

using files::Document;
using files::FileError;
using sheet::Area;
using sheet::CellAddress;
using sheet::Value;

namespace {

sheet::CsvRows read_table(const std::string& name) {
    std::vector<sheet::Problem> problems;
    sheet::CsvRows rows = sheet::read_csv(files::read_file(name), problems);
    if (!problems.empty()) throw FileError(name + ": " + problems.front().message);
    return rows;
}

void enter(Document& document, CellAddress cell, const std::string& text) {
    try {
        document.enter(cell, text);
    } catch (const sheet::FormulaError& error) {
        throw FileError(document.place(cell) + ": character " + std::to_string(error.column) + " of " +
                        sheet::valid_utf8(text) + ": " + error.what());
    }
}

void set_from(Document& document, const Area& area, const std::string& file) {
    const sheet::CsvRows rows = read_table(file);
    std::size_t columns = 0;
    for (const auto& row : rows) columns = std::max(columns, row.size());
    if (rows.size() != area.rows() || columns != area.columns())
        throw FileError(file + " has " + std::to_string(rows.size()) + " rows and " + std::to_string(columns) +
                        " columns, but " + sheet::address_text(area) + " has " + std::to_string(area.rows()) + " and " +
                        std::to_string(area.columns()));
    for (const CellAddress cell : files::cells_of(area)) {
        const auto& row = rows[cell.row - area.first_row];
        const std::size_t column = cell.column - area.first_column;
        enter(document, cell, column < row.size() ? row[column] : "");
    }
}

} // namespace

void set(Document& document, const std::string& setting) {
    const std::size_t equals = setting.find('=');
    if (equals == std::string::npos || equals == 0)
        throw FileError("--set " + setting + ": give a cell and its value, as B2=5e6");
    const Area area = document.area(sheet::trimmed(setting.substr(0, equals)));
    const std::string value = setting.substr(equals + 1);
    if (value.starts_with('@')) return set_from(document, area, value.substr(1));
    constexpr std::uint64_t most = 1000000;
    if (std::uint64_t{area.rows()} * area.columns() > most)
        throw FileError("--set " + setting + ": more than a million cells");
    for (const CellAddress cell : files::cells_of(area)) enter(document, cell, value);
}

// --- Goal seeks
// -------------------------------------------------------------------------------------------------------

namespace {

/// The arguments of the first call of GoalSeek in a formula; none if there is none.
std::vector<std::string> arguments_of_seek(const std::string& formula) {
    std::vector<std::string> arguments;
    const std::size_t name = sheet::lower_case(formula).find("goalseek(");
    if (name == std::string::npos) return arguments;
    int depth = 0;
    char quote = '\0';
    arguments.emplace_back();
    for (std::size_t at = name + 9; at < formula.size(); ++at) {
        const char c = formula[at];
        if (quote != '\0') {
            if (c == quote) quote = '\0';
        } else if (c == '"' || c == '\'') {
            quote = c;
        } else if (c == ')' && depth == 0) {
            return arguments;
        } else if (c == ',' && depth == 0) {
            arguments.emplace_back();
            continue;
        } else {
            depth += c == '(' || c == '{' ? 1 : c == ')' || c == '}' ? -1 : 0;
        }
        arguments.back() += c;
    }
    return {};
}

/// The goal seeks of the model with the present values of what they change.
std::vector<Found> seeks_of(Document& document) {
    std::vector<Found> seeks;
    sheet::Workbook& book = document.book;
    for (std::uint16_t number = 0; number < book.sheet_count(); ++number) {
        const std::optional<Area> used = book.used_area(number);
        if (!used) continue;
        book.grid(number).visit(*used, [&](std::uint32_t row, std::uint32_t column, sheet::Cell& cell) {
            if (cell.node == nullptr) return true;
            const CellAddress at{row, static_cast<std::uint16_t>(column), number};
            const sheet::Formula* const formula = book.formula(at);
            if (formula == nullptr) return true;
            const std::vector<std::string> arguments = arguments_of_seek(formula->text);
            if (arguments.size() < 3) return true;
            try {
                const Value target = book.evaluate(book.read(arguments[0], number), Area(at));
                const Value wanted = book.look_up(book.evaluate(book.read(arguments[1], number), Area(at)));
                const Value changing = book.evaluate(book.read(arguments[2], number), Area(at));
                if (!target.is(sheet::Type::area) || !changing.is(sheet::Type::area) || !wanted.is_number())
                    return true;
                const Value was = book.value(changing.area().first());
                seeks.push_back({changing.area().first(),
                                 target.area().first(),
                                 was.is_number() ? was.number() : 0.0,
                                 0.0,
                                 {},
                                 wanted.number()});
            } catch (const sheet::FormulaError&) {} // reported as any formula that cannot be read
            return true;
        });
    }
    return seeks;
}

} // namespace

std::vector<Found> seek_goals(Document& document) {
    sheet::Workbook& book = document.book;
    book.run(CPPQX_GoalSeekInit);
    book.recalculate_all();
    std::vector<Found> seeks = seeks_of(document);
    book.run(CPPQX_GoalSeek);
    book.recalculate_all();
    for (Found& seek : seeks) {
        const Value now = book.value(seek.changing);
        seek.value = now.is_number() ? now.number() : 0.0;
        seek.shows = book.value(seek.target);
        if (seek.value != seek.was) document.set_number(seek.changing, seek.value);
    }
    book.recalculate();
    return seeks;
}

bool goal_seek_failed() { return goal_seek_failures() != 0; }

void print_found(std::ostream& out, Document& document, const std::vector<Found>& found, bool dates) {
    std::string report = goal_seek_report();
    report.erase(0, report.find_first_not_of("\r\n"));
    report.erase(std::remove(report.begin(), report.end(), '\r'), report.end());
    out << (report.empty() ? "No goal seek in this model" : report) << '\n';
    for (const Found& seek : found)
        out << document.place(seek.changing) << " is " << sheet::general_text(seek.value) << ", was "
            << sheet::general_text(seek.was) << "; " << document.place(seek.target) << " shows "
            << plain_text(seek.shows, dates, 15) << ", wanted " << sheet::general_text(seek.wanted) << '\n';
}

// --- Scenarios
// --------------------------------------------------------------------------------------------------------

namespace {

struct ScenarioColumn {
    std::string head;
    std::optional<CellAddress> cell; ///< none for a label
    bool input = false;
    std::string before; ///< what an input's cell holds without a scenario
};

std::vector<ScenarioColumn> read_columns(Document& document, const sheet::CsvRows& rows, const std::string& file) {
    std::vector<ScenarioColumn> columns;
    for (std::size_t i = 0; i < rows[0].size(); ++i) {
        ScenarioColumn column{std::string(sheet::trimmed(rows[0][i])), {}, false, {}};
        try {
            const Area area = document.area(column.head);
            if (!area.is_cell()) throw FileError(file + ": \"" + column.head + "\" is not one cell");
            column.cell = area.first();
        } catch (const FileError&) {
            const bool empty = std::all_of(rows.begin() + 1, rows.end(), [i](const auto& row) {
                return i >= row.size() || sheet::trimmed(row[i]).empty();
            });
            if (empty && !column.head.empty()) // a label with nothing in it is a slip
                throw FileError(file + ": \"" + sheet::valid_utf8(column.head) + "\" is not a cell or name in " +
                                document.name);
        }
        if (column.cell && document.book.formula(*column.cell) == nullptr)
            column.input = std::any_of(rows.begin() + 1, rows.end(), [i](const auto& row) {
                return i < row.size() && !sheet::trimmed(row[i]).empty();
            });
        if (column.input) column.before = sheet::csv_value(document.book.value(*column.cell), true);
        columns.push_back(std::move(column));
    }
    if (std::none_of(columns.begin(), columns.end(), [](const auto& column) { return column.input; }))
        throw FileError(file + ": no column is an input; its head is a cell or a name, as B2");
    return columns;
}

std::string scenario_json(const std::vector<ScenarioColumn>& columns, const std::vector<std::vector<Value>>& results,
                          bool dates) {
    std::string text = "[";
    for (std::size_t r = 0; r < results.size(); ++r) {
        text += r > 0 ? ",\n{" : "\n{";
        for (std::size_t i = 0; i < columns.size(); ++i)
            text +=
                (i > 0 ? "," : "") + files::json_string(columns[i].head) + ":" + files::json_text(results[r][i], dates);
        text += '}';
    }
    return text + "]\n";
}

} // namespace

int run_scenarios(Document& document, const CalcOptions& options) {
    sheet::CsvRows rows = read_table(options.scenarios);
    std::erase_if(rows, [](const auto& row) {
        return std::all_of(row.begin(), row.end(),
                           [](const std::string& field) { return sheet::trimmed(field).empty(); });
    });
    if (rows.size() < 2) throw FileError(options.scenarios + ": holds no scenario below its heads");
    std::vector<ScenarioColumn> columns = read_columns(document, rows, options.scenarios);
    for (const std::string& output : options.get) {
        const Area area = document.area(output);
        if (!area.is_cell()) throw FileError("--get " + output + ": a scenario's output is one cell");
        columns.push_back({output, area.first(), false, {}});
    }

    std::vector<std::vector<Value>> results;
    Rows table(1);
    for (const ScenarioColumn& column : columns) table[0].push_back({column.head});
    bool failed = false;
    for (std::size_t r = 1; r < rows.size(); ++r) {
        const auto field = [&](std::size_t i) {
            return i < rows[r].size() ? std::string(sheet::trimmed(rows[r][i])) : std::string();
        };
        for (std::size_t i = 0; i < columns.size(); ++i)
            if (columns[i].input) enter(document, *columns[i].cell, field(i).empty() ? columns[i].before : field(i));
        if (options.seek) {
            seek_goals(document);
            failed = failed || goal_seek_failed();
        } else {
            document.book.recalculate();
        }
        results.emplace_back();
        table.emplace_back();
        for (std::size_t i = 0; i < columns.size(); ++i) {
            results.back().push_back(columns[i].cell ? document.book.value(*columns[i].cell) : Value::text(field(i)));
            const bool to_file = !options.out.empty() || options.output == Output::csv;
            if (!columns[i].cell)
                table.back().push_back({field(i)});
            else if (to_file)
                table.back().push_back({sheet::csv_value(results.back().back(), options.dates), true});
            else
                table.back().push_back(field_of(document.book, *columns[i].cell, options.dates, 10));
        }
        for (std::size_t i = 0; i < columns.size(); ++i) {
            const Value& value = results.back()[i];
            if (value.is_error())
                std::cerr << options.scenarios << ": row " << r + 1 << ", " << columns[i].head << ": "
                          << sheet::error_text(value.error()) << ": " << value.reason() << '\n';
        }
    }
    for (const ScenarioColumn& column : columns)
        if (column.input) enter(document, *column.cell, column.before);
    document.book.recalculate();
    for (const sheet::Problem& problem : document.book.problems())
        document.notes.push_back({document.place(problem.cell), problem.message});

    const std::string ending = files::ending_of(options.out);
    std::ostringstream text;
    if (ending == "json" || (options.output == Output::json && ending.empty()))
        text << scenario_json(columns, results, options.dates_asked);
    else if (ending == "md" || options.output == Output::markdown)
        print_markdown(text, table);
    else if (!options.out.empty() || options.output == Output::csv)
        print_csv(text, table);
    if (ending == "xlsx") {
        Document sheet_of_results("scenarios.csv", text.str());
        files::write_file(options.out, as_xlsx(sheet_of_results));
    } else if (!options.out.empty()) {
        files::write_file(options.out, text.str());
    } else if (text.str().empty()) {
        print_table(std::cout, table, options.wide ? 0 : terminal_width());
    } else {
        std::cout << text.str();
    }
    return failed ? 1 : 0;
}

} // namespace qx::app
