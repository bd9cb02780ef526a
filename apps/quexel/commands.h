// The commands of the program. Each returns the exit status: 0 if all went well, 1 if something is wrong with what it
// was given. Results go to standard output, messages to standard error.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace qx::app {

/// How tables are printed.
enum class Output { table, csv, markdown, json };

/// Messages about one file that are shown; the others are counted.
inline constexpr std::size_t most_messages = 100;

struct EvalOptions {
    std::string formula; ///< "-" for formulas on standard input, one a line
    Output output = Output::table;
    bool dates = false;
    bool wide = false;
};
int eval(const EvalOptions& options);

struct CalcOptions {
    std::string file;
    std::string out;                 ///< file for the results, "-" for standard output; empty for a table
    std::string sheet;               ///< the one to print
    std::string trace;               ///< cell to explain
    std::string html;                ///< file for the trace as a page
    std::string report;              ///< file for the report as a page
    std::string scenarios;           ///< CSV file, a row a scenario
    std::vector<std::string> set;    ///< "B2=5e6", "B2:B9=@rates.csv"
    std::vector<std::string> get;    ///< cells, ranges and names to print
    std::vector<std::string> charts; ///< "Cash flow=B5:Z5 over B1:Z1"
    Output output = Output::table;
    bool in_place = false;
    bool keep_values = false; ///< of the file where a cell cannot be calculated
    bool monitor = false;
    bool seek = false; ///< run the goal seeks of the model
    bool dates = true;
    bool dates_asked = false; ///< --dates was given: in JSON, too
    bool wide = false;
};
int calc(const CalcOptions& options);

struct TraceOptions {
    std::string formula;
    std::string against; ///< the formula after a change; empty for one trace
    std::string html;
    bool all = false; ///< print what is folded otherwise
};
int trace(const TraceOptions& options);

struct ReplaceOptions {
    std::string file;
    std::string find;
    std::string replacement;
    std::string where;  ///< area such as A1:D50 or Inputs!A1:D50; empty for all cells
    std::string out;    ///< another file to write the changed model to
    bool write = false; ///< change the file, and not only show what would change
};
int replace(const ReplaceOptions& options);

struct FunctionsOptions {
    std::string category;
    bool json = false;
    bool builtins = false; ///< those of the workbook itself
    bool names = false;    ///< only these, one a line
};
int functions(const FunctionsOptions& options);
/// The help of a function or a topic; the topics without a name.
int help(const std::string& name);
/// Lists the pages of help that hold all the words.
int search_help(const std::vector<std::string>& words);
/// For what help is written: pages with search for a browser, or the project of a help file for Windows.
enum class HelpForm { browser, project };
/// Writes help as a folder of pages.
int write_help(const std::string& folder, HelpForm form);

} // namespace qx::app
