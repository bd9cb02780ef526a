// quexel: the functions of the library without a spreadsheet.
#include "apps/quexel/commands.h"
#include "apps/quexel/manual.h"

#include <CLI/CLI.hpp>
#include <cstdio>
#include <exception>
#include <iostream>
#include <map>
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

/// How tables are printed: --output, or --json for short.
void add_output(CLI::App& command, Output& output) {
    static const std::map<std::string, Output> forms{
        {"table", Output::table}, {"csv", Output::csv}, {"markdown", Output::markdown}, {"json", Output::json}};
    CLI::Option* const form = command.add_option("--output", output, "Print as table, csv, markdown or json")
                                  ->transform(CLI::CheckedTransformer(forms, CLI::ignore_case).description(""))
                                  ->type_name("FORM");
    command
        .add_flag_callback(
            "--json", [&output] { output = Output::json; }, "Print as JSON")
        ->excludes(form);
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
                   "  quexel calc model.xlsx --out result.xlsx\n"
                   "  quexel calc model.xlsx --set B2=5e6 --get NPV\n"
                   "  quexel trace 'DYear(38000)'\n"
                   "  quexel help MonthEnd\n"
                   "  quexel help --search rent review\n"
                   "  quexel help");
    int status = 0;

    EvalOptions eval_options;
    CLI::App* const eval_command = program.add_subcommand("eval", "Calculate a formula and print its value");
    eval_command->add_option("formula", eval_options.formula, "The formula, or - for one a line from standard input")
        ->required();
    add_output(*eval_command, eval_options.output);
    eval_command->add_flag("--dates", eval_options.dates, "Print dates as 2026-11-21 and not as numbers");
    eval_command->add_flag("--wide", eval_options.wide, "Print the whole table, wider than the terminal");
    eval_command->callback([&] { status = eval(eval_options); });

    CalcOptions calc_options;
    CLI::App* const calc_command = program.add_subcommand(
        "calc", "Calculate a model in an .xlsx, .ods or .csv file and print it as a table or write it");
    const auto repeatable = [&](const char* name, std::vector<std::string>& values, const char* help) {
        return calc_command->add_option(name, values, help)->expected(1)->take_all();
    };
    calc_command
        ->add_option("file", calc_options.file,
                     "The model, - for standard input; in a CSV file cells that begin with = are formulas")
        ->required();
    CLI::Option* const out = calc_command->add_option(
        "--out", calc_options.out, "Write the results to this .xlsx, .csv or .json file, - for standard output");
    calc_command->add_flag("--in-place", calc_options.in_place, "Put inputs and results into the model's own file")
        ->excludes(out);
    repeatable("--set", calc_options.set, "Set an input, as B2=5e6, Rate=6% or B2:B9=@rates.csv; may be repeated")
        ->type_name("CELL=VALUE");
    repeatable("--get", calc_options.get, "Print this cell, range or name only; may be repeated")->type_name("CELL");
    calc_command
        ->add_option("--scenarios", calc_options.scenarios,
                     "Calculate once for each row of this CSV file; the heads of its columns are cells or names")
        ->excludes("--in-place");
    calc_command->add_flag("--seek", calc_options.seek,
                           "Run the goal seeks that the model asks for, and report on them");
    calc_command->add_flag("--keep-values", calc_options.keep_values,
                           "Keep the file's last value where a cell cannot be calculated");
    repeatable("--chart", calc_options.charts,
               "Draw a chart in the .xlsx file and the report, as 'Cash flow=B5:Z5 over B1:Z1'; may be repeated")
        ->type_name("CHART");
    calc_command->add_option("--report", calc_options.report,
                             "Write a page with tables, charts, errors and traces to this .html file");
    CLI::Option* const traced_cell =
        calc_command->add_option("--trace", calc_options.trace, "Explain this cell, such as B7");
    calc_command->add_option("--html", calc_options.html, "Write the explanation to this file as a page")
        ->needs(traced_cell);
    calc_command->add_flag("--monitor", calc_options.monitor, "Write the time of each call to qx_CalcMon.qxl");
    calc_command->add_option("--sheet", calc_options.sheet, "Print or write this sheet only");
    add_output(*calc_command, calc_options.output);
    CLI::Option* const dates =
        calc_command->add_flag("--dates,!--no-dates", calc_options.dates,
                               "Print dates as 2026-11-21 (the default, but in JSON) or as numbers");
    calc_command->add_flag("--wide", calc_options.wide, "Print the whole table, wider than the terminal");
    calc_command->callback([&] {
        calc_options.dates_asked = dates->count() > 0 && calc_options.dates;
        status = calc(calc_options);
    });

    TraceOptions trace_options;
    CLI::App* const trace_command = program.add_subcommand("trace", "Explain how the value of a formula comes about");
    trace_command->add_option("formula", trace_options.formula, "The formula")->required();
    trace_command->add_option("--against", trace_options.against,
                              "The formula after a change: shows both traces side by side, with their differences");
    trace_command->add_option("--html", trace_options.html, "Write the tree to this file as a page");
    trace_command->add_flag("--all", trace_options.all, "Print long runs of like steps in full");
    trace_command->callback([&] { status = trace(trace_options); });

    ReplaceOptions replace_options;
    CLI::App* const replace_command = program.add_subcommand(
        "replace", "Find by a regular expression in the formulas and constants of a model, and replace");
    replace_command->add_option("file", replace_options.file, "The model, an .xlsx, .ods or .csv file")->required();
    replace_command->add_option("--find", replace_options.find, "Regular expression in Perl syntax")->required();
    replace_command
        ->add_option("--replace", replace_options.replacement,
                     "What takes the place of each match; $1 is the first group")
        ->required();
    replace_command
        ->add_option("--where", replace_options.where, "Only the cells of this area: A1:D50, Inputs!B2 or a name")
        ->type_name("AREA");
    CLI::Option* const write_option = replace_command->add_flag(
        "--write", replace_options.write,
        "Change the file, and keep the former one with .bak after its name; without it the changes are only shown");
    replace_command
        ->add_option("--out", replace_options.out,
                     "Write the changed model to this .xlsx file, or .csv from a CSV model")
        ->type_name("FILE")
        ->excludes(write_option);
    replace_command->callback([&] { status = replace(replace_options); });

    FunctionsOptions functions_options;
    CLI::App* const functions_command = program.add_subcommand("functions", "List the functions of the library");
    functions_command->add_option("--category", functions_options.category, "Only those of this category");
    functions_command->add_flag("--json", functions_options.json, "As JSON, with their arguments");
    functions_command->add_flag("--builtins", functions_options.builtins, "The functions built into the workbook");
    functions_command->add_flag("--names", functions_options.names, "Only the names, one a line");
    functions_command->callback([&] { status = functions(functions_options); });

    std::string name;
    CLI::App* const help_command =
        program.add_subcommand("help", "Show what a function does and takes, or explain a topic");
    help_command->add_option("name", name, "Name of a function, a command or a topic; none lists the topics");
    std::vector<std::string> words;
    CLI::Option* const search_option =
        help_command->add_option("--search", words, "List the functions and topics that hold these words")
            ->type_name("WORDS");
    std::string folder, project_folder;
    CLI::Option* const html_option =
        help_command->add_option("--html", folder, "Write help as pages with search, for a browser, to this folder")
            ->type_name("FOLDER")
            ->excludes(search_option);
    help_command
        ->add_option("--chm-project", project_folder,
                     "Write the pages and the project from which a help compiler makes Quexel.chm to this folder")
        ->type_name("FOLDER")
        ->excludes(search_option)
        ->excludes(html_option);
    help_command->callback([&] {
        if (!words.empty()) {
            status = search_help(words);
            return;
        }
        if (!folder.empty()) {
            status = write_help(folder, HelpForm::browser);
            return;
        }
        if (!project_folder.empty()) {
            status = write_help(project_folder, HelpForm::project);
            return;
        }
        for (const CLI::App* const command :
             program.get_subcommands([&](const CLI::App* c) { return c->check_name(name); }))
            if (!name.empty()) {
                std::cout << command->help();
                return;
            }
        status = help(name);
    });

    std::string shell;
    CLI::App* const completion_command = program.add_subcommand(
        "completion", "Print the script with which bash, zsh or fish completes commands and options");
    completion_command->add_option("shell", shell, "bash, zsh or fish")->required();
    completion_command->callback([&] {
        if (print_completion(std::cout, program, shell)) return;
        std::cerr << "no completion for \"" << shell << "\"; there are: bash, zsh, fish\n";
        status = 1;
    });
    program.add_subcommand("man", "Print the manual page, as for: quexel man | man -l -")->callback([&] {
        print_manual(std::cout, program);
    });

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
