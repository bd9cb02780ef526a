#include "calendar/seasons.h"

#include "calendar/date_arithmetic.h"
#include "core/routine.h"

#include <algorithm>

namespace qx {

namespace {

constexpr int most_seasons = 366; ///< one for each day

/// The amount by seasons, of which season_end gives the end of the i-th that began at a date.
template <class SeasonEnd>
double by_seasons(Routine& here, const char* label, const timeperiod& period, const date& Start, const date& Finish,
                  double Rate, View<double> SeasonFactors, double DayCount, const AnnualSequence& Periods,
                  bool ComponentPart, SeasonEnd season_end) {
    const auto years = [&](const date& from, const date& to) {
        return period.lenyrs(from, to, DayCount, Periods, false, ComponentPart);
    };
    if (SeasonFactors.size() > most_seasons)
        here.fail<errlibmax>("SeasonFactors", "More than ", most_seasons, " seasons in a year");
    if (SeasonFactors.size() < 2) return here.returning(Rate * years(Start, Finish));
    if (iszero(Rate) || Start > Finish || period.from() > period.to()) return here.returning(0.0);

    const date start_year = Start.prevanniversary(1, 1, false), first_year = Start.nextanniversary(1, 1, false);
    const date finish_year = std::max(Finish.prevanniversary(1, 1, false), first_year);
    double year_weight = 0.0, start_stub = 0.0, end_stub = 0.0;
    date in_start_year = start_year, in_finish_year = finish_year;
    for (int i = 1; i <= SeasonFactors.size(); ++i) {
        const double factor = SeasonFactors.get(i);
        const auto weighed = [&](const date& from, const date& to) {
            return factor * years(std::max(from, Start), std::min(to, Finish));
        };
        const date end = season_end(start_year, in_start_year, i);
        const date finish_end = season_end(finish_year, in_finish_year, i);
        year_weight += factor * diffmonths(in_start_year, end, DayCount, Periods) / 12.0;
        start_stub += weighed(in_start_year, end);
        end_stub += weighed(in_finish_year, finish_end);
        in_start_year = end;
        in_finish_year = finish_end;
    }
    const double core = years(first_year, finish_year);
    return here.returning(label, (safe_divide(start_stub + end_stub, year_weight) + core) * Rate);
}

} // namespace

double seasonal_amount(const timeperiod& period, const date& Start, const date& Finish, double Rate,
                       View<double> SeasonFactors, const AnnualSequence& SeasonSeq, double DayCount,
                       const AnnualSequence& Periods, bool ComponentPart) {
    Routine here{"Seasonal Average (Specific Date Sequence)", Routine::internal};
    if (SeasonSeq.size() == 0) return here.returning(0.0);
    const auto [month, day] = AnnualSequence::month_day(SeasonSeq.get(1));
    if (month != 1 || day != 1)
        here.fail<errlibseas>("SeasonSeq", "First entry in seasonal date sequence must be 1.01 (seasonal factors must "
                                           "start from 1st Jan)");
    for (int i = 2; i <= SeasonSeq.size() && SeasonFactors.size() >= 2; ++i)
        if (!(SeasonSeq.get(i) > SeasonSeq.get(i - 1)))
            here.fail<errlibseas>("SeasonSeq", "A seasonal annual date sequence must be ascending, this one isn't");
    return by_seasons(here, "Seasonal Average (Specific Date Sequence) =", period, Start, Finish, Rate, SeasonFactors,
                      DayCount, Periods, ComponentPart,
                      [&](const date&, const date& from, int) { return SeasonSeq.nextdate(from, false); });
}

double even_seasonal_amount(const timeperiod& period, const date& Start, const date& Finish, double Rate,
                            View<double> SeasonFactors, double DayCount, const AnnualSequence& Periods,
                            bool ComponentPart) {
    Routine here{"Seasonal Average (Even Seasonalities)", Routine::internal};
    return by_seasons(here, "Seasonal Average (Even Seasonalities) =", period, Start, Finish, Rate, SeasonFactors,
                      DayCount, Periods, ComponentPart, [&](const date& new_year, const date&, int i) {
                          return new_year.plusmonths(12.0 * i / SeasonFactors.size());
                      });
}

} // namespace qx
