#include "apps/quexel/topics.h"

#include "apps/quexel/help_texts.h"
#include "apps/quexel/markdown.h"
#include "calendar/annual_sequence.h"
#include "calendar/day_count.h"
#include "calendar/time_period.h"
#include "core/errors.h"
#include "hosts/sheet/text.h"

#include <cstring>

namespace qx::app {

namespace {

constexpr Topic all_topics[] = {
    {"formulas", "What a formula may hold",
     R"(Formulas are Excel's: commas between arguments, {1,2;3,4} for arrays, "text", TRUE, #N/A, A1, $A$1, A1:B3,
Sheet1!A1, names, + - * / ^ & = <> < > <= >= %. Functions are those of the library (quexel functions) and the
everyday built-in ones (SUM, IF, VLOOKUP and so on).

  quexel eval 'MonthEnd(DATE(2004,2,10))' --dates     dates as 2004-02-29 and not as numbers
  quexel eval --json 'DateSeq(2005,2006,4)'           the value as JSON
  quexel eval - < formulas.txt                        a line of output for each line of input
  quexel eval '{1,2;3,4}' --output markdown           table, csv, markdown or json
)"},
    {"files", "Workbooks and CSV files: reading, writing, what is kept",
     R"(quexel calc reads .xlsx, .xlsm, .ods and .csv files and recognises their type by their content. In a CSV file a cell
that begins with = is a formula, and {=...} an array formula.

  quexel calc model.xlsx                              prints the sheets; --sheet NAME prints one
  quexel calc model.xlsx --out result.xlsx            formulas with their new results
  quexel calc model.ods --out result.xlsx             .csv and .json also; - is standard output
  quexel calc model.xlsx --set B2=5e6 --in-place      puts inputs and results into the model itself
  quexel calc model.xlsx --keep-values                the file's last value where a cell cannot be calculated

--out never writes over the model or another file that is read. A file is written beside its place and then moved
there, so that the old one remains if anything fails. The copy of an .xlsx file keeps whatever it holds: fonts,
charts, comments. A new .xlsx file made from .csv or .ods has formulas, results, number formats, column widths,
names and all sheets; what is not carried over is listed. --in-place leaves the formulas of a CSV model as they
are and changes its inputs only.

A file from elsewhere is read in a process of its own with limits of memory and time. Macros are never run.
)"},
    {"what-if", "Inputs from the command line, goal seeks, scenarios",
     R"(  quexel calc model.xlsx --set B2=5e6 --set Rate=6.5% --get NPV
  quexel calc model.xlsx --set 'Inputs!B2:B9=@rates.csv'
  quexel calc model.csv --seek                        runs the goal seeks, =GoalSeek(B19,0.2,B11,1) in a cell
  quexel calc model.xlsx --scenarios cases.csv --out table.xlsx

--set takes a cell, a range or a name, and a value as a user enters it; @FILE.csv takes the cells of a file. --get
prints cells, ranges and names in place of the sheets. --scenarios takes a CSV file with a row for each scenario:
the head of a column is a cell or a name. A column is an input where its fields are filled, an output where they
are empty or where the cell holds a formula; an input left empty keeps the model's value. Columns with other heads
are labels.

  Case,Rate,B2,NPV
  Base,,,
  High,7%,5500000,
)"},
    {"charts", "Charts and the report",
     R"(  quexel calc model.xlsx --out result.xlsx --chart 'Cash flow=B5:Z5 over B1:Z1'
  quexel calc model.csv --report report.html --chart 'Net cash flow' --chart 'Debt=Senior,Junior over Year'

--chart may be repeated. It takes a title (optional), what to draw, and what goes along the axis (optional).
Ranges, names and the labels of rows or columns of numbers can be drawn, several with commas between them. In an
.xlsx file the charts are on a sheet of their own.

--report writes one page that needs only a browser: the tables, the charts, the goal seeks, the errors with their
reasons, and for each calculated value its formula and its trace a click away. It prints well.
)"},
    {.name = "errors",
     .summary = "Where error values come from, and what the messages mean",
     .text =
         R"(A cell shows an error value. The reason comes with it on standard error and in JSON, and in a spreadsheet with the
trace:

  quexel eval 'DateYMD(2005,13,1)'
  quexel calc model.csv                               lists each cell, its error, the reason and where it came from
  quexel calc model.csv --trace C7                    shows how a cell came about, step by step

A function whose arguments it cannot use, or that finds no answer, shows #NUM!. An error value in an argument comes
back as it is, so the first cell in error is the one to look at. A function that waits for a cell not yet calculated
is called again.

The exit status is 1 if a file or a formula cannot be read as it stands, and 0 if a formula just shows an error.
)",
     .on_functions = true,
     .lists_errors = true},
    {.name = "trace",
     .summary = "How a result came about",
     .text =
         R"(With the trace on, each routine records its inputs as it understood them, the branches it took, its warnings and its
result. The result is the same with the trace and without it.

In a spreadsheet choose Trace On in the menu Quexel, recalculate the cell (F2, Enter), and choose Show Trace. A failed
call leads with its error. In the terminal:

  quexel trace 'MonthEnd(38000)'                      the tree of routines, inputs, branches and results
  quexel trace 'MonthEnd(38000)' --html why.html      the same as a page with search
  quexel trace FORMULA --against FORMULA              before and after a change, side by side
  quexel calc model.xlsx --trace 'Cash flow!C7'       explains a cell
  quexel calc model.xlsx --monitor                    the time of each call, in qx_CalcMon.qxl
)",
     .on_functions = true},
    {"output", "Tables, CSV, Markdown, JSON, dates",
     R"(  --output table|csv|markdown|json                    for eval and calc; --json is short for the last
  --wide                                              the whole table; on a terminal it is cut to the width else
  --dates, --no-dates                                 dates as 2026-11-21 or as numbers
  --sheet NAME                                        one sheet of several

In JSON dates are numbers unless --dates is given.
)"},
    {.name = "dates",
     .summary = "How dates are given and what date numbers are",
     .text =
         R"(A date is a date cell, a date number or a year. Date numbers are Excel's: 1 January 2005 is 38353. A number
from 1910 to 3653 is a year, and its decimals are the part of the year that has passed: 2004.5 is 1 July 2004. So
a date number below 3654, before 1910, cannot be given as a number.

  =DateYMD(2004,7,1)  = 38169
  =MonthEnd(2004.5)  = 38199

An empty cell is no date; where a list or an end is open, that means never, or without limit. A time of day is
dropped. A function that gives a date gives its number: format the cell as a date.
)",
     .see_also = "DateYMD,CreateDate,DYear,DMonth,DDay,MonthEnd,DpD,DpM,DiffD",
     .on_functions = true},
    {.name = "day-counts",
     .summary = "What a DayCount makes of two dates: 30/360, actual/365 and the others",
     .text =
         R"(A day count turns two dates into a number of days, and into a number of months, 12 to the year, in which all
lengths of time are held. From 31 January to 1 March 2005:

  =DiffD(DATE(2005,1,31),DATE(2005,3,1),0)  = 31
  =DiffD(DATE(2005,1,31),DATE(2005,3,1),3)  = 29

A year counted as actual/360 is longer than 12 months:

  =DiffM(DATE(2005,1,1),DATE(2006,1,1),2)  = 12.1666666666667

One DayCount can hold three codes: one for the whole periods, and one each for the stubs before the first and after
the last of the dates in Periods. Two decimals give the stubs together, four the start and the end: 2.03 is code 2
with stubs by code 3, and 1.0306 is code 1 with 3 at the start and 6 at the end.

Code 5 counts each month alike and a part of a month by its own days. Code 6 gives each period of Periods the same
weight. Code 13 counts Brazilian business days and 252 to the year. Single codes above 20 are refused.
)",
     .values = day_count_values,
     .see_also = "DiffD,DiffM,DiffY,DpD,DpM,DescribeDayCount",
     .on_functions = true},
    {.name = "sequences",
     .summary = "Dates that recur every year: payment dates, accrual periods, seasons, holidays",
     .text =
         R"(Arguments such as Periods hold the dates of a year on which something happens every year. They take

  4               one of the numbers below: here the first day of each calendar quarter
  3.25            one date, month before the point and day behind it: 25 March
  {3.25;9.29}     several dates, ascending, as a range of cells or an array

In advance, a payment covers the time up to the next date; in arrears, the time since the last. A minus before the
number, or before the first date of a range, means in arrears.

  =DateSeq(2005,2006,4)  = {38443,38534,38626}

If the argument is omitted, or 0, the function's own default holds, which its page states: mostly 4, for loans and
the time value of money -4, and for lists of holidays or seasons no dates at all.

A number from 20 to 1000 names business days, as BusDaySwitch does: the default dates then roll to a business day.
)",
     .values = sequence_values,
     .see_also = "DateSeq,AnnSeq,NextDateSeq,PrevDateSeq,DescribePeriods",
     .on_functions = true},
    {.name = "time-periods",
     .summary = "Time and Base: the period that a projection fills",
     .text =
         R"(Most projections answer how much of a stream falls in one period, the column of a model. Time is the period's first
day. Base is its length in whole months or, as a date or a year, its end, which no longer belongs to it. A stream of
1200 a year, in the second quarter of 2005:

  =Con(DATE(2005,4,1),3,2005,2010,1200)  = 300
  =Con(DATE(2005,4,1),DATE(2005,7,1),2005,2010,1200)  = 300

Start and Finish of a stream work alike: the day of Start counts, the day of Finish does not. So periods that follow
each other neither overlap nor leave a gap, and their amounts sum to the whole. A period that the stream fills in part
has its part:

  =Con(2005,12,DATE(2005,4,1),2010,1200)  = 900

Put Time into the head of each column and Base into a cell that all formulas share.
)",
     .see_also = "CreateTimeBase,TimeBaseLengths,Con,CashStart",
     .on_functions = true},
    {.name = "projection-modes",
     .summary = "ProjMode: amounts as they accrue, or as they are paid",
     .text =
         R"(Under accruals a period has the amounts of its own days. Under cash it has the payments whose dates fall in it, each
for the whole time that it covers. Rent of 1200 a year from 2005, paid quarterly in advance, and in arrears:

  =Con(2005,3,2005,2010,1200,0,4,1)  = 300
  =Con(2005,3,2005,2010,1200,0,-4,1)  = 0
  =Con(DATE(2005,4,1),3,2005,2010,1200,0,-4,1)  = 300

Periods gives the payment dates. The first payment in advance and the last one in arrears stretch, so that the whole
stream is paid for once.

The first two decimals delay payments by days: 1.05 is cash that arrives five days late. Modes 2 and 3 calculate as 0
and 1.
)",
     .values = projection_mode_values,
     .see_also = "Con,CashStart,DescribeCashBasis",
     .on_functions = true},
    {.name = "growth",
     .summary = "GrowthDates and GrowthRates: dated rates of growth",
     .text =
         R"(Growth is given by dates and, one for each, annual rates as fractions: 0.03 is 3% a year. A rate applies from its
date to the next, the last one for ever; before the first date nothing grows. Dates ascend. One date and one rate may
be in single cells.

  =ConGrow(2007,12,2005,2010,1000,2005,0.1,12)  = 1210
  =ConGrow(2007,12,2005,2010,1000,{2005;2006},{0.1;0.02},12)  = 1122

RevMonthsOpt says how often growth takes effect: in steps that many months apart, or continuously if it is 0.
)",
     .see_also = "ConGrow,FcstGrow",
     .on_functions = true},
    {.name = "forecasts",
     .summary = "FcstVals, StartFcst and FcstBase: a series of values at even intervals",
     .text =
         R"(A forecast is a list of values, the date from which the first one holds, and the months that each holds. The last
value holds from then on. Values 900, 1000 and 1100 for 2005, 2006 and from 2007 on, as a market rate that is read at
every review:

  =ConFcstMkt(2007,12,2005,2015,2006,800,{900;1000;1100},2005,12,12)  = 1100

With reviews five years apart the value of 2006 holds until 2011:

  =ConFcstMkt(2007,12,2005,2015,2006,800,{900;1000;1100},2005,12,60)  = 1000

FcstBase is from 1 to 1000 months.
)",
     .see_also = "Fcst,FcstGrow,ConFcstMkt",
     .on_functions = true},
    {.name = "reviews",
     .summary = "First review, months between reviews, upward-only reviews",
     .text =
         R"(Up to the first review a stream runs at its initial rate. At each review it becomes the market rate of that day and
keeps it until the next. Reviews follow the first at the given number of months; 0 months means a stream that follows
the market continuously, or, with leases, reviews that do not recur.

  =ConGrowMkt(2006,12,2005,2015,2007,1000,800,2005,0.1,60)  = 800
  =ConGrowMkt(2008,12,2005,2015,2007,1000,800,2005,0.1,12)  = 1331

With leases RevDisc is a discount to the market rent at reviews; a negative one makes reviews upward-only: the rent
then never falls at one. UOTog lists dates at which reviews turn upward-only and back.
)",
     .see_also = "NextReview,LastReview,ConGrowMkt,ConFcstMkt",
     .on_functions = true},
    {.name = "lists",
     .summary = "Ranges and arrays as arguments, and results of several cells",
     .text =
         R"(A list is a range of cells or an array such as {1;2;3}. It is read down a column, or row by row through a rectangle;
a single value serves as a list of one. Lists that belong together, as dates and amounts, have one length.

A result of several cells fills the selection of an array formula: select the cells, type the formula, and press
Ctrl+Shift+Enter. Cells beyond its end stay empty. In newer versions of Excel, and in quexel, it spills from one cell.
)",
     .see_also = "CreateList,JoinLists,SubList,TrimList",
     .on_functions = true},
    {.name = "excel-names",
     .summary = "Functions that Excel has too: Switch and Unique",
     .text =
         R"(Newer versions of Excel have functions SWITCH and UNIQUE of their own. In a formula there the name is Excel's, whether
the add-in is loaded or not. A macro reaches the add-in's function:

  Application.Run("Unique", values)
  Application.Run("Switch", value, default, case1, result1)

In quexel and its workbooks, and in versions of Excel without these functions, both names are the add-in's.
)",
     .see_also = "Switch,Unique",
     .on_functions = true},
};

} // namespace

std::span<const Topic> topics() { return all_topics; }

const Topic* find_topic(const std::string& name) {
    for (const Topic& topic : all_topics)
        if (sheet::equal_ignoring_case(topic.name, name)) return &topic;
    return nullptr;
}

std::string page_of(const Topic& topic) { return std::string("topic-") + topic.name + ".html"; }

std::vector<std::pair<std::string, std::string>> value_table(const Topic& topic) {
    std::vector<std::pair<std::string, std::string>> rows;
    for (const SwitchValue& value : topic.values)
        if (value.name != nullptr || value.code < 100)
            rows.emplace_back(std::to_string(value.code),
                              sheet::trimmed(value.name != nullptr ? value.name : value.words));
    return rows;
}

std::vector<std::pair<std::string, std::string>> error_table() {
    std::vector<std::pair<std::string, std::string>> rows;
    for (const ErrorClass* const each : error_classes)
        rows.emplace_back(each->code,
                          sheet::trimmed(std::string_view(each->text).substr(std::strlen("Error LIB16: "))));
    return rows;
}

void print_topics(std::ostream& out) {
    out << "quexel help TOPIC, quexel help FUNCTION, quexel help --search WORDS or quexel COMMAND --help.\n";
    for (const bool on_functions : {false, true}) {
        out << (on_functions ? "\nWhat functions have in common:\n\n" : "\nThe program:\n\n");
        for (const Topic& topic : all_topics)
            if (topic.on_functions == on_functions)
                out << "  " << topic.name << std::string(22 - std::string_view(topic.name).size(), ' ') << topic.summary
                    << '\n';
    }
    out << "\nDefinitions, with formulas and sources:\n\n";
    for (const Definitions& document : definitions())
        out << "  " << document.name << std::string(22 - std::string_view(document.name).size(), ' ')
            << title_of_markdown(document.markdown) << '\n';
    out << "\nquexel functions lists the functions by category.\n";
}

bool print_topic(std::ostream& out, const std::string& name) {
    const Topic* const topic = find_topic(name);
    if (topic == nullptr) return false;
    out << topic->summary << "\n\n" << topic->text;
    const auto print = [&](const auto& rows) {
        out << '\n';
        for (const auto& [code, text] : rows) out << "  " << code << std::string(7 - code.size(), ' ') << text << '\n';
    };
    if (topic->values.count > 0) print(value_table(*topic));
    if (topic->lists_errors) print(error_table());
    if (*topic->see_also != '\0') {
        out << "\nSee also: ";
        for (const char* c = topic->see_also; *c != '\0'; ++c) out << (*c == ',' ? ", " : std::string(1, *c));
        out << '\n';
    }
    return true;
}

} // namespace qx::app
