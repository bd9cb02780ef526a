#include "rates/growing_annuities.h"

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
/// Growth at every moment has no meaning where more than all is lost.
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

/// What a year's income received p times is worth, for each unit a year of income received at every moment.
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

/// Income at 1 + g t a year, received at every moment for n years, or for ever where n is infinite.
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

double SumEGStepMktGen(double GrowthPA, double TermMonths, double StepLengthMonths, double FirstRevMonths,
                       double BaseDateMonths, double startingrate, double mktrate) {
    Routine here{"SumEGStepMktGen", Routine::internal};
    here.arguments(
        QX_NAMED(GrowthPA, TermMonths, StepLengthMonths, FirstRevMonths, BaseDateMonths, startingrate, mktrate));
    if (StepLengthMonths < 0.0)
        here.fail<errlibbadnum>("StepLengthMonths", "StepLengthMonths must be a positive number");
    // A first review in the past is brought into the first step, in single precision.
    const double myfirstrev = StepLengthMonths > 0.0
                                  ? std::fmod(static_cast<float>(100.0 * StepLengthMonths + FirstRevMonths),
                                              static_cast<float>(StepLengthMonths))
                                  : FirstRevMonths;
    if (TermMonths <= myfirstrev) return here.returning(TermMonths / 12.0 * startingrate);
    const double m1 = mktrate * SafePow(1.0 + GrowthPA, (myfirstrev - BaseDateMonths) / 12.0);
    if (iszero(StepLengthMonths))
        return here.returning(FirstRevMonths / 12.0 * startingrate +
                              SumEGAnnCont((TermMonths - myfirstrev) / 12.0, GrowthPA) * m1);
    const double gstep = SafePow(1.0 + GrowthPA, StepLengthMonths / 12.0) - 1.0;
    if (iszero(gstep)) return here.returning(TermMonths / 12.0 * startingrate);
    const double steps = std::max(TermMonths - myfirstrev, 0.0) / StepLengthMonths;
    const double n = std::trunc(steps);
    const double gn = SafePow(1.0 + gstep, n);
    const double step_years = StepLengthMonths / 12.0;
    return here.returning(myfirstrev / 12.0 * startingrate + step_years * (gn - 1.0) / gstep * m1 +
                          step_years * gn * (steps - n) * m1);
}

double SumEGStepMktFT(const timeperiod& TimePeriod, double mktrate, double startingrate, double growth,
                      const date& startingdate, const date& basedate, const date& firstrev, const date& from,
                      const date& to, double DayCount, const AnnualSequence& Periods, int StepLengthMonths,
                      bool ComponentPart) {
    Routine here{"SumEGStepMktFT", Routine::internal};
    here.arguments(QX_NAMED(TimePeriod, mktrate, startingrate, growth, startingdate, basedate, firstrev, from, to,
                            DayCount, Periods, StepLengthMonths, ComponentPart));
    const auto months = [&](const date& start, const date& end) { return diffmonths(start, end, DayCount, Periods); };
    const date MyLastRev = LastReview(to, firstrev, StepLengthMonths, false);
    const double FirstRevMonths = months(startingdate, firstrev);
    const double BaseDateMonths = months(startingdate, basedate);
    const double BaseTime = TimePeriod.lenmonths(from, to, DayCount, Periods, false, ComponentPart);
    const double exact = months(startingdate, to);
    double t2 = exact;
    if (!MyLastRev.iszero() && StepLengthMonths >= 1) {
        t2 = months(startingdate, firstrev) + diffmonths(firstrev, MyLastRev, 0.0, Periods) + months(MyLastRev, to);
        if (exact > 1.05 * t2 || exact < 0.95 * t2) t2 = exact;
    }
    const double t1 = std::max(t2 - BaseTime, 0.0);
    t2 = std::max(t2, 0.0);
    here.info("From ", t1, " to ", t2, " months");
    const auto sum_to = [&](double TermMonths) {
        return SumEGStepMktGen(growth, TermMonths, StepLengthMonths, FirstRevMonths, BaseDateMonths, startingrate,
                               mktrate);
    };
    return here.returning(sum_to(t2) - sum_to(t1));
}

} // namespace qx
