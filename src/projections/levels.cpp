#include "projections/levels.h"

#include "core/routine.h"
#include "projections/constant_rate.h"
#include "projections/stepped_rate.h"

#include <algorithm>

namespace qx {

namespace {

/// The least or the greatest level of the steps that touch a period.
double extreme_level(const timeperiod& Time, const date& FinishLevels, const Range<date>& FromDates,
                     const Range<double>& Levels, bool greatest) {
    Routine here{"FALevelsMM", Routine::internal};
    const date end_of_time = std::max(Time.to(), Time.from().plusdays(1));
    double extreme = 0.0;
    bool found = false;
    for (int n = 1; n <= FromDates.size() && FromDates.get(n) < end_of_time; ++n) {
        const date& end = n < FromDates.size() ? std::min(FromDates.get(n + 1), FinishLevels) : FinishLevels;
        if (end <= Time.from() || end <= FromDates.get(n)) continue;
        const double level = Levels.get(Levels.size() == 1 ? 1 : n);
        extreme = !found ? level : greatest ? std::max(extreme, level) : std::min(extreme, level);
        found = true;
    }
    return here.returning(extreme);
}

} // namespace

double level_at(const date& TheDate, const date& FinishLevels, const Range<date>& FromDates,
                const Range<double>& Levels) {
    if (TheDate >= FinishLevels) return 0.0;
    for (int n = FromDates.size(); n >= 1; --n)
        if (FromDates.get(n) <= TheDate) return Levels.get(Levels.size() == 1 ? 1 : n);
    return 0.0;
}

double FALevels(const timeperiod& Time, const date& FinishLevels, const Range<date>& FromDates,
                const Range<double>& Levels, int LevelSwitchOpt, double DayCount, const AnnualSequence& Periods) {
    Routine here{"FALevels"};
    here.arguments(QX_NAMED(Time, FinishLevels, FromDates, Levels, LevelSwitchOpt, DayCount, Periods));
    here.limit(DayCount, 0, 999, "DayCount");
    if (Time.from() > FinishLevels) {
        here.info("Timeperiod (", Time, ") falls beyond FinishLevel (", FinishLevels,
                  ") date, leading to zero result.");
        return here.returning(0.0);
    }
    const auto at = [&](const date& day) { return level_at(day, FinishLevels, FromDates, Levels); };
    switch (LevelSwitchOpt) {
    case level_average:
        return here.returning(safe_divide(Step(Time, FromSteps{FinishLevels, FromDates}, Levels, {DayCount, Periods, 0.0}),
                                          FStepTime(Time, FromDates, {DayCount, Periods, 0.0})));
    case level_of_ends:
        return here.returning((at(Time.from()) + at(Time.to())) / 2.0);
    case level_at_start:
        return here.returning(at(Time.from()));
    case level_at_finish:
        return here.returning(at(Time.to()));
    case level_least:
    case level_greatest:
        return here.returning(extreme_level(Time, FinishLevels, FromDates, Levels, LevelSwitchOpt == level_greatest));
    default:
        return here.returning(0.0);
    }
}

double FLevels(const date& TheDate, const date& Finish, const Range<date>& FromDates, const Range<double>& Levels) {
    Routine here{"FLevels"};
    here.arguments(QX_NAMED(TheDate, Finish, FromDates, Levels));
    static const AnnualSequence quarters(4);
    const timeperiod day(TheDate, TheDate.plusdays(1));
    return here.returning(FALevels(day, Finish, FromDates, Levels, level_at_start, default_daycount, quarters));
}

} // namespace qx
