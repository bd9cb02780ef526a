#include "hosts/files/document.h"
#include "hosts/files/formula_text.h"
#include "hosts/files/safe_file.h"
#include "hosts/files/xlsx_copy.h"

#include "hosts/sheet/text.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <map>
#include <memory>
#include <set>
#include <tuple>
#include <unistd.h>
#include <xlsxwriter.h>

namespace qx::files {

using sheet::Area;
using sheet::CellAddress;
using sheet::Type;
using sheet::Value;

namespace {

/// A file that is gone when its work is done.
class TemporaryFile {
  public:
    TemporaryFile() {
        const char* const folder = std::getenv("TMPDIR");
        name = std::string(folder == nullptr || *folder == '\0' ? "/tmp" : folder) + "/quexel.XXXXXX";
        const int file = mkstemp(name.data());
        if (file < 0) throw FileError("no temporary file can be made in " + name.substr(0, name.rfind('/')));
        close(file);
    }
    ~TemporaryFile() { unlink(name.c_str()); }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;
    std::string name;
};

void check(lxw_error error, const std::string& what) {
    if (error != LXW_NO_ERROR) throw FileError(what + ": " + lxw_strerror(error));
}

/// What a cell shows, in the words of the readers.
Cell shown(const Value& value, std::string& text) {
    Cell cell;
    switch (value.type()) {
    case Type::number:
        cell.kind = Kind::number;
        cell.number = value.number();
        break;
    case Type::boolean:
        cell.kind = Kind::boolean;
        cell.number = value.boolean() ? 1.0 : 0.0;
        break;
    case Type::error:
        cell.kind = Kind::error;
        cell.number = value.error();
        break;
    case Type::text:
        cell.kind = Kind::text;
        text = sheet::valid_utf8(value.text());
        break;
    case Type::uncalculated:
        cell.kind = Kind::error;
        cell.number = xlerrNA;
        break;
    default:
        break;
    }
    return cell;
}

/// libxlsxwriter writes a control character as _x0001_, and leaves what already looks like one to its caller.
std::string with_escapes_kept(std::string text) {
    for (std::size_t at = 0; (at = text.find("_x", at)) != std::string::npos; ++at)
        if (is_escape(std::string_view(text).substr(at))) {
            text.insert(at, "_x005F");
            at += 6;
        }
    return text;
}

class XlsxWriter {
  public:
    XlsxWriter(Document& document, const std::vector<Chart>& charts) : document_(document), charts_(charts) {}

    std::string write() {
        const TemporaryFile file;
        std::size_t formulas = document_.book.formula_count();
        lxw_workbook_options options{};
        options.constant_memory = formulas > 200000; // row by row, as the cells are written
        book_ = workbook_new_opt(file.name.c_str(), &options);
        if (book_ == nullptr) throw FileError("the workbook cannot be made: no memory");
        std::unique_ptr<lxw_workbook, void (*)(lxw_workbook*)> guard(book_, lxw_workbook_free);
        for (std::uint16_t number = 0; number < document_.book.sheet_count(); ++number) add_sheet(number);
        for (std::uint16_t number = 0; number < document_.book.sheet_count(); ++number) write_sheet(number);
        define_names();
        add_charts();
        check(workbook_close(guard.release()), "the workbook cannot be written");
        std::string bytes = read_file(file.name);
        // libxlsxwriter knows only numbers and texts as results.
        if (special_.empty()) return bytes;
        Changes changes;
        changes.content = [&](CellAddress cell, CellContent& content) {
            if (!special_.contains({cell.sheet, cell.row, cell.column})) return false;
            content.value = shown(document_.book.value(cell), content.text);
            content.filled = document_.book.filled_by(cell);
            return true;
        };
        std::string why;
        return with_changes(bytes, changes, why);
    }

  private:
    void add_sheet(std::uint16_t number) {
        const std::string& name = document_.book.sheet_name(number);
        lxw_worksheet* const sheet = workbook_add_worksheet(book_, name.c_str());
        if (sheet == nullptr) throw FileError("\"" + name + "\" cannot be the name of a sheet in an .xlsx file");
        if (number > 0 && document_.is_hidden(number)) worksheet_hide(sheet);
        sheets_.push_back(sheet);
    }

    lxw_format* format(CellAddress cell) {
        const std::string& code = document_.format_code(cell);
        if (code == "General") return nullptr;
        lxw_format*& made = formats_[code];
        if (made == nullptr) {
            made = workbook_add_format(book_);
            if (code == "mm-dd-yy")
                format_set_num_format_index(made, 14); // the date of the reader's own country
            else
                format_set_num_format(made, code.c_str());
        }
        return made;
    }

    void write_sheet(std::uint16_t number) {
        lxw_worksheet* const sheet = sheets_[number];
        const std::optional<Area> used = document_.book.used_area(number);
        set_widths(number, used);
        if (!used) return;
        document_.book.grid(number).visit(*used, [&](std::uint32_t row, std::uint32_t column, sheet::Cell&) {
            write_cell(sheet, {row, static_cast<std::uint16_t>(column), number});
            return true;
        });
    }

    void write_cell(lxw_worksheet* sheet, CellAddress at) {
        const Value value = document_.book.value(at);
        const sheet::Formula* const formula = document_.book.formula(at);
        const Area filled = document_.book.filled_by(at);
        const bool leads = formula != nullptr && filled.first() == at;
        if (value.is_blank() && !leads) return;
        lxw_format* const style = format(at);
        const lxw_row_t row = at.row;
        const lxw_col_t column = at.column;
        const std::string place = document_.place(at);
        if (leads) {
            Area array;
            const bool fixed = document_.book.is_array_formula(at, array);
            const bool many = fixed || !filled.is_cell(); // libxlsxwriter expects these in braces
            const std::string text = (many ? "{=" : "=") + to_xlsx(formula->text) + (many ? "}" : "");
            const double number = value.is_number() ? value.number() : 0.0;
            if (fixed)
                check(worksheet_write_array_formula_num(sheet, array.first_row, array.first_column, array.last_row,
                                                        array.last_column, text.c_str(), style, number),
                      place);
            else if (many)
                check(worksheet_write_dynamic_array_formula_num(sheet, filled.first_row, filled.first_column,
                                                                filled.last_row, filled.last_column, text.c_str(),
                                                                style, number),
                      place);
            else
                check(worksheet_write_formula_num(sheet, row, column, text.c_str(), style, number), place);
            if (!value.is_number()) special_.insert({at.sheet, at.row, at.column});
            return;
        }
        std::string text;
        const Cell cell = shown(value, text);
        switch (cell.kind) {
        case Kind::number:
            check(worksheet_write_number(sheet, row, column, cell.number, style), place);
            break;
        case Kind::boolean:
            check(worksheet_write_boolean(sheet, row, column, cell.number != 0.0, style), place);
            break;
        case Kind::text:
            write_text(sheet, at, text, style, place);
            break;
        case Kind::error: // there is no such constant to write: a string first, see special_
            check(worksheet_write_string(sheet, row, column, sheet::error_text(static_cast<std::uint16_t>(cell.number)),
                                         style),
                  place);
            special_.insert({at.sheet, at.row, at.column});
            break;
        case Kind::blank:
            break;
        }
    }

    void write_text(lxw_worksheet* sheet, CellAddress at, std::string& text, lxw_format* style,
                    const std::string& place) {
        if (sheet::character_count(text) > longest_text) text.resize(sheet::character_offset(text, longest_text));
        if (text.empty()) { // libxlsxwriter would write no text
            check(worksheet_write_string(sheet, at.row, at.column, " ", style), place);
            special_.insert({at.sheet, at.row, at.column});
        } else {
            check(worksheet_write_string(sheet, at.row, at.column, with_escapes_kept(text).c_str(), style), place);
        }
    }

    /// The widths of the file, or as wide as what the columns show.
    void set_widths(std::uint16_t number, const std::optional<Area>& used) {
        constexpr std::size_t narrowest = 8, widest = 45;
        constexpr std::uint32_t rows_looked_at = 2000;
        if (used && document_.widths(number).empty()) {
            std::vector<std::size_t> widths(used->last_column + 1u);
            Area looked_at = *used;
            looked_at.last_row = std::min(looked_at.last_row, looked_at.first_row + rows_looked_at);
            document_.book.grid(number).visit(looked_at, [&](std::uint32_t row, std::uint32_t column, sheet::Cell&) {
                const CellAddress cell{row, static_cast<std::uint16_t>(column), number};
                const Value value = document_.book.value(cell);
                const std::size_t width = value.is_date() ? 10 : sheet::character_count(sheet::display_text(value, 10));
                widths[column] = std::max(widths[column], width);
                return true;
            });
            for (std::size_t column = 0; column < widths.size(); ++column)
                if (widths[column] > narrowest)
                    worksheet_set_column(sheets_[number], static_cast<lxw_col_t>(column),
                                         static_cast<lxw_col_t>(column),
                                         static_cast<double>(std::min(widths[column], widest)) + 1.7, nullptr);
        }
        for (const ColumnWidth& width : document_.widths(number))
            worksheet_set_column(sheets_[number], width.first, width.last, width.characters, nullptr);
    }

    void define_names() {
        for (const sheet::DefinedName& name : document_.book.names()) {
            std::string full = name.name;
            if (name.sheet >= 0)
                full = quoted_sheet(document_.book.sheet_name(static_cast<std::uint16_t>(name.sheet))) + "!" + full;
            std::string formula = to_xlsx(name.text);
            if (name.area && formula.find('!') == std::string::npos) formula = fixed(*name.area);
            if (workbook_define_name(book_, full.c_str(), ("=" + formula).c_str()) != LXW_NO_ERROR)
                document_.notes.push_back({name.name, "the name cannot be written"});
        }
    }

    /// "Sheet1!$A$1:$B$2"
    std::string fixed(const Area& area) const {
        const auto corner = [](std::uint32_t row, std::uint16_t column) {
            std::string address = sheet::address_text(CellAddress{row, column, 0});
            const std::size_t digits = address.find_first_of("0123456789");
            return "$" + address.substr(0, digits) + "$" + address.substr(digits);
        };
        std::string text =
            quoted_sheet(document_.book.sheet_name(area.sheet)) + "!" + corner(area.first_row, area.first_column);
        if (!area.is_cell()) text += ":" + corner(area.last_row, area.last_column);
        return text;
    }

    void add_charts() {
        if (charts_.empty()) return;
        lxw_worksheet* const sheet = workbook_add_worksheet(book_, free_name("Charts").c_str());
        lxw_row_t row = 0;
        for (const Chart& chart : charts_) {
            lxw_chart* const drawing =
                workbook_add_chart(book_, chart.has_columns() ? LXW_CHART_COLUMN : LXW_CHART_LINE);
            for (const Series& series : chart.series) {
                const std::string values = "=" + fixed(series.values);
                const std::string over = chart.over ? "=" + fixed(*chart.over) : std::string();
                lxw_chart_series* const line =
                    chart_add_series(drawing, over.empty() ? nullptr : over.c_str(), values.c_str());
                chart_series_set_name(line, sheet::valid_utf8(series.name).c_str());
            }
            chart_title_set_name(drawing, sheet::valid_utf8(chart.title).c_str());
            if (chart.series.size() == 1) chart_legend_set_position(drawing, LXW_CHART_LEGEND_NONE);
            if (chart.over && kind_of_format(document_.format_code(chart.over->first())) == FormatKind::date)
                chart_axis_set_num_format(drawing->x_axis, "yyyy-mm-dd");
            chart_axis_set_label_position(drawing->x_axis, LXW_CHART_AXIS_LABEL_POSITION_LOW);
            lxw_chart_options options{};
            options.x_scale = 1.6;
            options.y_scale = 1.3;
            check(worksheet_insert_chart_opt(sheet, row, 0, drawing, &options), "the chart \"" + chart.title + "\"");
            row += 21;
        }
    }

    std::string free_name(const std::string& wanted) {
        std::string name = wanted;
        for (int i = 2; document_.book.sheet_number(name) >= 0; ++i) name = wanted + std::to_string(i);
        return name;
    }

    Document& document_;
    const std::vector<Chart>& charts_;
    lxw_workbook* book_ = nullptr;
    std::vector<lxw_worksheet*> sheets_;
    std::map<std::string, lxw_format*> formats_;
    std::set<std::tuple<std::uint16_t, std::uint32_t, std::uint16_t>> special_; ///< cells that show no number
};

} // namespace

std::string as_xlsx(Document& document, const std::vector<Chart>& charts) {
    return XlsxWriter(document, charts).write();
}

bool as_same_xlsx(Document& document, std::string& bytes, std::string& why) {
    sheet::Workbook& book = document.book;
    const auto is_ours = [&](CellAddress cell) {
        return cell.sheet < book.sheet_count() &&
               (document.is_changed(cell) || book.formula(cell) != nullptr || !book.filled_by(cell).is_cell());
    };
    Changes changes;
    for (std::uint16_t number = 0; number < book.sheet_count(); ++number)
        if (const std::optional<Area> used = book.used_area(number))
            book.grid(number).visit(*used, [&](std::uint32_t row, std::uint32_t column, sheet::Cell&) {
                const CellAddress cell{row, static_cast<std::uint16_t>(column), number};
                if (is_ours(cell) && !(book.value(cell).is_blank() && book.formula(cell) == nullptr))
                    changes.wanted.push_back(cell);
                return true;
            });
    bool formula_entered = false;
    for (const CellAddress cell : changes.wanted) formula_entered |= document.is_changed(cell);
    changes.content = [&](CellAddress cell, CellContent& content) {
        if (!is_ours(cell)) return false;
        const Value value = book.value(cell);
        content.value = shown(value, content.text);
        content.is_date = value.is_date();
        content.filled = book.filled_by(cell);
        content.entered = document.is_changed(cell);
        const sheet::Formula* const formula = book.formula(cell);
        if (formula == nullptr || !(content.filled.first() == cell)) return true;
        if (!content.entered) {
            if (formula_entered) content.own = to_xlsx(formula->text);
            return true;
        }
        content.formula = to_xlsx(formula->text);
        Area array;
        content.is_array = book.is_array_formula(cell, array);
        if (!content.filled.is_cell() && !content.is_array)
            why = document.place(cell) + " fills several cells; such a formula can only be entered into a new file";
        return true;
    };
    bytes = with_changes(document.bytes(), changes, why);
    return why.empty();
}

} // namespace qx::files
