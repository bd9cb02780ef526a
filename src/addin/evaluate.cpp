// The host's evaluator as the lists know it.
#include "addin/host.h"
#include "lists/criteria.h"

#include <algorithm>

namespace qx {

namespace {

constexpr std::size_t longest_text = 254;

Evaluated answer_of(const OPER& cell) {
    if (cell.type() == xltypeBool) return cell.val.xbool != 0 ? Evaluated::yes : Evaluated::no;
    if (cell.type() != xltypeErr) return Evaluated::other;
    switch (cell.val.err) {
    case xlerrNull:
        return Evaluated::null_error;
    case xlerrDiv0:
        return Evaluated::division_by_zero;
    case xlerrValue:
        return Evaluated::value_error;
    case xlerrRef:
        return Evaluated::reference_error;
    case xlerrName:
        return Evaluated::name_error;
    case xlerrNum:
        return Evaluated::number_error;
    case xlerrNA:
        return Evaluated::not_available;
    default:
        return Evaluated::other;
    }
}

/// Evaluates a formula as the host does. One that is longer than a text of the host can be is not taken.
Evaluated evaluate(const std::string& formula) {
    if (formula.size() > longest_text) return Evaluated::failed;
    unsigned char counted[longest_text + 2];
    counted[0] = static_cast<unsigned char>(formula.size());
    *std::copy(formula.begin(), formula.end(), counted + 1) = '\0';
    OPER text{{.str = counted}, xltypeStr};
    HostCell answer;
    switch (evaluate_text(answer.get(), &text)) {
    case xlretSuccess:
        return answer_of(*answer);
    case xlretUncalced:
        return Evaluated::uncalculated;
    default:
        return Evaluated::failed;
    }
}

[[maybe_unused]] const FormulaEvaluator connected = evaluate_formula = evaluate;

} // namespace

} // namespace qx
