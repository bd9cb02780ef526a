#include "addin/examples.h"

#include <algorithm>

namespace qx {

std::size_t joint_of(std::string_view text) {
    std::size_t joint = std::string_view::npos;
    each_outside_texts(text, [&](std::size_t at, int depth) {
        const std::string_view sign = text.substr(at, 3);
        if (depth == 0 && (sign == " = " || sign == " ~ " || sign == " ! ")) joint = at;
    });
    return joint;
}

Example read_example(std::string_view text) {
    Example example;
    if (text.starts_with('[')) {
        const std::size_t end = text.find("] ");
        example.cells = text.substr(1, end - 1);
        text.remove_prefix(end + 2);
    }
    const std::size_t joint = joint_of(text);
    example.formula = text.substr(0, joint);
    if (joint == std::string_view::npos) return example;
    example.sign = text[joint + 1];
    example.expected = text.substr(joint + 3);
    if (example.sign == '~')
        example.expected = example.expected.substr(0, example.expected.rfind(' '));
    else if (example.sign == '!')
        example.expected = example.expected.substr(0, example.expected.find(' '));
    return example;
}

std::string outcome(const Example& example) {
    if (example.expected == "empty") return "gives an empty cell";
    return (example.sign == '!' ? "gives " : "= ") + std::string(example.expected);
}

std::optional<std::vector<std::string>> call_arguments(std::string_view formula, std::string_view function) {
    if (!formula.starts_with(function) || formula.substr(function.size(), 1) != "(" || !formula.ends_with(')'))
        return {};
    formula.remove_prefix(function.size());
    std::vector<std::string> arguments;
    std::size_t start = 1;
    bool is_call = true;
    const auto take = [&](std::size_t end) {
        std::string_view argument = formula.substr(start, end - start);
        argument.remove_prefix(std::min(argument.find_first_not_of(' '), argument.size()));
        arguments.emplace_back(argument);
        start = end + 1;
    };
    each_outside_texts(formula, [&](std::size_t at, int depth) {
        if (depth == 0) is_call = false;
        if (depth != 1) return;
        if (formula[at] == ',') take(at);
        if (formula[at] == ')' && at + 1 < formula.size()) is_call = false; // MonthEnd(1) + DMonth(2)
        if (formula[at] == ')' && at + 1 == formula.size()) take(at);
    });
    if (!is_call) return {};
    return arguments;
}

} // namespace qx
