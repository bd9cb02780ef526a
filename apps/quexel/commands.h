// The commands of the program. Each returns the exit status: 0 if all went well, 1 if something is wrong with what it
// was given. Results go to standard output, messages to standard error.
#pragma once

#include <string>

namespace qx::app {

struct EvalOptions {
    std::string formula; ///< "-" for formulas on standard input, one a line
    bool json = false;
    bool dates = false;
};
int eval(const EvalOptions& options);

struct CalcOptions {
    std::string file;
    std::string out;   ///< file for the results, "-" for standard output; empty for a table
    std::string trace; ///< cell to explain
    std::string html;  ///< file for the trace as a page
    bool monitor = false;
    bool seek = false; ///< run the goal seeks of the model
    bool dates = true;
};
int calc(const CalcOptions& options);

struct TraceOptions {
    std::string formula;
    std::string html;
};
int trace(const TraceOptions& options);

struct FunctionsOptions {
    std::string category;
    bool json = false;
    bool builtins = false; ///< those of the workbook itself
};
int functions(const FunctionsOptions& options);
int help(const std::string& name);

} // namespace qx::app
