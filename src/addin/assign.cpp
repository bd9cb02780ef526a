// Conversion of cells into typed inputs: what each cell type means for each type of input.
//
//     Element<T>    one value of type T from a number, a string, a blank or a boolean
//     AssignCell    one cell, or an array or reference that holds just one value
//     AssignRange   a cell or an array into a Range
//
// An optional argument goes by the same bodies under the names AssignCellOpt and AssignRangeOpt.
#include "addin/cells.h"
#include "addin/frame.h"
#include "addin/host.h"
#include "core/parse_number.h"

#include <algorithm>
#include <cmath>
#include <type_traits>

namespace qx {

namespace {

/// Where a value comes from: the argument's name, and which rules hold.
struct Source {
    const char* name;
    bool optional;
    bool in_range;
    FunctionContext& context;
    double preset = 0.0; ///< the default of an optional cell, if it is a number or a condition

    [[noreturn]] void refuse() const {
        if (traced()) trace().warning(type_warning);
        if (in_range) throw inputerrorrange(context);
        throw inputerror(context);
    }
    /// A warning about a single cell; the cells of a range are converted without a word.
    template <class... Pieces>
    void warn(const Pieces&... pieces) const {
        if (!in_range && traced()) trace().warning(text_of(pieces..., " (", name, ")"));
    }
    template <class E, class... Pieces>
    [[noreturn]] void fail(const Pieces&... pieces) const {
        if (sizeof...(pieces) > 0 && tracing) context.setmessage(text_of(pieces...));
        throw E(context);
    }
};

/// Reads a number as a date. The slot starts from the zero date, so that the answer does not depend on the
/// call before.
void set_date(date& slot, double value, const FunctionContext& context) {
    slot = date();
    if (tracing) slot.context() = context;
    slot = value;
}

template <class T>
struct Element;

template <>
struct Element<double> {
    static void number(double& slot, double value, const Source&) { slot = value; }
    static void text(double& slot, const std::string& text, const Source& from) {
        slot = parsenumber(text, 0.0);
        from.warn("The input float value was supposed dto be a float number, but refers to a text string, "
                  "assuming ",
                  slot);
    }
    static void blank(double& slot, const Source& from) {
        slot = 0.0;
        from.warn("The input float value refers to a blank cell, assuming zero");
    }
    static void boolean(double&, std::uint16_t, const Source& from) { from.refuse(); }
};

template <class Integer>
struct WholeElement {
    static void number(Integer& slot, double value, const Source& from) {
        if (!iszero(fraction(value)))
            from.fail<errinpint>("Floating point number (", value, ") found instead of an integer.");
        slot = whole_part(value);
    }
    static void text(Integer& slot, const std::string& text, const Source& from) {
        slot = from.in_range ? whole_part(parsenumber(text, 0.0)) : parseint(text, 0);
        from.warn("The input float value was supposed to be a long integer, but it refers to a text string, "
                  "assuming ",
                  slot);
    }
    static void blank(Integer& slot, const Source& from) {
        slot = 0;
        from.warn("The input integer value refers to a blank cell, assuming zero");
    }
    static void boolean(Integer&, std::uint16_t, const Source& from) { from.refuse(); }

  private:
    static Integer whole_part(double value) {
        constexpr double widest = 9.0e18;
        if constexpr (sizeof(Integer) == 8)
            return static_cast<Integer>(std::clamp(std::trunc(value), -widest, widest));
        else
            return whole(value);
    }
};
template <>
struct Element<int> : WholeElement<int> {};
template <>
struct Element<long long> : WholeElement<long long> {};

template <>
struct Element<bool> {
    static void number(bool& slot, double value, const Source& from) {
        if (from.in_range) from.refuse();
        if (!from.optional) from.fail<notbool>();
        if (iszero(value))
            slot = false;
        else if (isequal(value, 1.0))
            slot = true;
        else {
            slot = from.preset != 0.0; // and not what the call before has left
            if (traced()) trace().warning(text_of("Boolean value (", value, ") not understood on input."));
        }
    }
    static void text(bool& slot, const std::string&, const Source& from) {
        if (from.in_range) from.refuse();
        if (!from.optional) from.fail<notbool>();
        slot = false;
        from.warn("The input boolean value refers to a text string, assuming false");
    }
    static void blank(bool& slot, const Source& from) {
        if (!from.optional && !from.in_range) {
            from.warn("The input boolean value refers to a blank cell");
            from.fail<notbool>();
        }
        slot = false;
        from.warn("The input boolean value refers to a blank cell, assuming false");
    }
    static void boolean(bool& slot, std::uint16_t word, const Source& from) {
        slot = from.optional || from.in_range ? word != 0 : word == 1;
    }
};

template <>
struct Element<date> {
    static void number(date& slot, double value, const Source& from) { set_date(slot, value, from.context); }
    static void text(date& slot, const std::string& text, const Source& from) {
        if (from.in_range) from.refuse();
        slot = date();
        if (from.optional) return;
        set_date(slot, parsenumber(text, 0.0), from.context);
        from.warn("The input value refers to a text string, assuming ", slot);
    }
    static void blank(date& slot, const Source& from) {
        slot = date();
        from.warn("The input date value refers to a blank cell, assuming zero date (1/1/1900)");
    }
    static void boolean(date&, std::uint16_t, const Source& from) { from.refuse(); }
};

template <class Text>
struct TextElement {
    static void number(Text& slot, double, const Source& from) {
        if (from.in_range) from.refuse();
        slot = Text();
    }
    static void text(Text& slot, const std::string& text, const Source&) { slot = Text(text); }
    static void blank(Text& slot, const Source&) { slot = Text(); }
    static void boolean(Text&, std::uint16_t, const Source& from) { from.refuse(); }
};
template <>
struct Element<std::string> : TextElement<std::string> {};
template <>
struct Element<ministring> : TextElement<ministring> {};

template <>
struct Element<anyvalue> {
    static void number(anyvalue& slot, double value, const Source&) { slot.setnumber(value); }
    static void text(anyvalue& slot, const std::string& text, const Source&) { slot.settext(text); }
    static void blank(anyvalue& slot, const Source&) { slot.setblank(); }
    static void boolean(anyvalue&, std::uint16_t, const Source& from) { from.refuse(); }
};

template <class Number>
struct NumberOrBlankElement {
    static void number(Number& slot, double value, const Source&) { slot.setnumber(value); }
    static void text(Number& slot, const std::string& text, const Source& from) {
        double value = 0.0;
        Element<double>::text(value, text, from);
        slot.setnumber(value);
    }
    static void blank(Number& slot, const Source& from) {
        slot.setblank();
        from.warn("The input float value refers to a blank cell, assuming zero");
    }
    static void boolean(Number&, std::uint16_t, const Source& from) { from.refuse(); }
};
template <>
struct Element<dateorfloat> : NumberOrBlankElement<dateorfloat> {};
template <>
struct Element<floatblank> : NumberOrBlankElement<floatblank> {};

template <class T>
void convert_other(T& slot, const OPER& cell, const Source& from) {
    switch (cell.type()) {
    case xltypeStr:
        return Element<T>::text(slot, text_in(cell), from);
    case xltypeNil:
        return Element<T>::blank(slot, from);
    case xltypeBool:
        return Element<T>::boolean(slot, cell.val.xbool, from);
    case xltypeErr:
        return throw_error_cell(cell, from.context);
    case xltypeMissing:
        throw missingarg(from.context);
    default:
        from.refuse();
    }
}
/// Numbers, which most cells are, stay in the loop over them.
template <class T>
inline void convert(T& slot, const OPER& cell, const Source& from) {
    if (cell.type() == xltypeNum) [[likely]]
        return Element<T>::number(slot, cell.val.num, from);
    convert_other(slot, cell, from);
}

template <class T>
void set_default(T& slot, const Preset& preset, FunctionContext& context) {
    if constexpr (std::is_same_v<T, date>) {
        set_date(slot, preset.value, context);
    } else if constexpr (std::is_same_v<T, std::string>) {
        slot = preset.type == Preset::text ? preset.words : "";
    } else if constexpr (std::is_same_v<T, ministring>) {
        slot = ministring(preset.type == Preset::text ? preset.words : "");
    } else if constexpr (std::is_arithmetic_v<T>) {
        slot = static_cast<T>(preset.value);
    } else if (preset.type == Preset::number) {
        slot.setnumber(preset.value);
    } else {
        slot.setblank();
        if constexpr (std::is_same_v<T, anyvalue>)
            if (preset.type == Preset::text) slot.settext(preset.words);
    }
}

/// The one value of an array. Throws gotarange if it has another value than its first cell.
const OPER& single_cell(const OPER& array, const Source& from) {
    const long long count = cell_count(array);
    if (count < 0 || array.val.array.lparray == nullptr) throw inputerror(from.context);
    const OPER* const cells = array.val.array.lparray;
    for (long long i = count - 1; i > 0; --i)
        if (cells[i].type() != xltypeNil)
            from.fail<gotarange>("Trying to make assignment of a cell, expected a single value, got what looks like "
                                 "a range of size ",
                                 count, " (Ref/arraysize)");
    static const OPER nil = nil_cell();
    return count == 0 ? nil : cells[0];
}

/// A list of dates that must ascend: rows at its end without a date are dropped, as users select longer ranges than
/// they fill; one row stays, since a single zero date has a meaning of its own.
void put_in_order(Range<date>& dates) {
    dates.trailingzerosizenz();
    dates.checkascending();
}

} // namespace

const OPER& Frame::next_cell() const {
    static constexpr OPER missing = missing_cell();
    const OPER* const cell = cells_[argument_];
    return cell == nullptr ? missing : *cell;
}

Frame::Input Frame::next(const char* conversion, const char* optional_conversion, const char* name) {
    const OPER& cell = next_cell();
    const Argument& argument = function.args[argument_++];
    if (name == nullptr) name = argument.name;
    const int level = traced() ? announce(argument.is_optional() ? optional_conversion : conversion, name) : -1;
    return {cell, argument, name, level};
}

[[gnu::cold, gnu::noinline]] int Frame::announce(const char* conversion, const char* name) {
    context.setnames(conversion, name);
    context.setmessage("");
    const int level = trace().currentlevel();
    trace().variable(name);
    return level;
}

State Frame::state_of_next() const {
    const OPER* cell = &next_cell();
    if (cell->type() == xltypeMulti && cell_count(*cell) == 1 && cell->val.array.lparray != nullptr)
        cell = cell->val.array.lparray;
    switch (cell->type()) {
    case xltypeMissing:
        return State::missing;
    case xltypeNil:
        return State::blank;
    default:
        return State::given;
    }
}

template <class T>
void Frame::input_cell(T& slot, const char* name) {
    const Input in = next("AssignCell", "AssignCellOpt", name);
    const Source from{in.name, in.argument.is_optional(), false, context, in.argument.preset.value};
    switch (in.cell.type()) {
    case xltypeMissing:
        if (!from.optional) throw missingarg(context);
        set_default(slot, in.argument.preset, context);
        if (traced())
            trace().info(text_of(from.name, " set to default value of ", slot, " (",
                                 in.argument.preset.words == nullptr ? "" : in.argument.preset.words, ")"));
        break;
    case xltypeMulti:
        convert(slot, single_cell(in.cell, from), from);
        break;
    case xltypeRef:
    case xltypeSRef: {
        if (from.optional) {
            if (traced())
                trace().warning("The TYPE of cell or cell reference that you input has arrived in the XLL as a "
                                "reference and it shouldn't have.");
            throw inputerror(context);
        }
        if (traced()) trace().warning(unexpected_reference);
        HostCell cells;
        coerce(cells, in.cell, context);
        convert(slot, cells->type() == xltypeMulti ? single_cell(*cells, from) : *cells, from);
        break;
    }
    default:
        if constexpr (std::is_same_v<T, std::string> || std::is_same_v<T, ministring>)
            if (in.cell.xltype == xlbitXLFree) throw inputstringerror(context);
        convert(slot, in.cell, from);
    }
    if (traced()) trace().return_value(from.name, slot, context.function(), in.level);
}

template <class T>
void Frame::input_range(Range<T>& slot, const char* name) {
    const Input in = next("AssignRange", "AssignRangeOpt", name);
    const Source from = Source{in.name, in.argument.is_optional(), true, context};
    slot.setname(from.name);
    switch (in.cell.type()) {
    case xltypeMissing:
        if (!from.optional) throw missingarg(context);
        slot.dimension(0, 1);
        break;
    case xltypeNil:
        slot.dimension(1, 1);
        convert(slot(1), in.cell, from);
        slot.setlastnonblank(0);
        break;
    case xltypeBool:
        if constexpr (!std::is_same_v<T, bool>) {
            if (traced()) trace().warning(type_warning);
            throw inputerror(context);
        }
        [[fallthrough]];
    case xltypeNum:
    case xltypeStr:
        slot.dimension(1, 1);
        convert(slot(1), in.cell, from);
        break;
    case xltypeErr:
        throw_error_cell(in.cell, context);
        break;
    case xltypeMulti: {
        const long long count = cell_count(in.cell);
        if (count < 0 || (count > 0 && in.cell.val.array.lparray == nullptr)) throw inputerror(context);
        const int n = static_cast<int>(count);
        slot.dimension(n, static_cast<std::int16_t>(in.cell.val.array.columns));
        int lastnonblank = n;
        const bool told = traced();
        for (int i = n; i >= 1; --i) {
            const OPER& cell = in.cell.val.array.lparray[i - 1];
            convert(slot(i), cell, from);
            if (cell.type() == xltypeNil && lastnonblank == i) lastnonblank = i - 1;
            if (told) trace().argument(text_of(from.name, "(", i, ")"), slot(i));
        }
        slot.setlastnonblank(lastnonblank);
        break;
    }
    case xltypeRef:
    case xltypeSRef:
        if (traced()) trace().warning(unexpected_reference);
        throw inputerror(context);
    default:
        if (traced()) trace().warning(type_warning);
        throw inputerror(context);
    }
    if constexpr (std::is_same_v<T, date>)
        if (in.argument.order == Order::ascending) put_in_order(slot);
    if (traced())
        trace().return_value(from.name, text_of(from.name, " had ", slot.size(), " elements"), context.function(),
                             in.level);
}

void Frame::input(double& slot) { input_cell(slot); }
void Frame::input(int& slot) { input_cell(slot); }
void Frame::input(long long& slot) { input_cell(slot); }
void Frame::input(bool& slot) { input_cell(slot); }
void Frame::input(date& slot) { input_cell(slot); }
void Frame::input(std::string& slot) { input_cell(slot); }
void Frame::input(ministring& slot) { input_cell(slot); }
void Frame::input(anyvalue& slot) { input_cell(slot); }
void Frame::input(dateorfloat& slot) { input_cell(slot); }
void Frame::input(floatblank& slot) { input_cell(slot); }
void Frame::input_named(double& slot, const char* name) { input_cell(slot, name); }
void Frame::input_times(Range<date>& slot) {
    input_range(slot, "Times");
    ++argument_; // each period ends where the next begins: the base has no say
}

void Frame::input(Range<double>& slot) { input_range(slot); }
void Frame::input(Range<int>& slot) { input_range(slot); }
void Frame::input(Range<bool>& slot) { input_range(slot); }
void Frame::input(Range<date>& slot) { input_range(slot); }
void Frame::input(Range<std::string>& slot) { input_range(slot); }
void Frame::input(Range<ministring>& slot) { input_range(slot); }
void Frame::input(Range<anyvalue>& slot) { input_range(slot); }
void Frame::input(Range<dateorfloat>& slot) { input_range(slot); }
void Frame::input(Range<floatblank>& slot) { input_range(slot); }

void Frame::input(Cell& slot) {
    const Input in = next("Cell", "Cell");
    slot.oper = &in.cell;
    if (traced()) trace().return_value(in.argument.name, in.cell, context.function(), in.level);
}
void Frame::input(Reference& slot) {
    const Input in = next("AssignReference", "AssignReferenceOpt");
    if (in.cell.type() == xltypeMissing && !in.argument.is_optional()) throw missingarg(context);
    slot.oper = &in.cell;
    if (traced()) trace().return_value(in.argument.name, in.cell, context.function(), in.level);
}

} // namespace qx
