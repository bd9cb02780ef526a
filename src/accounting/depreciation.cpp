#include "accounting/depreciation.h"

#include "accounting/years_later.h"
#include "calendar/date_arithmetic.h"
#include "calendar/recurrence.h"
#include "core/routine.h"
#include "projections/constant_rate.h"
#include "projections/forecast.h"
#include "projections/growth.h"

#include <cmath>
#include <limits>

namespace qx {

namespace {

constexpr int most_vintages = 100;
constexpr double infinite = std::numeric_limits<double>::infinity();
constexpr double working_final_value = 0.001; ///< what declining balances take for a final value of zero
constexpr double earliest_date = 1910.0;      ///< from here on a number is read as a date

bool declines_by_multiple(int DepType) { return DepType == double_declining || DepType < 0; }

/// True if a LifeOrDecRate is a life, with a note of which it is.
bool is_life(const Routine& here, double LifeOrDecRate) {
    const bool life = LifeOrDecRate >= 1.0;
    here.info(life ? "LifeOrDecRate>=1, must be a life in years" : "LifeOrDecRate<1, must be a rate");
    return life;
}

/// The reciprocal of a life or of a rate, 0 for zero.
double turned_over(double x) { return safe_divide(1.0, x); }

double working_final(const Routine& here, const Asset& asset) {
    if (!iszero(asset.FinalValue) || asset.DepType == straight_line || asset.DepType == sum_of_years_digits) {
        here.info("Accepting Final Value as input: ", asset.FinalValue);
        return asset.FinalValue;
    }
    here.info("Zero Final Value, setting it to a very small number to make the math work.");
    return working_final_value;
}

double straight_line_value(const Routine& here, double years, const Asset& asset, double final) {
    const TraceBlock block = here.branch("Straight Line Depreciation");
    const double life = is_life(here, asset.LifeOrDecRate) ? asset.LifeOrDecRate : turned_over(asset.LifeOrDecRate);
    here.info("Life=", life);
    return years >= life ? final : (asset.InitialValue - final) * (1.0 - years / life) + final;
}

/// A value that declines continuously; it ends at the life.
double declined_value(const Routine& here, double years, const Asset& asset, double final, double life, double k) {
    here.info("Life=", life, ", k=", k);
    if (years >= life) {
        here.info("Time greater than life, result is the final value");
        return final;
    }
    if (iszero(asset.InitialValue) || years <= 0.0) return asset.InitialValue;
    here.info("Calling exp (log...) formula for the declining balance");
    return std::exp(std::log(asset.InitialValue) - k * years);
}

double declining_balance_value(const Routine& here, double years, const Asset& asset, double final) {
    const TraceBlock block = here.branch("Declining Balance Depreciation");
    if (iszero(asset.InitialValue)) return 0.0;
    const double decline = std::log(final / asset.InitialValue);
    if (is_life(here, asset.LifeOrDecRate))
        return declined_value(here, years, asset, final, asset.LifeOrDecRate, -decline / asset.LifeOrDecRate);
    const double k = -std::log(1.0 - asset.LifeOrDecRate);
    return declined_value(here, years, asset, final, decline / -k, k);
}

double multiple_declining_value(const Routine& here, double years, const Asset& asset, double final) {
    const TraceBlock block = here.branch("Double or n-decling balance Depreciation");
    const double n = std::fabs(asset.DepType);
    here.info("Double and n-Declining Balance Depreciation, n=", n);
    const bool life_given = is_life(here, asset.LifeOrDecRate);
    const double life = life_given ? asset.LifeOrDecRate : n / asset.LifeOrDecRate;
    const double rate = life_given ? n / asset.LifeOrDecRate : asset.LifeOrDecRate;
    const double k = rate < 1.0 ? -std::log(1.0 - rate) : infinite; // a rate of 100% leaves nothing
    return declined_value(here, years, asset, final, life, k);
}

/// True if every whole year from a date on measures exactly 1, so that it need not be measured.
bool whole_years_measure_one(const date& start, const Basis& basis) {
    if (basis.cash() || !DayCountCodes::single(basis.DayCount) || start.day() > 27) return false;
    const int code = whole(basis.DayCount);
    const bool splits_february = start.month() == 2 && start.day() > 1; // which is longer in a leap year
    return code == 0 || code == 4 || (code == 5 && !splits_february);
}

double years_digits_value(const Routine& here, const date& TheDate, const date& StartDep, double years,
                          const Asset& asset, double final, const Basis& basis) {
    const TraceBlock block = here.branch("Sum of Years Digits Depreciation");
    const double life = asset.LifeOrDecRate;
    if (life < 1.0)
        here.fail<errlibnonsenseinputs>(
            "LifeOrDecRate",
            "You can't set a rate for SYD Depreciation: it's not mathematically possible.  Set the life instead (from "
            "which the SYD is calculated anyway.  LifeorDeclineRate=",
            life);
    if (!iszero(life - std::round(life)))
        here.fail<errlibnonsenseinputs>("LifeOrDecRate",
                                        "SYD Depreciation only works for integer lifespans, it is mathematically "
                                        "undefined otherwise.  Life=",
                                        life);
    if (years >= life) return final;
    const int last = static_cast<int>(std::ceil(years));
    const bool even_years = whole_years_measure_one(StartDep, basis);
    double written_off = 0.0;
    for (int y = 1; y <= last; ++y) {
        const double annual = 2.0 * (asset.InitialValue - final) * (life - y + 1.0) / ((life + 1.0) * life);
        if (y < last && even_years) {
            written_off += annual;
            continue;
        }
        const timeperiod year(StartDep.plusmonths(12 * (y - 1), true), StartDep.plusmonths(12 * y, true));
        const TraceBlock pass = here.pass(y, "Year ", year, ", annual amount ", annual);
        written_off += ConX(year, {StartDep, TheDate}, annual, basis, y < last);
    }
    here.info("Written off ", written_off);
    return asset.InitialValue - written_off;
}

double value_by_method(const Routine& here, const date& TheDate, const date& StartDep, double years, const Asset& asset,
                       double final, const Basis& basis) {
    if (asset.DepType == straight_line) return straight_line_value(here, years, asset, final);
    if (asset.DepType == declining_balance) return declining_balance_value(here, years, asset, final);
    if (declines_by_multiple(asset.DepType)) return multiple_declining_value(here, years, asset, final);
    if (asset.DepType == sum_of_years_digits)
        return years_digits_value(here, TheDate, StartDep, years, asset, final, basis);
    return 0.0;
}

/// The sum over vintages of the depreciation of each: `factor_at` gives the factor of its values over those given.
template <class Factor>
double sum_vintages(const Routine& here, const timeperiod& Time, const date& AbsFinish, const date& StartDep,
                    const Asset& asset, int Periodicity, const Basis& basis, Factor factor_at) {
    if (StartDep >= Time.to() || StartDep >= AbsFinish) {
        here.info("Start Date outside timeperiod or StartDep exceeds Absolute Finish, returning zero");
        return 0.0;
    }
    double sum = 0.0;
    date start = StartDep;
    for (int n = 1; n <= most_vintages && start < AbsFinish; ++n) {
        if (!basis.cash() && start >= Time.to()) break; // nor can any that follows be written off yet
        const TraceBlock pass = here.pass(n, "Bought on ", start);
        const double factor = factor_at(std::as_const(start));
        sum += Depreciate(Time, start,
                          {asset.LifeOrDecRate, asset.DepType, asset.InitialValue * factor, asset.FinalValue * factor},
                          basis);
        start = repeated(StartDep, n, Periodicity);
    }
    return sum;
}

void check_vintages(Routine& here, int Periodicity, const Basis& basis) {
    here.at_least(Periodicity, 0, "Periodicity");
    basis.check(here);
}

/// The sum over vintages whose values follow an index from a base, StartDep if there is none.
double sum_indexed_vintages(Routine& here, const timeperiod& Time, const date& AbsFinish, const date& StartDep,
                            const Asset& asset, const Forecast& index, const char* base_name, dateorfloat base,
                            int Periodicity, const Basis& basis) {
    check_vintages(here, Periodicity, basis);
    index.check(here, base_name);
    if (base.iszero()) base.setnumber(StartDep.dtn());
    return sum_vintages(here, Time, AbsFinish, StartDep, asset, Periodicity, basis,
                        [&](const date& start) { return IdxFromTo(base, start, index); });
}

} // namespace

double DepLife(int DepType, double LifeOrDecRate) {
    Routine here{"DepLife", Routine::internal};
    here.arguments(QX_NAMED(DepType, LifeOrDecRate));
    if (DepType == straight_line) {
        here.info("DepType=0 (Straight Line)");
        return here.returning(is_life(here, LifeOrDecRate) ? LifeOrDecRate : turned_over(LifeOrDecRate));
    }
    if (declines_by_multiple(DepType)) {
        here.info("DepType=2 or <0 (Double or n-declining balance)");
        return here.returning(is_life(here, LifeOrDecRate) ? LifeOrDecRate : std::fabs(DepType) / LifeOrDecRate);
    }
    if (DepType == sum_of_years_digits) here.info("DepType=3 (Sum of Years Digits)");
    return here.returning(LifeOrDecRate);
}

double DepreciatedValue(const date& TheDate, const date& InitialDate, const date& StartDep, const Asset& asset,
                        const Basis& basis) {
    Routine here{"DepreciatedValue"};
    here.inputs(TheDate, InitialDate, StartDep, asset, basis);
    basis.check(here);
    const double years = diffmonths(StartDep, TheDate, basis.DayCount, basis.Periods) / 12.0;
    const double final = working_final(here, asset);
    if (TheDate < InitialDate) {
        here.info("TheDate<InitialDate, result must be zero.");
        return here.returning(0.0);
    }
    if (TheDate <= StartDep) {
        here.info("TheDate predates start of depreciation, returning original value.");
        return here.returning(asset.InitialValue);
    }
    const double value = value_by_method(here, TheDate, StartDep, years, asset, final, basis);
    if (value < final) {
        here.info("Depreciated Value need to be restrained above FinalValue, it would have been ", value);
        return here.returning(isequal(final, working_final_value) ? 0.0 : final);
    }
    return here.returning(value);
}

double Depreciate(const timeperiod& Time, const date& StartDep, const Asset& asset, const Basis& basis) {
    constexpr const char* old_form =
        "See Change in Behaviour 143, Jan-04 :InitialDate variable removed because it was superfluous to the start of "
        "depreciation.  Any function calls using the old system will flag an error and require adjusting (very sorry "
        "for any inconvenience).";
    Routine here{"Depreciate"};
    here.inputs(Time, StartDep, asset, basis);
    basis.check(here);
    if (asset.LifeOrDecRate >= earliest_date) {
        here.change_note(143, old_form);
        here.fail<errlibnonsenseinputs>("LifeOrDecRate", old_form);
    }
    timeperiod period = Time;
    if (basis.cash()) {
        const double life = DepLife(asset.DepType, asset.LifeOrDecRate);
        const date end = years_later(here, StartDep, life, {basis.DayCount, basis.Periods});
        period = CashTime(Time, basis.Periods, StartDep, end, true, basis.ProjMode);
    }
    const date& from = std::max(period.from(), StartDep);
    const date& to = period.to();
    if (to <= from) return here.returning(0.0);
    const double before = DepreciatedValue(from, StartDep, StartDep, asset, basis.accruals());
    if (iszero(before)) return here.returning(0.0);
    return here.returning(before - DepreciatedValue(to, StartDep, StartDep, asset, basis.accruals()));
}

double DepreciatePer(const timeperiod& Time, const date& AbsFinish, const date& StartDep, const Asset& asset,
                     int Periodicity, const Basis& basis) {
    Routine here{"DepreciatePer"};
    here.inputs(Time, AbsFinish, StartDep, asset, Periodicity, basis);
    check_vintages(here, Periodicity, basis);
    return here.returning(
        sum_vintages(here, Time, AbsFinish, StartDep, asset, Periodicity, basis, [](const date&) { return 1.0; }));
}

double DepreciateGrowPer(const timeperiod& Time, const date& AbsFinish, const date& StartDep, const Asset& asset,
                         const Growth& growth, int Periodicity, const Basis& basis) {
    Routine here{"DepreciateGrowPer"};
    here.inputs(Time, AbsFinish, StartDep, asset, growth, Periodicity, basis);
    check_vintages(here, Periodicity, basis);
    growth.check(here);
    return here.returning(
        sum_vintages(here, Time, AbsFinish, StartDep, asset, Periodicity, basis, [&](const date& start) {
            return GrowFromTo(StartDep, start, 1.0, growth, growth_exponential, 0, {basis.DayCount, basis.Periods});
        }));
}

double DepreciateFcstPer(const timeperiod& Time, const date& AbsFinish, const date& StartDep, const Asset& asset,
                         const Forecast& forecast, int Periodicity, const Basis& basis) {
    Routine here{"DepreciateFcstPer"};
    here.inputs(Time, AbsFinish, StartDep, asset, forecast, Periodicity, basis);
    return here.returning(sum_indexed_vintages(here, Time, AbsFinish, StartDep, asset, forecast, "FcstBase",
                                               dateorfloat(), Periodicity, basis));
}

double DepreciateIdxPer(const timeperiod& Time, const date& AbsFinish, const date& StartDep, const Asset& asset,
                        const Index& index, int Periodicity, const Basis& basis) {
    Routine here{"DepreciateIdxPer"};
    here.inputs(Time, AbsFinish, StartDep, asset, index, Periodicity, basis);
    return here.returning(sum_indexed_vintages(here, Time, AbsFinish, StartDep, asset, index.forecast(), "IdxFcstBase",
                                               index.BaseDateOrIdx, Periodicity, basis));
}

} // namespace qx
