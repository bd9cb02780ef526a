// The host's evaluator as the lists know it.
#include "addin/host.h"
#include "lists/criteria.h"

#include <string>

namespace qx {

namespace {

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

/// Evaluates a formula as the host does.
Evaluated evaluate(const std::string& formula) {
    HostCell answer;
    switch (evaluate_text(answer.get(), formula)) {
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
