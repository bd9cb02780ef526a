#include "addin/text_reference.h"

#include <algorithm>
#include <string>

namespace qx {

namespace {

/// A range on a run of sheets, or on none in particular.
struct SheetRange {
    std::string first, last; ///< both empty unless the text names two sheets
    std::string_view cells;
};

bool has_both_sides(std::string_view text, std::size_t mark) { return mark > 0 && mark + 1 < text.size(); }

/// Looks at the quotes and exclamation marks of a string.
SheetRange classify(std::string_view text, const Routine& here) {
    const auto refuse = [&] { here.fail<errinput>("Textstring", text, ": Error in range reference"); };
    if (text.find_first_not_of(' ') == text.npos) refuse();
    if (std::count(text.begin(), text.end(), '"') % 2 != 0) refuse();
    const bool quoted = text.front() == '\'';
    const std::size_t mark = quoted ? text.find("'!", 1) : text.find('!');
    if (mark == text.npos) {
        if (quoted) refuse();
        here.info(text, " is a reference to a Named Range, we'll evaluate this the fast way.");
        return {};
    }
    if (!has_both_sides(text, mark + (quoted ? 1 : 0))) refuse();
    const std::string_view sheets = quoted ? text.substr(1, mark - 1) : text.substr(0, mark);
    const std::size_t colon = sheets.find(':');
    if (colon == sheets.npos || (!quoted && sheets.find_first_of("=(),;+-*/^&<>\" ") != sheets.npos)) {
        here.info(text, " is a reference to cells on the same single sheet, we'll evaluate this the fast way.");
        return {};
    }
    if (!has_both_sides(sheets, colon)) refuse();
    here.info(text, " is a Multiple Sheet Range, we will have to parse this (slower).");
    return {std::string(sheets.substr(0, colon)), std::string(sheets.substr(colon + 1)),
            text.substr(mark + (quoted ? 2 : 1))};
}

/// The one cell of an array of one, or the value as it is.
const OPER& value_of(const OPER& cell) {
    const bool one = cell.type() == xltypeMulti && cell_count(cell) == 1 && cell.val.array.lparray != nullptr;
    return one ? *cell.val.array.lparray : cell;
}

using Take = void (KeptCell::*)(const OPER&); ///< keep or append

/// Takes the values of a string that the host understands by itself.
void evaluate_at_once(KeptCell& values, Take take, std::string_view text, const Routine& here) {
    HostCell found;
    const int code = evaluate_text(found.get(), text);
    if (code == xlretUncalced) here.fail<uncalc>("Textstring", text);
    if (code != xlretSuccess) here.fail<errinput>("Textstring", text, ": ", host_return_text(code));
    if (found->type() == xltypeErr)
        here.fail<errinput>("Textstring", text, ": the reference is not valid, ", error_name(found->val.err));
    if (found->type() != xltypeRef && found->type() != xltypeSRef) return (values.*take)(value_of(*found));
    HostCell cells;
    FunctionContext context = here.context("Textstring");
    coerce(cells, *found, context);
    (values.*take)(value_of(*cells));
}

/// The name of a sheet without its workbook.
std::string_view sheet_name(const OPER& cell) {
    const std::string_view name = cell.type() == xltypeStr ? view_of(cell) : std::string_view{};
    const std::size_t bracket = name.find(']');
    return bracket == name.npos ? name : name.substr(bracket + 1);
}

bool same_name(std::string_view a, std::string_view b) {
    const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? c - 'A' + 'a' : +c; };
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [&](char x, char y) { return lower(x) == lower(y); });
}

std::string quoted(std::string_view sheet) {
    std::string text = "'";
    for (const char c : sheet) text += c == '\'' ? "''" : std::string(1, c);
    return text + "'";
}

} // namespace

void evaluate(KeptCell& values, std::string_view text, const Routine& here) {
    const SheetRange range = classify(text, here);
    if (range.first.empty()) return evaluate_at_once(values, &KeptCell::keep, text, here);
    HostCell sheets;
    const int code = Excel(xlfGetWorkbook, sheets.get(), 1, TempInt(1));
    if (code != xlretSuccess || sheets->type() != xltypeMulti)
        here.fail<errinput>("Textstring", "The sheets of the workbook are not known: ", host_return_text(code));
    const long long count = cell_count(*sheets);
    const auto position = [&](const std::string& name) {
        for (long long i = 0; i < count; ++i)
            if (same_name(sheet_name(sheets->val.array.lparray[i]), name)) return i;
        here.fail<errinput>("Textstring", text, ": there is no sheet '", name, "'");
    };
    const auto [from, to] = std::minmax({position(range.first), position(range.last)});
    values.keep(array_cell(nullptr, 0, 0));
    for (long long i = from; i <= to; ++i) {
        std::string one = quoted(sheet_name(sheets->val.array.lparray[i]));
        one += '!';
        one += range.cells;
        evaluate_at_once(values, &KeptCell::append, one, here);
    }
}

} // namespace qx
