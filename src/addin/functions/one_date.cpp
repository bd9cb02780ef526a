// Worksheet functions of one date.
#include "calendar/one_date.h"
#include "addin/declare.h"

namespace qx::worksheet {

namespace {

constexpr Category category = Category::DateAndTime;

} // namespace

constexpr Function DateNum{
    .name = "DateNum",
    .category = category,
    .calls = core<qx::DateNum>,
    .help = "The date number of a date or of a (decimal) year",
    .args = {TheDate()},
    .examples = {"DateNum(2005) = 38353", "DateNum(38000) = 38000"},
    .see_also = "DateYMD,DYear",
};
QX_EXPORT(DateNum, 1);

constexpr Function DateSeqNum{
    .name = "DateSeqNum",
    .category = category,
    .calls = core<qx::DateSeqNum>,
    .help = "The mm.dd figure of a date, as an annual sequence writes it: 3.25 for 25 March",
    .args = {TheDate()},
    .examples = {"DateSeqNum(DATE(2004,3,25)) ~ 3.25 1e-12"},
    .see_also = "AnnSeq",
};
QX_EXPORT(DateSeqNum, 1);

constexpr Function DateYMD{
    .name = "DateYMD",
    .category = category,
    .calls = core<qx::DateYMD>,
    .help = "The date of a year, a month and a day",
    .args = {{"Yr", "Year, 1000 to 3000"}, {"Mnth", "Month, 1 to 12"}, {"Day", "Day of the month, 1 to 31"}},
    .examples = {"DateYMD(2004,2,29) = 38046", "DateYMD(2005,2,29) ! #NUM!"},
    .see_also = "DateNum,CreateDate",
};
QX_EXPORT(DateYMD, 3);

constexpr Function DayName{
    .name = "DayName",
    .category = category,
    .calls = core<qx::DayName>,
    .help = "The name of a date's day of the week",
    .args = {TheDate()},
    .examples = {"DayName(38000) = \"Wednesday\""},
    .see_also = "MonthName",
};
QX_EXPORT(DayName, 1);

constexpr Function DaysInMonth{
    .name = "DaysInMonth",
    .category = category,
    .calls = core<qx::DaysInMonth>,
    .help = "The number of days in a date's month",
    .args = {TheDate()},
    .examples = {"DaysInMonth(DATE(2004,2,1)) = 29"},
    .see_also = "IsLeap,MonthEnd",
};
QX_EXPORT(DaysInMonth, 1);

constexpr Function DMonth{
    .name = "DMonth",
    .category = category,
    .calls = core<qx::DMonth>,
    .help = "A date as a decimal count of months: 12 for each year, the day as a part of its month",
    .args = {TheDate()},
    .examples = {"DMonth(DATE(2005,7,1)) = 24066"},
    .see_also = "DYear",
};
QX_EXPORT(DMonth, 1);

constexpr Function DYear{
    .name = "DYear",
    .category = category,
    .calls = core<qx::DYear>,
    .help = "A date as a decimal year, each month a twelfth: 2005.5 is 1 July 2005",
    .args = {TheDate()},
    .examples = {"DYear(DATE(2005,7,1)) = 2005.5"},
    .see_also = "DMonth,DateNum",
};
QX_EXPORT(DYear, 1);

constexpr Function IsLeap{
    .name = "IsLeap",
    .category = category,
    .calls = core<qx::IsLeap>,
    .help = "True if a date's year has a 29 February",
    .args = {TheDate()},
    .examples = {"IsLeap(2004) = TRUE", "IsLeap(2100) = FALSE"},
    .see_also = "DaysInMonth",
};
QX_EXPORT(IsLeap, 1);

constexpr Function MonthEnd{
    .name = "MonthEnd",
    .category = category,
    .calls = core<qx::MonthEnd>,
    .help = "The last day of a date's month",
    .args = {TheDate()},
    .examples = {"MonthEnd(38000) = 38017"},
    .see_also = "MonthStart,DaysInMonth",
};
QX_EXPORT(MonthEnd, 1);

constexpr Function MonthName{
    .name = "MonthName",
    .category = category,
    .calls = core<qx::MonthName>,
    .help = "The short name of a date's month",
    .args = {TheDate()},
    .examples = {"MonthName(38000) = \"Jan\""},
    .see_also = "DayName",
};
QX_EXPORT(MonthName, 1);

constexpr Function MonthStart{
    .name = "MonthStart",
    .category = category,
    .calls = core<qx::MonthStart>,
    .help = "The first day of a date's month",
    .args = {TheDate()},
    .examples = {"MonthStart(38000) = 37987"},
    .see_also = "MonthEnd",
};
QX_EXPORT(MonthStart, 1);

} // namespace qx::worksheet
