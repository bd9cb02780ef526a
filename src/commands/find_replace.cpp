#include "commands/find_replace.h"

#include "addin/cells.h"
#include "addin/excel_operations.h"
#include "addin/host.h"
#include "addin/registration.h"
#include "core/utilities.h"
#include "lists/letters.h"

#include <boost/regex.hpp>

#include <algorithm>
#include <set>
#include <stdexcept>
#include <utility>

namespace qx {

struct Replacer::Compiled {
    bool utf8;
    boost::wregex of_letters, of_bytes; ///< the first only for UTF-8
};

Replacer::Replacer(const std::string& expression, std::string replacement)
    : compiled_(std::make_unique<Compiled>()), replacement_(std::move(replacement)) {
    compiled_->utf8 = is_utf8(expression) && is_utf8(replacement_);
    const auto compile = [&](boost::wregex& compiled, bool utf8) {
        compiled.imbue(all_letters());
        compiled.assign(letters_of(expression, utf8));
    };
    if (compiled_->utf8) compile(compiled_->of_letters, true);
    compile(compiled_->of_bytes, false);
}
Replacer::~Replacer() = default;

std::string Replacer::operator()(const std::string& text) const {
    const bool utf8 = compiled_->utf8 && is_utf8(text);
    const boost::wregex& expression = utf8 ? compiled_->of_letters : compiled_->of_bytes;
    return text_of(boost::regex_replace(letters_of(text, utf8), expression, letters_of(replacement_, utf8)), utf8);
}

namespace {

constexpr std::size_t longest = 255; ///< characters that a cell of the interface holds
constexpr std::size_t most_cells = 1'000'000;

/// A string of up to 255 characters as a cell; a temporary text would be cut at 200.
class Counted {
  public:
    explicit Counted(std::string_view text) {
        if (text.size() > longest) throw std::runtime_error("the text is longer than 255 characters");
        bytes_[0] = static_cast<unsigned char>(text.size());
        text.copy(reinterpret_cast<char*>(bytes_ + 1), text.size());
        bytes_[text.size() + 1] = '\0';
        cell_ = {{.str = bytes_}, xltypeStr};
    }
    OPER* cell() { return &cell_; }

  private:
    unsigned char bytes_[longest + 2];
    OPER cell_;
};

/// A reference to one area of a sheet.
class Reference {
  public:
    Reference(std::uintptr_t sheet, const XLREF& area) : areas_{1, {area}} {
        cell_.xltype = xltypeRef;
        cell_.val.mref = {&areas_, sheet};
    }
    Reference(const Reference&) = delete;
    Reference& operator=(const Reference&) = delete;
    OPER* cell() { return &cell_; }

  private:
    XLMREF areas_;
    OPER cell_ = nil_cell();
};

bool is_formula(std::string_view text) { return text.size() > 1 && text.front() == '='; }

/// A formula in the other style of references.
std::string converted(const std::string& formula, bool to_a1, OPER* relative_to) {
    Counted text(formula);
    OPER from_a1 = bool_cell(!to_a1), a1 = bool_cell(to_a1), as_is = missing_cell();
    HostCell result;
    if (Excel(xlfFormulaConvert, result.get(), 5, text.cell(), &from_a1, &a1, &as_is, relative_to) != xlretSuccess ||
        result->type() != xltypeStr)
        throw std::runtime_error("Excel does not understand the formula");
    return text_in(*result);
}

/// The contents of a cell as its user sees them, with references such as B7; "" of an empty one.
std::string contents(OPER* cell) {
    HostCell result;
    if (Excel(xlfGetFormula, result.get(), 1, cell) != xlretSuccess || result->type() != xltypeStr) return {};
    std::string text = text_in(*result);
    if (text.size() >= longest) throw std::runtime_error("the contents are too long for an add-in to read");
    return is_formula(text) ? converted(text, true, cell) : text;
}

void put(OPER* cell, const std::string& text) {
    const std::string stored = is_formula(text) ? converted(text, false, cell) : text;
    Counted counted(stored);
    HostCell result;
    if (Excel(xlcFormula, result.get(), 2, counted.cell(), cell) != xlretSuccess || result->type() == xltypeErr ||
        (result->type() == xltypeBool && result->val.xbool == 0))
        throw std::runtime_error("Excel does not accept the contents");
}

/// The part of a sheet that is in use; the whole sheet if the host does not say.
XLREF used_part() {
    int ends[4]; // first and last row, first and last column, from 1
    for (int i = 0; i < 4; ++i) {
        HostCell number;
        if (Excel(xlfGetDocument, number.get(), 1, TempInt(9 + i)) != xlretSuccess || number->type() != xltypeNum)
            return {0, 65535, 0, 255};
        ends[i] = static_cast<int>(number->val.num);
    }
    if (ends[0] < 1 || ends[2] < 1) return {0, 0, 0, 0}; // an empty sheet
    return {static_cast<std::uint16_t>(ends[0] - 1), static_cast<std::uint16_t>(std::min(ends[1], 65536) - 1),
            static_cast<std::uint8_t>(ends[2] - 1), static_cast<std::uint8_t>(std::min(ends[3], 256) - 1)};
}

/// Cuts the areas down to a rectangle.
void clip(std::vector<XLREF>& areas, const XLREF& to) {
    for (XLREF& area : areas) {
        area.rwFirst = std::max(area.rwFirst, to.rwFirst);
        area.rwLast = std::min(area.rwLast, to.rwLast);
        area.colFirst = std::max(area.colFirst, to.colFirst);
        area.colLast = std::min(area.colLast, to.colLast);
    }
    std::erase_if(areas, [](const XLREF& area) { return area.rwFirst > area.rwLast || area.colFirst > area.colLast; });
}

std::string counted(std::size_t number, const char* word) {
    return std::to_string(number) + ' ' + word + (number == 1 ? "" : "s");
}

/// The corner that a string begins with, as $B$7; the text goes on behind it.
bool read_corner(std::string_view& text, int& row, int& column) {
    const auto take = [&text](char c) {
        if (text.empty() || text.front() != c) return false;
        text.remove_prefix(1);
        return true;
    };
    row = column = 0;
    take('$');
    for (; !text.empty() && small_letter(text.front()) >= 'a' && small_letter(text.front()) <= 'z' && column <= 256;
         text.remove_prefix(1))
        column = column * 26 + (small_letter(text.front()) - 'a' + 1);
    take('$');
    for (; !text.empty() && text.front() >= '0' && text.front() <= '9' && row <= 65536; text.remove_prefix(1))
        row = row * 10 + (text.front() - '0');
    return row >= 1 && row <= 65536 && column >= 1 && column <= 256;
}

} // namespace

bool read_rectangle(std::string_view text, XLREF& rectangle) {
    int row = 0, column = 0, other_row = 0, other_column = 0;
    if (!read_corner(text, row, column)) return false;
    other_row = row;
    other_column = column;
    if (text.starts_with(':')) {
        text.remove_prefix(1);
        if (!read_corner(text, other_row, other_column)) return false;
    }
    if (!text.empty()) return false;
    const auto [top, bottom] = std::minmax(row, other_row);
    const auto [left, right] = std::minmax(column, other_column);
    rectangle = {static_cast<std::uint16_t>(top - 1), static_cast<std::uint16_t>(bottom - 1),
                 static_cast<std::uint8_t>(left - 1), static_cast<std::uint8_t>(right - 1)};
    return true;
}

void clsfindreplace::open() {
    where = "WorkSheet";
    status.clear();
    changes_.clear();
    written_.clear();
    shown_.clear();
}

bool clsfindreplace::read_selection(Selection& selection) {
    HostCell selected;
    if (Excel(xlfSelection, selected.get(), 0) != xlretSuccess) {
        status = " Error accessing the selection";
        return false;
    }
    if (selected->type() == xltypeSRef) { // one area of the sheet in front
        HostCell sheet;
        if (Excel(xlSheetId, sheet.get(), 0) == xlretSuccess && sheet->type() == xltypeRef)
            selection.sheet = sheet->val.mref.idSheet;
        selection.areas.push_back(selected->val.sref.ref);
    } else if (selected->type() == xltypeRef && selected->val.mref.lpmref != nullptr) {
        const XLMREF& areas = *selected->val.mref.lpmref;
        if (areas.count > most_areas) {
            status = " Too many areas are selected.  Please reduced the number of selected areas.  MAX=50";
            return false;
        }
        selection.sheet = selected->val.mref.idSheet;
        selection.areas.assign(areas.reftbl, areas.reftbl + areas.count);
    } else {
        status = "Error: No cells are selected.";
        return false;
    }
    return true;
}

bool clsfindreplace::confine(Selection& selection) {
    if (!same_letters(where, "WorkSheet") && !where.empty()) {
        XLREF area{};
        if (!read_rectangle(where, area)) {
            status = "Error: Where must be WorkSheet or an area such as A1:D50.";
            return false;
        }
        clip(selection.areas, area);
    }
    clip(selection.areas, used_part());
    std::size_t cells = 0;
    for (const XLREF& area : selection.areas)
        cells += (area.rwLast - area.rwFirst + std::size_t{1}) * (area.colLast - area.colFirst + std::size_t{1});
    if (cells <= most_cells) return true;
    status = "Error: More than a million cells are selected.";
    return false;
}

void clsfindreplace::look(const Selection& selection) {
    const Replacer replacer(findtext, replacetext);
    replacer({}); // a replacement that cannot be carried out is reported even if no cell is filled
    std::set<std::pair<int, int>> seen; // areas may overlap
    std::size_t filled = 0, unread = 0;
    for (const XLREF& area : selection.areas)
        for (int row = area.rwFirst; row <= area.rwLast; ++row)
            for (int column = area.colFirst; column <= area.colLast; ++column) {
                if (!seen.emplace(row, column).second) continue;
                const XLREF place{static_cast<std::uint16_t>(row), static_cast<std::uint16_t>(row),
                                  static_cast<std::uint8_t>(column), static_cast<std::uint8_t>(column)};
                Reference cell(selection.sheet, place);
                std::string before;
                try {
                    before = contents(cell.cell());
                } catch (const std::runtime_error&) {
                    ++unread;
                    continue;
                }
                if (before.empty()) continue;
                ++filled;
                std::string after = replacer(before);
                if (after != before) changes_.push_back({place, std::move(before), std::move(after), {}});
            }
    sheet_ = selection.sheet;
    status += "\n" + std::to_string(changes_.size()) + " of " + counted(filled, "filled cell") + " would change.";
    if (unread > 0) status += " " + counted(unread, "cell") + " could not be read.";
}

void clsfindreplace::find() {
    changes_.clear();
    shown_.clear();
    if (findtext.empty()) {
        status = "Error: Find text must not be the empty string!";
        return;
    }
    Selection selection;
    if (!read_selection(selection) || !confine(selection)) return;
    status = "Find:" + findtext + "\nReplace:" + replacetext;
    try {
        look(selection);
        shown_ = findtext + '\n' + replacetext + '\n' + where;
    } catch (const std::exception& error) {
        changes_.clear();
        status = std::string("Error: ") + error.what();
    } catch (...) {
        changes_.clear();
        status = "Error: the replacement failed.";
    }
}

bool clsfindreplace::is_shown() const {
    return !changes_.empty() && shown_ == findtext + '\n' + replacetext + '\n' + where;
}

int clsfindreplace::write(std::vector<CellChange>& changes, std::string CellChange::*text) {
    int written = 0;
    for (CellChange& change : changes) {
        Reference cell(sheet_, change.cell);
        change.problem.clear();
        try {
            put(cell.cell(), change.*text);
            ++written;
        } catch (const std::exception& error) {
            change.problem = error.what();
        }
    }
    return written;
}

void clsfindreplace::replace() {
    if (!is_shown()) {
        find();
        if (is_shown()) status += "\nPress Replace again to write them.";
        return;
    }
    std::vector<CellChange> changes = std::move(changes_);
    changes_.clear();
    shown_.clear();
    const int written = write(changes, &CellChange::after);
    status = "Find:" + findtext + "\nReplace:" + replacetext + "\n" +
             counted(static_cast<std::size_t>(written), "cell") + " changed.";
    for (const CellChange& change : changes)
        if (!change.problem.empty())
            status += "\n" + describe(change.cell) + " is left as it was: " + change.problem + ".";
    std::erase_if(changes, [](const CellChange& change) { return !change.problem.empty(); });
    if (!changes.empty()) status += "\nUndo brings the former contents back.";
    written_ = std::move(changes);
}

void clsfindreplace::undo() {
    if (written_.empty()) return;
    std::vector<CellChange> changes = std::move(written_);
    written_.clear();
    changes_.clear();
    shown_.clear();
    const int restored = write(changes, &CellChange::before);
    status = counted(static_cast<std::size_t>(restored), "cell") + " as before the replacement.";
    for (const CellChange& change : changes)
        if (!change.problem.empty())
            status += "\n" + describe(change.cell) + " could not be restored: " + change.problem + ".";
}

} // namespace qx

using namespace qx;

QX_COMMAND(FindReplace, "Finds and replaces by a regular expression in the contents of the selected cells") {
    static clsfindreplace the_dialog;
    the_dialog.open();
    if (find_replace_dialog != nullptr) find_replace_dialog(the_dialog);
    return 0;
}
