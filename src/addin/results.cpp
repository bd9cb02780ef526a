// Typed results as cells. Everything returned lives in static storage until the next call: the host copies it
// at once, and nothing returned is ever the host's to free.
#include "addin/cells.h"
#include "addin/frame.h"
#include "addin/host.h"
#include "calendar/annual_sequence.h"
#include "core/logs.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>

namespace qx {

namespace {

constexpr int most_cells = range_capacity;
constexpr std::size_t longest_text = 254;
constexpr std::size_t text_room = 256; ///< count, characters, terminator

OPER result_cells[most_cells];
unsigned char result_text[text_room];

/// The texts of a returned list, one after the other; filled anew by each result.
unsigned char result_texts[most_cells * text_room];
std::size_t result_texts_used = 0;

constexpr double large = 1e10; ///< a number beyond it is watched

/// A number as a cell shows it: what is within the tolerance of zero is zero.
double cleaned(double value) { return value > -tolerance && value < tolerance ? 0.0 : value; }

unsigned char* counted_text(unsigned char* room, std::string_view text) {
    const std::size_t length = std::min(text.size(), longest_text);
    room[0] = static_cast<unsigned char>(length);
    std::memcpy(room + 1, text.data(), length);
    room[length + 1] = '\0';
    return room;
}

OPER text_cell(std::string_view text) {
    unsigned char* const room = result_texts + result_texts_used;
    result_texts_used += std::min(text.size(), longest_text) + 2;
    return {{.str = counted_text(room, text)}, xltypeStr};
}

OPER cell_of(double value) { return number_cell(cleaned(value)); }
OPER cell_of(int value) { return number_cell(value); }
OPER cell_of(bool value) { return bool_cell(value); }
OPER cell_of(const date& day) { return day.iszero() ? nil_cell() : number_cell(day.dtn()); }
OPER cell_of(const std::string& text) { return text_cell(text); }
OPER cell_of(const ministring& text) { return text_cell(text.c_str()); }
OPER cell_of(const anyvalue& value) {
    if (value.isnumber()) return cell_of(value.number());
    return value.istext() ? text_cell(value.text()) : nil_cell();
}
template <class Value>
requires std::is_same_v<Value, dateorfloat> || std::is_same_v<Value, floatblank> OPER cell_of(const Value& value) {
    return value.isblank() ? nil_cell() : cell_of(value.number());
}

/// A cell as it came, with its text copied.
OPER cell_of(const OPER& cell) {
    switch (cell.type()) {
    case xltypeNum:
        return cell_of(cell.val.num);
    case xltypeInt:
        return cell_of(static_cast<int>(cell.val.w));
    case xltypeStr:
        return text_cell(view_of(cell));
    case xltypeMissing:
        return nil_cell();
    case xltypeMulti: // within an array
        return error_cell(xlerrValue);
    default:
        return cell;
    }
}

/// Builds the cell of a value in place, since a copy would wait for its parts to be stored.
template <class Value>
void put(OPER& cell, const Value& value) {
    ::new (&cell) OPER(cell_of(value));
}

/// What the messages about too large a list call it.
struct ListWords {
    const char* list;
    const char* destination;
};
template <class T>
constexpr ListWords list_words = {"Tried to output a range bigger than limit of ",
                                  "Tried to output a range to a destination reference bigger than limit of "
                                  "10000 cells ("};
template <>
constexpr ListWords list_words<double> = {"Tried to output a float range bigger than limit of ",
                                          "Tried to output a date range to a destination reference bigger than "
                                          "limit of 10000 cells ("};
template <>
constexpr ListWords list_words<int> = list_words<double>;
template <>
constexpr ListWords list_words<date> = {"Tried to output a date range bigger than limit of ",
                                        "Tried to output a date range to a destination reference bigger than limit "
                                        "of 10000 cells ("};
template <>
constexpr ListWords list_words<anyvalue> = {"Tried to output a float range bigger than limit of ",
                                            "Tried to output a poly range to a destination reference bigger than "
                                            "limit of 10000 cells ("};
template <>
constexpr ListWords list_words<dateorfloat> = {"Tried to output a float range bigger than limit of ",
                                               "Tried to output a NumOrDate range to a destination reference bigger "
                                               "than limit of 10000 cells ("};
constexpr ListWords sequence_words = {"Tried to output a annual sequence bigger than limit of ",
                                      "Tried to output a annual sequence range to a destination reference bigger "
                                      "than limit of 10000 cells ("};

struct Shape {
    int columns, rows;
};

/// The shape of the caller's rectangle for a list of n. An end that is zero though its start is not comes
/// from a grid larger than the reference can hold.
Shape shape_of(const XLREF& target, int n) {
    Shape shape{target.colLast - target.colFirst + 1, target.rwLast - target.rwFirst + 1};
    const auto broken = [n](bool one_line, const char* one_of, int& side) {
        side = one_line ? n : 1;
        if (traced())
            trace().warning(one_line ? text_of("Erroneous destination reference (are you using Excel 2007?), assuming "
                                               "a 1 D array of ",
                                               n)
                                     : text_of("Erroneous destination reference (are you using Excel 2007?), assuming "
                                               "a 1 D array of one ",
                                               one_of));
    };
    if (target.colLast == 0 && target.colFirst != 0) broken(target.rwFirst == target.rwLast, "column", shape.columns);
    if (target.rwLast == 0 && target.rwFirst != 0) broken(target.colFirst == target.colLast, "row", shape.rows);
    shape.columns = std::max(shape.columns, 1);
    shape.rows = std::max(shape.rows, 1);
    return shape;
}

/// The shape that the caller's selection gives to a list of n. Returns false if there is no cell to fill.
bool target_shape(int n, Shape& shape) {
    HostCell caller;
    const bool answered = Excel(xlfCaller, caller.get(), 0) == xlretSuccess;
    switch (answered ? caller->type() : 0) {
    case xltypeNil:
        return false;
    case xltypeRef:
        if (traced()) trace().warning("A reference type was received, it must be a VBA call of an array function.");
        if (caller->val.mref.lpmref != nullptr && caller->val.mref.lpmref->count > 0) {
            shape = shape_of(caller->val.mref.lpmref->reftbl[0], n);
            break;
        }
        shape = {n, 1};
        break;
    case xltypeSRef:
        shape = shape_of(caller->val.sref.ref, n);
        if (traced())
            trace().info(
                text_of("Range being return in SRef conditions: columns=", shape.columns, ", rows=", shape.rows));
        break;
    default:
        if (traced()) trace().warning("The Caller type was not recognised, must be from VBA or array function call.");
        shape = {n, 1};
    }
    if (shape.columns == 1 && shape.rows == 1) shape = {n, 1};
    return true;
}

template <class T, int N>
void return_list(const Range<T, N>& list, const ListWords& words, FunctionContext& context) {
    OPER& result = ResultOper();
    const int n = list.size();
    result_texts_used = 0;
    if (traced()) trace().info("Returning FloatRange");
    const auto fail = [&context](const char* message, int count, const char* end) {
        if (tracing) context.setmessage(text_of(message, count, end));
        throw erroutrange(context);
    };
    if (n > std::min(N, most_cells)) fail(words.list, N, " cells");
    Shape shape{};
    if (n == 0 || !target_shape(n, shape)) {
        result = nil_cell();
        return;
    }
    const long long total = std::max(static_cast<long long>(shape.columns) * shape.rows, static_cast<long long>(n));
    if (total > most_cells) fail(words.destination, whole(static_cast<double>(total)), ")");
    if (list.getcolumns() > 1) shape = {list.getcolumns(), n / list.getcolumns()};
    if (n == 1 && total == 1) {
        trace().result(list.get(1));
        put(result, list.get(1));
        return;
    }
    trace().return_values();
    for (int i = 1; i <= n; ++i) {
        if (traced()) trace().element(i, list.get(i));
        put(result_cells[i - 1], list.get(i));
    }
    trace().changelevel(-2);
    std::fill(result_cells + n, result_cells + total, nil_cell());
    if (n > shape.columns * shape.rows && traced())
        trace().warning("The output data range is smaller than the range of data being returned.  Are you sure your "
                        "array formula covers a sufficient number of cells");
    result = array_cell(result_cells, shape.rows, shape.columns);
}

} // namespace

OPER& ResultOper() {
    static OPER the_result = nil_cell();
    return the_result;
}

void Frame::reply(double value) {
    put(ResultOper(), value);
    if (traced() || std::fabs(value) > large) note(value);
}

[[gnu::cold, gnu::noinline]] void Frame::note(double value) const {
    if (traced()) trace().result(value);
    if (std::fabs(value) <= large) return;
    large_number_watch().saw(function.name);
}

void Frame::reply_integer(long long value) {
    put(ResultOper(), static_cast<double>(value));
    if (traced()) trace().result(value);
}

void Frame::reply(bool value) {
    if (traced()) trace().result(value);
    ResultOper() = bool_cell(value);
}

void Frame::reply(const std::string& text) {
    if (traced()) trace().result(text);
    ResultOper() = {{.str = counted_text(result_text, text)}, xltypeStr};
}

void Frame::reply(const date& day) {
    if (traced()) trace().result(day);
    put(ResultOper(), day);
}

void Frame::reply(const anyvalue& value) {
    if (traced()) trace().result(value);
    if (value.istext())
        ResultOper() = {{.str = counted_text(result_text, value.text())}, xltypeStr};
    else
        put(ResultOper(), value);
}

template <class T, int N>
void Frame::reply_range(const Range<T, N>& list) {
    return_list(list, list_words<T>, context);
}

void Frame::reply(const Range<double>& list) { reply_range(list); }
void Frame::reply(const Range<int>& list) { reply_range(list); }
void Frame::reply(const Range<bool>& list) { reply_range(list); }
void Frame::reply(const Range<date>& list) { reply_range(list); }
void Frame::reply(const Range<std::string>& list) { reply_range(list); }
void Frame::reply(const Range<ministring>& list) { reply_range(list); }
void Frame::reply(const Range<anyvalue>& list) { reply_range(list); }
void Frame::reply(const Range<dateorfloat>& list) { reply_range(list); }
void Frame::reply(const Range<floatblank>& list) { reply_range(list); }
void Frame::reply(const AnnualSequence& sequence) {
    Range<double, AnnualSequence::capacity> figures; // with the sign of arrears, as a user writes them
    figures.dimension(sequence.size());
    for (int i = 1; i <= sequence.size(); ++i) figures(i) = sequence.figure(i);
    return_list(figures, sequence_words, context);
}
void Frame::reply(const OPER& cell) {
    if (traced()) trace().result(cell);
    result_texts_used = 0;
    if (cell.type() != xltypeMulti) {
        put(ResultOper(), cell);
        return;
    }
    const long long count = cell_count(cell);
    if (count < 0 || count > most_cells) {
        if (tracing) context.setmessage(text_of("Tried to output a range bigger than limit of ", most_cells, " cells"));
        throw erroutrange(context);
    }
    std::transform(cell.val.array.lparray, cell.val.array.lparray + count, result_cells,
                   [](const OPER& item) { return cell_of(item); });
    ResultOper() = count == 0 ? nil_cell() : array_cell(result_cells, cell.val.array.rows, cell.val.array.columns);
}

} // namespace qx
