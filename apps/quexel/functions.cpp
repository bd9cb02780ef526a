#include "apps/quexel/commands.h"

#include "addin/registration.h"
#include "apps/quexel/manual.h"
#include "apps/quexel/output.h"
#include "hosts/sheet/builtins.h"
#include "hosts/sheet/text.h"

#include <algorithm>
#include <cstring>
#include <iostream>
#include <nlohmann/json.hpp>

namespace qx::app {

namespace {

/// The declared functions in the order of their names.
std::vector<const Function*> declared() {
    std::vector<const Function*> list;
    for (const Registered* node = all_functions(); node != nullptr; node = node->next) list.push_back(&node->function);
    std::sort(list.begin(), list.end(),
              [](const Function* a, const Function* b) { return sheet::compare_ignoring_case(a->name, b->name) < 0; });
    return list;
}

/// The name of a category without the mark that all have.
std::string_view short_category(Category category) {
    const std::string_view name = category_name(category);
    return name.starts_with("QX: ") ? name.substr(4) : name;
}

bool in_category(const Function& function, std::string_view wanted) {
    return wanted.empty() || sheet::equal_ignoring_case(wanted, category_name(function.category)) ||
           sheet::equal_ignoring_case(wanted, short_category(function.category));
}

std::string signature(const Function& function) {
    std::string text = std::string(function.name) + "(";
    for (int i = 0; i < function.arity(); ++i) {
        const Argument& argument = function.args[i];
        if (i > 0) text += ", ";
        text += argument.is_optional() ? "[" + std::string(argument.name) + "]" : std::string(argument.name);
    }
    return text + ")";
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

/// "0 Sum, 1 Average".
std::string values_text(const SwitchTable& values) {
    std::string text;
    for (const SwitchValue& value : values)
        if (value.name != nullptr)
            text += (text.empty() ? "" : ", ") + std::to_string(value.code) + ' ' + std::string(value.name);
    return text.substr(0, text.find_last_not_of("\t ") + 1);
}

std::string preset_text(const Preset& preset) {
    switch (preset.type) {
    case Preset::number:
    case Preset::sequence: {
        const std::string number = sheet::general_text(preset.value);
        const bool adds_nothing = preset.words == nullptr || std::string_view(preset.words).ends_with(number);
        return adds_nothing ? number : number + ", " + preset.words; // not "0, Defaulted to 0"
    }
    case Preset::boolean:
        return preset.value != 0.0 ? "TRUE" : "FALSE";
    case Preset::text:
        return preset.words == nullptr || *preset.words == '\0' ? "empty" : "\"" + std::string(preset.words) + "\"";
    default:
        return "none";
    }
}

/// Prints a text in lines of at most 100 characters, or what the terminal has, each after the same indent.
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

/// The related functions that exist, "DateSeq, NextDateSeq".
std::string see_also(const Function& function) {
    std::stringstream names(function.see_also);
    std::string list;
    for (std::string name; std::getline(names, name, ',');)
        if (find_function(name) != nullptr) list += (list.empty() ? "" : ", ") + name;
    return list;
}

} // namespace

namespace {

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

} // namespace

int functions(const FunctionsOptions& options) {
    if (options.builtins) return builtin_functions(options);
    std::vector<const Function*> list = declared();
    list.erase(std::remove_if(list.begin(), list.end(),
                              [&](const Function* function) { return !in_category(*function, options.category); }),
               list.end());
    if (list.empty() && !options.category.empty()) {
        std::cerr << "no category \"" << sheet::valid_utf8(options.category) << "\"; there are:\n";
        std::vector<std::string_view> names;
        for (const Function* const function : declared()) names.push_back(short_category(function->category));
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
    const Function* const function = find_function(name);
    if (function == nullptr) {
        if (const sheet::Builtin* const builtin = sheet::find_builtin(name)) return builtin_help(*builtin);
        std::cerr << "no function or topic \"" << sheet::valid_utf8(name) << "\"";
        std::string close;
        for (const Function* const candidate : declared())
            if (name.size() < 64 && distance(candidate->name, name) <= 1 + name.size() / 4)
                close += (close.empty() ? "" : ", ") + std::string(candidate->name);
        if (!close.empty()) std::cerr << "; did you mean " << close << "?";
        std::cerr << '\n';
        return 1;
    }
    std::cout << signature(*function) << '\n' << short_category(function->category) << "\n\n";
    print_wrapped(function->help, "", 0);
    if (function->arity() > 0) {
        std::cout << "\nArguments\n";
        std::size_t width = 0;
        for (int i = 0; i < function->arity(); ++i) width = std::max(width, std::strlen(function->args[i].name));
        for (int i = 0; i < function->arity(); ++i) {
            const Argument& argument = function->args[i];
            print_wrapped(argument.help, "  " + std::string(argument.name), width + 4);
            if (const std::string values = values_text(argument.values); !values.empty())
                print_wrapped("Values: " + values, "", width + 4);
            if (argument.is_optional()) print_wrapped("Default: " + preset_text(argument.preset), "", width + 4);
        }
    }
    if (function->examples[0] != nullptr) std::cout << "\nExamples\n";
    for (const char* const example : function->examples)
        if (example != nullptr) std::cout << "  " << example << '\n';
    const std::string related = see_also(*function);
    if (!related.empty()) std::cout << "\nSee also: " << related << '\n';
    return 0;
}

} // namespace qx::app
