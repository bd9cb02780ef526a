// quexel: the functions of the library without a spreadsheet.
#include "apps/quexel/commands.h"

#include <CLI/CLI.hpp>
#include <cstdio>
#include <exception>
#include <iostream>
#include <string>
#include <string_view>
#include <vector>

namespace qx::app {
namespace {

/// The arguments with a formula such as -SUM(1,2) moved behind "--", since it would be taken for an option.
std::vector<std::string> arguments(int argc, char** argv) {
    std::vector<std::string> options, formulas;
    const bool takes_formula =
        argc > 1 && (argv[1] == std::string_view("eval") || argv[1] == std::string_view("trace"));
    for (int i = 1; i < argc; ++i) {
        const std::string_view argument = argv[i];
        if (argument == "--") { // the user has done it
            formulas.insert(formulas.end(), argv + i + 1, argv + argc);
            break;
        }
        const bool formula =
            takes_formula && argument.size() > 1 && argument[0] == '-' && argument[1] != '-' && argument != "-h";
        (formula ? formulas : options).emplace_back(argument);
    }
    if (!formulas.empty()) options.emplace_back("--");
    options.insert(options.end(), formulas.begin(), formulas.end());
    return {options.rbegin(), options.rend()}; // the parser takes them from the end
}

/// The status of a run, which has failed if its output has not arrived.
int finished(int status) {
    std::cout.flush();
    if (std::cout) return status;
    std::cerr << "quexel: standard output cannot be written\n";
    return status == 0 ? 1 : status;
}

int run(int argc, char** argv) {
    CLI::App program{"Calculates worksheet formulas and models for property, project finance and banking, and explains "
                     "how each result came about."};
    program.name("quexel");
    program.set_version_flag("--version", "quexel " QX_VERSION);
    program.require_subcommand(1);
    program.footer("Examples:\n"
                   "  quexel eval 'MonthEnd(DATE(2004,2,10))' --dates\n"
                   "  quexel calc model.csv --out results.csv\n"
                   "  quexel trace 'DYear(38000)'\n"
                   "  quexel help MonthEnd");
    int status = 0;

    EvalOptions eval_options;
    CLI::App* const eval_command = program.add_subcommand("eval", "Calculate a formula and print its value");
    eval_command->add_option("formula", eval_options.formula, "The formula, or - for one a line from standard input")
        ->required();
    eval_command->add_flag("--json", eval_options.json, "Print each value as one line of JSON");
    eval_command->add_flag("--dates", eval_options.dates, "Print dates as 2026-11-21 and not as numbers");
    eval_command->callback([&] { status = eval(eval_options); });

    CalcOptions calc_options;
    CLI::App* const calc_command =
        program.add_subcommand("calc", "Calculate a model in a CSV file and print it as a table");
    calc_command
        ->add_option("file", calc_options.file, "CSV file, - for standard input; cells that begin with = are formulas")
        ->required();
    calc_command->add_option("--out", calc_options.out, "Write the results as CSV to this file, - for standard output");
    CLI::Option* const traced_cell =
        calc_command->add_option("--trace", calc_options.trace, "Explain this cell, as B7");
    calc_command->add_option("--html", calc_options.html, "Write the explanation to this file as a page")
        ->needs(traced_cell);
    calc_command->add_flag("--seek", calc_options.seek,
                           "Run the goal seeks that the model asks for, and report on them");
    calc_command->add_flag("--monitor", calc_options.monitor, "Write the time of each call to qx_CalcMon.qxl");
    calc_command->add_flag("--dates,!--no-dates", calc_options.dates,
                           "Print dates as 2026-11-21 (the default) or as numbers");
    calc_command->callback([&] { status = calc(calc_options); });

    TraceOptions trace_options;
    CLI::App* const trace_command = program.add_subcommand("trace", "Explain how the value of a formula comes about");
    trace_command->add_option("formula", trace_options.formula, "The formula")->required();
    trace_command->add_option("--html", trace_options.html, "Write the tree to this file as a page");
    trace_command->callback([&] { status = trace(trace_options); });

    FunctionsOptions functions_options;
    CLI::App* const functions_command = program.add_subcommand("functions", "List the functions of the library");
    functions_command->add_option("--category", functions_options.category, "Only those of this category");
    functions_command->add_flag("--json", functions_options.json, "As JSON, with their arguments");
    functions_command->add_flag("--builtins", functions_options.builtins, "The functions built into the workbook");
    functions_command->callback([&] { status = functions(functions_options); });

    std::string name;
    CLI::App* const help_command = program.add_subcommand("help", "Tell what a function does and takes");
    help_command->add_option("name", name, "Name of the function")->required();
    help_command->callback([&] { status = help(name); });

    const auto is_meant = [&](const CLI::App* command) { return command->check_name(argv[1]); };
    if (argc > 1 && argv[1][0] != '-' && program.get_subcommands(is_meant).empty()) {
        std::cerr << "no command \"" << argv[1] << "\"\nRun with --help for more information.\n";
        return 2;
    }
    try {
        program.parse(arguments(argc, argv));
        return finished(status);
    } catch (const CLI::ParseError& error) {
        return program.exit(error) == 0 ? 0 : 2;
    }
}

} // namespace
} // namespace qx::app

int main(int argc, char** argv) {
    try {
        return qx::app::run(argc, argv);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "quexel: %s\n", error.what());
        return 1;
    }
}
