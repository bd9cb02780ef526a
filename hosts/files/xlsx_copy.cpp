#include "hosts/files/xlsx_copy.h"

#include "hosts/files/readers.h"
#include "hosts/files/xlsx_parts.h"

#include "hosts/sheet/formula.h"
#include "hosts/sheet/text.h"

#include <algorithm>
#include <cstdio>
#include <optional>

namespace qx::files {

using sheet::Area;
using sheet::CellAddress;

namespace {

/// The content of a string element, where a sign as _x000D_ replaces a character that XML cannot hold.
std::string escaped(std::string_view text) {
    std::string result;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const char c = text[at];
        char code[8];
        if ((static_cast<unsigned char>(c) < 0x20 && c != '\n' && c != '\t') || is_escape(text.substr(at))) {
            std::snprintf(code, sizeof code, "_x%04X_", static_cast<unsigned>(c) & 0xFFu);
            result += code;
        } else
            append_escaped(result, c);
    }
    return result;
}

/// True if blanks at the ends of a string could be taken for layout.
bool preserves(std::string_view text) {
    constexpr std::string_view blanks = " \t\n";
    return !text.empty() && (blanks.find(text.front()) != blanks.npos || blanks.find(text.back()) != blanks.npos);
}

/// "x:row" of the tag at the start of a string.
std::string_view tag_name(std::string_view text) {
    return text.substr(1, std::min(text.find_first_of(" \t\r\n/>"), text.size()) - 1);
}

bool has_end_of_its_own(std::string_view tag) { return !tag.ends_with("/>"); }

/// The start of a tag without some of its attributes and without its end: the tag of an empty element opens it.
std::string opening_tag(std::string_view name, const Attributes& attributes,
                        std::initializer_list<std::string_view> omitted) {
    std::string tag = "<" + std::string(name);
    for (const char** a = attributes.list(); *a != nullptr; a += 2) {
        const std::string_view attribute = a[0];
        if (attribute.find('|') != attribute.npos || // of an extension
            std::find(omitted.begin(), omitted.end(), attribute) != omitted.end())
            continue;
        tag += " " + std::string(attribute) + "=\"";
        for (const char c : std::string_view(a[1])) append_escaped(tag, c);
        tag += '"';
    }
    return tag;
}

/// Copies a sheet's document, puts other values into its cells and adds those that are missing.
class CopyWriter : public XmlHandler {
  public:
    CopyWriter(std::string_view document, std::uint16_t sheet, const Changes& changes)
        : document_(document), sheet_(sheet), changes_(changes) {
        const auto own = std::ranges::equal_range(changes.wanted, sheet, {}, &CellAddress::sheet);
        next_ = own.begin();
        end_ = own.end();
    }

    XmlParser* parser = nullptr;
    bool changed = false, formulas_changed = false;
    std::string why; ///< the copy cannot be made

    std::string finish() {
        if (next_ != end_ && why.empty()) why = "the sheet has no place for " + sheet::address_text(*next_);
        result_ += document_.substr(copied_);
        return std::move(result_);
    }

    void open(std::string_view element, const Attributes& attributes) override {
        const std::size_t at = parser->position();
        const std::string_view tag = document_.substr(at, parser->length());
        if (in_cell_) {
            open_in_cell(element, attributes, at);
        } else if (element == "c") {
            open_cell(attributes, tag, at);
        } else if (element == "row") {
            open_row(attributes, tag, at);
        } else if (element == "sheetData") {
            const std::string_view name = tag_name(tag);
            prefix_ = name.substr(0, name.rfind(':') + 1); // npos + 1 is 0
            if (next_ != end_ && !has_end_of_its_own(tag)) reopen(opening_tag(name, attributes, {}) + ">", at);
        } else if (element == "dimension") {
            widen(attributes, tag, at);
        }
    }

    void close(std::string_view element) override {
        const std::size_t at = parser->position(), end = at + parser->length(); // the same for <f/> and <f></f>
        if (in_cell_) {
            if (element == "f") formula_ = document_.substr(keep_from_, end - keep_from_);
            if (element == "extLst") extension_ = document_.substr(keep_extension_from_, end - keep_extension_from_);
            if (element == "c") close_cell(end);
        } else if (element == "row") {
            add_cells(sheet::max_columns, at);
            close_reopened(at, "row");
        } else if (element == "sheetData") {
            add_rows(sheet::max_rows, at);
            close_reopened(at, "sheetData");
        }
    }
    void text(std::string_view) override {}

  private:
    void copy_up_to(std::size_t at) {
        result_ += document_.substr(copied_, at - copied_);
        copied_ = at;
    }
    /// Puts a tag in the place of the one there, which may have been the whole element.
    void reopen(const std::string& tag, std::size_t at) {
        copy_up_to(at);
        result_ += tag;
        copied_ = at + parser->length();
        reopened_ = !has_end_of_its_own(document_.substr(at, parser->length()));
    }
    void close_reopened(std::size_t at, std::string_view element) {
        if (!reopened_) return;
        copy_up_to(at);
        result_ += "</" + prefix_ + std::string(element) + ">";
        reopened_ = false;
    }
    void refuse(CellAddress cell, const std::string& words) {
        if (why.empty()) why = sheet::address_text(cell) + " " + words;
    }

    /// The rectangle of all cells, with those that are added.
    void widen(const Attributes& attributes, std::string_view tag, std::size_t at) {
        Area area;
        if (!sheet::read_area(attributes.get("ref"), sheet_, area)) return;
        const Area former = area;
        for (auto cell = next_; cell != end_; ++cell) {
            area.first_row = std::min(area.first_row, cell->row);
            area.last_row = std::max(area.last_row, cell->row);
            area.first_column = std::min(area.first_column, cell->column);
            area.last_column = std::max(area.last_column, cell->column);
        }
        if (area == former) return;
        const std::string name(tag_name(tag));
        reopen("<" + name + " ref=\"" + sheet::address_text(area) + "\">", at);
        if (reopened_) result_ += "</" + name + ">";
        reopened_ = false;
    }

    void open_row(const Attributes& attributes, std::string_view tag, std::size_t at) {
        const long row = integer_in(attributes.get("r"), row_ + 1);
        if (row <= row_ && next_ != end_) why = "the rows of the sheet are not in order";
        add_rows(static_cast<std::uint32_t>(std::clamp<long>(row - 1, 0, sheet::max_rows)), at);
        row_ = row;
        column_ = 0;
        if (next_ == end_ || static_cast<long>(next_->row) + 1 != row) return;
        // The columns that the row says it spans do not include the added cells.
        if (attributes.find("spans") != nullptr || !has_end_of_its_own(tag))
            reopen(opening_tag(tag_name(tag), attributes, {"spans"}) + ">", at);
    }

    void open_cell(const Attributes& attributes, std::string_view tag, std::size_t at) {
        in_cell_ = true;
        formula_ = extension_ = {};
        formula_type_.clear();
        formula_area_.reset();
        const long former_row = row_, former_column = column_;
        Area place;
        if (sheet::read_area(attributes.get("r"), 0, place)) {
            row_ = static_cast<long>(place.first_row) + 1;
            column_ = place.first_column + 1;
        } else {
            ++column_;
        }
        if ((row_ != former_row || column_ <= former_column) && next_ != end_)
            why = "the cells of a row are not in order";
        const CellAddress cell = present();
        add_cells(cell.column, at);
        if (next_ != end_ && next_->row == cell.row && next_->column == cell.column) ++next_;
        cell_start_ = at;
        tag_ = tag_name(tag);
        style_ = attributes.get("s");
        start_tag_ = opening_tag(tag_, attributes, {"t"});
        start_tag_of_value_ = attributes.find("cm") == nullptr && attributes.find("vm") == nullptr
                                  ? start_tag_
                                  : opening_tag(tag_, attributes, {"t", "cm", "vm"});
    }

    void open_in_cell(std::string_view element, const Attributes& attributes, std::size_t at) {
        if (element == "f") {
            keep_from_ = at;
            formula_type_ = attributes.get("t");
            formula_reference_ = attributes.get("ref");
            Area area;
            if (sheet::read_area(formula_reference_, sheet_, area)) formula_area_ = area;
        }
        if (element == "extLst") keep_extension_from_ = at;
    }

    CellAddress present() const {
        return {static_cast<std::uint32_t>(row_ - 1), static_cast<std::uint16_t>(column_ - 1), sheet_};
    }

    void close_cell(std::size_t end) {
        in_cell_ = false;
        if (row_ < 1 || column_ < 1) return;
        const CellAddress cell = present();
        CellContent content;
        const bool is_ours = changes_.content(cell, content);
        const bool is_stale = !is_ours && std::any_of(stale_.begin(), stale_.end(),
                                                      [&](const Area& area) { return area.contains(cell); });
        if (!is_ours && !is_stale) return;
        changed = true;
        const bool is_array = formula_type_ == "array", is_shared = formula_type_ == "shared";
        std::string formula;
        if (!content.formula.empty())
            formula = entered_formula(cell, content);
        else if (is_shared && !content.own.empty())
            formula = formula_element(content.own, Area(cell));
        else if (!content.entered)
            formula = formula_;
        if (content.entered) {
            if (formula_type_ == "dataTable") refuse(cell, "holds the formula of other cells too");
            if (!formula_.empty() || !formula.empty()) formulas_changed = true;
        }
        if (is_array && formula_area_ && (content.entered || !(content.filled == *formula_area_))) {
            stale_.push_back(*formula_area_); // what is not filled any more is emptied
            if (!content.entered)
                if (const std::size_t at = formula.find('"' + formula_reference_ + '"'); at != formula.npos)
                    formula.replace(at + 1, formula_reference_.size(), sheet::address_text(content.filled));
        }
        if (!content.filled.is_cell() && content.filled.first() == cell) arrays_.push_back({content.filled, style_});
        copy_up_to(cell_start_);
        put(tag_, content.entered ? start_tag_of_value_ : start_tag_, formula, content);
        copied_ = end;
    }

    /// The element of a formula, of an array formula if it is for several cells.
    std::string formula_element(const std::string& formula, const Area& filled) const {
        std::string element = "<" + prefix_ + "f";
        if (!filled.is_cell()) element += " t=\"array\" ref=\"" + sheet::address_text(filled) + "\"";
        element += ">";
        for (const char c : formula) append_escaped(element, c);
        return element + "</" + prefix_ + "f>";
    }

    std::string entered_formula(CellAddress cell, const CellContent& content) const {
        return formula_element(content.formula, content.is_array ? content.filled : Area(cell));
    }

    /// Writes a cell from its opening tag, which still is without its type and its end.
    void put(const std::string& tag, const std::string& start, const std::string& formula, const CellContent& content) {
        std::string type, shown;
        switch (content.value.kind) {
        case Kind::number:
            shown = sheet::shortest_text(content.value.number);
            break;
        case Kind::boolean:
            type = "b";
            shown = content.value.number != 0.0 ? "1" : "0";
            break;
        case Kind::error:
            type = "e";
            shown = sheet::error_text(static_cast<std::uint16_t>(content.value.number));
            break;
        case Kind::text:
            type = formula.empty() ? "inlineStr" : "str";
            shown = escaped(content.text);
            break;
        case Kind::blank:
            break;
        }
        result_ += start + (type.empty() ? "" : " t=\"" + type + "\"") + ">" + formula;
        if (type == "inlineStr")
            result_ += "<" + prefix_ + "is><" + prefix_ + "t xml:space=\"preserve\">" + shown + "</" + prefix_ +
                       "t></" + prefix_ + "is>";
        else if (content.value.kind != Kind::blank)
            result_ += "<" + prefix_ + (preserves(content.text) ? "v xml:space=\"preserve\">" : "v>") + shown + "</" +
                       prefix_ + "v>";
        result_ += std::string(extension_) + "</" + tag + ">";
    }

    /// Adds the cells that are missing in the present row before a column.
    void add_cells(std::uint32_t column, std::size_t at) {
        for (; next_ != end_ && static_cast<long>(next_->row) + 1 == row_ && next_->column < column; ++next_)
            add(*next_, at);
    }
    /// Adds the rows that are missing before a row.
    void add_rows(std::uint32_t row, std::size_t at) {
        while (next_ != end_ && next_->row < row) {
            const std::uint32_t added = next_->row;
            copy_up_to(at);
            result_ += "<" + prefix_ + "row r=\"" + std::to_string(added + 1) + "\">";
            for (; next_ != end_ && next_->row == added; ++next_) add(*next_, at);
            result_ += "</" + prefix_ + "row>";
        }
    }
    void add(CellAddress cell, std::size_t at) {
        CellContent content;
        if (!changes_.content(cell, content)) return;
        std::string formula, style;
        if (!content.formula.empty()) formula = entered_formula(cell, content);
        for (const auto& [area, known] : arrays_)
            if (area.contains(cell)) style = known;
        if (content.is_date && style.empty()) refuse(cell, "would be a date, and the file has no format there");
        changed = true;
        formulas_changed = formulas_changed || !formula.empty();
        copy_up_to(at);
        extension_ = {};
        const std::string tag = prefix_ + "c";
        put(tag, "<" + tag + " r=\"" + sheet::address_text(cell) + '"' + (style.empty() ? "" : " s=\"" + style + '"'),
            formula, content);
    }

    const std::string_view document_;
    const std::uint16_t sheet_;
    const Changes& changes_;
    std::vector<CellAddress>::const_iterator next_, end_; ///< of the wanted cells
    std::string result_, prefix_, start_tag_, start_tag_of_value_, tag_, style_, formula_type_, formula_reference_;
    std::size_t copied_ = 0, cell_start_ = 0, keep_from_ = 0, keep_extension_from_ = 0;
    std::string_view formula_, extension_;
    std::optional<Area> formula_area_;
    std::vector<Area> stale_;                          ///< what arrays filled when the file was written
    std::vector<std::pair<Area, std::string>> arrays_; ///< with the formats of their first cells
    long row_ = 0, column_ = 0;
    bool in_cell_ = false, reopened_ = false;
};

/// A document without some of its elements.
class Remover : public XmlHandler {
  public:
    using Choice = std::function<bool(std::string_view, const Attributes&)>;
    Remover(std::string_view document, Choice choice) : document_(document), choice_(std::move(choice)) {}

    XmlParser* parser = nullptr;

    void open(std::string_view element, const Attributes& attributes) override {
        if (depth_ > 0 || choice_(element, attributes)) {
            if (depth_++ == 0) {
                result_ += document_.substr(copied_, parser->position() - copied_);
                copied_ = document_.size();
            }
        }
    }
    void close(std::string_view) override {
        if (depth_ > 0 && --depth_ == 0) copied_ = parser->position() + parser->length();
    }
    void text(std::string_view) override {}
    std::string finish() { return result_ + std::string(document_.substr(copied_)); }

  private:
    const std::string_view document_;
    const Choice choice_;
    std::string result_;
    std::size_t copied_ = 0;
    int depth_ = 0;
};

/// Runs a handler that looks at the parser's position over a document.
template <class Handler>
std::string written(Handler& handler, std::string_view document, const std::string& part) {
    if (document.starts_with("\xFF\xFE") || document.starts_with("\xFE\xFF"))
        throw FileError("\"" + part + "\" is UTF-16, and cannot be changed in place");
    XmlParser parser(handler, part);
    handler.parser = &parser;
    // In pieces, since the parser counts a piece's bytes as an int.
    constexpr std::size_t piece = 1 << 20;
    for (std::size_t at = 0; at < document.size(); at += piece) parser.take(document.substr(at, piece));
    parser.take({}, true);
    return handler.finish();
}

/// Removes the list of the order in which Excel last calculated: Excel makes a new one, but takes one that names cells
/// without formulas for damage.
void drop_order(Archive& archive, const std::string& book_part, Archive::Parts& parts) {
    const auto without = [&](const std::string& part, Remover::Choice choice) {
        if (!archive.has(part)) return;
        const std::string document = archive.read(part);
        Remover remover(document, std::move(choice));
        parts[part] = written(remover, document, part);
    };
    for (const auto& [id, relation] : relations_of(archive, book_part)) {
        if (relation.type != "calcChain" || !archive.has(relation.target)) continue;
        parts[relation.target] = std::nullopt;
        without(relations_part(book_part), [&, name = id](std::string_view element, const Attributes& attributes) {
            return element == "Relationship" && attributes.get("Id") == name;
        });
        without("[Content_Types].xml",
                [&, name = "/" + relation.target](std::string_view element, const Attributes& attributes) {
                    return element == "Override" && attributes.get("PartName") == name;
                });
        return;
    }
}

} // namespace

std::string with_changes(std::string_view bytes, const Changes& changes, std::string& why) {
    Archive::Parts parts;
    {
        Archive archive(bytes);
        const std::string book_part = workbook_part(archive);
        WorkbookPart book(relations_of(archive, book_part));
        parse(archive, book_part, book);
        if (book.from_1904) {
            why = "the file counts days from 1904";
            return {};
        }
        std::uint16_t number = 0;
        bool formulas_changed = false;
        for (const SheetEntry& entry : book.sheets) {
            if (entry.part.empty()) continue;
            const std::string document = archive.read(entry.part);
            CopyWriter writer(document, number++, changes);
            std::string changed = written(writer, document, entry.part);
            if (!writer.why.empty()) {
                why = writer.why;
                return {};
            }
            formulas_changed = formulas_changed || writer.formulas_changed;
            if (writer.changed) parts.emplace(entry.part, std::move(changed));
        }
        if (formulas_changed) drop_order(archive, book_part, parts);
    }
    return parts.empty() ? std::string(bytes) : Archive::with_parts(bytes, parts);
}

} // namespace qx::files
