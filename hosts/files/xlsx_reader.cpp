// .xlsx: Office Open XML workbooks (ECMA-376), as Excel, LibreOffice and programs write them.
#include "hosts/files/formula_text.h"
#include "hosts/files/readers.h"
#include "hosts/files/xlsx_parts.h"

#include "hosts/sheet/calendar.h"
#include "hosts/sheet/formula.h"
#include "hosts/sheet/text.h"

#include <algorithm>
#include <charconv>
#include <map>
#include <optional>

namespace qx::files {

using sheet::Area;
using sheet::CellAddress;

namespace {

double number_in(std::string_view text, double otherwise = 0.0) {
    double x = otherwise;
    std::from_chars(text.data(), text.data() + text.size(), x);
    return x;
}

// --- Texts and styles -----------------------------------------------------------------------------------------------

/// A text with the characters for which _x000D_ and its like stand; _x005F_ is an underscore in front of what only
/// looks like one.
std::string unescaped(std::string_view text) {
    std::string result;
    for (std::size_t at = 0; at < text.size();) {
        if (is_escape(text.substr(at))) {
            unsigned code = 0;
            std::from_chars(text.data() + at + 2, text.data() + at + 6, code, 16);
            if (code > 0 && code < 0x80) {
                result += static_cast<char>(code);
                at += 7;
                continue;
            }
        }
        result += text[at++];
    }
    return result;
}

/// The shared texts, each a run of pieces; how they sound (rPh) is no part of them.
class SharedTexts : public XmlHandler {
  public:
    explicit SharedTexts(ModelBuilder& builder) : builder_(builder) {}
    std::vector<std::uint32_t> texts; ///< their places in the model

    void open(std::string_view element, const Attributes&) override {
        if (element == "si") text_.clear();
        if (element == "rPh") ++phonetic_;
        in_text_ = element == "t" && phonetic_ == 0;
    }
    void close(std::string_view element) override {
        in_text_ = false;
        if (element == "rPh") --phonetic_;
        if (element == "si") texts.push_back(builder_.text(unescaped(text_)));
    }
    void text(std::string_view bytes) override {
        if (in_text_ && text_.size() < 4 * longest_text) text_ += bytes;
    }

  private:
    ModelBuilder& builder_;
    std::string text_;
    int phonetic_ = 0;
    bool in_text_ = false;
};

/// The codes of the formats that have numbers only (18.8.30 of the standard).
std::string_view built_in_format(long id) {
    switch (id) {
    case 1:
        return "0";
    case 2:
        return "0.00";
    case 3:
        return "#,##0";
    case 4:
        return "#,##0.00";
    case 9:
        return "0%";
    case 10:
        return "0.00%";
    case 11:
        return "0.00E+00";
    case 12:
        return "# ?/?";
    case 13:
        return "# ?\?/?\?";
    case 14:
        return "mm-dd-yy";
    case 15:
        return "d-mmm-yy";
    case 16:
        return "d-mmm";
    case 17:
        return "mmm-yy";
    case 18:
        return "h:mm AM/PM";
    case 19:
        return "h:mm:ss AM/PM";
    case 20:
        return "h:mm";
    case 21:
        return "h:mm:ss";
    case 22:
        return "m/d/yy h:mm";
    case 37:
        return "#,##0 ;(#,##0)";
    case 38:
        return "#,##0 ;[Red](#,##0)";
    case 39:
        return "#,##0.00;(#,##0.00)";
    case 40:
        return "#,##0.00;[Red](#,##0.00)";
    case 45:
        return "mm:ss";
    case 46:
        return "[h]:mm:ss";
    case 47:
        return "mm:ss.0";
    case 48:
        return "##0.0E+0";
    case 49:
        return "@";
    default:
        return {};
    }
}

/// The number formats of the styles of cells.
std::vector<std::uint16_t> read_styles(Archive& archive, const std::string& part, ModelBuilder& builder) {
    std::map<long, std::string> codes;
    std::vector<std::uint16_t> styles;
    bool of_cells = false;
    OpenHandler handler([&](std::string_view element, const Attributes& attributes) {
        if (element == "numFmt" && codes.size() < most_formats) {
            codes[integer_in(attributes.get("numFmtId"))] = attributes.get("formatCode");
        } else if (element == "xf") {
            if (!of_cells) return;
            if (styles.size() == most_formats) throw FileError("the file is refused: it has more than 65,000 styles");
            const long id = integer_in(attributes.get("numFmtId"), 0);
            const auto code = codes.find(id);
            styles.push_back(
                builder.format(code == codes.end() ? built_in_format(id) : std::string_view(code->second)));
        } else if (element == "cellXfs" || element == "cellStyleXfs" || element == "cellStyles" || element == "dxfs") {
            of_cells = element == "cellXfs";
        }
    });
    parse(archive, part, handler);
    return styles;
}

// --- The workbook ---------------------------------------------------------------------------------------------------

// --- Sheets ---------------------------------------------------------------------------------------------------------

struct SharedFormula {
    CellAddress first;
    std::string formula;
};

class SheetPart : public XmlHandler {
  public:
    SheetPart(ModelBuilder& builder, const std::vector<std::uint32_t>& texts, const std::vector<std::uint16_t>& styles,
              bool from_1904)
        : builder_(builder), texts_(texts), styles_(styles), from_1904_(from_1904) {}

    void open(std::string_view element, const Attributes& attributes) override {
        if (element == "c") {
            open_cell(attributes);
        } else if (element == "v" || element == "f" || element == "t") {
            if (element == "f") open_formula(attributes);
            into_ = !in_cell_ || (element == "t" && (phonetic_ > 0 || !inline_)) ? nullptr
                    : element == "f"                                             ? &formula_
                                                                                 : &value_;
        } else if (element == "is") {
            inline_ = true;
        } else if (element == "rPh") {
            ++phonetic_;
        } else if (element == "row") {
            row_ = integer_in(attributes.get("r"), row_ + 1);
            column_ = 0;
        } else if (element == "col") {
            const long first = integer_in(attributes.get("min")), last = integer_in(attributes.get("max"));
            if (attributes.find("width") != nullptr && first >= 1 && last >= first && last <= sheet::max_columns &&
                builder_.sheet().widths.size() < sheet::max_columns)
                builder_.sheet().widths.push_back({static_cast<std::uint16_t>(first - 1),
                                                   static_cast<std::uint16_t>(last - 1),
                                                   std::clamp(number_in(attributes.get("width")), 0.0, 255.0)});
        } else {
            note_other(element);
        }
    }

    void close(std::string_view element) override {
        into_ = nullptr;
        if (element == "rPh") --phonetic_;
        if (element == "c") close_cell();
    }

    void text(std::string_view bytes) override {
        if (into_ != nullptr && into_->size() < 4 * longest_text) *into_ += bytes;
    }

  private:
    void note_other(std::string_view element) {
        if (element == "mergeCell") builder_.not_kept("merged cells");
        if (element == "conditionalFormatting") builder_.not_kept("conditional formats");
        if (element == "dataValidation") builder_.not_kept("data validation");
        if (element == "hyperlink") builder_.not_kept("links");
        if (element == "autoFilter") builder_.not_kept("filters");
        if (element == "sheetProtection") builder_.not_kept("protection");
    }

    void open_cell(const Attributes& attributes) {
        in_cell_ = true;
        inline_ = false;
        value_.clear();
        formula_.clear();
        type_ = attributes.get("t");
        formula_type_.clear();
        shared_ = -1;
        area_.reset();
        dynamic_ = attributes.find("cm") != nullptr;
        cell_ = {};
        const std::string_view where = attributes.get("r");
        Area place;
        valid_ = true;
        if (where.empty()) {
            ++column_;
        } else if (sheet::read_area(where, 0, place) && place.is_cell()) {
            row_ = static_cast<long>(place.first_row) + 1;
            column_ = place.first_column + 1;
        } else {
            valid_ = false;
        }
        if (row_ < 1 || row_ > static_cast<long>(sheet::max_rows) || column_ < 1 || column_ > sheet::max_columns)
            valid_ = false;
        if (!valid_)
            return builder_.note_sheet("a cell at \"" + sheet::valid_utf8(where.substr(0, 40)) + "\" is on no sheet");
        cell_.row = static_cast<std::uint32_t>(row_ - 1);
        cell_.column = static_cast<std::uint16_t>(column_ - 1);
        const long style = integer_in(attributes.get("s"), 0);
        if (style >= 0 && static_cast<std::size_t>(style) < styles_.size())
            cell_.format = styles_[static_cast<std::size_t>(style)];
    }

    void open_formula(const Attributes& attributes) {
        formula_type_ = attributes.get("t");
        shared_ = integer_in(attributes.get("si"));
        Area area;
        if (sheet::read_area(attributes.get("ref"), 0, area)) area_ = area;
    }

    CellAddress address() const { return {cell_.row, cell_.column, 0}; }

    void set_value() {
        std::uint16_t error = 0;
        if (type_ == "s") {
            const long index = integer_in(value_);
            if (index < 0 || static_cast<std::size_t>(index) >= texts_.size()) {
                builder_.note(address(), "its text is not in the file");
                return;
            }
            cell_.kind = Kind::text;
            cell_.text = texts_[static_cast<std::size_t>(index)];
        } else if (type_ == "str" || type_ == "inlineStr" || inline_) {
            cell_.kind = Kind::text;
            cell_.text = builder_.text(unescaped(value_));
        } else if (value_.empty()) {
            return;
        } else if (type_ == "b") {
            cell_.kind = Kind::boolean;
            cell_.number = value_ == "1" || value_ == "true" ? 1.0 : 0.0;
        } else if (type_ == "e") {
            cell_.kind = Kind::error;
            if (sheet::match_error(value_, error) != value_.size()) {
                error = xlerrValue;
                if (formula_.empty())
                    builder_.note(address(), "the error " + value_.substr(0, 40) + " becomes #VALUE!");
            }
            cell_.number = error;
        } else if (type_ == "d") {
            const auto date = sheet::read_number(
                value_.size() > 10 && value_[10] == 'T' ? value_.substr(0, 10) + " " + value_.substr(11, 8) : value_);
            cell_.kind = Kind::number;
            if (date)
                cell_.number = date->value;
            else
                builder_.note(address(), "\"" + sheet::valid_utf8(value_.substr(0, 40)) + "\" is no date");
            if (cell_.format == 0) cell_.format = builder_.format("yyyy-mm-dd");
        } else {
            double x = 0.0;
            const char* const end = value_.data() + value_.size();
            if (std::from_chars(value_.data(), end, x).ptr != end || x - x != 0.0) {
                builder_.note(address(), "\"" + sheet::valid_utf8(value_.substr(0, 40)) + "\" is no number");
                return;
            }
            constexpr double to_1900 = 1462.0;
            if (from_1904_ && kind_of_format(builder_.model.formats[cell_.format]) == FormatKind::date) x += to_1900;
            cell_.kind = Kind::number;
            cell_.number = x;
        }
    }

    void close_cell() {
        if (!in_cell_) return;
        in_cell_ = false;
        if (!valid_) return;
        set_value();
        cell_.covered = is_covered();
        if (formula_type_ == "dataTable") {
            builder_.note(address(), "a data table is not calculated; the file's value is kept");
        } else if (formula_type_ == "shared" && shared_ >= 0) {
            use_shared();
        } else if (formula_type_ == "array" && area_ && !formula_.empty()) {
            add_array();
        } else if (!formula_.empty()) {
            cell_.formula = builder_.formula(from_xlsx(formula_));
        }
        if (cell_.kind != Kind::blank || cell_.formula != 0) builder_.add(cell_);
    }

    /// The first cell of a shared formula holds it, the others its number and, with it moved to their place, their own.
    void use_shared() {
        if (!formula_.empty()) {
            shared_formulas_[shared_] = {address(), from_xlsx(formula_)};
            cell_.formula = builder_.formula(shared_formulas_[shared_].formula);
            return;
        }
        const auto found = shared_formulas_.find(shared_);
        if (found == shared_formulas_.end())
            return builder_.note(address(), "its shared formula is not in the file; the file's value is kept");
        const SharedFormula& shared = found->second;
        cell_.formula =
            builder_.formula(sheet::moved_formula(shared.formula, std::int64_t{cell_.row} - shared.first.row,
                                                  std::int64_t{cell_.column} - shared.first.column));
    }

    void add_array() {
        const std::uint32_t formula = builder_.formula(from_xlsx(formula_));
        if (area_->first_row != cell_.row || area_->first_column != cell_.column)
            return builder_.note(address(), "its array formula is for other cells; the file's value is kept");
        cell_.formula = formula;
        cell_.spills = dynamic_;
        if (!dynamic_) builder_.sheet().arrays.push_back({*area_, formula});
        if (!area_->is_cell()) open_arrays_.push_back(*area_);
    }

    /// True for a cell that shows a part of the array formula of a cell before it.
    bool is_covered() {
        std::erase_if(open_arrays_, [&](const Area& area) { return area.last_row < cell_.row; });
        return std::any_of(open_arrays_.begin(), open_arrays_.end(),
                           [&](const Area& area) { return area.contains(address()); });
    }

    ModelBuilder& builder_;
    const std::vector<std::uint32_t>& texts_;
    const std::vector<std::uint16_t>& styles_;
    const bool from_1904_;
    long row_ = 0, column_ = 0; ///< counted from 1
    bool in_cell_ = false, valid_ = false, inline_ = false, dynamic_ = false;
    int phonetic_ = 0;
    Cell cell_;
    std::string type_, value_, formula_, formula_type_;
    std::string* into_ = nullptr;
    long shared_ = -1;
    std::optional<Area> area_;
    std::map<long, SharedFormula> shared_formulas_;
    std::vector<Area> open_arrays_;
};

/// What lies in the archive beside sheets and is not carried into a new file.
void note_parts(Archive& archive, ModelBuilder& builder) {
    archive.each([&](const std::string& name) {
        const auto holds = [&](std::string_view what) { return name.find(what) != std::string::npos; };
        if (holds("vbaProject.bin")) builder.not_kept("macros");
        if (holds("/charts/chart")) builder.not_kept("charts");
        if (holds("/media/")) builder.not_kept("pictures");
        if (holds("/comments")) builder.not_kept("comments");
        if (holds("/pivotTables/")) builder.not_kept("pivot tables");
        if (holds("/externalLinks/externalLink")) builder.not_kept("links to other workbooks");
        if (holds("/tables/table")) builder.not_kept("tables");
    });
}

} // namespace

bool is_escape(std::string_view text) {
    return text.size() >= 7 && text.starts_with("_x") && text[6] == '_' &&
           std::all_of(text.begin() + 2, text.begin() + 6, [](char c) {
               return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
           });
}

Model read_xlsx(Archive& archive) {
    ModelBuilder builder;
    const std::string book_part = workbook_part(archive);
    const std::map<std::string, Relation> relations = relations_of(archive, book_part);
    WorkbookPart book(relations);
    parse(archive, book_part, book);

    SharedTexts texts(builder);
    std::vector<std::uint16_t> styles;
    for (const auto& [id, relation] : relations) {
        if (relation.type == "sharedStrings" && archive.has(relation.target)) parse(archive, relation.target, texts);
        if (relation.type == "styles" && archive.has(relation.target))
            styles = read_styles(archive, relation.target, builder);
    }
    std::vector<int> numbers; // of the sheets, -1 for one that is none
    for (const SheetEntry& entry : book.sheets) {
        numbers.push_back(-1);
        if (entry.part.empty()) {
            builder.not_kept("chart sheets");
            continue;
        }
        numbers.back() = static_cast<int>(builder.model.sheets.size());
        builder.add_sheet(entry.name).hidden = entry.hidden;
        SheetPart sheet(builder, texts.texts, styles, book.from_1904);
        parse(archive, entry.part, sheet);
    }
    if (builder.model.sheets.empty()) throw FileError("the file has no sheet");
    for (NameModel& name : book.names) {
        if (name.sheet >= 0)
            name.sheet = static_cast<std::size_t>(name.sheet) < numbers.size()
                             ? numbers[static_cast<std::size_t>(name.sheet)]
                             : -1;
        name.formula = from_xlsx(name.formula);
        builder.model.names.push_back(std::move(name));
    }
    if (book.from_1904)
        builder.note("the file counts days from 1904; its dates are shown as such, and count from 1900");
    if (book.print_settings) builder.not_kept("print settings");
    note_parts(archive, builder);
    return std::move(builder.model);
}

} // namespace qx::files
