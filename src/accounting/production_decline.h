// Production of a petroleum field: stepped plateau rates until a share of the reserves is gone, then a decline from the
// plateau rate q0 to the abandonment rate qa along one of Arps' curves (J. J. Arps, "Analysis of Decline Curves",
// Trans. AIME 160, 1945). With t years since the start of decline, a the decline a year at its start and b the
// exponent:
//
// | b      | curve       | rate at t                   | cumulative production from q0 down to q                 |
// | 0      | exponential | q0 e^(-a t)                 | (q0 - q) / a                                            |
// | 1      | harmonic    | q0 / (1 + a t)              | (q0 / a) ln(q0 / q)                                     |
// | others | hyperbolic  | q0 (1 + b a t)^(-1 / b)     | q0^b / ((1 - b) a) (q0^(1 - b) - q^(1 - b))             |
//
// b counts as 0 or 1 within 1e-12. Amounts and rates share one unit, such as barrels and barrels a year. A
// ResvsOrDcRate above 0 is an amount of reserves; otherwise its negative is a. DeclinePoint is the share of the
// reserves that is produced when decline starts.
//
// All throw errlibmin for a DeclineParam (b) below 0, and errlibmin and errlibmax for a DayCount outside 0 to 999 or a
// ProjMode outside 0 to 7. A decline rate of zero has no cumulative production. The formulae apply
// unchanged to an abandonment rate of zero or above the plateau rate, and to a DeclinePoint outside 0 to 1.
#pragma once

#include "calendar/time_period.h"
#include "projections/terms.h"

#include <string>

namespace qx {

/// A field: its reserves or decline, its plateau rates, and where decline starts and ends.
struct Field {
    using takes = Takes<double, Range<date>, Range<double>, double, double, double>;
    double ResvsOrDcRate;
    View<date> FromDates;
    View<double> AnnualRates;
    double DeclinePoint;
    double AbandonRate;
    double DeclineParam;

    /// The decline a year that is given in place of reserves.
    double decline_rate() const { return 0.0 - ResvsOrDcRate; }
};

/// Which figure of a production profile is returned; with any other switch the production of the plateau in the period.
enum ProductionSwitch : int {
    production_in_period = 0,
    production_rate_at_start = 1,  ///< 0 on or before the first from-date and after the date of abandonment
    production_rate_at_finish = 2, ///< the same
    production_decline_rate = 3,   ///< a
    production_reserves = 4,
};

/// The production in a period. Under cash (ProjMode 1 or 3) it is that of the span which the dates of Periods in the
/// period settle.
double ProdProf(const timeperiod& Time, const Field& field, const Basis& basis, int PPSwitch);
/// The date on which the rate falls to the abandonment rate; DateCrit if it never does.
date AbandonDate(const Field& field, const Measure& measure);
/// The date on which decline starts.
date StartDecline(double Reserves, View<date> FromDates, View<double> AnnualRates, double DeclinePoint,
                  const Measure& measure);

/// The cumulative production Yrs after the start of decline, at most the reserves, or with a DeclineSwitch other than 0
/// the rate then, 0 from abandonment on. The reserves are those in decline.
double Decline(double Yrs, double ResvsOrDcRate, double PlateauRate, double AbandonRate, double DeclineParam,
               int DeclineSwitch);
/// The decline a year at its start (a) by which the reserves are produced between two rates.
double DeclineRate(double ReservesDec, double PlateauRate, double AbandonRate, double DeclineParam);
/// The production between two rates.
double CumProd(double AnnProdRate, double PlateauRate, double DecRate, double DeclineParam);

/// A DeclineParam in words.
std::string DescribeDecline(double DeclineParam);

/// Stock tank oil initially in place, in the unit of volume of the net rock: the pores' share of the rock that is not
/// water (saturation Swc), shrunk by the formation volume factor Boi. Throws errlibdivzero for a Boi of zero.
double STOIIP(double Swc, double Porosity, double Boi, double NetRockVolume);

} // namespace qx
