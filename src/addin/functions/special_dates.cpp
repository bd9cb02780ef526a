// Worksheet functions of special dates: business days, public holidays, and dates rolled to business days.
#include "addin/declare.h"
#include "calendar/business_days.h"

namespace qx::worksheet {

namespace {

constexpr Category category = Category::SpecialDates;

constexpr Argument Days() { return {"Days", "Days to add; negative goes back. Parts of a day are dropped"}; }
constexpr Argument Months() { return {"Months", "Months to add, whole or decimal; negative goes back"}; }
constexpr Argument Yrs() { return {"Yrs", "Years to add, whole or decimal; negative goes back"}; }
constexpr Argument From() { return TheDate("Date to start from"); }
constexpr Argument
WeekendDays(const char* help = "Weekdays of the weekend, 1 Sunday to 7 Saturday; Sunday and Saturday "
                               "if omitted") {
    return optional("WeekendDays", help);
}
constexpr Argument YearOrDate() { return {"YearOrDate", "The year, or any date in it"}; }

// The arguments of an event that recurs every year.
constexpr Argument MonthInYear() { return optional("MonthInYearOpt", 0, "Month of the event, 1 to 12"); }
constexpr Argument DayInMonth() { return optional("DayInMonthOpt", 0, "Day of the month of the event"); }
constexpr Argument OccurrenceNo() {
    return optional("OccurrenceNo", 0, "Which occurrence of the weekday: 1 the first after, or the last before");
}
constexpr Argument DayinWeek() {
    return optional("DayinWeekOpt", 0, "Weekday of the event, 1 Sunday to 7 Saturday; 0 any");
}
constexpr Argument Relativity() {
    return optional(
        "Relativity", 0,
        "What the event is relative to: 0 nothing, 1 after the month's start, 2 before day 31 of the month, 3 "
        "after Easter, 4 before Easter, 5 after the date given, 6 before the date given");
}
constexpr Argument FirstYear() { return optional("FirstYear", 0, "Year from which RecurringYrs counts"); }
constexpr Argument RecurringYrs() {
    return optional("RecurringYrs", 0, "Years from one event to the next; in other years there is no date");
}
constexpr Argument MoveWeekend() {
    return optional("MoveWeekend", 0, "0 no move; 1 a Saturday or Sunday to Monday; 2 a Saturday to Friday")
        .of(weekend_move_values);
}
constexpr Argument AfterDate() { return optional("AfterDate", "The event is at least a day after this date"); }
constexpr Argument DaysRelative() {
    return optional("DaysRelative", 0, "Days after, or before, what the event is relative to");
}

} // namespace

// --- Business days --------------------------------------------------------------------------------------------

constexpr Function IsBD{
    .name = "IsBD",
    .category = category,
    .calls = core<qx::IsBD>,
    .help = "True if a date is a business day",
    .args = {TheDate(), BusDaySwitch(), AnnHols(), HolDates()},
    .examples = {"IsBD(DATE(2004,12,27), 100) = FALSE", "IsBD(DATE(2004,12,28), 100) = TRUE",
                 "IsBD(DATE(2005,1,1)) = FALSE"},
    .see_also = "NextBD,PrevBD,IsHol,DescribeBD",
};
QX_EXPORT(IsBD, 4);

constexpr Function IsBDX{
    .name = "IsBDX",
    .category = category,
    .calls = core<qx::IsBDX>,
    .help = "True if a date is a business day. Older form of IsBD",
    .args = {TheDate(), BusDaySwitchX(), AnnHols(), HolDates()},
    .examples = {"IsBDX(DATE(2004,12,27), 100.01) = FALSE"},
    .see_also = "IsBD",
};
QX_EXPORT(IsBDX, 4);

constexpr Function NextBD{
    .name = "NextBD",
    .category = category,
    .calls = core<qx::NextBD>,
    .help = "The date if it is a business day, otherwise the next business day",
    .args = {TheDate(), BusDaySwitch(), AnnHols(), HolDates()},
    .examples = {"NextBD(DATE(2005,1,1), 100) = DATE(2005,1,4)", "NextBD(DATE(2005,1,4), 100) = DATE(2005,1,4)",
                 "NextBD(DATE(2005,1,4), 20, , DATE(2005,1,4)) = DATE(2005,1,5)"},
    .see_also = "PrevBD,IsBD",
};
QX_EXPORT(NextBD, 4);

constexpr Function NextBDX{
    .name = "NextBDX",
    .category = category,
    .calls = core<qx::NextBDX>,
    .help = "The date if it is a business day, otherwise the next business day. Older form of NextBD",
    .args = {TheDate(), BusDaySwitchX(), AnnHols(), HolDates()},
    .examples = {"NextBDX(DATE(2005,1,1), 100.01) = DATE(2005,1,4)"},
    .see_also = "NextBD",
};
QX_EXPORT(NextBDX, 4);

constexpr Function PrevBD{
    .name = "PrevBD",
    .category = category,
    .calls = core<qx::PrevBD>,
    .help = "The date if it is a business day, otherwise the business day before",
    .args = {TheDate(), BusDaySwitch(), AnnHols(), HolDates()},
    .examples = {"PrevBD(DATE(2005,1,3), 100) = DATE(2004,12,31)"},
    .see_also = "NextBD,IsBD",
};
QX_EXPORT(PrevBD, 4);

constexpr Function PrevBDX{
    .name = "PrevBDX",
    .category = category,
    .calls = core<qx::PrevBDX>,
    .help = "The date if it is a business day, otherwise the business day before. Older form of PrevBD",
    .args = {TheDate(), BusDaySwitchX(), AnnHols(), HolDates()},
    .examples = {"PrevBDX(DATE(2005,1,3), 100.01) = DATE(2004,12,31)"},
    .see_also = "PrevBD",
};
QX_EXPORT(PrevBDX, 4);

constexpr Argument no_weekend = WeekendDays(
    "Weekdays that are not worked, 1 Sunday to 7 Saturday. If omitted, Sunday and Saturday; but none if there are "
    "no holidays either and BusDaySwitch is 0");

constexpr Function NetWorkDaysX{
    .name = "NetWorkDaysX",
    .category = category,
    .calls = core<qx::NetWorkDaysX>,
    .help = "Working days from one date to another, both included: neither weekend days nor holidays",
    .args = {FromDate(), ToDate(), no_weekend, AnnHols(), HolDates(), BusDaySwitch(0)},
    .examples = {"NetWorkDaysX(DATE(2004,12,20), DATE(2005,1,10), {1,7}) = 16",
                 "NetWorkDaysX(DATE(2004,12,20), DATE(2005,1,10), {1,7}, , , 100) = 14"},
    .see_also = "NetWorkDaysQX,IsBD",
};
QX_EXPORT(NetWorkDaysX, 6);

constexpr Function NetWorkDaysQX{
    .name = "NetWorkDaysQX",
    .category = category,
    .calls = core<qx::NetWorkDaysQX>,
    .help = "Working days from one date to another, both included. Same as NetWorkDaysX",
    .args = {FromDate(), ToDate(), no_weekend, AnnHols(), HolDates(), BusDaySwitch(0)},
    .examples = {"NetWorkDaysQX(DATE(2004,12,20), DATE(2005,1,10), {1,7}) = 16"},
    .see_also = "NetWorkDaysX",
};
QX_EXPORT(NetWorkDaysQX, 6);

constexpr Function IsWE{
    .name = "IsWE",
    .category = category,
    .calls = core<qx::IsWE>,
    .help = "True if a date falls on a weekend",
    .args = {TheDate(), WeekendDays()},
    .examples = {"IsWE(DATE(2005,1,1)) = TRUE", "IsWE(DATE(2005,1,1), {6,1}) = FALSE"},
    .see_also = "IsBD,DayName",
};
QX_EXPORT(IsWE, 2);

// --- Holidays -------------------------------------------------------------------------------------------------

constexpr Function IsHol{
    .name = "IsHol",
    .category = category,
    .calls = core<qx::IsHol>,
    .help = "True if a date is a holiday or a weekend of a family of business days",
    .args = {TheDate(), BusDaySwitch()},
    .examples = {"IsHol(DATE(2000,4,21), 100) = TRUE", "IsHol(DATE(2000,4,20), 100) = FALSE"},
    .see_also = "WhatHol,IsBD",
};
QX_EXPORT(IsHol, 2);

constexpr Function WhatHol{
    .name = "WhatHol",
    .category = category,
    .calls = core<qx::WhatHol>,
    .help = "The names of the holidays on a date, each followed by a comma, and \"Weekend\"; empty on a business day",
    .args = {TheDate(), BusDaySwitch()},
    .examples = {"WhatHol(DATE(2000,4,21), 100) = \"Good Friday (UK National), \"",
                 "WhatHol(DATE(2005,1,8), 100) = \"Weekend \"", "WhatHol(DATE(2000,4,20), 100) = \"\""},
    .see_also = "IsHol,DescribeHol",
};
QX_EXPORT(WhatHol, 2);

constexpr Function Holiday{
    .name = "Holiday",
    .category = category,
    .calls = core<qx::Holiday>,
    .help = "The date of a numbered public holiday in a year",
    .args = {{"HolNum", "Number of the holiday, 1 to 57; DescribeHol names them"}, YearOrDate()},
    .examples = {"Holiday(8, 2000) = DATE(2000,4,21)", "Holiday(24, 2005) = DATE(2005,11,24)",
                 "Holiday(20, 2005) ! #NUM! errlibnonsensicaldate"},
    .see_also = "DescribeHol,WhatHol,CreateDate",
};
QX_EXPORT(Holiday, 2);

constexpr Function DescribeHol{
    .name = "DescribeHol",
    .category = category,
    .calls = core<qx::DescribeHol>,
    .help = "The name of a numbered public holiday; empty for a number without one",
    .args = {{"HolNum", "Number of the holiday, 0 to 100"}},
    .examples = {"DescribeHol(5) = \"Christmas Day (UK National)\"", "DescribeHol(20) = \"\""},
    .see_also = "Holiday",
};
QX_EXPORT(DescribeHol, 1);

constexpr Function WesternEaster{
    .name = "WesternEaster",
    .category = category,
    .calls = core<qx::WesternEaster>,
    .help = "Easter Sunday of a year by the Gregorian calendar",
    .args = {YearOrDate()},
    .examples = {"WesternEaster(2000) = DATE(2000,4,23)", "WesternEaster(2008) = DATE(2008,3,23)"},
    .see_also = "Holiday",
};
QX_EXPORT(WesternEaster, 1);

constexpr Function CreateDate{
    .name = "CreateDate",
    .category = category,
    .calls = core<qx::CreateDate>,
    .help = "The date of an event in a year: a day of a month, or an occurrence of a weekday, or a number of days, "
            "relative to a month's start or end, to Easter or to a date",
    .args = {YearOrDate(), MonthInYear(), DayInMonth(), OccurrenceNo(), DayinWeek(), Relativity(), FirstYear(),
             RecurringYrs(), MoveWeekend(), AfterDate(), DaysRelative()},
    .examples = {"CreateDate(2005, 9, , 1, 2, 1) = DATE(2005,9,5)", "CreateDate(2005, 5, , 1, 2, 2) = DATE(2005,5,30)",
                 "CreateDate(2005, 12, 25, , , , , , 1) = DATE(2005,12,26)",
                 "CreateDate(2003, 2, 29, , , , 2000, 4) = empty",
                 "CreateDate(2005, , , , , 3, , , , , 39) = DATE(2005,5,5)"},
    .see_also = "Holiday,WesternEaster,DateYMD",
};
QX_EXPORT(CreateDate, 11);

constexpr Function CalcDateX{
    .name = "CalcDateX",
    .category = category,
    .calls = core<qx::CalcDateX>,
    .help = "The date of an event in a year. Older form of CreateDate, with the same result",
    .args = {YearOrDate(), MonthInYear(), DayInMonth(), OccurrenceNo(), DayinWeek(), Relativity(), FirstYear(),
             RecurringYrs(), MoveWeekend(), AfterDate(), DaysRelative()},
    .examples = {"CalcDateX(2005, 9, , 1, 2, 1) = DATE(2005,9,5)"},
    .see_also = "CreateDate",
};
QX_EXPORT(CalcDateX, 11);

constexpr Function CalcDate{
    .name = "CalcDate",
    .category = category,
    .calls = core<qx::CalcDate>,
    .help = "The date of an event on a fixed day of a year. Older form of CreateDate",
    .args = {YearOrDate(),
             {"MonthInYear", "Month of the event, 1 to 12"},
             {"DayInMonth", "Day of the month of the event"},
             FirstYear(),
             RecurringYrs(),
             MoveWeekend(),
             AfterDate()},
    .examples = {"CalcDate(2005, 12, 25, , , 1) = DATE(2005,12,26)"},
    .see_also = "CreateDate",
};
QX_EXPORT(CalcDate, 7);

// --- Dates rolled to business days ----------------------------------------------------------------------------

constexpr Function DpDBD{
    .name = "DpDBD",
    .category = category,
    .calls = core<qx::DpDBD>,
    .help = "Date plus a number of days, rolled on to a business day",
    .args = {From(), Days(), BusDaySwitch(), AnnHols(), HolDates(), DayCount(), Periods(),
             optional("BDOption", 0, "0: days of the day count, then the roll. 1: Days are business days")},
    .examples = {"DpDBD(DATE(2004,12,24), 1, 100) = DATE(2004,12,28)",
                 "DpDBD(DATE(2004,12,24), 2, 100, , , , , 1) = DATE(2004,12,29)"},
    .see_also = "DpD,DpMBD,DpYBD,NextBD",
};
QX_EXPORT(DpDBD, 8);

constexpr Function DpDBDX{
    .name = "DpDBDX",
    .category = category,
    .calls = core<qx::DpDBDX>,
    .help = "Date plus days, rolled on to a business day. Older form of DpDBD",
    .args = {From(), Days(), BusDaySwitchX(), AnnHols(), HolDates(), DayCount(), Periods()},
    .examples = {"DpDBDX(DATE(2004,12,24), 1, 100) = DATE(2004,12,28)"},
    .see_also = "DpDBD",
};
QX_EXPORT(DpDBDX, 7);

constexpr Function DpMBD{
    .name = "DpMBD",
    .category = category,
    .calls = core<qx::DpMBD>,
    .help = "Date plus a number of months, rolled on to a business day",
    .args = {From(), Months(), BusDaySwitch(), AnnHols(), HolDates(), DayCount(), Periods()},
    .examples = {"DpMBD(DATE(2004,12,1), 1, 100) = DATE(2005,1,4)"},
    .see_also = "DpM,DpDBD,DpYBD,NextBD",
};
QX_EXPORT(DpMBD, 7);

constexpr Function DpMBDX{
    .name = "DpMBDX",
    .category = category,
    .calls = core<qx::DpMBDX>,
    .help = "Date plus months, rolled on to a business day. Older form of DpMBD",
    .args = {From(), Months(), BusDaySwitchX(), AnnHols(), HolDates(), DayCount(), Periods()},
    .examples = {"DpMBDX(DATE(2004,12,1), 1, 100) = DATE(2005,1,4)"},
    .see_also = "DpMBD",
};
QX_EXPORT(DpMBDX, 7);

constexpr Function DpYBD{
    .name = "DpYBD",
    .category = category,
    .calls = core<qx::DpYBD>,
    .help = "Date plus a number of years, rolled on to a business day",
    .args = {From(), Yrs(), BusDaySwitch(), AnnHols(), HolDates(), DayCount(), Periods()},
    .examples = {"DpYBD(DATE(2004,1,1), 1, 100) = DATE(2005,1,4)"},
    .see_also = "DpY,DpDBD,DpMBD,NextBD",
};
QX_EXPORT(DpYBD, 7);

constexpr Function DpYBDX{
    .name = "DpYBDX",
    .category = category,
    .calls = core<qx::DpYBDX>,
    .help = "Date plus years, rolled on to a business day. Older form of DpYBD",
    .args = {From(), Yrs(), BusDaySwitchX(), AnnHols(), HolDates(), DayCount(), Periods()},
    .examples = {"DpYBDX(DATE(2004,1,1), 1, 100) = DATE(2005,1,4)"},
    .see_also = "DpYBD",
};
QX_EXPORT(DpYBDX, 7);

constexpr Function NextDateSeqBD{
    .name = "NextDateSeqBD",
    .category = category,
    .calls = core<qx::NextDateSeqBD>,
    .help = "The next date of an annual sequence or a list after a date, rolled on to a business day",
    .args = {From(), AnnDateSeq(), SpecificDates(), BusDaySwitch(), AnnHols(), HolDates()},
    .examples = {"NextDateSeqBD(DATE(2004,12,1), 4, , 100) = DATE(2005,1,4)"},
    .see_also = "NextDateSeq,PrevDateSeqBD",
};
QX_EXPORT(NextDateSeqBD, 6);

constexpr Function NextDateSeqBDX{
    .name = "NextDateSeqBDX",
    .category = category,
    .calls = core<qx::NextDateSeqBDX>,
    .help = "The next date of a sequence or a list, rolled on to a business day. Older form of NextDateSeqBD",
    .args = {From(), AnnDateSeq(), SpecificDates(), BusDaySwitchX(), AnnHols(), HolDates()},
    .examples = {"NextDateSeqBDX(DATE(2004,12,1), 4, , 100) = DATE(2005,1,4)"},
    .see_also = "NextDateSeqBD",
};
QX_EXPORT(NextDateSeqBDX, 6);

constexpr Function PrevDateSeqBD{
    .name = "PrevDateSeqBD",
    .category = category,
    .calls = core<qx::PrevDateSeqBD>,
    .help = "The last date of an annual sequence or a list before a date, rolled on to a business day",
    .args = {From(), AnnDateSeq(), SpecificDates(), BusDaySwitch(), AnnHols(), HolDates()},
    .examples = {"PrevDateSeqBD(DATE(2005,1,10), 4, , 100) = DATE(2005,1,4)"},
    .see_also = "PrevDateSeq,NextDateSeqBD",
};
QX_EXPORT(PrevDateSeqBD, 6);

constexpr Function PrevDateSeqBDX{
    .name = "PrevDateSeqBDX",
    .category = category,
    .calls = core<qx::PrevDateSeqBDX>,
    .help = "The last date of a sequence or a list, rolled on to a business day. Older form of PrevDateSeqBD",
    .args = {From(), AnnDateSeq(), SpecificDates(), BusDaySwitchX(), AnnHols(), HolDates()},
    .examples = {"PrevDateSeqBDX(DATE(2005,1,10), 4, , 100) = DATE(2005,1,4)"},
    .see_also = "PrevDateSeqBD",
};
QX_EXPORT(PrevDateSeqBDX, 6);

constexpr Function NextDateListBD{
    .name = "NextDateListBD",
    .category = category,
    .calls = core<qx::NextDateListBD>,
    .help = "The first date of a list after a date, rolled on to a business day; empty if there is none",
    .args = {From(), SpecificDates(), BusDaySwitch()},
    .examples = {"NextDateListBD(DATE(2004,12,1), DATE(2005,1,1), 100) = DATE(2005,1,4)"},
    .see_also = "NextDateList,PrevDateListBD",
};
QX_EXPORT(NextDateListBD, 3);

constexpr Function PrevDateListBD{
    .name = "PrevDateListBD",
    .category = category,
    .calls = core<qx::PrevDateListBD>,
    .help = "The last date of a list before a date, rolled on to a business day; empty if there is none",
    .args = {From(), SpecificDates(), BusDaySwitch()},
    .examples = {"PrevDateListBD(DATE(2005,1,10), DATE(2005,1,1), 100) = DATE(2005,1,4)"},
    .see_also = "PrevDateList,NextDateListBD",
};
QX_EXPORT(PrevDateListBD, 3);

} // namespace qx::worksheet
