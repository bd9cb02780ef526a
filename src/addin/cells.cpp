#include "addin/cells.h"

#include "core/errors.h"
#include "core/trace.h"

namespace qx {

std::string text_in(const OPER& cell) {
    return cell.val.str == nullptr ? std::string{}
                                   : std::string(reinterpret_cast<const char*>(cell.val.str + 1), cell.val.str[0]);
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
