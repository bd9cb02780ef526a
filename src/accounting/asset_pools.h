// Pools of assets under construction: what is spent, with interest on it, is work in progress until it goes into
// service; from then on each lot is depreciated by itself.
//
// Interest is simple at dated rates, and joins the capital at each date of PrdsDisc. The two methods differ in what
// goes into service on an in-service date:
//
//     DepPoolWIP      what was spent since the one before, that date not counted, up to this one, with interest
//     DepPoolRatio    a portion of the whole spend: all portions together use up all of it, with interest
//
// At every date, before what happens on it:
//
//     work in progress = additions to date + interest capitalised - gone into service
//
// All throw errlibmin and errlibmax for a DepSwitch outside 0 to 10, a DayCount or DayCountDisc outside 0 to 999, and
// as DepreciatedValue and SimpleToDFX do.
#pragma once

#include "accounting/depreciation.h"
#include "calendar/time_period.h"
#include "projections/terms.h"

namespace qx {

inline constexpr Limits dep_switch_limits{0, 10};

/// Which figure of a pool is returned. "To date" is zero again from the day on which the last lot is written off.
enum PoolFigure : int {
    pool_depreciation = 0,         ///< depreciation in the period
    pool_value_at_start = 1,       ///< depreciated value at its start
    pool_value_at_finish = 2,      ///< on the day before its end
    pool_wip_at_start = 3,         ///< work in progress at its start
    pool_wip_at_finish = 4,        ///< and at its end
    pool_in_service_to_start = 5,  ///< gone into service up to its start
    pool_in_service_to_finish = 6, ///< and up to its end
    pool_in_service = 7,           ///< going into service in it
    pool_interest_to_start = 8,    ///< interest capitalised up to its start
    pool_interest_to_finish = 9,   ///< and up to its end
    pool_interest = 10,            ///< interest capitalised in it
};

/// What is spent on a pool, and the rates of the interest on it.
struct PoolCosts {
    using takes = Takes<Range<date>, Range<double>, Range<date>, Range<double>>;
    View<date> FromDatesInt;
    View<double> IntSimple;
    View<date> AdditionDates;
    View<double> Additions;
};

/// How each lot is written off, and which figure is returned. The final value is that of each lot.
struct PoolTerms {
    using takes = Takes<double, int, double, int>;
    double LifeOrDecRate;
    int DepType;
    double FinalValue;
    int DepSwitch;
};

/// By portions if there are any that do not sum to zero, otherwise by work in progress.
double DepPool(const timeperiod& Time, const PoolCosts& costs, View<date> ISDates, View<double> ISPortions,
               const PoolTerms& terms, const Measure& measure, const Measure& interest);
/// By work in progress. What is spent after the last in-service date stays in progress.
double DepPoolWIP(const timeperiod& Time, const PoolCosts& costs, View<date> ISDates, const PoolTerms& terms,
                  const Measure& measure, const Measure& interest);
/// By portions, of which one without a date does not count and one that is missing is 0. Throws errlibnovalidanswer
/// without an in-service date or an addition, and for an addition after the last in-service date.
double DepPoolRatio(const timeperiod& Time, const PoolCosts& costs, View<date> ISDates, View<double> ISPortions,
                    const PoolTerms& terms, const Measure& measure, const Measure& interest);

} // namespace qx
