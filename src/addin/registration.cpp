#include "addin/registration.h"

#include "addin/register_order.h"

#include <algorithm>
#include <unordered_map>

namespace qx {

namespace {

Command* first_command = nullptr;

constexpr std::string_view command_category = "dummy";
constexpr int topic_before_first = 586;

} // namespace

Command::Command(const char* name, const char* help, int (*run)())
    : name(name), help(help), run(run), next(first_command) {
    first_command = this;
}

Command* all_commands() { return first_command; }

int topic_of(const Function& function) {
    if (function.topic != 0) return function.topic;
    const auto* const place = std::find(std::begin(register_order), std::end(register_order), function.name);
    return static_cast<int>(place - std::begin(register_order)) + 1 + topic_before_first;
}

std::array<std::string, register_columns> RegisterRow::columns() const {
    std::array<std::string, register_columns> texts;
    texts[column_procedure] = procedure();
    texts[column_function_text] = name();
    if (command != nullptr) {
        texts[column_type_text] = "I";
        texts[column_macro_type] = "2";
        texts[column_category] = command_category;
        texts[column_help] = command->help;
        return texts;
    }
    const Function& declared = function->function;
    texts[column_type_text] = type_text(declared);
    texts[column_argument_text] = argument_text(declared);
    texts[column_macro_type] = "1";
    texts[column_category] = category_name(declared.category);
    texts[column_topic] = "!" + std::to_string(topic);
    texts[column_help] = declared.help;
    const int helps = std::min(declared.arity(), register_columns - column_argument_help);
    for (int i = 0; i < helps; ++i) texts[column_argument_help + i] = declared.args[i].help;
    return texts;
}

const std::vector<RegisterRow>& the_register() {
    static const std::vector<RegisterRow> rows = [] {
        std::unordered_map<std::string_view, const Registered*> functions;
        for (const Registered* node = all_functions(); node != nullptr; node = node->next)
            functions.emplace(node->function.name, node);
        std::unordered_map<std::string_view, const Command*> commands;
        for (const Command* node = all_commands(); node != nullptr; node = node->next)
            commands.emplace(node->name, node);
        std::vector<RegisterRow> found;
        for (const std::string_view name : register_order)
            if (const auto it = functions.find(name); it != functions.end())
                found.push_back({it->second, nullptr, topic_of(it->second->function)});
        for (const std::string_view name : command_order)
            if (const auto it = commands.find(name); it != commands.end()) found.push_back({nullptr, it->second, 0});
        return found;
    }();
    return rows;
}

} // namespace qx
