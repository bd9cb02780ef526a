#include "projections/projection_values.h"

#include "projections/constant_rate.h"
#include "projections/growth.h"
#include "projections/stepped_rate.h"

#include <algorithm>

namespace qx {

namespace {

/// From the earliest start to the latest finish.
Life extent(const Routine& here, const Streams& streams) {
    static const date before_all;
    if (streams.count(here) == 0) return {DateCrit, before_all};
    return {*std::min_element(streams.starts.begin(), streams.starts.end()),
            *std::max_element(streams.finishes.begin(), streams.finishes.end())};
}

template <class S>
Life extent(const S& spread, const Basis&) {
    return {spread.Start, spread.Finish};
}
Life extent(const GeneralSpread& spread, const Basis&) { return {spread.Start, spread.end()}; }
Span extent(const FSteppedSpread& spread, const Basis& basis) { return spread.extent(basis); }
Span extent(const TSteppedSpread& spread, const Basis& basis) { return spread.extent(basis); }

/// True if there is nothing to lay out.
template <class S>
bool nothing(const S& spread) {
    if constexpr (requires { spread.FromDates; })
        return spread.FromDates.empty();
    else if constexpr (requires { spread.ToDates; })
        return spread.ToDates.empty();
    else
        return false;
}

template <class S>
inline constexpr const char* value_name = nullptr;
template <>
inline constexpr const char* value_name<GeneralSpread> = "PVGSpread";
template <>
inline constexpr const char* value_name<CumulativeSpread> = "PVSCumCurve";
template <>
inline constexpr const char* value_name<DistributedSpread> = "PVDistSpread";
template <>
inline constexpr const char* value_name<FSteppedSpread> = "PVFStepSpread";
template <>
inline constexpr const char* value_name<TSteppedSpread> = "PVTStepSpread";

} // namespace

// --- Streams ---------------------------------------------------------------------------------------------------------

double PVCon(const Discount& at, const Streams& streams, const CashTerms& terms) {
    Routine here{"PVCon"};
    here.inputs(at, streams, terms);
    terms.check(here, at.DisAER);
    return here.returning(present_value(here, extent(here, streams), at, terms,
                                        [&](const timeperiod& period) { return Con(period, streams, terms.cash()); }));
}

double PVConGrow(const Discount& at, const Streams& streams, const Growth& growth, int RevMonthsOpt,
                 const CashTerms& terms) {
    Routine here{"PVConGrow"};
    here.inputs(at, streams, growth, RevMonthsOpt, terms);
    terms.check(here, at.DisAER);
    check_reviews(here, RevMonthsOpt);
    growth.check(here);
    return here.returning(present_value(here, extent(here, streams), at, terms, [&](const timeperiod& period) {
        return ConGrow(period, streams, growth, RevMonthsOpt, terms.cash());
    }));
}

double PVAnnGrow(const Discount& at, const Streams& streams, const Growth& growth, const CashTerms& terms) {
    Routine here{"PVAnnGrow"};
    here.inputs(at, streams, growth, terms);
    terms.check(here, at.DisAER);
    growth.check(here);
    return here.returning(present_value(here, extent(here, streams), at, terms, [&](const timeperiod& period) {
        return AnnGrow(period, streams, growth, terms.cash());
    }));
}

double PVConGrowQ(const Discount& at, const Life& life, double AnnualRate, const date& GrowFrom, double GrowthRatePA,
                  int RevMos, const CashTerms& terms) {
    Routine here{"PVConGrowQ"};
    here.inputs(at, life, AnnualRate, GrowFrom, GrowthRatePA, RevMos, terms);
    terms.check(here, at.DisAER);
    if (RevMos >= 0) check_reviews(here, RevMos, "RevMos"); // the stream itself refuses a negative one
    return here.returning(present_value(here, life, at, terms, [&](const timeperiod& period) {
        return ConGrowQ(period, life, AnnualRate, GrowFrom, GrowthRatePA, RevMos, terms.cash());
    }));
}

template <class Steps>
double PVStep(const Discount& at, const Steps& steps, View<double> AnnualRates, const CashTerms& terms) {
    Routine here{by_side<Steps>("PVFStep", "PVTStep")};
    here.inputs(at, steps, AnnualRates, terms);
    terms.check(here, at.DisAER);
    if (Steps::by_from_dates && steps.count() == 0) return here.returning(0.0);
    return here.returning(present_value(here, whole_extent(steps), at, terms, [&](const timeperiod& period) {
        return Step(period, steps, AnnualRates, terms.cash());
    }));
}

template <class Steps>
double PVStepIC(const date& NPVDate, View<double> DisAER, const Steps& steps, View<double> AnnualRates,
                const CashTerms& terms) {
    Routine here{by_side<Steps>("PVFStepIC", "PVTStepIC")};
    here.inputs(NPVDate, DisAER, steps, AnnualRates, terms);
    terms.check(here, DisAER);
    if (Steps::by_from_dates && steps.count() == 0) return here.returning(0.0);
    return here.returning(
        present_value_by_step(here, whole_extent(steps), NPVDate, terms, [&](const timeperiod& period, double years) {
            return DiscountedStep(period, steps, AnnualRates, DisAER, years, terms.cash());
        }));
}

#define QX_VALUES_OVER(Steps)                                                                                          \
    template double PVStep(const Discount&, const Steps&, View<double>, const CashTerms&);                             \
    template double PVStepIC(const date&, View<double>, const Steps&, View<double>, const CashTerms&)
QX_VALUES_OVER(FromSteps);
QX_VALUES_OVER(ToSteps);
#undef QX_VALUES_OVER

// --- Spreads ---------------------------------------------------------------------------------------------------------

double PVUniSpread(const Discount& at, const Streams& streams, const CashTerms& terms) {
    Routine here{"PVUniSpread"};
    here.inputs(at, streams, terms);
    terms.check(here, at.DisAER);
    return here.returning(present_value(here, extent(here, streams), at, terms, [&](const timeperiod& period) {
        return UniSpread(period, streams, terms.cash());
    }));
}

double PVSCurve(const Discount& at, const Streams& streams, double Skew, double Peakness, const CashTerms& terms) {
    Routine here{"PVSCurve"};
    here.inputs(at, streams, Skew, Peakness, terms);
    terms.check(here, at.DisAER);
    here.limit(Skew, skew_limits, "Skew");
    here.limit(Peakness, peakness_limits, "Peakness");
    return here.returning(present_value(here, extent(here, streams), at, terms, [&](const timeperiod& period) {
        return SCurve(period, streams, Skew, Peakness, terms.cash());
    }));
}

double PVSCurveGrow(const Discount& at, const CurvedSpread& spread, const Growth& growth, const CashTerms& terms) {
    Routine here{"PVSCurveGrow"};
    here.inputs(at, spread, growth, terms);
    terms.check(here, at.DisAER);
    spread.check(here);
    growth.check(here);
    return here.returning(present_value(here, {spread.Start, spread.Finish}, at, terms, [&](const timeperiod& period) {
        return SCurveGrow(period, spread, growth, terms.cash());
    }));
}

template <Spread S>
double PVSpread(const Discount& at, const S& spread, const CashTerms& terms) {
    Routine here{value_name<S>};
    here.inputs(at, spread, terms);
    terms.check(here, at.DisAER);
    spread.check(here);
    if (nothing(spread)) return here.returning(0.0);
    const auto life = extent(spread, terms.cash());
    return here.returning(present_value(
        here, life, at, terms, [&](const timeperiod& period) { return spread_over(period, spread, terms.cash()); }));
}

template double PVSpread(const Discount&, const GeneralSpread&, const CashTerms&);
template double PVSpread(const Discount&, const CumulativeSpread&, const CashTerms&);
template double PVSpread(const Discount&, const DistributedSpread&, const CashTerms&);
template double PVSpread(const Discount&, const FSteppedSpread&, const CashTerms&);
template double PVSpread(const Discount&, const TSteppedSpread&, const CashTerms&);

// --- Dated payments --------------------------------------------------------------------------------------------------

namespace {

/// The value of payments on their dates, as far as `counts` says.
template <class Counts>
double value_payments(const Routine& here, const Discount& at, const Payments& payments, const CashTerms& terms,
                      Counts counts) {
    const PowersOf growth(1.0 + at.DisAER);
    double sum = 0.0;
    for (int i = 1; i <= payments.count(); ++i) {
        const date& day = payments.when(i);
        const double amount = payments.amount(i);
        if (amount == 0.0 || terms.too_early(day) || terms.too_late(day) || !counts(day)) continue;
        const TraceBlock pass = here.pass(i, "Payment on ", day);
        sum += discounted(here, amount, terms.years(at.NPVDate, day), growth);
    }
    return sum;
}

bool is_date(const date& day) { return !day.iszero(); }

} // namespace

double PVMkPmts(const Discount& at, const Payments& payments, const CashTerms& terms) {
    Routine here{"PVMkPmts"};
    here.inputs(at, payments, terms);
    terms.check(here, at.DisAER);
    return here.returning(value_payments(here, at, payments, terms, is_date));
}

double PVMkPmtsSF(const Discount& at, const Life& life, const Payments& payments, const CashTerms& terms) {
    Routine here{"PVMkPmtsSF"};
    here.inputs(at, life, payments, terms);
    terms.check(here, at.DisAER);
    return here.returning(value_payments(here, at, payments, terms, [&](const date& day) {
        return is_date(day) && day >= life.Start && day < life.Finish;
    }));
}

double PVMkPmtsWeighted(const Discount& at, double Total, View<date> PmtDates, View<double> Weights,
                        const CashTerms& terms) {
    Routine here{"PVMkPmtsWeighted"};
    here.inputs(at, Total, PmtDates, Weights, terms);
    terms.check(here, at.DisAER);
    double weights = 0.0;
    for (const double weight : Weights.upto(PmtDates.size())) weights += weight;
    return here.returning(Total * safe_divide(value_payments(here, at, {PmtDates, Weights}, terms, is_date), weights));
}

} // namespace qx
