#include "calendar/one_date.h"

#include "core/routine.h"

namespace qx {

int DaysInMonth(const date& TheDate) {
    Routine here{"DaysInMonth"};
    here.inputs(TheDate);
    return here.returning(TheDate.daysinmonth());
}

date MonthStart(const date& TheDate) {
    Routine here{"MonthStart"};
    here.inputs(TheDate);
    return here.returning(TheDate.monthstart());
}

date MonthEnd(const date& TheDate) {
    Routine here{"MonthEnd"};
    here.inputs(TheDate);
    return here.returning(TheDate.monthend());
}

bool IsLeap(const date& TheDate) {
    Routine here{"IsLeap"};
    here.inputs(TheDate);
    return here.returning(TheDate.leap());
}

double DYear(const date& TheDate) {
    Routine here{"DYear"};
    here.inputs(TheDate);
    return here.returning(TheDate.decimal_year());
}

double DMonth(const date& TheDate) {
    Routine here{"DMonth"};
    here.inputs(TheDate);
    return here.returning(TheDate.months());
}

date DateNum(const date& TheDate) {
    Routine here{"DateNum"};
    here.inputs(TheDate);
    here.change_note(74, "See Change in Behaviour 74, Oct-03 :Obsolete - unnecessary");
    return here.returning(date(TheDate));
}

std::string DayName(const date& TheDate) {
    Routine here{"DayName"};
    here.inputs(TheDate);
    return here.returning(std::string(TheDate.dayname()));
}

std::string MonthName(const date& TheDate) {
    Routine here{"MonthName"};
    here.inputs(TheDate);
    return here.returning(std::string(TheDate.monthname()));
}

double DateSeqNum(const date& TheDate) {
    Routine here{"DateSeqNum"};
    here.inputs(TheDate);
    const double figure = TheDate.month() + TheDate.day() / 100.0;
    return here.returning(whole(figure * 100.0 + 0.5) / 100.0);
}

date DateYMD(int Yr, int Mnth, int Day) {
    Routine here{"DateYMD"};
    here.inputs(Yr, Mnth, Day);
    here.limit(Day, 1, 31, "Day");
    here.limit(Mnth, 1, 12, "Mnth");
    here.limit(Yr, 1000, 3000, "Yr");
    if (Day > date::days_in_month(Mnth, date::is_leap(Yr)))
        here.fail<errlibconstructorerror>("Day", "There is no day ", Day, " in ", month_name(Mnth), " ", Yr);
    return here.returning(date(Yr, Mnth, Day, here.context()));
}

} // namespace qx
