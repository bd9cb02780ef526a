#include "apps/quexel/commands.h"

#include "addin/registration.h"
#include "apps/quexel/function_help.h"
#include "apps/quexel/help_index.h"
#include "apps/quexel/help_texts.h"
#include "apps/quexel/output.h"
#include "apps/quexel/topics.h"
#include "hosts/sheet/builtins.h"
#include "hosts/sheet/text.h"

#include <algorithm>
#include <iostream>
#include <nlohmann/json.hpp>

namespace qx::app {

namespace {

bool in_category(const Function& function, std::string_view wanted) {
    return wanted.empty() || sheet::equal_ignoring_case(wanted, category_name(function.category)) ||
           sheet::equal_ignoring_case(wanted, short_category(function.category));
}

nlohmann::ordered_json preset_json(const Preset& preset) {
    switch (preset.type) {
    case Preset::number:
    case Preset::sequence:
        if (preset.value == static_cast<long long>(preset.value)) return static_cast<long long>(preset.value);
        return preset.value;
    case Preset::boolean:
        return preset.value != 0.0;
    case Preset::text:
        return preset.words == nullptr ? "" : preset.words;
    default:
        return nullptr;
    }
}

/// Prints a string in lines of at most 100 characters, or what the terminal has, each after the same indent.
void print_wrapped(std::string_view text, const std::string& first, std::size_t indent) {
    const std::size_t terminal = terminal_width();
    const std::size_t width = terminal == 0 ? 100 : std::clamp<std::size_t>(terminal, indent + 20, 100);
    std::string line = first;
    line.append(first.size() < indent ? indent - first.size() : 0, ' ');
    bool empty = true;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find(' '), text.size());
        if (!empty && line.size() + 1 + end > width) {
            std::cout << line << '\n';
            line.assign(indent, ' ');
            empty = true;
        }
        if (!empty) line += ' ';
        line += text.substr(0, end);
        empty = false;
        text.remove_prefix(std::min(text.size(), end + 1));
    }
    std::cout << line << '\n';
}

/// How many letters differ between two names, in any case.
std::size_t distance(std::string_view a, std::string_view b) {
    const std::string x = sheet::lower_case(a), y = sheet::lower_case(b);
    std::vector<std::size_t> row(y.size() + 1);
    for (std::size_t j = 0; j <= y.size(); ++j) row[j] = j;
    for (std::size_t i = 1; i <= x.size(); ++i) {
        std::size_t diagonal = row[0];
        row[0] = i;
        for (std::size_t j = 1; j <= y.size(); ++j) {
            const std::size_t above = row[j];
            row[j] = std::min({row[j] + 1, row[j - 1] + 1, diagonal + (x[i - 1] != y[j - 1])});
            diagonal = above;
        }
    }
    return row[y.size()];
}

/// The arguments of a built-in function as a call shows them.
std::string signature(const sheet::Builtin& builtin) {
    return std::string(builtin.name) + "(" + builtin.arguments + ")";
}

int builtin_functions(const FunctionsOptions& options) {
    auto all = nlohmann::ordered_json::array();
    const char* between = "";
    for (const sheet::BuiltinGroup& group : sheet::builtin_groups()) {
        if (!options.category.empty() && !sheet::equal_ignoring_case(options.category, group.title)) continue;
        if (!options.json) std::cout << between << group.title << '\n';
        between = "\n";
        for (const sheet::Builtin& builtin : group.functions) {
            if (options.json)
                all.push_back({{"name", builtin.name},
                               {"category", group.title},
                               {"arguments", builtin.arguments},
                               {"help", builtin.help}});
            else
                print_wrapped(builtin.help, "  " + std::string(builtin.name) + "  ", 26);
        }
    }
    if (options.json) std::cout << all.dump(1) << '\n';
    return 0;
}

int builtin_help(const sheet::Builtin& builtin) {
    std::cout << signature(builtin) << '\n';
    for (const sheet::BuiltinGroup& group : sheet::builtin_groups())
        if (&builtin >= group.functions.data() && &builtin < group.functions.data() + group.functions.size())
            std::cout << "Built into the workbook: " << group.title << "\n\n";
    print_wrapped(builtin.help, "", 0);
    return 0;
}

/// Prints the page of a function.
void print(const Function& function, const FunctionHelp& help) {
    std::cout << help.syntax << '\n' << short_category(function.category) << "\n\n";
    print_wrapped(function.help, "", 0);
    if (!help.note.empty()) {
        std::cout << '\n';
        print_wrapped(help.note, "", 0);
    }
    if (!help.arguments.empty()) {
        std::cout << "\nArguments\n";
        std::size_t width = 0;
        for (const ArgumentHelp& argument : help.arguments) width = std::max(width, argument.name.size());
        const auto more = [&](const std::string& text) { print_wrapped(text, "", width + 4); };
        for (const ArgumentHelp& argument : help.arguments) {
            print_wrapped(argument.text, "  " + argument.name, width + 4);
            std::string what = argument.what;
            if (!argument.range.empty()) what += ", " + argument.range;
            what += argument.preset.empty() ? "; required" : "; default: " + argument.preset;
            more(what);
            std::string values;
            for (const auto& [code, name] : argument.values)
                values += (values.empty() ? "Values: " : ", ") + std::to_string(code) + ' ' + name;
            if (!values.empty()) more(values);
        }
    }
    std::cout << "\nResult\n";
    print_wrapped(help.result, "  ", 2);
    if (!help.errors.empty()) std::cout << "\nErrors\n";
    for (const ErrorHelp& error : help.errors)
        print_wrapped(error.cause + ": " + error.shows + ", " + error.reason, "  ", 2);
    if (!help.examples.empty()) std::cout << "\nExamples\n";
    for (const ExampleHelp& example : help.examples) std::cout << "  " << example.line() << '\n';
    std::string related;
    for (const Function* const other : help.related) related += std::string(related.empty() ? "" : ", ") + other->name;
    if (!related.empty()) {
        std::cout << '\n';
        print_wrapped(related, "See also:", 10);
    }
}

} // namespace

int functions(const FunctionsOptions& options) {
    if (options.builtins) return builtin_functions(options);
    std::vector<const Function*> list = declared_functions();
    list.erase(std::remove_if(list.begin(), list.end(),
                              [&](const Function* function) { return !in_category(*function, options.category); }),
               list.end());
    if (list.empty() && !options.category.empty()) {
        std::cerr << "no category \"" << sheet::valid_utf8(options.category) << "\"; there are:\n";
        std::vector<std::string_view> names;
        for (const Function* const function : declared_functions()) names.push_back(short_category(function->category));
        std::sort(names.begin(), names.end());
        names.erase(std::unique(names.begin(), names.end()), names.end());
        for (const std::string_view name : names) std::cerr << "  " << name << '\n';
        return 1;
    }
    if (options.names) {
        for (const Function* const function : list) std::cout << function->name << '\n';
        return 0;
    }
    if (options.json) {
        auto all = nlohmann::ordered_json::array();
        for (const Function* const function : list) {
            auto arguments = nlohmann::ordered_json::array();
            for (int i = 0; i < function->arity(); ++i) {
                const Argument& argument = function->args[i];
                arguments.push_back({{"name", argument.name},
                                     {"optional", argument.is_optional()},
                                     {"default", preset_json(argument.preset)},
                                     {"help", argument.help}});
                if (argument.limits.has_low()) arguments.back()["low"] = argument.limits.low;
                if (argument.limits.has_high()) arguments.back()["high"] = argument.limits.high;
                for (const SwitchValue& value : argument.values)
                    if (value.name != nullptr) arguments.back()["values"][std::to_string(value.code)] = value.name;
            }
            all.push_back({{"name", function->name},
                           {"category", category_name(function->category)},
                           {"topic", topic_of(*function)},
                           {"help", function->help},
                           {"arguments", arguments}});
        }
        std::cout << all.dump(1) << '\n';
        return 0;
    }
    std::stable_sort(list.begin(), list.end(), [](const Function* a, const Function* b) {
        return short_category(a->category) < short_category(b->category);
    });
    const Function* last = nullptr;
    for (const Function* const function : list) {
        if (last == nullptr || last->category != function->category) {
            if (last != nullptr) std::cout << '\n';
            std::cout << short_category(function->category) << '\n';
        }
        print_wrapped(function->help, "  " + std::string(function->name) + "  ", 26);
        last = function;
    }
    return 0;
}

int help(const std::string& name) {
    if (name.empty()) {
        print_topics(std::cout);
        return 0;
    }
    if (print_topic(std::cout, name)) return 0;
    if (const Definitions* const document = find_definitions(name)) {
        std::cout << document->markdown;
        return 0;
    }
    constexpr std::string_view mark = "_xlfn."; // files write it in front of a spreadsheet's own function
    if (sheet::equal_ignoring_case(std::string_view(name).substr(0, mark.size()), mark))
        if (const sheet::Builtin* const builtin = sheet::find_builtin(name.substr(mark.size())))
            return builtin_help(*builtin);
    const Function* const function = find_function(name);
    if (function == nullptr) {
        for (const Function* const each : declared_functions())
            if (in_category(*each, name)) {
                print_wrapped(overview(each->category), "", 0);
                std::cout << '\n';
                return functions({.category = name});
            }
        if (const sheet::Builtin* const builtin = sheet::find_builtin(name)) return builtin_help(*builtin);
        std::cerr << "no function or topic \"" << sheet::valid_utf8(name) << "\"";
        std::string close;
        for (const Function* const candidate : declared_functions())
            if (name.size() < 64 && distance(candidate->name, name) <= 1 + name.size() / 4)
                close += (close.empty() ? "" : ", ") + std::string(candidate->name);
        if (!close.empty()) std::cerr << "; did you mean " << close << "?";
        std::cerr << '\n';
        return 1;
    }
    print(*function, help_of(*function));
    return 0;
}

int search_help(const std::vector<std::string>& words) {
    const std::vector<HelpEntry> found = search(words);
    if (found.empty()) {
        std::cerr << "nothing found; quexel functions lists all functions, quexel help the topics\n";
        return 1;
    }
    std::size_t width = 0;
    for (const HelpEntry& entry : found) width = std::max(width, std::min<std::size_t>(entry.name.size(), 22));
    for (const HelpEntry& entry : found) print_wrapped(entry.summary, "  " + entry.name + "  ", width + 4);
    std::cerr << found.size() << (found.size() == 1 ? " page" : " pages") << "; quexel help NAME shows one\n";
    return 0;
}

} // namespace qx::app
