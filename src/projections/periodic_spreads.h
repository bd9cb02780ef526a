// Spreads that recur every so many months.
#pragma once

#include "projections/constant_rate.h"
#include "projections/periodic.h"
#include "projections/spreads.h"

namespace qx {

/// The sum of the repetitions of a spread in a period, each as long as the first one, which `make` makes of its life
/// and its total.
template <class Make>
double sum_periodic(const Routine& here, const timeperiod& Time, const Life& life, const date& AbsFinish,
                    View<double> Totals, int Periodicity, const Basis& basis, Make make) {
    if (!runs_forward(here, Time)) return 0.0;
    const double length = life.Finish.months() - life.Start.months();
    double total = 0.0;
    each_repetition(here, Time, life.Start, AbsFinish, Periodicity, [&](int n, const date& start) {
        const date finish = start.plusmonths(length);
        total += make(Life{start, finish}, Totals.entry(n)).in(here, Time, basis);
    });
    return total;
}

} // namespace qx
