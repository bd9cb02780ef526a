// Worksheet functions of dates and time: differences, dates moved by a length, periods, sequences and weeks.
#include "addin/declare.h"
#include "calendar/date_functions.h"
#include "numerics/date_plus_periods.h"

namespace qx::worksheet {

namespace {

constexpr Category category = Category::DateAndTime;

constexpr Argument Days() { return {"Days", "Days to add; negative goes back. Parts of a day are dropped"}; }
constexpr Argument Months() { return {"Months", "Months to add, whole or decimal; negative goes back"}; }
constexpr Argument Yrs() { return {"Yrs", "Years to add, whole or decimal; negative goes back"}; }
constexpr Argument StartOfWeek() { return {"StartOfWeek", "Weekday on which weeks start: 1 Sunday to 7 Saturday"}; }
constexpr Argument StartOfWeek1() {
    return optional(
        "StartOfWeek1", 0,
        "0 counts weeks as Excel does, from 1 January. 1 to 7: week 1 is the week that holds the year's first "
        "such weekday; 5 (Thursday) with weeks from Monday is ISO 8601");
}

} // namespace

// --- Differences ----------------------------------------------------------------------------------------------

constexpr Function DiffD{
    .name = "DiffD",
    .category = category,
    .calls = core<qx::DiffD>,
    .help = "Days between two dates under a day count convention",
    .args = {Date1(), Date2(), DayCount(), Periods()},
    .examples = {"DiffD(DATE(2005,1,31), DATE(2005,2,28), 0) = 28", "DiffD(DATE(2005,2,28), DATE(2005,3,31), 10) = 33",
                 "DiffD(DATE(2004,1,1), DATE(2005,1,1)) = 366"},
    .see_also = "DiffM,DiffY,DescribeDayCount",
};
QX_EXPORT(DiffD, 4);

constexpr Function DiffDX{
    .name = "DiffDX",
    .category = category,
    .calls = alias_of<qx::DiffD>,
    .help = "Days between two dates. Older form of DiffD, with the same result",
    .args = {Date1(), Date2(), DayCount(), Periods()},
    .examples = {"DiffDX(DATE(2005,1,31), DATE(2005,2,28), 0) = 28"},
    .see_also = "DiffD",
    .change = {63, "See Change in Behaviour 63, Oct-03 :Function Obsolete, superceded by DiffD (100% compatible)",
               "DiffD"},
};
QX_EXPORT(DiffDX, 4);

constexpr Function DiffM{
    .name = "DiffM",
    .category = category,
    .calls = core<qx::DiffM>,
    .help = "Months between two dates under a day count convention, negative if the first date is the later. 12 months "
            "are a year of the convention",
    .args = {Date1(), Date2(), DayCount(), Periods()},
    .examples = {"DiffM(DATE(2005,1,1), DATE(2005,4,1)) = 3", "DiffM(DATE(2005,1,1), DATE(2006,1,1), 2) = 12*365/360",
                 "DiffM(DATE(2005,4,1), DATE(2005,1,1)) = -3"},
    .see_also = "DiffD,DiffY,DiffMSeq",
};
QX_EXPORT(DiffM, 4);

constexpr Function DiffMX{
    .name = "DiffMX",
    .category = category,
    .calls = alias_of<qx::DiffM>,
    .help = "Months between two dates. Older form of DiffM, with the same result",
    .args = {Date1(), Date2(), DayCount(), Periods()},
    .examples = {"DiffMX(DATE(2005,1,1), DATE(2005,4,1)) = 3"},
    .see_also = "DiffM",
    .change = {63, "See Change in Behaviour 63, Oct-03 :Function Obsolete, superceded by DiffM (100% compatible)",
               "DiffM"},
};
QX_EXPORT(DiffMX, 4);

constexpr Function DiffY{
    .name = "DiffY",
    .category = category,
    .calls = core<qx::DiffY>,
    .help = "Years between two dates under a day count convention, negative if the first date is the later",
    .args = {Date1(), Date2(), DayCount(), Periods()},
    .examples = {"DiffY(DATE(2005,1,1), DATE(2007,7,1)) = 2.5", "DiffY(DATE(2004,1,1), DATE(2005,1,1), 3) = 366/365"},
    .see_also = "DiffM,DiffD",
};
QX_EXPORT(DiffY, 4);

constexpr Function DiffYX{
    .name = "DiffYX",
    .category = category,
    .calls = alias_of<qx::DiffY>,
    .help = "Years between two dates. Older form of DiffY, with the same result",
    .args = {Date1(), Date2(), DayCount(), Periods()},
    .examples = {"DiffYX(DATE(2005,1,1), DATE(2007,7,1)) = 2.5"},
    .see_also = "DiffY",
    .change = {63, "See Change in Behaviour 63, Oct-03 :Function Obsolete, superceded by DiffY (100% compatible)",
               "DiffY"},
};
QX_EXPORT(DiffYX, 4);

constexpr Function DiffP{
    .name = "DiffP",
    .category = category,
    .calls = core<qx::DiffP>,
    .help =
        "Periods of an annual sequence between two dates: a whole period counts 1, a part of one by its share of the "
        "period's days",
    .args = {FromDate(), ToDate(), AnnDateSeq()},
    .examples = {"DiffP(DATE(2005,1,1), DATE(2005,10,1), 4) = 3", "DiffP(DATE(2005,4,1), DATE(2005,5,1), 4) = 30/91"},
    .see_also = "DiffMSeq,DpP,NumPers",
};
QX_EXPORT(DiffP, 3);

constexpr Function DiffPSeq{
    .name = "DiffPSeq",
    .category = category,
    .calls = core<qx::DiffPSeq>,
    .help = "Periods of an annual sequence between two dates. Same as DiffP",
    .args = {FromDate(), ToDate(), AnnDateSeq()},
    .examples = {"DiffPSeq(DATE(2005,1,1), DATE(2005,10,1), 4) = 3"},
    .see_also = "DiffP",
};
QX_EXPORT(DiffPSeq, 3);

constexpr Function DiffMSeq{
    .name = "DiffMSeq",
    .category = category,
    .calls = core<qx::DiffMSeq>,
    .help =
        "Months between two dates where every period of an annual sequence counts alike: 12 months a year divided by "
        "the number of periods",
    .args = {FromDate(), ToDate(), AnnDateSeq()},
    .examples = {"DiffMSeq(DATE(2005,3,25), DATE(2005,9,29), 13) = 6"},
    .see_also = "DiffP,DiffM",
};
QX_EXPORT(DiffMSeq, 3);

// --- Date plus ------------------------------------------------------------------------------------------------

constexpr Function DpD{
    .name = "DpD",
    .category = category,
    .topic = 933,
    .calls = core<qx::DpD>,
    .help = "Date plus a number of days under a day count convention. Rolls on to a business day if Periods has a "
            "business day switch",
    .args = {TheDate("Date to start from"), Days(), DayCount(), Periods()},
    .examples = {"DpD(38000, 30) = 38030", "DpD(DATE(2005,1,15), 30, 4) = DATE(2005,2,15)",
                 "DpD(DATE(2004,12,24), 3, 5, 100) = DATE(2004,12,28)"},
    .see_also = "DpM,DpY,DpDBD",
};
QX_EXPORT(DpD, 4);

constexpr Function DpDX{
    .name = "DpDX",
    .category = category,
    .calls = alias_of<qx::DpD>,
    .help = "Date plus days. Older form of DpD, with the same result",
    .args = {TheDate("Date to start from"), Days(), DayCount(), Periods()},
    .examples = {"DpDX(38000, 30) = 38030"},
    .see_also = "DpD",
    .change = {63, "See Change in Behaviour 63, Oct-03 :Function Obsolete, superceded by DpD (100% compatible)", "DpD"},
};
QX_EXPORT(DpDX, 4);

constexpr Function DpM{
    .name = "DpM",
    .category = category,
    .calls = core<qx::DpM>,
    .help = "Date plus a number of months under a day count convention. Month ends stay month ends. Rolls on to a "
            "business day if Periods has a business day switch",
    .args = {TheDate("Date to start from"), Months(), DayCount(), Periods()},
    .examples = {"DpM(DATE(2005,1,31), 1) = DATE(2005,2,28)", "DpM(DATE(2005,1,1), 0.5) = DATE(2005,1,16)",
                 "DpM(DATE(2005,3,15), -3) = DATE(2004,12,15)"},
    .see_also = "DpD,DpY,DpMBD,EDateQX",
};
QX_EXPORT(DpM, 4);

constexpr Function DpMX{
    .name = "DpMX",
    .category = category,
    .calls = alias_of<qx::DpM>,
    .help = "Date plus months. Older form of DpM, with the same result",
    .args = {TheDate("Date to start from"), Months(), DayCount(), Periods()},
    .examples = {"DpMX(DATE(2005,1,31), 1) = DATE(2005,2,28)"},
    .see_also = "DpM",
    .change = {63, "See Change in Behaviour 63, Oct-03 :Function Obsolete, superceded by DpM (100% compatible)", "DpM"},
};
QX_EXPORT(DpMX, 4);

constexpr Function DpY{
    .name = "DpY",
    .category = category,
    .calls = core<qx::DpY>,
    .help = "Date plus a number of years under a day count convention. Rolls on to a business day if Periods has a "
            "business day switch",
    .args = {TheDate("Date to start from"), Yrs(), DayCount(), Periods()},
    .examples = {"DpY(DATE(2004,2,29), 1) = DATE(2005,2,28)", "DpY(2005, 2.5) = DATE(2007,7,1)"},
    .see_also = "DpD,DpM,DpYBD",
};
QX_EXPORT(DpY, 4);

constexpr Function DpYX{
    .name = "DpYX",
    .category = category,
    .calls = alias_of<qx::DpY>,
    .help = "Date plus years. Older form of DpY, with the same result",
    .args = {TheDate("Date to start from"), Yrs(), DayCount(), Periods()},
    .examples = {"DpYX(2005, 2.5) = DATE(2007,7,1)"},
    .see_also = "DpY",
    .change = {63, "See Change in Behaviour 63, Oct-03 :Function Obsolete, superceded by DpY (100% compatible)", "DpY"},
};
QX_EXPORT(DpYX, 4);

constexpr Function DpP{
    .name = "DpP",
    .category = category,
    .calls = core<qx::DpP>,
    .help = "Date plus a number of periods of an annual sequence, whole or decimal, a part of a period counting by its "
            "share of the period's days",
    .args = {TheDate("Date to start from"), {"NPer", "Periods to add, not negative"}, Periods()},
    .examples = {"DpP(DATE(2005,1,1), 2, 4) = DATE(2005,7,1)", "DpP(DATE(2005,4,1), -1, 4) ! #NUM!"},
    .see_also = "DiffP,DpM",
};
QX_EXPORT(DpP, 3);

constexpr Function EDateQX{
    .name = "EDateQX",
    .category = category,
    .calls = core<qx::EDateQX>,
    .help =
        "Date plus whole months on the calendar: the same day of the month, or the month's last day if it is shorter",
    .args = {TheDate("Date to start from"), {"Months", "Months to add; negative goes back. Decimals are dropped"}},
    .examples = {"EDateQX(DATE(2005,1,31), 1) = DATE(2005,2,28)", "EDateQX(DATE(2005,2,28), 1) = DATE(2005,3,28)"},
    .see_also = "DpM,DatePer",
};
QX_EXPORT(EDateQX, 2);

constexpr Function DatePer{
    .name = "DatePer",
    .category = category,
    .calls = core<qx::DatePer>,
    .help = "The date of a payment in a regular series: the first payment's date plus a number of periods",
    .args = {{"WhichOne", "How many periods after the first payment; 0 is the first payment itself"},
             {"FirstPmtDate", "Date of the first payment"},
             {"Periodicity", "Months from one payment to the next, 0 or more"}},
    .examples = {"DatePer(2, DATE(2005,1,31), 3) = DATE(2005,7,31)",
                 "DatePer(1, DATE(2005,1,31), 1) = DATE(2005,2,28)"},
    .see_also = "EDateQX",
};
QX_EXPORT(DatePer, 3);

// --- Time periods ---------------------------------------------------------------------------------------------

constexpr Function TpD{
    .name = "TpD",
    .category = category,
    .calls = twin<qx::TpD>,
    .help = "Days in a time period under a day count convention",
    .args = {Time(), Base(), DayCount(), Periods()},
    .examples = {"TpD(2004, 12) = 366", "TpD(DATE(2005,1,31), DATE(2005,2,28), 0) = 28"},
    .see_also = "TpM,TpY,DiffD",
};
QX_EXPORT(TpD, 4);

constexpr Function TpM{
    .name = "TpM",
    .category = category,
    .calls = twin<qx::TpM>,
    .help = "Months in a time period under a day count convention",
    .args = {Time(), Base(), DayCount(), Periods()},
    .examples = {"TpM(2005, 3) = 3", "TpM(2005, 12, 2) = 12*365/360"},
    .see_also = "TpD,TpY,DiffM",
};
QX_EXPORT(TpM, 4);

constexpr Function TpMX{
    .name = "TpMX",
    .category = category,
    .calls = twin_alias_of<qx::TpM>,
    .help = "Months in a time period. Older form of TpM, with the same result",
    .args = {Time(), Base(), DayCount(), Periods()},
    .examples = {"TpMX(2005, 3) = 3"},
    .see_also = "TpM",
    .change = {63, "See Change in Behaviour 63, Oct-03 :Function Obsolete, superceded by TpM (100% compatible)", "TpM"},
};
QX_EXPORT(TpMX, 4);

constexpr Function TpY{
    .name = "TpY",
    .category = category,
    .calls = twin<qx::TpY>,
    .help = "Years in a time period under a day count convention",
    .args = {Time(), Base(), DayCount(), Periods()},
    .examples = {"TpY(2005, 6) = 0.5", "TpY(2004, 12, 3) = 366/365"},
    .see_also = "TpD,TpM,DiffY",
};
QX_EXPORT(TpY, 4);

constexpr Function Occurs{
    .name = "Occurs",
    .category = category,
    .calls = core<qx::Occurs>,
    .help = "True if an event falls in a time period: on or after its start and before its end",
    .args = {Time(), Base(), {"EventDates", "Date or dates of the event"}},
    .examples = {"Occurs(2005, 12, DATE(2005,6,24)) = TRUE", "Occurs(2005, 12, 2006) = FALSE"},
    .see_also = "IsSeqDate",
};
QX_EXPORT(Occurs, 3);

constexpr Function CashStart{
    .name = "CashStart",
    .category = category,
    .calls = core<qx::CashStart>,
    .help = "Start of the span of accrual that is paid for in a time period",
    .args = {Time(), Base(), DayCount(), CashBasis(), ProjMode()},
    .examples = {"CashStart(DATE(2005,4,1), 1, 5, -4) = DATE(2005,1,1)"},
    .see_also = "CashFinish,CashLenYrs",
};
QX_EXPORT(CashStart, 5);

constexpr Function CashFinish{
    .name = "CashFinish",
    .category = category,
    .calls = core<qx::CashFinish>,
    .help = "End of the span of accrual that is paid for in a time period",
    .args = {Time(), Base(), DayCount(), CashBasis(), ProjMode()},
    .examples = {"CashFinish(DATE(2005,4,1), 1, 5, 4) = DATE(2005,7,1)"},
    .see_also = "CashStart,CashLenYrs",
};
QX_EXPORT(CashFinish, 5);

constexpr Function CashLenYrs{
    .name = "CashLenYrs",
    .category = category,
    .calls = twin<qx::CashLenYrs>,
    .help = "Years in the span of accrual that is paid for in a time period",
    .args = {Time(), Base(), DayCount(), CashBasis(), ProjMode()},
    .examples = {"CashLenYrs(DATE(2005,4,1), 1, 5, 4) = 0.25"},
    .see_also = "CashStart,CashFinish",
};
QX_EXPORT(CashLenYrs, 5);

constexpr Function CreateTimeBase{
    .name = "CreateTimeBase",
    .category = category,
    .calls = core<qx::CreateTimeBase>,
    .help =
        "Dates that lie end to end: the start, then the dates of an annual sequence. For the time row of a projection",
    .args = {{"Start", "First date"},
             Periods(),
             optional("AbFin", "Date to go up to: the first date on or after it is the last. Give this or NumOfPrds"),
             optional("NumOfPrds", 0, "Number of dates, which goes before AbFin")},
    .examples = {"CreateTimeBase(2005, 4, , 3) = {38353,38443,38534}",
                 "CreateTimeBase(DATE(2005,2,14), 4, DATE(2005,7,1)) = {38397,38443,38534}",
                 "CreateTimeBase(2005) ! #NUM!"},
    .see_also = "TimeBaseLengths,DateSeq",
};
QX_EXPORT(CreateTimeBase, 4);

constexpr Function TimeBaseLengths{
    .name = "TimeBaseLengths",
    .category = category,
    .calls = core<qx::TimeBaseLengths>,
    .help = "Months in each period of a time base, the last as long as the one before it",
    .args = {{"Timebase", "Dates that lie end to end, ascending"}, DayCount(), Periods()},
    .examples = {"TimeBaseLengths({38353,38443,38534}) = {3,3,3}"},
    .see_also = "CreateTimeBase,TpM",
};
QX_EXPORT(TimeBaseLengths, 3);

// --- Next and previous ----------------------------------------------------------------------------------------

constexpr Function NextDateSeq{
    .name = "NextDateSeq",
    .category = category,
    .calls = core<qx::NextDateSeq>,
    .help = "The next date of an annual sequence or a list after a date",
    .args = {TheDate("Date to start from, itself excluded"), AnnDateSeq(), SpecificDates()},
    .examples = {"NextDateSeq(DATE(2005,1,1), 4) = DATE(2005,4,1)",
                 "NextDateSeq(DATE(2005,1,1), 4, DATE(2005,2,14)) = DATE(2005,2,14)"},
    .see_also = "PrevDateSeq,NextDateList,NextDateSeqBD",
};
QX_EXPORT(NextDateSeq, 3);

constexpr Function PrevDateSeq{
    .name = "PrevDateSeq",
    .category = category,
    .calls = core<qx::PrevDateSeq>,
    .help = "The last date of an annual sequence or a list before a date",
    .args = {TheDate("Date to start from, itself excluded"), AnnDateSeq(), SpecificDates()},
    .examples = {"PrevDateSeq(DATE(2005,1,1), 4) = DATE(2004,10,1)"},
    .see_also = "NextDateSeq,PrevDateList,PrevDateSeqBD",
};
QX_EXPORT(PrevDateSeq, 3);

constexpr Function NextDateList{
    .name = "NextDateList",
    .category = category,
    .calls = core<qx::NextDateList>,
    .help = "The first date of a list after a date; empty if there is none",
    .args = {TheDate("Date to start from, itself excluded"), SpecificDates()},
    .examples = {"NextDateList(38000, {38100;38050;38000}) = 38050", "NextDateList(38000, 37000) = empty"},
    .see_also = "PrevDateList,NextDateSeq,MostImminent",
};
QX_EXPORT(NextDateList, 2);

constexpr Function PrevDateList{
    .name = "PrevDateList",
    .category = category,
    .calls = core<qx::PrevDateList>,
    .help = "The last date of a list before a date; empty if there is none",
    .args = {TheDate("Date to start from, itself excluded"), SpecificDates()},
    .examples = {"PrevDateList(38100, {38100;38050;38000}) = 38050"},
    .see_also = "NextDateList,PrevDateSeq,MostRecent",
};
QX_EXPORT(PrevDateList, 2);

constexpr Function NextDateCombine{
    .name = "NextDateCombine",
    .category = category,
    .calls = core<qx::NextDateCombine>,
    .help = "The earliest next date of up to four annual sequences and lists after a date. Omitted ones are ignored",
    .args = {TheDate("Date to start from, itself excluded"),
             AnnDateSeqOpt("AnnDateSeq1", DefaultSequence::none_if_omitted), SpecificDates("SpecificDates1"),
             AnnDateSeqOpt("AnnDateSeq2"), SpecificDates("SpecificDates2"), AnnDateSeqOpt("AnnDateSeq3"),
             SpecificDates("SpecificDates3"), AnnDateSeqOpt("AnnDateSeq4"), SpecificDates("SpecificDates4")},
    .examples = {"NextDateCombine(DATE(2005,1,1), 4, , 13) = DATE(2005,3,25)"},
    .see_also = "NextDateSeq,DateSeqCombine",
};
QX_EXPORT(NextDateCombine, 9);

constexpr Function MostRecent{
    .name = "MostRecent",
    .category = category,
    .calls = core<qx::MostRecent>,
    .help = "The latest date on or before a date, of up to four lists",
    .args = {TheDate(),
             {"Dates", "List of dates, in any order"},
             optional("Dates2", "Second list of dates"),
             optional("Dates3", "Third list of dates"),
             optional("Dates4", "Fourth list of dates"),
             optional("RoundDown", false, "True: a date equal to TheDate does not count, the one before it does"),
             optional("DefaultDate", "Result if there is no such date; empty if omitted")},
    .examples = {"MostRecent(38050, {38000;38050;38100}) = 38050",
                 "MostRecent(38050, {38000;38050;38100}, , , , TRUE) = 38000"},
    .see_also = "MostImminent,PrevDateList",
};
QX_EXPORT(MostRecent, 7);

constexpr Function MostImminent{
    .name = "MostImminent",
    .category = category,
    .calls = core<qx::MostImminent>,
    .help = "The earliest date on or after a date, of up to four lists",
    .args = {TheDate(),
             {"Dates", "List of dates, in any order"},
             optional("Dates2", "Second list of dates"),
             optional("Dates3", "Third list of dates"),
             optional("Dates4", "Fourth list of dates"),
             optional("RoundDown", true, "False: a date equal to TheDate does not count, the one after it does"),
             optional("DefaultDate", "Result if there is no such date; empty if omitted")},
    .examples = {"MostImminent(38050, {38000;38050;38100}) = 38050",
                 "MostImminent(38050, {38000;38050;38100}, , , , FALSE) = 38100"},
    .see_also = "MostRecent,NextDateList",
};
QX_EXPORT(MostImminent, 7);

// --- Sequences as lists ---------------------------------------------------------------------------------------

constexpr Function DateSeq{
    .name = "DateSeq",
    .category = category,
    .calls = core<qx::DateSeq>,
    .help = "The dates of an annual sequence and a list between two dates, both excluded",
    .args = {FromDate(), ToDate(), AnnDateSeq(), SpecificDates()},
    .examples = {"DateSeq(DATE(2005,1,1), DATE(2006,1,1), 4) = {38443,38534,38626}"},
    .see_also = "DateSeqCombine,NextDateSeq,CreateTimeBase",
};
QX_EXPORT(DateSeq, 4);

constexpr Function DateSeqCombine{
    .name = "DateSeqCombine",
    .category = category,
    .calls = core<qx::DateSeqCombine>,
    .help = "The dates of up to four annual sequences and lists between two dates, both excluded, in one list",
    .args = {FromDate(), ToDate(), AnnDateSeqOpt("AnnDateSeq1", DefaultSequence::none_if_omitted),
             SpecificDates("SpecificDates1"), AnnDateSeqOpt("AnnDateSeq2"), SpecificDates("SpecificDates2"),
             AnnDateSeqOpt("AnnDateSeq3"), SpecificDates("SpecificDates3"), AnnDateSeqOpt("AnnDateSeq4"),
             SpecificDates("SpecificDates4")},
    .examples = {"DateSeqCombine(DATE(2005,1,1), DATE(2005,7,1), 4, , 6.24) = {38443,38527}",
                 "DateSeqCombine(DATE(2005,1,1), DATE(2006,1,1)) ! #NUM!"},
    .see_also = "DateSeq,NextDateCombine",
};
QX_EXPORT(DateSeqCombine, 10);

constexpr Function AnnSeq{
    .name = "AnnSeq",
    .category = category,
    .calls = core<qx::AnnSeq>,
    .help = "The mm.dd figures of an annual sequence with so many payments a year, counted from one of its dates",
    .args = {{"AnnSeqNum", "One date of the sequence as mm.dd: 1.31 for 31 January; negative for payments in arrears"},
             {"NumPmtsPerYr", "Payments a year: 1, 2, 3, 4, 6 or 12; 13 gives the English quarter days"},
             optional("EOMRule", false, "True: if the date is its month's last day, all dates are")},
    .examples = {"AnnSeq(1.31, 4) = {1.31,4.3,7.31,10.31}", "AnnSeq(6.3, 2, TRUE) = {6.3,12.31}",
                 "AnnSeq(1.01, 5) ! #NUM!"},
    .see_also = "DateSeqNum,NumPers,DescribePeriods",
};
QX_EXPORT(AnnSeq, 3);

constexpr Function NumPers{
    .name = "NumPers",
    .category = category,
    .calls = core<qx::NumPers>,
    .help = "The number of dates in the year of an annual sequence",
    .args = {AnnDateSeq("Periods")},
    .examples = {"NumPers(13) = 4", "NumPers({3.25;9.29}) = 2"},
    .see_also = "AnnSeq,DiffP",
};
QX_EXPORT(NumPers, 1);

constexpr Function IsSeqDate{
    .name = "IsSeqDate",
    .category = category,
    .calls = core<qx::IsSeqDate>,
    .help = "True if a date is one of an annual sequence",
    .args = {TheDate(), AnnDateSeq("AnnualDateSeq")},
    .examples = {"IsSeqDate(DATE(2005,3,25), 13) = TRUE", "IsSeqDate(DATE(2005,2,28), 2.29) = TRUE"},
    .see_also = "IsAnniversary,NextDateSeq",
};
QX_EXPORT(IsSeqDate, 2);

constexpr Function IsAnniversary{
    .name = "IsAnniversary",
    .category = category,
    .calls = core<qx::IsAnniversary>,
    .help = "True if the second date is an anniversary of the first. Of 29 February it is 28 February in other years",
    .args = {{"Date1", "Date of the event"}, {"Date2", "Date that may be an anniversary of it"}},
    .examples = {"IsAnniversary(DATE(2001,6,24), DATE(2005,6,24)) = TRUE",
                 "IsAnniversary(DATE(2004,2,29), DATE(2005,2,28)) = TRUE",
                 "IsAnniversary(DATE(2001,6,24), DATE(2005,6,25)) = FALSE"},
    .see_also = "IsSeqDate",
};
QX_EXPORT(IsAnniversary, 2);

// --- Weeks ----------------------------------------------------------------------------------------------------

constexpr Function WeekNumber{
    .name = "WeekNumber",
    .category = category,
    .calls = core<qx::WeekNumber>,
    .help = "The number of a date's week in the year",
    .args = {TheDate(), StartOfWeek(), StartOfWeek1()},
    .examples = {"WeekNumber(DATE(2005,1,1), 1) = 1", "WeekNumber(DATE(2005,1,1), 2, 5) = 53",
                 "WeekNumber(DATE(2008,12,29), 2, 5) = 1"},
    .see_also = "WeekNumberToDate,DayName",
};
QX_EXPORT(WeekNumber, 3);

constexpr Function WeekNumberToDate{
    .name = "WeekNumberToDate",
    .category = category,
    .calls = core<qx::WeekNumberToDate>,
    .help = "The first day of a week of a year",
    .args = {{"WeekNum", "Number of the week"}, StartOfWeek(), StartOfWeek1(), {"Yr", "The year, or a date in it"}},
    .examples = {"WeekNumberToDate(1, 2, 5, 2009) = DATE(2008,12,29)",
                 "WeekNumberToDate(10, 2, 5, 2005) = DATE(2005,3,7)"},
    .see_also = "WeekNumber",
};
QX_EXPORT(WeekNumberToDate, 4);

} // namespace qx::worksheet
