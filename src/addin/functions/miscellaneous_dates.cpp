// Miscellaneous worksheet functions of the calendar: rounding and limiting dates, and its codes in words.
#include "addin/declare.h"
#include "calendar/business_days.h"
#include "calendar/date_functions.h"

namespace qx::worksheet {

namespace {

constexpr Category category = Category::Miscellaneous;

} // namespace

constexpr Function DateRound{
    .name = "DateRound",
    .category = category,
    .calls = core<qx::DateRound>,
    .help = "A date rounded to a date of an annual sequence, such as a payment or accrual date",
    .args = {TheDate(), Periods(),
             optional("Round", 0, "0 to the nearest (the earlier at a tie), 1 down, 2 up, 3 or more not at all")
                 .of(date_rounding_values)},
    .examples = {"DateRound(DATE(2005,2,10), 4) = DATE(2005,1,1)", "DateRound(DATE(2005,2,10), 4, 2) = DATE(2005,4,1)",
                 "DateRound(DATE(2005,4,1), 4, 2) = DATE(2005,4,1)"},
    .see_also = "DateFloor,DateCeiling,RoundMD",
};
QX_EXPORT(DateRound, 3);

constexpr Function DateCeiling{
    .name = "DateCeiling",
    .category = category,
    .calls = core<qx::DateCeiling>,
    .help = "The date of an annual sequence on or after a date",
    .args = {TheDate(), Periods()},
    .examples = {"DateCeiling(DATE(2005,2,10), 13) = DATE(2005,3,25)"},
    .see_also = "DateFloor,DateRound",
};
QX_EXPORT(DateCeiling, 2);

constexpr Function DateFloor{
    .name = "DateFloor",
    .category = category,
    .calls = core<qx::DateFloor>,
    .help = "The date of an annual sequence on or before a date",
    .args = {TheDate(), Periods()},
    .examples = {"DateFloor(DATE(2005,2,10), 13) = DATE(2004,12,25)"},
    .see_also = "DateCeiling,DateRound",
};
QX_EXPORT(DateFloor, 2);

constexpr Function RoundDateSeq{
    .name = "RoundDateSeq",
    .category = category,
    .calls = core<qx::RoundDateSeq>,
    .help = "A date rounded to a date of an annual sequence",
    .args = {TheDate(), AnnDateSeq(), RoundMethod()},
    .examples = {"RoundDateSeq(DATE(2005,3,10), 13) = DATE(2005,3,25)",
                 "RoundDateSeq(DATE(2005,3,10), 13, 1) = DATE(2004,12,25)"},
    .see_also = "DateRound,RoundMD",
};
QX_EXPORT(RoundDateSeq, 3);

constexpr Function RoundMD{
    .name = "RoundMD",
    .category = category,
    .calls = core<qx::RoundMD>,
    .help = "A date rounded to a day of the year, such as a financial year's end",
    .args = {TheDate(), {"Mnth", "Month, 1 to 12"}, {"Day", "Day of the month, 1 to 31"}, RoundMethod()},
    .examples = {"RoundMD(DATE(2005,8,1), 3, 31) = DATE(2005,3,31)",
                 "RoundMD(DATE(2005,8,1), 3, 31, 2) = DATE(2006,3,31)"},
    .see_also = "RoundMonthDay,RoundWeekDay",
};
QX_EXPORT(RoundMD, 4);

constexpr Function RoundMonthDay{
    .name = "RoundMonthDay",
    .category = category,
    .calls = core<qx::RoundMonthDay>,
    .help = "A date rounded to a day of the month; a month without that day gives its last",
    .args = {TheDate(), {"DayInMonth", "Day of the month, 1 to 31"}, RoundMethod()},
    .examples = {"RoundMonthDay(DATE(2005,2,10), 31) = DATE(2005,1,31)",
                 "RoundMonthDay(DATE(2005,2,10), 31, 2) = DATE(2005,2,28)"},
    .see_also = "RoundWeekDay,RoundMD",
};
QX_EXPORT(RoundMonthDay, 3);

constexpr Function RoundWeekDay{
    .name = "RoundWeekDay",
    .category = category,
    .calls = core<qx::RoundWeekDay>,
    .help = "A date rounded to a day of the week; the nearest is at most 4 days on, otherwise back",
    .args = {TheDate(), {"DayInWeek", "Day of the week: 1 Sunday to 7 Saturday"}, RoundMethod()},
    .examples = {"RoundWeekDay(DATE(2005,1,1), 2) = DATE(2005,1,3)",
                 "RoundWeekDay(DATE(2005,1,1), 2, 1) = DATE(2004,12,27)"},
    .see_also = "RoundMonthDay,RoundMD",
};
QX_EXPORT(RoundWeekDay, 3);

constexpr Function CollarDate{
    .name = "CollarDate",
    .category = category,
    .calls = core<qx::CollarDate>,
    .help = "A date kept between an earliest and a latest one",
    .args = {TheDate(),
             {"MinDate", "Earliest date; 0 or empty for none"},
             {"MaxDate", "Latest date; 0 or empty for none"}},
    .examples = {"CollarDate(38000, 38100, 38200) = 38100", "CollarDate(38300, 38100, 38200) = 38200",
                 "CollarDate(38300, 38100, 0) = 38300"},
    .see_also = "Collar,InBetween",
};
QX_EXPORT(CollarDate, 3);

constexpr Function Collar{
    .name = "Collar",
    .category = category,
    .calls = core<qx::Collar>,
    .help = "An amount kept between a minimum and a maximum",
    .args = {{"Amt", "The amount"},
             {"Minimum", "Least amount; 0 for none"},
             {"Maximum", "Greatest amount; 0 for none"}},
    .examples = {"Collar(5, 10, 20) = 10", "Collar(25, 10, 20) = 20", "Collar(25, 10, 0) = 25"},
    .see_also = "CollarDate,InBetween",
};
QX_EXPORT(Collar, 3);

constexpr Function InBetween{
    .name = "InBetween",
    .category = category,
    .calls = core<qx::InBetween>,
    .help = "True if a date is on or after a start and before a finish",
    .args = {TheDate(), {"StartDate", "Start, included"}, {"FinishDate", "Finish, not included"}},
    .examples = {"InBetween(38000, 38000, 38100) = TRUE", "InBetween(38100, 38000, 38100) = FALSE"},
    .see_also = "CollarDate,Occurs",
};
QX_EXPORT(InBetween, 3);

constexpr Function DescribeBD{
    .name = "DescribeBD",
    .category = category,
    .calls = core<qx::DescribeBD>,
    .help = "The business days of a switch in words, with the further holidays",
    .args = {Argument{"BusDaySwitch", "Switch of the business days, 0 to 1000"}.of(business_day_values), AnnHols(),
             HolDates()},
    .examples = {"DescribeBD(20) = \"Plain Business Days: Weekends only excluded\"",
                 "DescribeBD(101) = \"UK Business Days (English and Wales)\""},
    .see_also = "IsBD,DescribeHol",
};
QX_EXPORT(DescribeBD, 3);

constexpr Function DescribeCashBasis{
    .name = "DescribeCashBasis",
    .category = category,
    .calls = core<qx::DescribeCashBasis>,
    .help = "A ProjMode in words. For workbooks that still use it",
    .args = {Argument{"ProjMode", "Accruals=0, Cash=1.  Has other settings."}.of(projection_mode_values)},
    .examples = {"DescribeCashBasis(1) = \"Cash basis (ProjMode type 1)\""},
    .see_also = "DescribePeriods,CashStart",
};
QX_EXPORT(DescribeCashBasis, 1);

constexpr Function DescribeDayCount{
    .name = "DescribeDayCount",
    .category = category,
    .calls = core<qx::DescribeDayCount>,
    .help = "A day count convention in words",
    .args = {Argument{"DayCount", "Day count convention, 0 to 999, single or composite"}.of(day_count_values)},
    .examples = {"DescribeDayCount(4) = \"30/360 (European)\""},
    .see_also = "DiffD,DiffM",
};
QX_EXPORT(DescribeDayCount, 1);

constexpr Function DescribePeriods{
    .name = "DescribePeriods",
    .category = category,
    .calls = core<qx::DescribePeriods>,
    .help = "An annual sequence in words",
    .args = {Periods()},
    .examples = {"DescribePeriods(2) = \" periods commencing biannually (1Jan,1Jul) \"",
                 "DescribePeriods({3.25;9.29}) = \"2 periods commencing 25Mar,29Sep\""},
    .see_also = "AnnSeq,NumPers",
};
QX_EXPORT(DescribePeriods, 1);

constexpr Function DescribePmtsPerYear{
    .name = "DescribePmtsPerYear",
    .category = category,
    .calls = core<qx::DescribePmtsPerYear>,
    .help = "A number of payments per year in words",
    .args = {{"PmtsPerYear", "Payments per year: positive in advance, negative in arrears, 0 annually in arrears"}},
    .examples = {"DescribePmtsPerYear(-4) = \"quarterly in arrear\"",
                 "DescribePmtsPerYear(52) = \"52 payments a year in advance\""},
    .see_also = "DescribePeriods",
};
QX_EXPORT(DescribePmtsPerYear, 1);

} // namespace qx::worksheet
