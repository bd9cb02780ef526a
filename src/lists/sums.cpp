#include "lists/sums.h"

#include "core/routine.h"
#include "lists/lists.h"
#include "numerics/lookup.h"
#include "numerics/range_operation.h"

#include <algorithm>

namespace qx {

namespace {

/// The sum of the values that pass a test.
template <class Test>
double sum_where(View<double> values, Test passes) {
    double sum = 0.0;
    for (const double value : values)
        if (passes(value)) sum += value;
    return sum;
}

bool is_chosen(const anyvalue& category, View<anyvalue> chosen) {
    return std::any_of(chosen.begin(), chosen.end(),
                       [&category](const anyvalue& choice) { return !choice.isblank() && choice == category; });
}

/// The choice of values by one or two sets of categories.
class Choice {
  public:
    Choice(Routine& here, View<double> values, View<anyvalue> Categories, View<anyvalue> ChosenCategories,
           View<anyvalue> Categories2, View<anyvalue> ChosenCategories2)
        : categories_{Categories, Categories2}, chosen_{ChosenCategories, ChosenCategories2} {
        values.checksamesize(Categories);
        if (Categories2.size() == 0 && ChosenCategories2.size() == 0) return;
        if (Categories2.size() == 0) here.fail<errliboptreq>("Categories2");
        if (ChosenCategories2.size() == 0) here.fail<errliboptreq>("ChosenCategories2");
        values.checksamesize(Categories2);
        sets_ = 2;
    }

    bool includes(int i) const {
        for (int set = 0; set < sets_; ++set)
            if (!is_chosen(categories_[set].get(i), chosen_[set])) return false;
        return true;
    }

  private:
    View<anyvalue> categories_[2];
    View<anyvalue> chosen_[2];
    int sets_ = 1;
};

void check_inclusive(Routine& here, int InclusiveOpt) {
    here.limit(InclusiveOpt, first_end_only, second_end_only, "InclusiveOpt");
}

double position_of(double value) { return value; }
double position_of(const date& day) { return day.dtn(); }

/// The figures of the values whose positions lie between two ends.
template <class T>
Tally tally_between(const Routine& here, double from, double to, View<T> positions, View<double> values,
                    int InclusiveOpt) {
    Tally tally;
    const int n = std::min(positions.size(), values.size());
    for (int i = 1; i <= n; ++i) {
        if (!lies_between(position_of(positions.get(i)), from, to, InclusiveOpt)) continue;
        here.info("Item number ", i, " lies between: ", values.get(i));
        tally.add(values.get(i));
    }
    return tally;
}

double extreme_between(const char* name, int RangeOperation, const date& FromDate, const date& ToDate, View<date> Dates,
                       View<double> Values, int InclusiveOpt) {
    Routine here{name};
    here.inputs(FromDate, ToDate, Dates, Values, InclusiveOpt);
    check_inclusive(here, InclusiveOpt);
    return here.returning(tally_between(here, position_of(FromDate), position_of(ToDate), Dates, Values, InclusiveOpt)
                              .result(RangeOperation));
}

} // namespace

double SumPos(View<double> Values) {
    Routine here{"SumPos"};
    here.inputs(Values);
    return here.returning(sum_where(Values, [](double value) { return value > 0.0; }));
}

double SumNeg(View<double> Values) {
    Routine here{"SumNeg"};
    here.inputs(Values);
    return here.returning(sum_where(Values, [](double value) { return value < 0.0; }));
}

double SumBounds(View<double> Values, const Maybe<double>& MinValue, const Maybe<double>& MaxValue) {
    Routine here{"SumBounds"};
    here.inputs(Values, MinValue, MaxValue);
    return here.returning(sum_where(Values, [&](double value) {
        if (!MinValue.is_missing() && value < MinValue.value && !isequal(value, MinValue.value)) return false;
        return MaxValue.is_missing() || value < MaxValue.value || isequal(value, MaxValue.value);
    }));
}

double SumSubRange(View<double> Values, int FirstOne, int LastOne) {
    Routine here{"SumSubRange"};
    here.inputs(Values, FirstOne, LastOne);
    const SubRange part = sub_range(FirstOne, LastOne, Values.size());
    double sum = 0.0;
    for (int i = part.first; i <= part.last; ++i) sum += Values.get(i);
    return here.returning(sum);
}

double SumDiv(View<double> Values, View<double> Divisors) {
    Routine here{"SumDiv"};
    here.inputs(Values, Divisors);
    if (Values.size() != 1 && Divisors.size() != 1) Values.checksamesize(Divisors);
    double sum = 0.0;
    for (int i = 1; i <= std::max(Values.size(), Divisors.size()); ++i)
        sum += safe_divide(Values.get(std::min(i, Values.size())), Divisors.get(std::min(i, Divisors.size())));
    return here.returning(sum);
}

double SumCat(View<double> Values, View<anyvalue> Categories, const anyvalue& ChosenCategory) {
    Routine here{"SumCat"};
    here.inputs(Values, Categories, ChosenCategory);
    Values.checksamesize(Categories);
    double sum = 0.0;
    for (int i = 1; i <= Values.size(); ++i)
        if (!ChosenCategory.isblank() && Categories.get(i) == ChosenCategory) sum += Values.get(i);
    return here.returning(sum);
}

double SumCats(View<double> Values, View<anyvalue> Categories, View<anyvalue> ChosenCategories,
               View<anyvalue> Categories2, View<anyvalue> ChosenCategories2) {
    Routine here{"SumCats"};
    here.inputs(Values, Categories, ChosenCategories, Categories2, ChosenCategories2);
    const Choice choice(here, Values, Categories, ChosenCategories, Categories2, ChosenCategories2);
    double sum = 0.0;
    for (int i = 1; i <= Values.size(); ++i) {
        if (!choice.includes(i)) continue;
        sum += Values.get(i);
        here.info("Item number ", i, " added because of its category. Cumulative total now ", sum);
    }
    return here.returning(sum);
}

WorkList<double> SelCats(View<double> Values, View<anyvalue> Categories, View<anyvalue> ChosenCategories,
                         View<anyvalue> Categories2, View<anyvalue> ChosenCategories2) {
    Routine here{"SelCats"};
    here.inputs(Values, Categories, ChosenCategories, Categories2, ChosenCategories2);
    const Choice choice(here, Values, Categories, ChosenCategories, Categories2, ChosenCategories2);
    WorkList<double> selected;
    selected->dimension(Values.size());
    int count = 0;
    for (int i = 1; i <= Values.size(); ++i)
        if (choice.includes(i)) selected(++count) = Values.get(i);
    selected->dimension(count);
    here.returning();
    return selected;
}

double MeanNZ(View<double> Values) {
    Routine here{"MeanNZ"};
    here.inputs(Values);
    Tally tally;
    for (const double value : Values)
        if (!iszero(value)) tally.add(value);
    return here.returning(tally.result(operation_average));
}

double WeightAv(View<double> Values, View<double> Weights) {
    Routine here{"WeightAv"};
    here.inputs(Values, Weights);
    Values.checksamesize(Weights);
    double weighted = 0.0, weight = 0.0;
    for (int i = 1; i <= Values.size(); ++i) {
        weighted += Values.get(i) * Weights.get(i);
        weight += Weights.get(i);
    }
    return here.returning(safe_divide(weighted, weight));
}

int RangeDir(View<double> Values) {
    Routine here{"RangeDir"};
    here.inputs(Values);
    return here.returning(static_cast<int>(Values.thisdirection()));
}

double MaxBetween(const date& FromDate, const date& ToDate, View<date> Dates, View<double> Values, int InclusiveOpt) {
    return extreme_between("MaxBetween", operation_greatest, FromDate, ToDate, Dates, Values, InclusiveOpt);
}

double MinBetween(const date& FromDate, const date& ToDate, View<date> Dates, View<double> Values, int InclusiveOpt) {
    return extreme_between("MinBetween", operation_smallest, FromDate, ToDate, Dates, Values, InclusiveOpt);
}

double DoBetweenX(double FromValue, double ToValue, View<double> InputRange, View<double> OutputRange, int InclusiveOpt,
                  int RangeOperation) {
    Routine here{"DoBetweenX"};
    here.inputs(FromValue, ToValue, InputRange, OutputRange, InclusiveOpt, RangeOperation);
    check_inclusive(here, InclusiveOpt);
    here.limit(RangeOperation, operation_sum, operation_product, "RangeOperation");
    return here.returning(
        tally_between(here, FromValue, ToValue, InputRange, OutputRange, InclusiveOpt).result(RangeOperation));
}

double Intersection(View<double> InputRange, View<double> OutputRange, View<double> OutputRange2, int WhichOne,
                    double OnErrorN) {
    Routine here{"Intersection"};
    here.inputs(InputRange, OutputRange, OutputRange2, WhichOne, OnErrorN);
    here.at_least(WhichOne, 1, "WhichOne");
    for (View<double>* const list : {&InputRange, &OutputRange, &OutputRange2}) *list = list->upto_last_nonblank();
    InputRange.checksamesize(OutputRange);
    InputRange.checksamesize(OutputRange2);
    if (InputRange.thisdirection() == mixed)
        here.fail<errlibbadlistprogression>("InputRange",
                                            "Cannot resolve whether your list is ascending or descending");
    const auto gap = [&](int i) { return OutputRange.get(i) - OutputRange2.get(i); };
    int met = 0;
    for (int i = 1; i <= InputRange.size(); ++i) {
        const double here_gap = gap(i), before = i > 1 ? gap(i - 1) : 1.0;
        double point = InputRange.get(i);
        if (iszero(here_gap)) {
            if (iszero(before)) continue; // still the same meeting
        } else if (i > 1 && !iszero(before) && (before > 0.0) != (here_gap > 0.0)) {
            const double start = InputRange.get(i - 1);
            point = start + (InputRange.get(i) - start) * before / (before - here_gap);
        } else {
            continue;
        }
        here.info("The curves meet at ", point);
        if (++met == WhichOne) return here.returning(point);
    }
    if (isequal(OnErrorN, no_fallback))
        here.fail<errliblookupfailed>("OutputRange2", "The curves meet ", met, " times, not ", WhichOne);
    return here.returning(OnErrorN);
}

} // namespace qx
