#include "rates/growing_annuities.h"

#include "calendar/date_arithmetic.h"
#include "calendar/reviews.h"
#include "rates/annuities.h"
#include "rates/compounding.h"

#include <algorithm>
#include <cmath>

namespace qx {

namespace {

constexpr const char* infinite_perpetuity =
    "Infinite PV when Growth rate is the same or greater than the Discount Rate";
constexpr const char* infinite_annuity = "Infinite PV when Growth rate is the same as the Discount Rate";
constexpr const char* infinite_gordon_perpetuity =
    "Gordon Model for an exponentially growing perpetuity.  Infinite result caused by Growth=Discount";
constexpr const char* infinite_gordon_annuity =
    "Gordon Model for an exponentially growing annuity.  Infinite result caused by Growth=Discount";

void check_perpetuity(const Routine& here, double DisAER, double growth, const char* message) {
    if (growth >= DisAER || isequal(growth, DisAER)) here.fail<errlibinfiniteresult>("AnnGrowthRate", message);
}
void check_annuity(const Routine& here, double DisAER, double growth, const char* message) {
    if (isequal(growth, DisAER)) here.fail<errlibinfiniteresult>("AnnGrowthRate", message);
}
/// Continuous growth has no meaning where more than all is lost.
void check_continuous(Routine& here, double growth) {
    if (growth < -1.0) here.fail<errlibmin>("AnnGrowthRate");
}
void check_steps(Routine& here, double GrowRevsPerYrOpt) {
    here.limit(GrowRevsPerYrOpt, 0, most_payments, "GrowRevsPerYrOpt");
}

/// q^years - 1, q being the growth of income over that of money.
double relative_growth(double DisAER, double growth, double years) {
    if (growth <= -1.0 + tolerance) return SafePow((1.0 + growth) / (1.0 + DisAER), years) - 1.0;
    return std::expm1(years * (std::log1p(growth) - std::log1p(DisAER)));
}

/// What a year's income received p times is worth, for each unit a year of income received continuously.
double received_at_times(double r, double p) {
    return iszero(r) ? 1.0 : -std::log1p(r) / (compound_less_one(r, -1.0 / p) * p);
}

/// Income at 1, then 1 + g/m, 1 + 2g/m ... in steps of 1/m years, each step worth 1 at its start: for N steps, or for
/// ever where N is infinite.
double linear_steps(double r, double g, double m, double N) {
    const double fall = -compound_less_one(r, -1.0 / m); // 1 - w
    if (std::isinf(N)) return 1.0 / fall + g / m * (1.0 - fall) / (fall * fall);
    if (iszero(r)) return N + g / m * N * (N - 1.0) / 2.0;
    const double total = -compound_less_one(r, -N / m); // 1 - w^N
    return total / fall + g / m * ((1.0 - fall) * total / (fall * fall) - N * (1.0 - total) / fall);
}

/// Income at 1 + g t a year, received continuously for n years, or for ever where n is infinite.
double linear_continuous(double r, double g, double n) {
    const double force = std::log1p(r);
    if (std::isinf(n)) return 1.0 / force + g / (force * force);
    if (iszero(r)) return n + g * n * n / 2.0;
    const double total = -compound_less_one(r, -n); // 1 - v^n
    return total / force + g * (total / (force * force) - n * (1.0 - total) / force);
}

double pv_linear(double DisAER, double TermYrs, double p, double growth, double m) {
    if (iszero(m)) return received_at_times(DisAER, p) * linear_continuous(DisAER, growth, TermYrs);
    return annuity_value(1.0, DisAER, 1.0 / m, p) * linear_steps(DisAER, growth, m, TermYrs * m);
}

} // namespace

// --- Exponential growth -----------------------------------------------------------------------------------------

double PVEGPerp(double DisAER, double AnnGrowthRate) {
    Routine here{"PVEGPerp"};
    here.inputs(DisAER, AnnGrowthRate);
    check_rate(here, DisAER, "DisAER");
    check_perpetuity(here, DisAER, AnnGrowthRate, infinite_perpetuity);
    return here.returning(1.0 / (DisAER - AnnGrowthRate));
}

double PVEGAnn(double DisAER, double TermYrs, double AnnGrowthRate) {
    Routine here{"PVEGAnn"};
    here.inputs(DisAER, TermYrs, AnnGrowthRate);
    check_rate(here, DisAER, "DisAER");
    check_annuity(here, DisAER, AnnGrowthRate, infinite_annuity);
    return here.returning(-relative_growth(DisAER, AnnGrowthRate, TermYrs) / (DisAER - AnnGrowthRate));
}

double PVEGPerpM(double DisAER, double PmtsPerYear, double AnnGrowthRate, double GrowRevsPerYrOpt) {
    Routine here{"PVEGPerpM"};
    here.inputs(DisAER, PmtsPerYear, AnnGrowthRate, GrowRevsPerYrOpt);
    check_rate(here, DisAER, "DisAER");
    const double p = check_frequency(here, PmtsPerYear);
    check_steps(here, GrowRevsPerYrOpt);
    check_perpetuity(here, DisAER, AnnGrowthRate, infinite_perpetuity);
    if (iszero(GrowRevsPerYrOpt)) {
        check_continuous(here, AnnGrowthRate);
        return here.returning(received_at_times(DisAER, p) / (std::log1p(DisAER) - std::log1p(AnnGrowthRate)));
    }
    const double step = 1.0 / GrowRevsPerYrOpt;
    return here.returning(-annuity_value(1.0, DisAER, step, p) / relative_growth(DisAER, AnnGrowthRate, step));
}

double PVEGAnnM(double DisAER, double TermYrs, double PmtsPerYear, double AnnGrowthRate, double GrowRevsPerYrOpt) {
    Routine here{"PVEGAnnM"};
    here.inputs(DisAER, TermYrs, PmtsPerYear, AnnGrowthRate, GrowRevsPerYrOpt);
    check_rate(here, DisAER, "DisAER");
    const double p = check_frequency(here, PmtsPerYear);
    check_steps(here, GrowRevsPerYrOpt);
    check_annuity(here, DisAER, AnnGrowthRate, infinite_annuity);
    if (iszero(GrowRevsPerYrOpt)) check_continuous(here, AnnGrowthRate);
    const double whole_term = relative_growth(DisAER, AnnGrowthRate, TermYrs);
    if (iszero(GrowRevsPerYrOpt))
        return here.returning(received_at_times(DisAER, p) * whole_term /
                              (std::log1p(AnnGrowthRate) - std::log1p(DisAER)));
    const double step = 1.0 / GrowRevsPerYrOpt;
    return here.returning(annuity_value(1.0, DisAER, step, p) * whole_term /
                          relative_growth(DisAER, AnnGrowthRate, step));
}

double PVEGPerPerp(double DisAER, double AnnGrowthRate, double Periodicity) {
    Routine here{"PVEGPerPerp"};
    here.inputs(DisAER, AnnGrowthRate, Periodicity);
    check_rate(here, DisAER, "DisAER");
    if (Periodicity <= 0.0) here.fail<errlibmin>("Periodicity");
    check_perpetuity(here, DisAER, AnnGrowthRate, infinite_gordon_perpetuity);
    const double years = Periodicity / 12.0;
    return here.returning(1.0 / (compound_less_one(DisAER, years) - compound_less_one(AnnGrowthRate, years)));
}

double PVEGPerAnn(double DisAER, double TermYrs, double AnnGrowthRate, double Periodicity) {
    Routine here{"PVEGPerAnn"};
    here.inputs(DisAER, TermYrs, AnnGrowthRate, Periodicity);
    check_rate(here, DisAER, "DisAER");
    if (Periodicity <= 0.0) here.fail<errlibmin>("Periodicity");
    check_annuity(here, DisAER, AnnGrowthRate, infinite_gordon_annuity);
    const double years = Periodicity / 12.0;
    return here.returning(-relative_growth(DisAER, AnnGrowthRate, TermYrs) /
                          (compound_less_one(DisAER, years) - compound_less_one(AnnGrowthRate, years)));
}

// --- Linear growth ----------------------------------------------------------------------------------------------

double PVLGPerp(double DisAER, double AnnGrowthRate) {
    Routine here{"PVLGPerp"};
    here.arguments(QX_NAMED(DisAER, AnnGrowthRate));
    check_rate(here, DisAER, "DisAER");
    check_perpetuity(here, DisAER, 0.0, infinite_perpetuity); // any linear growth is slower than any discounting
    return here.returning(1.0 / DisAER + AnnGrowthRate / (DisAER * DisAER));
}

double PVLGAnn(double DisAER, double TermYrs, double AnnGrowthRate) {
    Routine here{"PVLGAnn"};
    here.arguments(QX_NAMED(DisAER, TermYrs, AnnGrowthRate));
    check_rate(here, DisAER, "DisAER");
    return here.returning(pv_linear(DisAER, TermYrs, -1.0, AnnGrowthRate, 1.0));
}

double PVLGPerpM(double DisAER, double PmtsPerYear, double AnnGrowthRate, double GrowRevsPerYrOpt) {
    Routine here{"PVLGPerpM"};
    here.arguments(QX_NAMED(DisAER, PmtsPerYear, AnnGrowthRate, GrowRevsPerYrOpt));
    check_rate(here, DisAER, "DisAER");
    const double p = check_frequency(here, PmtsPerYear);
    check_steps(here, GrowRevsPerYrOpt);
    check_perpetuity(here, DisAER, 0.0, infinite_perpetuity);
    return here.returning(pv_linear(DisAER, HUGE_VAL, p, AnnGrowthRate, GrowRevsPerYrOpt));
}

double PVLGAnnM(double DisAER, double TermYrs, double PmtsPerYear, double AnnGrowthRate, double GrowRevsPerYrOpt) {
    Routine here{"PVLGAnnM"};
    here.arguments(QX_NAMED(DisAER, TermYrs, PmtsPerYear, AnnGrowthRate, GrowRevsPerYrOpt));
    check_rate(here, DisAER, "DisAER");
    const double p = check_frequency(here, PmtsPerYear);
    check_steps(here, GrowRevsPerYrOpt);
    return here.returning(pv_linear(DisAER, TermYrs, p, AnnGrowthRate, GrowRevsPerYrOpt));
}

// --- Sums -------------------------------------------------------------------------------------------------------

double SumEGAnn(double TermYrs, double AnnGrowthRate) {
    Routine here{"SumEGAnn"};
    here.inputs(TermYrs, AnnGrowthRate);
    return here.returning(safe_divide(compound_less_one(AnnGrowthRate, TermYrs), AnnGrowthRate));
}

double SumEGAnnM(double TermYrs, double AnnGrowthRate, double GrowRevsPerYrOpt) {
    Routine here{"SumEGAnnM"};
    here.inputs(TermYrs, AnnGrowthRate, GrowRevsPerYrOpt);
    check_steps(here, GrowRevsPerYrOpt);
    if (iszero(GrowRevsPerYrOpt)) check_continuous(here, AnnGrowthRate);
    if (iszero(AnnGrowthRate)) return here.returning(TermYrs);
    const double year = iszero(GrowRevsPerYrOpt)
                            ? std::log1p(AnnGrowthRate)
                            : GrowRevsPerYrOpt * compound_less_one(AnnGrowthRate, 1.0 / GrowRevsPerYrOpt);
    return here.returning(compound_less_one(AnnGrowthRate, TermYrs) / year);
}

double SumEGAnnCont(double TermYrs, double AnnGrowthRate) {
    Routine here{"SumEGAnnCont"};
    here.inputs(TermYrs, AnnGrowthRate);
    check_continuous(here, AnnGrowthRate);
    if (TermYrs <= 0.0) return here.returning(0.0);
    if (iszero(AnnGrowthRate)) return here.returning(TermYrs);
    return here.returning(compound_less_one(AnnGrowthRate, TermYrs) / std::log1p(AnnGrowthRate));
}

double SumLGAnn(double TermYrs, double AnnGrowthRate) {
    Routine here{"SumLGAnn"};
    here.inputs(TermYrs, AnnGrowthRate);
    return here.returning((TermYrs - 1.0) * AnnGrowthRate / 2.0 * TermYrs + TermYrs);
}

double SumLGAnnM(double TermYrs, double AnnGrowthRate, double GrowRevsPerYrOpt) {
    Routine here{"SumLGAnnM"};
    here.inputs(TermYrs, AnnGrowthRate, GrowRevsPerYrOpt);
    check_steps(here, GrowRevsPerYrOpt);
    return here.returning((TermYrs - reciprocal(GrowRevsPerYrOpt)) * AnnGrowthRate / 2.0 * TermYrs + TermYrs);
}

double SumLGAnnCont(double TermYrs, double AnnGrowthRate) {
    Routine here{"SumLGAnnCont"};
    here.inputs(TermYrs, AnnGrowthRate);
    return here.returning(TermYrs * AnnGrowthRate / 2.0 * TermYrs + TermYrs);
}

// --- Reviews to a growing market --------------------------------------------------------------------------------

SteppedGrowth::SteppedGrowth(double growth, double step_months, double first_review_months, double base_months,
                             double starting, double market)
    : growth_(growth), step_(step_months), base_(base_months), starting_(starting), market_(market),
      // A first review in the past is brought into the first step, in single precision.
      first_review_(step_months > 0.0 ? std::fmod(static_cast<float>(100.0 * step_months + first_review_months),
                                                  static_cast<float>(step_months))
                                      : first_review_months),
      first_review_given_(first_review_months) {}

double SteppedGrowth::up_to(double months) {
    if (months <= first_review_) return months / 12.0 * starting_;
    if (!grown_) {
        grown_ = true;
        first_market_ = market_ * SafePow(1.0 + growth_, (first_review_ - base_) / 12.0);
        if (!iszero(step_)) step_growth_ = SafePow(1.0 + growth_, step_ / 12.0) - 1.0;
    }
    if (iszero(step_))
        return first_review_given_ / 12.0 * starting_ +
               SumEGAnnCont((months - first_review_) / 12.0, growth_) * first_market_;
    if (iszero(step_growth_)) return months / 12.0 * starting_;
    const double steps = std::max(months - first_review_, 0.0) / step_;
    const double n = std::trunc(steps);
    if (n != whole_steps_) {
        whole_steps_ = n;
        after_whole_steps_ = SafePow(1.0 + step_growth_, n);
    }
    const double step_years = step_ / 12.0;
    return first_review_ / 12.0 * starting_ + step_years * (after_whole_steps_ - 1.0) / step_growth_ * first_market_ +
           step_years * after_whole_steps_ * (steps - n) * first_market_;
}

double SumEGStepMktGen(double GrowthPA, double TermMonths, double StepLengthMonths, double FirstRevMonths,
                       double BaseDateMonths, double startingrate, double mktrate) {
    Routine here{"SumEGStepMktGen", Routine::internal};
    here.arguments(
        QX_NAMED(GrowthPA, TermMonths, StepLengthMonths, FirstRevMonths, BaseDateMonths, startingrate, mktrate));
    if (StepLengthMonths < 0.0)
        here.fail<errlibbadnum>("StepLengthMonths", "StepLengthMonths must be a positive number");
    return here.returning(
        SteppedGrowth(GrowthPA, StepLengthMonths, FirstRevMonths, BaseDateMonths, startingrate, mktrate)
            .up_to(TermMonths));
}

double SumEGStepMktFT(const timeperiod& TimePeriod, double mktrate, double startingrate, double growth,
                      const date& startingdate, const date& basedate, const date& firstrev, const date& from,
                      const date& to, double DayCount, const AnnualSequence& Periods, int StepLengthMonths,
                      bool ComponentPart, std::optional<SteppedGrowth>& stream) {
    Routine here{"SumEGStepMktFT", Routine::internal};
    here.arguments(QX_NAMED(TimePeriod, mktrate, startingrate, growth, startingdate, basedate, firstrev, from, to,
                            DayCount, Periods, StepLengthMonths, ComponentPart));
    const auto months = [&](const date& start, const date& end) { return diffmonths(start, end, DayCount, Periods); };
    const date MyLastRev = LastReview(to, firstrev, StepLengthMonths, false);
    if (!stream) {
        const double FirstRevMonths = months(startingdate, firstrev);
        const double BaseDateMonths = months(startingdate, basedate);
        stream.emplace(growth, StepLengthMonths, FirstRevMonths, BaseDateMonths, startingrate, mktrate);
    }
    const double BaseTime = TimePeriod.lenmonths(from, to, DayCount, Periods, false, ComponentPart);
    const double exact = months(startingdate, to);
    double t2 = exact;
    if (!MyLastRev.iszero() && StepLengthMonths >= 1) {
        t2 = stream->first_review_months() + diffmonths(firstrev, MyLastRev, 0.0, Periods) + months(MyLastRev, to);
        if (exact > 1.05 * t2 || exact < 0.95 * t2) t2 = exact;
    }
    const double t1 = std::max(t2 - BaseTime, 0.0);
    t2 = std::max(t2, 0.0);
    here.info("From ", t1, " to ", t2, " months");
    const double after = stream->up_to(t2), before = stream->up_to(t1);
    here.info("Sums up to then ", before, ", ", after);
    return here.returning(after - before);
}

} // namespace qx
