// .ods: OpenDocument spreadsheets (ISO/IEC 26300), as LibreOffice, Gnumeric, Excel and programs write them.
#include "hosts/files/formula_text.h"
#include "hosts/files/readers.h"
#include "hosts/files/xml.h"

#include "hosts/sheet/formula.h"
#include "hosts/sheet/text.h"

#include <algorithm>
#include <charconv>
#include <cstdio>

namespace qx::files {

using sheet::Area;
using sheet::CellAddress;

namespace {

std::uint32_t count_in(std::string_view text, std::uint32_t otherwise, std::uint32_t most) {
    std::uint32_t x = otherwise;
    std::from_chars(text.data(), text.data() + text.size(), x);
    return std::min(x, most);
}

/// "PT13H45M30S" in days. False if it is something else.
bool read_duration(std::string_view text, double& days) {
    const bool negative = text.starts_with('-');
    if (negative) text.remove_prefix(1);
    if (!text.starts_with("PT")) return false;
    text.remove_prefix(2);
    double seconds = 0.0;
    while (!text.empty()) {
        double x = 0.0;
        const auto [end, fault] = std::from_chars(text.data(), text.data() + text.size(), x);
        if (fault != std::errc() || end == text.data() + text.size()) return false;
        seconds += x * (*end == 'H' ? 3600.0 : *end == 'M' ? 60.0 : 1.0);
        text.remove_prefix(static_cast<std::size_t>(end - text.data()) + 1);
    }
    days = (negative ? -seconds : seconds) / 86400.0;
    return true;
}

/// The errors that LibreOffice shows by a number; the others have the names that they have everywhere.
std::uint16_t error_of(std::string_view text) {
    std::uint16_t error = 0;
    if (sheet::match_error(text, error) == text.size() && !text.empty()) return error;
    if (text == "Err:502" || text == "Err:503" || text == "Err:523") return xlerrNum;
    if (text == "Err:522" || text == "Err:524") return xlerrRef;
    if (text == "Err:508" || text == "Err:509" || text == "Err:525") return xlerrName;
    return xlerrValue;
}

class Content : public XmlHandler {
  public:
    explicit Content(ModelBuilder& builder) : builder_(builder) {}

    void open(std::string_view element, const Attributes& attributes) override {
        if (skipped_ > 0 || element == "annotation" || element == "tracked-changes" || element == "dde-links") {
            ++skipped_; // its texts and tables belong to no cell
            if (element == "annotation") builder_.not_kept("comments");
            return;
        }
        if (element == "table") {
            builder_.add_sheet(attributes.get("name"));
            row_ = 0;
        } else if (element == "table-row") {
            column_ = 0;
            repeated_rows_ = count_in(attributes.get("number-rows-repeated"), 1, sheet::max_rows);
            row_start_ = builder_.model.sheets.empty() ? 0 : builder_.sheet().cells.size();
        } else if (element == "table-cell" || element == "covered-table-cell") {
            open_cell(attributes);
        } else if (element == "p" && in_cell_) {
            if (!text_.empty() || paragraphs_++ > 0) text_ += '\n';
            in_paragraph_ = true;
        } else if (in_paragraph_ && element == "s") {
            text_.append(count_in(attributes.get("c"), 1, longest_text), ' ');
        } else if (in_paragraph_ && element == "tab") {
            text_ += '\t';
        } else if (in_paragraph_ && element == "line-break") {
            text_ += '\n';
        } else if (element == "named-range") {
            add_name(attributes.get("name"), attributes.get("cell-range-address"), true);
        } else if (element == "named-expression") {
            add_name(attributes.get("name"), attributes.get("expression"), false);
        } else if (element == "conditional-format") {
            builder_.not_kept("conditional formats");
        } else if (element == "content-validation") {
            builder_.not_kept("data validation");
        } else if (element == "frame") {
            builder_.not_kept("charts and pictures");
        } else if (element == "database-range") {
            builder_.not_kept("database ranges");
        }
    }

    void close(std::string_view element) override {
        if (skipped_ > 0) {
            --skipped_;
            return;
        }
        if (element == "p") {
            in_paragraph_ = false;
        } else if (element == "table-cell" || element == "covered-table-cell") {
            close_cell();
        } else if (element == "table-row") {
            close_row();
        }
    }

    void text(std::string_view bytes) override {
        if (skipped_ == 0 && in_paragraph_ && text_.size() < 4 * longest_text) text_ += bytes;
    }

  private:
    void open_cell(const Attributes& attributes) {
        if (builder_.model.sheets.empty()) throw FileError("the file is damaged: a cell is in no sheet");
        in_cell_ = true;
        in_paragraph_ = false;
        paragraphs_ = 0;
        text_.clear();
        repeated_ = count_in(attributes.get("number-columns-repeated"), 1, sheet::max_columns);
        formula_ = attributes.get("formula");
        type_ = attributes.get("value-type");
        is_error_ = attributes.get("calcext:value-type") == "error";
        const std::string_view value = type_ == "date"      ? attributes.get("date-value")
                                       : type_ == "time"    ? attributes.get("time-value")
                                       : type_ == "boolean" ? attributes.get("boolean-value")
                                       : type_ == "string"  ? attributes.get("string-value")
                                                            : attributes.get("value");
        value_ = value;
        has_value_ = type_ == "string" && attributes.find("string-value") != nullptr;
        array_rows_ = count_in(attributes.get("number-matrix-rows-spanned"), 0, sheet::max_rows);
        array_columns_ = count_in(attributes.get("number-matrix-columns-spanned"), 0, sheet::max_columns);
        if (attributes.find("number-columns-spanned") != nullptr || attributes.find("number-rows-spanned") != nullptr)
            builder_.not_kept("merged cells");
    }

    void set_value(Cell& cell) {
        if (type_.empty() && text_.empty()) return;
        cell.kind = Kind::number;
        if (is_error_) {
            cell.kind = Kind::error;
            cell.number = error_of(text_);
        } else if (type_ == "boolean") {
            cell.kind = Kind::boolean;
            cell.number = value_ == "true" ? 1.0 : 0.0;
        } else if (type_ == "date") {
            std::replace(value_.begin(), value_.end(), 'T', ' ');
            const auto date = sheet::read_number(value_.substr(0, 19));
            if (date)
                cell.number = date->value;
            else
                builder_.note({cell.row, cell.column, 0},
                              "\"" + sheet::valid_utf8(value_.substr(0, 40)) + "\" is not a date");
            cell.format = builder_.format(cell.number == static_cast<long long>(cell.number) ? "yyyy-mm-dd"
                                                                                             : "yyyy-mm-dd hh:mm:ss");
        } else if (type_ == "time") {
            if (!read_duration(value_, cell.number))
                builder_.note({cell.row, cell.column, 0},
                              "\"" + sheet::valid_utf8(value_.substr(0, 40)) + "\" is not a time");
            cell.format = builder_.format("[h]:mm:ss");
        } else if (type_ == "float" || type_ == "percentage" || type_ == "currency") {
            const char* const end = value_.data() + value_.size();
            double x = 0.0;
            if (std::from_chars(value_.data(), end, x).ptr != end || value_.empty() || x - x != 0.0)
                builder_.note({cell.row, cell.column, 0},
                              "\"" + sheet::valid_utf8(value_.substr(0, 40)) + "\" is not a number");
            else
                cell.number = x;
            if (type_ == "percentage") cell.format = builder_.format("0.00%");
            if (type_ == "currency") cell.format = builder_.format("#,##0.00");
        } else {
            cell.kind = Kind::text;
            cell.text = builder_.text(has_value_ ? value_ : text_);
        }
    }

    void close_cell() {
        if (!in_cell_) return;
        in_cell_ = false;
        const std::uint32_t first = column_;
        column_ += repeated_;
        if ((type_.empty() && text_.empty() && formula_.empty()) || row_ >= sheet::max_rows ||
            first >= sheet::max_columns)
            return;
        Cell cell;
        cell.row = row_;
        cell.column = static_cast<std::uint16_t>(first);
        set_value(cell);
        cell.covered = std::any_of(arrays_.begin(), arrays_.end(), [&](const Area& area) {
            return area.contains({cell.row, cell.column, sheet_number()});
        });
        std::string formula;
        if (!formula_.empty()) {
            formula = from_openformula(formula_);
            cell.formula = builder_.formula(formula);
        }
        if (array_rows_ > 0 && array_columns_ > 0 && cell.formula != 0) {
            const Area area(
                sheet_number(), row_, cell.column, std::min(row_ + array_rows_, sheet::max_rows) - 1,
                static_cast<std::uint16_t>(std::min(first + array_columns_, std::uint32_t{sheet::max_columns}) - 1));
            builder_.sheet().arrays.push_back({area, cell.formula});
            if (!area.is_cell()) arrays_.push_back(area);
        }
        const std::uint32_t end = std::min(column_, std::uint32_t{sheet::max_columns});
        for (std::uint32_t column = first; column < end; ++column) {
            cell.column = static_cast<std::uint16_t>(column);
            if (column > first && !formula.empty()) // the same formula seen from the next column
                cell.formula = builder_.formula(sheet::moved_formula(formula, 0, column - first));
            builder_.add(cell);
        }
    }

    /// A row that is repeated with cells in it stands for as many rows with these cells.
    void close_row() {
        if (builder_.model.sheets.empty()) return;
        const std::size_t row_end = builder_.sheet().cells.size();
        const std::uint32_t end = std::min(row_ + repeated_rows_, std::uint32_t{sheet::max_rows});
        for (std::uint32_t row = row_ + 1; row < end && row_end > row_start_; ++row)
            for (std::size_t i = row_start_; i < row_end; ++i) {
                Cell cell = builder_.sheet().cells[i];
                if (cell.formula != 0)
                    cell.formula =
                        builder_.formula(sheet::moved_formula(builder_.model.texts[cell.formula], row - row_, 0));
                cell.row = row;
                builder_.add(cell);
            }
        row_ = end;
        std::erase_if(arrays_, [&](const Area& area) { return area.last_row < row_ || area.sheet != sheet_number(); });
    }

    void add_name(std::string_view name, std::string_view text, bool range) {
        if (builder_.model.names.size() >= 65536) throw FileError("the file has more than 65,536 names");
        const std::string formula = range ? "[" + std::string(text) + "]" : std::string(text);
        builder_.model.names.push_back({sheet::valid_utf8(name.substr(0, 255)), from_openformula(formula), -1});
    }

    std::uint16_t sheet_number() const { return static_cast<std::uint16_t>(builder_.model.sheets.size() - 1); }

    ModelBuilder& builder_;
    int skipped_ = 0, paragraphs_ = 0;
    std::uint32_t row_ = 0, column_ = 0, repeated_ = 1, repeated_rows_ = 1, array_rows_ = 0, array_columns_ = 0;
    std::size_t row_start_ = 0;
    bool in_cell_ = false, in_paragraph_ = false, is_error_ = false, has_value_ = false;
    std::string text_, value_, type_, formula_;
    std::vector<Area> arrays_;
};

bool is_encrypted(Archive& archive) {
    return archive.has("META-INF/manifest.xml") &&
           archive.read("META-INF/manifest.xml").find("encryption-data") != std::string::npos;
}

} // namespace

Model read_ods(Archive& archive) {
    if (is_encrypted(archive)) throw FileError("the file is protected by a password; save it without one");
    ModelBuilder builder;
    Content content(builder);
    XmlParser parser(content, "content.xml");
    archive.read("content.xml", [&](std::string_view piece) { parser.take(piece); });
    parser.take({}, true);
    if (builder.model.sheets.empty()) throw FileError("the file has no sheet");
    archive.each([&](const std::string& name) {
        if (name.starts_with("Basic/") || name.starts_with("Scripts/")) builder.not_kept("macros");
    });
    return std::move(builder.model);
}

} // namespace qx::files
