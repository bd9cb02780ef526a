#include "numerics/solver.h"

#include "core/errors.h"
#include "core/trace.h"
#include "core/utilities.h"
#include "numerics/random.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace qx {

namespace {

constexpr int search_rounds = 100;
constexpr double widest = 1e9;         ///< the limits of an expansion from a guess
constexpr double near_zero = 0.000001; ///< the inner end of the searches for a rate of return
constexpr double no_estimate = -1.11e30;

template <class... Pieces>
void info(const Pieces&... pieces) {
    if (traced()) trace().info(text_of(pieces...));
}

bool opposite(double a, double b) { return (a < 0.0 && b > 0.0) || (a > 0.0 && b < 0.0); }

} // namespace

clsSolveBase::clsSolveBase() { context_.setclass("SolveBase"); }

template <class E, class... Pieces>
void clsSolveBase::fail(const Pieces&... pieces) {
    if (tracing) context_.setmessage(text_of(pieces...));
    throw E(context_);
}

void clsSolveBase::evaluate(Pair& pair) {
    pair.flow = eval(pair.low);
    pair.fhigh = eval(pair.high);
}

void clsSolveBase::evaluate(Pair& pair, const Pair& known) {
    const auto value_at = [&](double x) {
        if (traced()) return eval(x); // which shows it
        return x == known.low ? known.flow : x == known.high ? known.fhigh : eval(x);
    };
    pair.flow = value_at(pair.low);
    pair.fhigh = value_at(pair.high);
}

double clsSolveBase::solve(double x1, double x2, double tol, int maxiter, int mode, const FunctionContext& caller) {
    if (tracing) {
        context_.setnames(caller.function(), caller.variable());
        context_.setmessage("routine 'solve'");
    }
    iterations_ = 0;
    info("Solve. Tolerance=", tol, " Maximum Iterations=", maxiter);

    Pair pair{x1, x2};
    bool found = false;
    switch (mode) {
    case plain:
    case plain_with_recovery:
        evaluate(pair);
        // A root at x1 counts though rounding has left it a trace of a value. At x2 such a value may have died away.
        found = pair.crosses_or_zero() || iszero(pair.flow);
        if (!found) info("Solve: Couldn't find a root between ", x1, " and ", x2);
        break;
    case rate_of_return:
        found = locate_rate(pair, x1, x2);
        break;
    case guess_any_sign:
    case guess_positive: {
        const double lowest = mode == guess_positive ? tol : -widest;
        found = expand(pair, x1, x2, lowest, widest, search_rounds);
        if (!found) {
            info("Solve: Couldn't find a root around ", x1);
            pair = {lowest, widest};
        }
        break;
    }
    default:
        break;
    }

    if (!found && mode > plain) {
        info("Solve.   No luck with first phase of bracketing, going into second phase.");
        const Pair first = pair;
        found = traverse(pair, search_rounds, std::fabs(first.high) <= std::fabs(first.low));
        if (!found) found = contract(pair = first, search_rounds);
        if (!found) found = montecarlo(pair = first, search_rounds);
    }
    if (!found)
        fail<errlibnotbracketed>(
            "We tried, but we couldn't find a solution to the problem because we couldn't find a bracketed area in "
            "which to search for a root.  It may well be that there is no root.  We got as far as looking between ",
            pair.low, " and ", pair.high);
    return refine(pair, tol, maxiter);
}

bool clsSolveBase::locate_rate(Pair& pair, double x1, double x2) {
    info("Solve: Attempting 1st search of common IRR localities.");
    const double f_near_zero = eval(near_zero);
    for (int i = 1; i <= search_rounds; ++i) {
        ++iterations_;
        pair = {near_zero, i / 5.0, f_near_zero};
        pair.fhigh = eval(pair.high);
        if (pair.crosses()) return true;
    }
    const auto below_minus_1 = [&pair] {
        if (pair.low >= -1.0) return false;
        info("Won't try to look for IRR's less than -100%, still looking ");
        return true;
    };
    for (int i = 1; i <= search_rounds; ++i) {
        ++iterations_;
        pair = {-i / 17.0, near_zero, 0.0, f_near_zero};
        if (below_minus_1()) break;
        pair.flow = eval(pair.low);
        if (pair.crosses()) return true;
    }
    for (int i = 1; i <= search_rounds; ++i) {
        ++iterations_;
        pair = {-i / 15.0, i / 17.0};
        if (below_minus_1()) break;
        evaluate(pair);
        if (pair.crosses()) return true;
    }
    info("Solve.   Attempting 2nd search of common IRR localities");
    for (int i = 1; i <= 10; ++i) {
        ++iterations_;
        pair = {x2 - std::pow(10.0, i), x1 + i / 10.0};
        evaluate(pair);
        if (pair.crosses_or_zero()) return true;
        if ((x2 < x1) != (pair.high < pair.low)) break;
    }
    return false;
}

bool clsSolveBase::expand(Pair& pair, double guess, double step, double lowest, double highest, int n) {
    info("Solve: Attempting systematic expansion from guess of ", guess);
    double up = step, down = step;
    for (int i = 1; i <= n; ++i) {
        ++iterations_;
        pair = {std::max(guess - down, lowest), std::min(guess + up, highest)};
        evaluate(pair);
        if (pair.crosses_or_zero()) return true;
        if (pair.low <= lowest && pair.high >= highest) return false;
        up *= 2.0;
        down *= 2.5;
    }
    return false;
}

bool clsSolveBase::traverse(Pair& pair, int n, bool downwards) {
    info("Solve: Attempting systematic traversal ", downwards ? "(downwards)" : "(upwards)", " between ", pair.low,
         " and ", pair.high);
    const double step = safe_divide(pair.high - pair.low, n);
    for (int i = 1; i <= n; ++i) {
        ++iterations_;
        const Pair last = pair;
        if (downwards)
            pair = {pair.low - step, pair.low};
        else
            pair = {pair.high, pair.high + step};
        i == 1 ? evaluate(pair) : evaluate(pair, last);
        if (pair.crosses_or_zero()) return true;
    }
    return false;
}

bool clsSolveBase::contract(Pair& pair, int n) {
    info("Solve: Attempting systematic focused contraction bewteen ", pair.low, " and ", pair.high);
    const double step = safe_divide(pair.high - pair.low, n) / 2.0;
    pair.low -= step;
    pair.high += step;
    for (int i = 1; i <= n; ++i) {
        ++iterations_;
        pair.low += step;
        pair.high -= step;
        evaluate(pair);
        if (pair.crosses()) return true;
    }
    return false;
}

bool clsSolveBase::montecarlo(Pair& pair, int n) {
    info("Solve: Attempting Monte-Carlo bracketing (ie guessing) between ", pair.low, " and ", pair.high);
    const double start = pair.low, width = pair.high - pair.low;
    for (int i = 1; i <= n; ++i) {
        ++iterations_;
        const Pair last = pair;
        const double x = start + next_random() * width;
        if (x < pair.low)
            pair = {x, pair.low};
        else if (x > pair.high)
            pair = {pair.high, x};
        else if (x - pair.low > pair.high - x)
            pair.low = x;
        else
            pair.high = x;
        i == 1 ? evaluate(pair) : evaluate(pair, last);
        if (pair.crosses()) return true;
    }
    return false;
}

double clsSolveBase::refine(Pair pair, double tol, int maxiter) {
    if (iszero(pair.flow)) return pair.low;
    if (iszero(pair.fhigh)) return pair.high;
    if (!opposite(pair.flow, pair.fhigh)) fail<errlibnotbracketed>("Both the low and high values have the same sign");
    info("Solve: Found that a root exists between ", pair.low, " and ", pair.high, ", refining ...");

    double ans = no_estimate;
    for (int j = 1;; ++j) {
        if (j > maxiter)
            fail<errlibnoconverge>("Failed to solve after ", maxiter, " iterations, got as far as looking between ",
                                   pair.low, " and ", pair.high);
        bool done = false;
        const double m = (pair.low + pair.high) * 0.5;
        const double fm = eval(m);
        const double s = std::sqrt(fm * fm - pair.flow * pair.fhigh);
        if (iszero(s)) {
            done = true;
        } else {
            const double sign = pair.flow - pair.fhigh > 0.0 ? 1.0 : -1.0;
            const double estimate = m + (m - pair.low) * sign * safe_divide(fm, s);
            if (std::fabs(estimate - ans) <= tol) {
                done = true;
            } else {
                ans = estimate;
                const double fe = eval(estimate);
                if (iszero(fe))
                    done = true;
                else if (opposite(fm, fe))
                    pair = m < estimate ? Pair{m, estimate, fm, fe} : Pair{estimate, m, fe, fm};
                else if (opposite(pair.flow, fe))
                    pair = {pair.low, estimate, pair.flow, fe};
                else if (opposite(pair.fhigh, fe))
                    pair = {estimate, pair.high, fe, pair.fhigh};
                else
                    fail<errlibunexpected>(
                        "Got to unexpected point in the solve routine.  Please report this as it may be a bug");
                done = done || std::fabs(pair.high - pair.low) <= tol;
            }
        }
        if (done) {
            info("Solve Successful. Result = ", ans, " Iterations Required : Bracketing=", iterations_,
                 " Polishing= ", j, " out of ", maxiter);
            return ans;
        }
    }
}

} // namespace qx
