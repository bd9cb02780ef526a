#include "hosts/files/document.h"

#include "hosts/files/child.h"
#include "hosts/sheet/calendar.h"
#include "hosts/sheet/csv.h"
#include "hosts/sheet/text.h"

#include <algorithm>

namespace qx::files {

using sheet::Area;
using sheet::CellAddress;
using sheet::FormulaError;
using sheet::Value;

std::string ending_of(std::string_view name) {
    const std::size_t slash = name.rfind('/'), point = name.rfind('.');
    if (point == std::string_view::npos || (slash != std::string_view::npos && point < slash)) return {};
    return sheet::lower_case(name.substr(point + 1));
}

Document::Document(std::string file_name, std::string bytes, bool with_last_values)
    : name(std::move(file_name)), bytes_(std::move(bytes)) {
    type_ = type_of(bytes_);
    const std::string ending = ending_of(name);
    const bool named_csv = ending == "csv" || ending == "txt" || ending == "tsv";
    const bool named_xlsx = ending == "xlsx" || ending == "xlsm" || ending == "xltx" || ending == "xltm";
    const bool named_ods = ending == "ods" || ending == "ots";
    if ((type_ == FileType::csv && (named_xlsx || named_ods || ending == "xls" || ending == "xlsb")))
        throw FileError("the name ends in ." + ending + ", but the file is not a workbook of any kind");
    if ((type_ == FileType::xlsx && (named_csv || named_ods)) || (type_ == FileType::ods && (named_csv || named_xlsx)))
        throw FileError(std::string("the file is an ") + (type_ == FileType::xlsx ? ".xlsx" : ".ods") +
                        " workbook, but its name ends in ." + ending + "; rename it");
    if (type_ == FileType::csv)
        load_csv();
    else
        load_model(with_last_values);
}

void Document::load_csv() {
    for (const sheet::Problem& problem : sheet::load_csv(book, 0, bytes_)) note_problem(problem.cell, problem.message);
    model_.sheets.emplace_back().name = book.sheet_name(0);
}

void Document::note_problem(CellAddress cell, std::string message) {
    notes.push_back({place(cell), std::move(message)});
}

void Document::load_model(bool with_last_values) {
    model_ = read_workbook(bytes_);
    for (std::uint16_t i = 0; i < model_.sheets.size(); ++i) {
        if (i == 0)
            book.rename_sheet(0, model_.sheets[0].name);
        else
            book.add_sheet(model_.sheets[i].name);
    }
    notes = model_.notes;
    for (const NameModel& defined : model_.names) try {
            book.define_name(defined.name, defined.formula, defined.sheet);
        } catch (const FormulaError& error) {
            notes.push_back({defined.name, std::string("the name is not understood: ") + error.what()});
        }
    std::vector<Value> texts(model_.texts.size()); // each is shared by all cells that show it
    for (std::uint16_t i = 0; i < model_.sheets.size(); ++i) {
        load(i, model_.sheets[i], texts);
        if (with_last_values) continue;
        for (const Cell& cell : model_.sheets[i].cells) // what is in the workbook now
            if (cell.formula != 0) std::string().swap(model_.texts[cell.formula]);
        std::vector<Cell>().swap(model_.sheets[i].cells);
    }
}

Value Document::value_of(const Cell& cell, std::vector<Value>& texts) const {
    switch (cell.kind) {
    case Kind::number:
        return kind_of_format(model_.formats[cell.format]) == FormatKind::date ? Value::date(cell.number)
                                                                               : Value::number(cell.number);
    case Kind::boolean:
        return Value::boolean(cell.number != 0.0);
    case Kind::error:
        return Value::error(static_cast<std::uint16_t>(cell.number));
    case Kind::text:
        if (texts[cell.text].is_blank()) texts[cell.text] = Value::text(model_.texts[cell.text]);
        return texts[cell.text];
    case Kind::blank:
        break;
    }
    return {};
}

void Document::load(std::uint16_t number, const SheetModel& from, std::vector<Value>& texts) {
    const auto guarded = [&](CellAddress cell, std::uint32_t formula, auto&& put) {
        try {
            put();
        } catch (const FormulaError& error) {
            note_problem(cell, "character " + std::to_string(error.column) + " of =" +
                                   sheet::valid_utf8(model_.texts[formula].substr(0, 200)) + ": " + error.what());
            book.set_value(cell, Value::error(xlerrName, "the formula is not understood"));
            unread_.push_back(cell);
        }
    };
    for (const Cell& cell : from.cells) {
        const CellAddress at{cell.row, cell.column, number};
        if (cell.format != 0) {
            formats_.emplace(key(at), cell.format);
            const FormatKind kind = kind_of_format(model_.formats[cell.format]);
            if (kind == FormatKind::date) book.set_format(at, sheet::Format::date);
            if (kind == FormatKind::percent) book.set_format(at, sheet::Format::percent);
        }
        if (cell.covered) continue;
        if (cell.formula == 0) {
            book.set_value(at, value_of(cell, texts));
            continue;
        }
        const sheet::Fill fill = cell.spills ? sheet::Fill::spill : sheet::Fill::intersect;
        guarded(at, cell.formula, [&] { book.set_formula(at, model_.texts[cell.formula], fill); });
    }
    for (const ArrayFormula& array : from.arrays) {
        Area area = array.area;
        area.sheet = number;
        guarded(area.first(), array.formula, [&] { book.set_array_formula(area, model_.texts[array.formula]); });
    }
}

std::vector<CellAddress> Document::keep_values() {
    std::unordered_set<std::uint64_t> failed;
    for (const CellAddress cell : unread_) failed.insert(key(cell));
    for (const sheet::Problem& problem : book.problems()) failed.insert(key(problem.cell));
    std::vector<CellAddress> kept;
    std::vector<Value> texts(model_.texts.size());
    for (std::uint16_t number = 0; number < model_.sheets.size() && !failed.empty(); ++number)
        for (const Cell& cell : model_.sheets[number].cells) {
            const CellAddress at{cell.row, cell.column, number};
            if (cell.kind == Kind::blank || !failed.contains(key(at)) || is_changed(at)) continue;
            book.set_value(at, value_of(cell, texts));
            kept.push_back(at);
        }
    return kept;
}

void Document::enter(CellAddress cell, std::string_view text) {
    Area array;
    if (book.is_array_formula(cell, array) && !array.is_cell())
        throw FileError(place(cell) + " is a part of an array formula");
    note_change(cell);
    book.set_value(cell, {});
    sheet::enter(book, cell, text);
}

void Document::note_change(CellAddress cell) { changed_.insert(key(cell)); }

std::string Document::content(CellAddress cell) {
    if (const sheet::Formula* const formula = book.formula(cell))
        return book.filled_by(cell).first() == cell ? "=" + formula->text : "";
    return book.filled_by(cell).is_cell() ? sheet::csv_value(book.value(cell), true) : "";
}

void Document::replace_content(CellAddress cell, const std::string& text) {
    Area area;
    const bool is_text = book.formula(cell) == nullptr && book.value(cell).is_text();
    const std::string_view formula = sheet::trimmed(text);
    const bool is_formula = !is_text && formula.size() > 1 && formula[0] == '=';
    if (book.is_array_formula(cell, area)) {
        if (!is_formula) throw FileError("an array formula can only become another one");
        book.read(formula, cell.sheet); // throws before anything is changed
        note_change(cell);
        return book.set_array_formula(area, formula);
    }
    if (is_formula) {
        const sheet::Fill fill = book.filled_by(cell).is_cell() ? sheet::Fill::intersect : sheet::Fill::spill;
        book.read(formula, cell.sheet);
        note_change(cell);
        return book.set_formula(cell, formula, fill);
    }
    note_change(cell);
    book.set_value(cell, {});
    if (is_text)
        book.set_value(cell, Value::text(text));
    else
        sheet::enter(book, cell, text);
}

void Document::set_number(CellAddress cell, double x) {
    const bool date = book.value(cell).is_date();
    note_change(cell);
    book.set_value(cell, date ? Value::date(x) : Value::number(x));
}

const std::string& Document::format_code(CellAddress cell) {
    static const std::string general = "General", date = "yyyy-mm-dd", time = "yyyy-mm-dd hh:mm:ss", percent = "0.00%";
    const auto found = formats_.find(key(cell));
    if (found != formats_.end()) return model_.formats[found->second];
    switch (book.format(cell)) {
    case sheet::Format::date: {
        const Value value = book.value(cell);
        return value.is_number() && value.number() != static_cast<long long>(value.number()) ? time : date;
    }
    case sheet::Format::percent:
        return percent;
    default:
        return general;
    }
}

std::string Document::place(CellAddress cell) const {
    if (book.sheet_count() == 1) return sheet::address_text(cell);
    return files::place(book.sheet_name(cell.sheet), cell);
}

Area Document::area(std::string_view text) {
    Area area;
    const std::size_t mark = text.rfind('!');
    std::string_view reference = text;
    std::uint16_t number = 0;
    if (mark != std::string_view::npos) {
        std::string sheet_name(text.substr(0, mark));
        if (sheet_name.size() > 1 && sheet_name.front() == '\'' && sheet_name.back() == '\'')
            sheet_name = sheet_name.substr(1, sheet_name.size() - 2);
        for (std::size_t at = 0; (at = sheet_name.find("''", at)) != std::string::npos; ++at) sheet_name.erase(at, 1);
        const int found = book.sheet_number(sheet_name);
        if (found < 0) throw FileError("there is no sheet \"" + sheet::valid_utf8(sheet_name) + "\"");
        number = static_cast<std::uint16_t>(found);
        reference = text.substr(mark + 1);
    }
    if (sheet::read_area(reference, number, area)) return area;
    if (book.find_name(reference, number, area)) return area;
    throw FileError("\"" + sheet::valid_utf8(text) + "\" is not a cell, range or name in this workbook");
}

std::string as_same_csv(Document& document) {
    std::vector<sheet::Problem> problems;
    // Fields are copied as they are in the file; only the changed ones are written anew.
    sheet::CsvRows rows = sheet::read_csv(document.bytes(), problems);
    const std::optional<Area> used = document.book.used_area(0);
    for (std::uint32_t row = 0; used && row <= used->last_row; ++row)
        for (std::uint32_t column = 0; column <= used->last_column; ++column) {
            const CellAddress cell{row, static_cast<std::uint16_t>(column), 0};
            if (!document.is_changed(cell)) continue;
            if (rows.size() <= row) rows.resize(row + 1);
            if (rows[row].size() <= column) rows[row].resize(column + 1);
            const sheet::Formula* const formula = document.book.formula(cell);
            rows[row][column] =
                formula != nullptr ? "=" + formula->text : sheet::csv_value(document.book.value(cell), true);
        }
    const char* const line_end = document.bytes().find("\r\n") != std::string::npos ? "\r\n" : "\n";
    return sheet::csv_text(rows, document.bytes(), line_end);
}

} // namespace qx::files
