// Worksheet functions of dates under the names of older workbooks.
#include "addin/declare.h"
#include "calendar/date_functions.h"

namespace qx::worksheet {

namespace {

constexpr Category category = Category::Compatibility;

} // namespace

constexpr Function DatePlusYears{
    .name = "DatePlusYears",
    .category = category,
    .calls = core<qx::DatePlusYears>,
    .help = "Date plus years. New workbooks use DpY",
    .args = {TheDate("Date to start from"), {"Yrs", "Years to add, whole or decimal; negative goes back"}},
    .examples = {"DatePlusYears(DATE(2004,2,29), 1) = DATE(2005,2,28)"},
    .see_also = "DpY",
};
QX_EXPORT(DatePlusYears, 2);

constexpr Function DecYear{
    .name = "DecYear",
    .category = category,
    .calls = core<qx::DecYear>,
    .help = "A date as a decimal year. New workbooks use DYear",
    .args = {TheDate()},
    .examples = {"DecYear(DATE(2005,7,1)) = 2005.5"},
    .see_also = "DYear",
};
QX_EXPORT(DecYear, 1);

constexpr Function DiffYears{
    .name = "DiffYears",
    .category = category,
    .calls = core<qx::DiffYears>,
    .help = "Decimal years between two dates. New workbooks use DiffY",
    .args = {Date1(), Date2()},
    .examples = {"DiffYears(DATE(2005,1,1), DATE(2007,7,1)) = 2.5"},
    .see_also = "DiffY",
};
QX_EXPORT(DiffYears, 2);

constexpr Function Happens{
    .name = "Happens",
    .category = category,
    .calls = core<qx::Happens>,
    .help = "True if a date falls in a time period. New workbooks use Occurs",
    .args = {Time(), Base(), {"EventDate", "Date of the event"}},
    .examples = {"Happens(2005, 12, DATE(2005,6,24)) = TRUE", "Happens(2005, 12, 2006) = FALSE"},
    .see_also = "Occurs",
};
QX_EXPORT(Happens, 3);

constexpr Function IncDate{
    .name = "IncDate",
    .category = category,
    .calls = core<qx::IncDate>,
    .help = "Date plus whole months; a month's end stays one. New workbooks use DpM",
    .args = {TheDate("Date to start from"), {"Months", "Months to add, whole; negative goes back"}},
    .examples = {"IncDate(DATE(2005,2,28), 1) = DATE(2005,3,31)"},
    .see_also = "DpM,EDateQX",
};
QX_EXPORT(IncDate, 2);

constexpr Function LotusDate{
    .name = "LotusDate",
    .category = category,
    .calls = core<qx::LotusDate>,
    .help = "The date of a year, month and day, years below 200 counting from 1900. New workbooks use DateYMD",
    .args = {{"Yr", "Year: 0 to 199 from 1900 on, otherwise in full"},
             {"Mnth", "Month, 1 to 12"},
             {"Day", "Day of the month, 1 to 31"}},
    .examples = {"LotusDate(105, 7, 1) = DATE(2005,7,1)", "LotusDate(2005, 7, 1) = DATE(2005,7,1)"},
    .see_also = "DateYMD",
};
QX_EXPORT(LotusDate, 3);

} // namespace qx::worksheet
