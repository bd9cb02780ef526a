#include "addin/cells.h"

#include "core/errors.h"
#include "core/trace.h"
#include "core/utilities.h"

#include <algorithm>
#include <span>

namespace qx {

std::string_view view_of(const OPER& cell) {
    return cell.val.str == nullptr ? std::string_view{}
                                   : std::string_view(reinterpret_cast<const char*>(cell.val.str + 1), cell.val.str[0]);
}

std::string text_in(const OPER& cell) { return std::string(view_of(cell)); }

const char* error_name(std::uint16_t code) {
    switch (code) {
    case xlerrNull:
        return "#NULL!";
    case xlerrDiv0:
        return "#DIV/0!";
    case xlerrValue:
        return "#VALUE!";
    case xlerrRef:
        return "#REF!";
    case xlerrName:
        return "#NAME?";
    case xlerrNum:
        return "#NUM!";
    case xlerrNA:
        return "#N/A";
    default:
        return "an error";
    }
}

std::string describe(const OPER& cell) {
    switch (cell.type()) {
    case xltypeNum:
        return describe(cell.val.num);
    case xltypeInt:
        return describe(static_cast<int>(cell.val.w));
    case xltypeStr:
        return text_in(cell);
    case xltypeBool:
        return describe(cell.val.xbool != 0);
    case xltypeErr:
        return error_name(cell.val.err);
    case xltypeMulti:
        return text_of("an array of ", static_cast<int>(cell.val.array.rows), " rows and ",
                       static_cast<int>(cell.val.array.columns), " columns");
    case xltypeMissing:
        return "missing";
    case xltypeNil:
        return "blank";
    case xltypeSRef:
        return describe(cell.val.sref.ref);
    case xltypeRef:
        if (const XLMREF* const areas = cell.val.mref.lpmref; areas != nullptr && areas->count == 1)
            return describe(areas->reftbl[0]);
        [[fallthrough]];
    default:
        return "a reference";
    }
}

std::string column_text(std::uint32_t column) {
    std::string letters;
    for (std::uint32_t left = column + 1; left > 0; left = (left - 1) / 26)
        letters.insert(letters.begin(), static_cast<char>('A' + (left - 1) % 26));
    return letters;
}

std::string describe(const XLREF& cells) {
    const auto corner = [](int row, std::uint32_t column) { return column_text(column) + std::to_string(row + 1); };
    const std::string first = corner(cells.rwFirst, cells.colFirst), last = corner(cells.rwLast, cells.colLast);
    return first == last ? first : first + ":" + last;
}

void KeptCell::keep(const OPER& cell) {
    cells_.clear();
    texts_.clear();
    append(cell);
    if (cell.type() == xltypeMulti)
        cell_ = array_cell(cells_.data(), cell.val.array.rows, cell.val.array.columns);
    else
        cell_ = cells_.front();
}

void KeptCell::append(const OPER& cell) {
    const bool array = cell.type() == xltypeMulti;
    const long long count = array ? std::max(cell_count(cell), 0LL) : 1;
    const OPER* const source = array ? cell.val.array.lparray : &cell;
    cells_.insert(cells_.end(), source, source + count);
    for (const OPER& item : std::span(source, static_cast<std::size_t>(count)))
        if (item.type() == xltypeStr) {
            const std::string_view text = view_of(item);
            texts_ += static_cast<char>(static_cast<unsigned char>(text.size()));
            texts_ += text;
        }
    auto* at = reinterpret_cast<unsigned char*>(texts_.data()); // the texts may have moved
    for (OPER& item : cells_)
        if (item.type() == xltypeStr) {
            item.val.str = at;
            at += 1 + *at;
        }
    cell_ = array_cell(cells_.data(), static_cast<int>(cells_.size()), 1);
}

void throw_error_cell(const OPER& cell, FunctionContext& context) {
    const auto warn = [](const char* text) {
        if (traced()) trace().warning(text);
    };
    switch (cell.val.err) {
    case xlerrDiv0:
        warn("Division By Zero Error");
        throw inputdiv(context);
    case xlerrValue:
        warn("#VALUE! error");
        throw inputvalue(context);
    case xlerrRef:
        warn("#REF! error");
        throw inputref(context);
    case xlerrName:
        warn("#NAME? error");
        throw inputname(context);
    case xlerrNum:
        warn("#NUM! error");
        throw inputnum(context);
    case xlerrNA:
        warn("#NA condition");
        throw inputna(context);
    default:
        return;
    }
}

long long cell_count(const OPER& array) {
    return static_cast<long long>(static_cast<std::int16_t>(array.val.array.rows)) *
           static_cast<std::int16_t>(array.val.array.columns);
}

void coerce(HostCell& cells, const OPER& reference, FunctionContext& context) {
    OPER source = reference;
    switch (Excel(xlCoerce, cells.get(), 2, &source, TempInt(xltypeMulti))) {
    case xlretSuccess:
        return;
    case xlretUncalced:
        throw uncalc(context);
    default:
        context.setmessage("Failed Coercion of a reference");
        throw inputerror(context);
    }
}

} // namespace qx
