#include "apps/quexel/manual.h"

#include "hosts/sheet/text.h"

namespace qx::app {

namespace {

struct Topic {
    const char* name;
    const char* summary;
    const char* text;
};

constexpr Topic topics[] = {
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
     R"(quexel calc reads .xlsx, .xlsm, .ods and .csv files and tells their type by their content. In a CSV file a cell
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

--chart may be repeated. It takes a title (optional), what to draw, and what stands along the axis (optional).
Ranges, names and the labels of rows or columns of numbers can be drawn, several with commas between them. In an
.xlsx file the charts are on a sheet of their own.

--report writes one page that needs only a browser: the tables, the charts, the goal seeks, the errors with their
reasons, and for each calculated value its formula and its trace a click away. It prints well.
)"},
    {"errors", "Where error values come from",
     R"(An error value such as #NUM! comes with its reason, on standard error and in JSON:

  quexel eval --json 'DateYMD(2005,13,1)'
  quexel calc model.csv                               lists each cell, its error, the reason and where it came from
  quexel calc model.csv --trace C7                    shows how a cell came about, step by step

The exit status is 1 if a file or a formula cannot be read as it stands, and 0 if a formula just shows an error.
)"},
    {"trace", "How a result came about",
     R"(  quexel trace 'MonthEnd(38000)'                      the tree of routines, inputs, branches and results
  quexel trace 'MonthEnd(38000)' --html why.html      the same as a page with search
  quexel calc model.xlsx --trace 'Cash flow!C7'       explains a cell
  quexel calc model.xlsx --monitor                    the time of each call, in qx_CalcMon.qxl
)"},
    {"output", "Tables, CSV, Markdown, JSON, dates",
     R"(  --output table|csv|markdown|json                    for eval and calc; --json is short for the last
  --wide                                              the whole table; on a terminal it is cut to the width else
  --dates, --no-dates                                 dates as 2026-11-21 or as numbers
  --sheet NAME                                        one sheet of several

In JSON dates are numbers unless --dates is given.
)"},
};

} // namespace

void print_topics(std::ostream& out) {
    out << "quexel help TOPIC, quexel help FUNCTION or quexel COMMAND --help. Topics:\n\n";
    for (const Topic& topic : topics)
        out << "  " << topic.name << std::string(12 - std::string_view(topic.name).size(), ' ') << topic.summary
            << '\n';
    out << "\nquexel functions lists the functions by category.\n";
}

bool print_topic(std::ostream& out, const std::string& name) {
    for (const Topic& topic : topics)
        if (sheet::equal_ignoring_case(topic.name, name)) {
            out << topic.summary << "\n\n" << topic.text;
            return true;
        }
    return false;
}

} // namespace qx::app
