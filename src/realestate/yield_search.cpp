#include "realestate/yield_search.h"

#include <algorithm>
#include <cmath>

namespace qx {

namespace {

constexpr double accuracy = 1e-10; ///< of a rate
constexpr int most_rounds = 100;
constexpr double first_step = 0.01;   ///< of rates; each step doubles
constexpr double close_enough = 1e-9; ///< of the target

} // namespace

/// Of no target but zero is a value that comes close to it for ever already a root.
bool clsYieldSearch::has_target(const Pair& pair) const {
    if (target_ == 0.0) return (pair.flow < 0.0 && pair.fhigh > 0.0) || (pair.flow > 0.0 && pair.fhigh < 0.0);
    return pair.crosses_or_zero();
}

clsYieldSearch::Pair clsYieldSearch::bracket(const Routine& here) {
    const double top = highest_rate();
    here.info("Looking for a ", words_.rate, " between ", lowest, " and ", top);
    const double at_lowest = eval(lowest);
    Pair pair{lowest, lowest, at_lowest, at_lowest};
    for (double rate = first_step; pair.high < top && !has_target(pair); rate *= 2.0) {
        pair = {pair.high, std::min(rate, top), pair.fhigh};
        pair.fhigh = eval(pair.high);
    }
    if (has_target(pair)) return pair;
    const double at_top = pair.fhigh;

    double bottom = lowest, at_bottom = at_lowest;
    if (goes_below_zero()) {
        here.info("Looking for a ", words_.rate, " between ", lowest_below_zero, " and ", lowest);
        pair = {lowest, lowest, at_lowest, at_lowest};
        for (double rate = -first_step; pair.low > lowest_below_zero && !has_target(pair); rate *= 2.0) {
            pair = {std::max(rate, lowest_below_zero), pair.low, 0.0, pair.flow};
            pair.flow = eval(pair.low);
        }
        if (has_target(pair)) return pair;
        bottom = pair.low;
        at_bottom = pair.flow;
    }
    const bool nearer_top = std::fabs(at_top) < std::fabs(at_bottom);
    here.fail<errlibnotbracketed>(
        "", "No ", words_.rate, " gives the ", words_.target, " of ", target_, ": it is ",
        at_top > 0.0 ? "below" : "above", " ", target_ + unit_ * (nearer_top ? at_top : at_bottom),
        ", the value at the ", nearer_top ? "highest " : "lowest ", words_.rate, " tried, ", nearer_top ? top : bottom);
}

/// A secant step or two: the solver's accuracy is one of the rate, and a low rate makes much of it.
double clsYieldSearch::polished(double rate) {
    constexpr int most_steps = 3;
    constexpr double enough = 1e-14; ///< of the target
    constexpr double aside = 1e-6;   ///< where the slope is measured, as a part of the rate
    constexpr double least = 1e-3;   ///< or of this
    double off = eval(rate);
    for (int i = 0; i < most_steps && std::fabs(off) > enough; ++i) {
        const double step = aside * std::max(std::fabs(rate), least);
        const double next = rate - off * step / (off - eval(rate - step));
        if (!(std::fabs(next - rate) <= step)) break;
        const double off_next = eval(next);
        if (!(std::fabs(off_next) < std::fabs(off))) break;
        rate = next;
        off = off_next;
    }
    return rate;
}

/// The rate by halving: where the value falls off so steeply that no slope leads to the target.
double clsYieldSearch::halved(const Routine& here, Pair pair) {
    for (;;) {
        const double middle = pair.low + (pair.high - pair.low) / 2.0;
        if (middle <= pair.low || middle >= pair.high) break;
        const double at_middle = eval(middle);
        if ((at_middle < 0.0) == (pair.flow < 0.0)) {
            pair.low = middle;
            pair.flow = at_middle;
        } else {
            pair.high = middle;
            pair.fhigh = at_middle;
        }
    }
    const bool low_is_nearer = std::fabs(pair.flow) < std::fabs(pair.fhigh);
    const double rate = low_is_nearer ? pair.low : pair.high, off = low_is_nearer ? pair.flow : pair.fhigh;
    if (std::fabs(off) > close_enough)
        here.fail<errlibnotbracketed>("", "No ", words_.rate, " gives the ", words_.target, " of ", target_, ": about ",
                                      rate, " it jumps from ", target_ + unit_ * pair.flow, " to ",
                                      target_ + unit_ * pair.fhigh);
    return rate;
}

double clsYieldSearch::find(const Routine& here, double target) {
    target_ = target;
    unit_ = target == 0.0 ? 1.0 : std::fabs(target);
    const Pair pair = bracket(here);
    const double rate = polished(solve(pair.low, pair.high, accuracy, most_rounds, plain, here.context()));
    return std::fabs(eval(rate)) <= close_enough ? rate : halved(here, pair);
}

} // namespace qx
