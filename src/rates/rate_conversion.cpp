#include "rates/rate_conversion.h"

#include "rates/compounding.h"

#include <cmath>

namespace qx {

namespace {

/// Refuses a simple rate that leaves nothing to be paid for: 1 - s / p must be positive.
void check_discount(const Routine& here, double InterestSimple, double p) {
    if (!(1.0 - InterestSimple / p > 0.0))
        here.fail<errlibmax>("InterestSimple", "Cannot have an interest rate greater than 100%");
}

} // namespace

double AERToCont(double InterestAER) {
    Routine here{"AERToCont"};
    here.inputs(InterestAER);
    check_rate(here, InterestAER, "InterestAER");
    return here.returning(std::log1p(InterestAER));
}

double ContToAER(double InterestCont) {
    Routine here{"ContToAER"};
    here.inputs(InterestCont);
    return here.returning(std::expm1(InterestCont));
}

double AERToSimple(double InterestAER, double PmtsPerYear) {
    Routine here{"AERToSimple"};
    here.inputs(InterestAER, PmtsPerYear);
    check_rate(here, InterestAER, "InterestAER");
    const double p = check_frequency(here, PmtsPerYear);
    return here.returning(-compound_less_one(InterestAER, -1.0 / p) * p);
}

double SimpleToAER(double InterestSimple, double PmtsPerYear) {
    Routine here{"SimpleToAER"};
    here.inputs(InterestSimple, PmtsPerYear);
    check_rate(here, InterestSimple, "InterestSimple");
    const double p = check_frequency(here, PmtsPerYear);
    return here.returning(compound_less_one(-InterestSimple / p, -p));
}

double ContToSimple(double InterestCont, double PmtsPerYear) {
    Routine here{"ContToSimple"};
    here.inputs(InterestCont, PmtsPerYear);
    const double p = check_frequency(here, PmtsPerYear);
    if (iszero(InterestCont)) return here.returning(0.0);
    return here.returning(-std::expm1(-InterestCont / p) * p);
}

double SimpleToCont(double InterestSimple, double PmtsPerYear) {
    Routine here{"SimpleToCont"};
    here.inputs(InterestSimple, PmtsPerYear);
    check_rate(here, InterestSimple, "InterestSimple");
    const double p = check_frequency(here, PmtsPerYear);
    check_discount(here, InterestSimple, p);
    return here.returning(-p * std::log1p(-InterestSimple / p));
}

double SimpleToSimple(double InterestSimple, double PmtsPerYrSrce, double PmtsPerYrTarg) {
    Routine here{"SimpleToSimple"};
    here.inputs(InterestSimple, PmtsPerYrSrce, PmtsPerYrTarg);
    check_rate(here, InterestSimple, "InterestSimple");
    const double source = check_frequency(here, PmtsPerYrSrce, "PmtsPerYrSrce");
    const double target = check_frequency(here, PmtsPerYrTarg, "PmtsPerYrTarg");
    return here.returning(AERToSimple(SimpleToAER(InterestSimple, source), target));
}

double TermRate(double InterestAER, double TermYrs) {
    Routine here{"TermRate"};
    here.inputs(InterestAER, TermYrs);
    check_rate(here, InterestAER, "InterestAER");
    return here.returning(compound_less_one(InterestAER, TermYrs));
}

double AERToDF(double InterestAER, const date& FromDate, const date& ToDate, double DayCount,
               const AnnualSequence& Periods) {
    Routine here{"AERToDF"};
    here.inputs(InterestAER, FromDate, ToDate, DayCount, Periods);
    check_rate(here, InterestAER, "InterestAER");
    check_daycount(here, DayCount);
    const double y = years_between(FromDate, ToDate, DayCount, Periods);
    return here.returning(reciprocal(SafePow(1.0 + InterestAER, y)));
}

double ContToDF(double InterestCont, const date& FromDate, const date& ToDate, double DayCount,
                const AnnualSequence& Periods) {
    Routine here{"ContToDF"};
    here.inputs(InterestCont, FromDate, ToDate, DayCount, Periods);
    check_daycount(here, DayCount);
    return here.returning(std::exp(-InterestCont * years_between(FromDate, ToDate, DayCount, Periods)));
}

double SimpleToDF(double InterestSimple, double PmtsPerYear, const date& FromDate, const date& ToDate, double DayCount,
                  const AnnualSequence& Periods) {
    Routine here{"SimpleToDF"};
    here.inputs(InterestSimple, PmtsPerYear, FromDate, ToDate, DayCount, Periods);
    check_rate(here, InterestSimple, "InterestSimple");
    const double p = check_frequency(here, PmtsPerYear);
    check_daycount(here, DayCount);
    check_discount(here, InterestSimple, p);
    const double y = years_between(FromDate, ToDate, DayCount, Periods);
    return here.returning(SafePow(1.0 - InterestSimple / p, p * y));
}

double DFToAER(double DiscountFactor, const date& FromDate, const date& ToDate, double DayCount,
               const AnnualSequence& Periods) {
    Routine here{"DFToAER"};
    here.inputs(DiscountFactor, FromDate, ToDate, DayCount, Periods);
    check_daycount(here, DayCount);
    const double y = years_between(FromDate, ToDate, DayCount, Periods);
    return here.returning(compound_less_one(reciprocal(DiscountFactor) - 1.0, reciprocal(y)));
}

double DFToCont(double DiscountFactor, const date& FromDate, const date& ToDate, double DayCount,
                const AnnualSequence& Periods) {
    Routine here{"DFToCont"};
    here.inputs(DiscountFactor, FromDate, ToDate, DayCount, Periods);
    if (DiscountFactor <= 0.0) here.fail<errlibmin>("DiscountFactor", "A discount factor must be positive");
    check_daycount(here, DayCount);
    const double y = years_between(FromDate, ToDate, DayCount, Periods);
    return here.returning(-std::log(DiscountFactor) * reciprocal(y));
}

double DFToSimple(double DiscountFactor, double PmtsPerYear, const date& FromDate, const date& ToDate, double DayCount,
                  const AnnualSequence& Periods) {
    Routine here{"DFToSimple"};
    here.inputs(DiscountFactor, PmtsPerYear, FromDate, ToDate, DayCount, Periods);
    const double p = check_frequency(here, PmtsPerYear);
    check_daycount(here, DayCount);
    const double y = years_between(FromDate, ToDate, DayCount, Periods);
    return here.returning(-compound_less_one(reciprocal(DiscountFactor) - 1.0, -reciprocal(p * y)) * p);
}

// --- The older names --------------------------------------------------------------------------------------------

double APRToCont(double InterestAPR) {
    Routine here{"APRToCont"};
    here.inputs(InterestAPR);
    here.info(superseded_apr);
    return here.returning(AERToCont(InterestAPR));
}

double ContToAPR(double InterestCont) {
    Routine here{"ContToAPR"};
    here.inputs(InterestCont);
    here.info(superseded_apr);
    return here.returning(ContToAER(InterestCont));
}

double APRToSimple(double InterestAPR, double PmtsPerYear) {
    Routine here{"APRToSimple"};
    here.inputs(InterestAPR, PmtsPerYear);
    here.info(superseded_apr);
    return here.returning(AERToSimple(InterestAPR, PmtsPerYear));
}

double SimpleToAPR(double InterestSimple, double PmtsPerYear) {
    Routine here{"SimpleToAPR"};
    here.inputs(InterestSimple, PmtsPerYear);
    here.info(superseded_apr);
    return here.returning(SimpleToAER(InterestSimple, PmtsPerYear));
}

double APRToDF(double InterestAPR, const date& FromDate, const date& ToDate, double DayCount,
               const AnnualSequence& Periods) {
    Routine here{"APRToDF"};
    here.inputs(InterestAPR, FromDate, ToDate, DayCount, Periods);
    here.info(superseded_apr);
    return here.returning(AERToDF(InterestAPR, FromDate, ToDate, DayCount, Periods));
}

double DFToAPR(double DiscountFactor, const date& FromDate, const date& ToDate, double DayCount,
               const AnnualSequence& Periods) {
    Routine here{"DFToAPR"};
    here.inputs(DiscountFactor, FromDate, ToDate, DayCount, Periods);
    here.info(superseded_apr);
    return here.returning(DFToAER(DiscountFactor, FromDate, ToDate, DayCount, Periods));
}

} // namespace qx
