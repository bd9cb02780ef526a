// Steps: a stream or a level that is one thing, then another, with the dates of change given. There are two mirror
// images: by from-dates step n runs from date n to date n + 1, the last one to Finish; by to-dates step n runs up to
// date n, the first one from Start. A routine over steps is a template of its side, and both worksheet functions are
// that routine.
#pragma once

#include "projections/constant_rate.h"
#include "projections/terms.h"

namespace qx {

/// Steps by from-dates.
struct FromSteps {
    using takes = Takes<date, Range<date>>;
    const date& Finish;
    View<date> FromDates;

    static constexpr bool by_from_dates = true;
    int count() const { return FromDates.size(); }
    /// The whole of the steps; only where there are some.
    Life extent() const { return {FromDates.first(), Finish}; }
    /// Step n. It ends with the whole, so that it may be empty.
    Life operator()(int n) const {
        return {FromDates(n), n < count() ? std::min(FromDates(n + 1), Finish) : Finish};
    }
    /// The date at which what the step is worth is read: its beginning.
    const date& date_of(int n) const { return FromDates(n); }
};

/// Steps by to-dates.
struct ToSteps {
    using takes = Takes<date, Range<date>>;
    const date& Start;
    View<date> ToDates;

    static constexpr bool by_from_dates = false;
    int count() const { return ToDates.size(); }
    Life extent() const { return {Start, ToDates.last()}; }
    Life operator()(int n) const { return {n > 1 ? std::max(ToDates(n - 1), Start) : Start, ToDates(n)}; }
    /// Its end.
    const date& date_of(int n) const { return ToDates(n); }
};

/// The name of a routine over steps, by its side.
template <class Steps>
constexpr const char* by_side(const char* from_dates, const char* to_dates) {
    return Steps::by_from_dates ? from_dates : to_dates;
}

/// The sum over the steps that a period can hold something of, each measured as its place in the whole asks: the first
/// with the start stub of a composite day count, the last with its end stub, and each but the last as a part of a
/// longer stream. `amount` takes the number of the step, its life, how to measure it, and whether it is such a part.
template <class Steps, class Amount>
double sum_steps(const Routine& here, const timeperiod& period, const Steps& steps, const Basis& basis,
                 Amount amount) {
    const DayCountCodes codes = DayCountCodes::of(basis.DayCount);
    const int maxn = steps.count();
    double sum = 0.0;
    for (int n = 1; n <= maxn; ++n) {
        const Life step = steps(n);
        if (step.Start > period.to()) break;
        if (n < maxn && step.Finish < period.from() && !traced()) continue; // long past: it would measure zero
        const TraceBlock pass = here.pass(n, "From ", step.Start, " to ", step.Finish);
        const bool last = n == maxn;
        const double stub = last ? codes.with_end() : n == 1 ? codes.with_start() : codes.core;
        sum += amount(n, step, basis.under(stub), !last);
    }
    return sum;
}

} // namespace qx
