#include "commands/trace_digest.h"

#include <algorithm>
#include <cstdlib>

namespace qx {

namespace {

constexpr std::size_t most_calls = 50;
constexpr std::size_t most_details = 100;

std::string_view trimmed(std::string_view text) {
    const auto blank = [](char c) { return c == ' ' || c == '\n' || c == '\r' || c == '\t'; };
    while (!text.empty() && blank(text.front())) text.remove_prefix(1);
    while (!text.empty() && blank(text.back())) text.remove_suffix(1);
    return text;
}

std::string one_line(std::string_view text) {
    std::string line;
    for (const char c : trimmed(text)) {
        if (c == '\n' || c == '\r' || c == ' ') {
            if (!line.ends_with(' ')) line += ' ';
        } else {
            line += c;
        }
    }
    return line;
}

/// The line of an error's description that begins with a word, as "Message: ", without its end.
std::string_view line_of(std::string_view description, std::string_view word) {
    const std::size_t at = description.find(word);
    if (at == description.npos) return {};
    std::string_view line = description.substr(at + word.size());
    for (const std::string_view next : {"\nFunction: ", "\nVariable: ", "\nMessage: ", "\nClass '"})
        line = line.substr(0, line.find(next));
    line = trimmed(line);
    while (!line.empty() && line.back() == '.') line.remove_suffix(1);
    return line;
}

std::string_view first_sentence(std::string_view text) {
    for (const std::string_view stop : {". ", ".\n"}) text = text.substr(0, text.find(stop));
    return trimmed(text);
}

/// Calls visit(child) for each node right below.
template <class Visit>
void each_child(const TraceTree& tree, std::size_t node, Visit visit) {
    for (std::size_t i = node + 1; i < tree.nodes[node].end; i = tree.nodes[i].end) visit(i);
}

/// A number as the whole text; none if it is anything else.
std::optional<double> number_in(std::string_view text) {
    const std::string copy(text);
    char* end = nullptr;
    const double value = std::strtod(copy.c_str(), &end);
    if (copy.empty() || copy.front() == ' ' || end != copy.c_str() + copy.size()) return {};
    return value;
}

bool is_block(const TraceTree& tree, std::size_t node, TraceKind kind, std::string_view name) {
    return tree.nodes[node].kind == kind && tree.columns(node).name == name;
}

InputDigest input(const TraceTree& tree, std::size_t node) {
    InputDigest found;
    found.name = tree.columns(node).name;
    std::string returned;
    const auto add_note = [&found](std::string_view text) {
        if (!found.note.empty()) found.note += "; ";
        found.note += one_line(text);
    };
    each_child(tree, node, [&](std::size_t i) {
        const TraceColumns text = tree.columns(i);
        switch (tree.nodes[i].kind) {
        case TraceKind::argument:
            if (text.name.starts_with(found.name + "(")) {
                found.is_list = true;
                found.values.emplace_back(trimmed(text.value));
            }
            break;
        case TraceKind::return_value:
            returned = trimmed(text.value);
            break;
        case TraceKind::warning:
            add_note(text.description);
            break;
        case TraceKind::info: {
            constexpr std::string_view words = " set to default value of ";
            if (!text.description.starts_with(found.name + std::string(words))) break;
            found.is_default = true;
            const std::size_t bracket = text.description.find('(');
            const std::string_view meaning =
                bracket == text.description.npos ? "" : text.description.substr(bracket + 1);
            if (meaning.size() > 1) add_note(meaning.substr(0, meaning.size() - 1));
            break;
        }
        default:
            break;
        }
    });
    if (!found.is_list && !returned.empty()) found.values.push_back(returned);
    return found;
}

/// The values of a list that is described as "Rates (2): 0.03, 0.04"; the whole text if it is none, or cut short.
std::vector<std::string> values_of(std::string_view text, std::string_view name) {
    std::vector<std::string> values;
    std::string_view rest = text;
    const std::size_t start = text.find("): ");
    if (text.starts_with(std::string(name) + " (") && start != text.npos && !text.ends_with(", ...")) {
        rest.remove_prefix(start + 3);
        for (std::size_t comma; (comma = rest.find(", ")) != rest.npos; rest.remove_prefix(comma + 2))
            values.emplace_back(rest.substr(0, comma));
    }
    values.emplace_back(rest);
    return values;
}

/// What a block of arguments adds to the inputs: their descriptions, and the value of one that is no plain list.
void complete(std::vector<InputDigest>& inputs, const TraceTree& tree, std::size_t arguments) {
    each_child(tree, arguments, [&](std::size_t i) {
        const TraceColumns text = tree.columns(i);
        const auto found = std::find_if(inputs.begin(), inputs.end(),
                                        [&](const InputDigest& input) { return input.name == text.name; });
        if (found == inputs.end()) return;
        found->description = one_line(text.description);
        if (!found->is_list && found->values.size() == 1 && found->values[0].starts_with(found->name + " had ")) {
            found->values = values_of(trimmed(text.value), found->name);
            found->is_list = found->values.size() > 1;
        }
    });
}

void count_step(std::vector<StepDigest>& steps, const TraceTree& tree, std::size_t node) {
    const std::string_view name = tree.columns(node).name;
    auto step = std::find_if(steps.begin(), steps.end(), [&](const StepDigest& s) { return s.name == name; });
    if (step == steps.end()) {
        step = steps.insert(steps.end(), StepDigest{});
        step->name = name;
    }
    ++step->times;
    step->details.clear();
    step->last.clear();
    int arguments = 0;
    std::optional<double> value;
    std::string_view argument;
    each_child(tree, node, [&](std::size_t i) {
        const TraceColumns text = tree.columns(i);
        if (is_block(tree, i, TraceKind::arguments, "Arguments"))
            each_child(tree, i, [&](std::size_t a) {
                ++arguments;
                argument = tree.columns(a).name;
                value = number_in(trimmed(tree.columns(a).value));
            });
        else if (tree.nodes[i].kind == TraceKind::return_value)
            step->last = trimmed(text.value);
        else if (tree.nodes[i].kind == TraceKind::info && step->details.size() < most_details)
            step->details.push_back(one_line(text.description));
    });
    if (arguments != 1 || !value || (step->times > 1 && step->argument != argument)) {
        step->argument.clear();
        return;
    }
    step->least = step->times == 1 ? *value : std::min(step->least, *value);
    step->most = step->times == 1 ? *value : std::max(step->most, *value);
    step->argument = argument;
}

/// Steps of the function itself; what is inside loops and branches belongs to it too.
void read_work(CallDigest& call, const TraceTree& tree, std::size_t block) {
    std::vector<std::size_t> waiting{block};
    while (!waiting.empty()) {
        const std::size_t at = waiting.back();
        waiting.pop_back();
        std::vector<std::size_t> inside;
        each_child(tree, at, [&](std::size_t i) {
            const TraceColumns text = tree.columns(i);
            switch (tree.nodes[i].kind) {
            case TraceKind::function_call:
            case TraceKind::internal_call:
            case TraceKind::array_call:
                count_step(call.steps, tree, i);
                break;
            case TraceKind::arguments:
                if (text.name == "Arguments") complete(call.inputs, tree, i);
                break;
            case TraceKind::info:
                if (text.description.starts_with("Solve")) call.solving.push_back(one_line(text.description));
                break;
            case TraceKind::loop_pass:
            case TraceKind::timeperiod_loop:
            case TraceKind::if_clause:
                inside.push_back(i);
                break;
            default:
                break;
            }
        });
        waiting.insert(waiting.end(), inside.rbegin(), inside.rend());
    }
    for (StepDigest& step : call.steps)
        if (step.times == 1) step.details.clear();
}

CallDigest read_call(const TraceTree& tree, std::size_t root) {
    CallDigest call;
    call.node = root;
    call.function = tree.columns(root).name;
    each_child(tree, root, [&](std::size_t i) {
        const TraceColumns text = tree.columns(i);
        if (is_block(tree, i, TraceKind::arguments, "Inputs")) {
            each_child(tree, i, [&](std::size_t v) {
                if (tree.nodes[v].kind == TraceKind::variable) call.inputs.push_back(input(tree, v));
            });
        } else if (tree.nodes[i].kind == TraceKind::function_call || tree.nodes[i].kind == TraceKind::array_call) {
            if (text.name == call.function)
                read_work(call, tree, i);
            else
                count_step(call.steps, tree, i);
        } else if (tree.nodes[i].kind == TraceKind::return_value) {
            call.results.clear();
            if (tree.has_children(i))
                each_child(tree, i, [&](std::size_t e) { call.results.emplace_back(trimmed(tree.columns(e).value)); });
            else
                call.results.emplace_back(trimmed(text.value));
        }
    });
    for (std::size_t i = root; i < tree.nodes[root].end; ++i) {
        const std::string_view description = tree.columns(i).description;
        if (tree.nodes[i].kind == TraceKind::error) {
            call.failed = true;
            call.error_node = i;
            call.reason = reason_of(description);
        } else if (tree.nodes[i].kind == TraceKind::warning && call.warnings.size() < most_details) {
            std::string warning = one_line(description);
            if (std::find(call.warnings.begin(), call.warnings.end(), warning) == call.warnings.end())
                call.warnings.push_back(std::move(warning));
        }
    }
    return call;
}

} // namespace

std::string reason_of(std::string_view description) {
    std::string_view head = description.substr(0, description.find('\n'));
    if (head.starts_with("Error ")) // "Error LIB05: "
        if (const std::size_t colon = head.find(": "); colon != head.npos) head.remove_prefix(colon + 2);
    std::string_view variable;
    if (const std::size_t at = head.rfind("  Variable "); at != head.npos) {
        variable = trimmed(head.substr(at + 11));
        head = head.substr(0, at);
    }
    std::string reason = one_line(head);
    if (reason.empty()) return reason;
    while (reason.ends_with('.')) reason.pop_back();
    if (!variable.empty()) reason += " (" + std::string(variable) + ")";
    if (const std::string_view message = first_sentence(line_of(description, "\nMessage: ")); !message.empty())
        reason += ": " + one_line(message);
    return reason + ".";
}

std::vector<CallDigest> digest(const TraceTree& tree) {
    std::vector<std::size_t> roots;
    for (std::size_t i = 0; i < tree.size(); i = tree.nodes[i].end)
        if (tree.nodes[i].kind == TraceKind::external_call) roots.push_back(i);
    std::vector<CallDigest> calls;
    for (std::size_t r = roots.size() > most_calls ? roots.size() - most_calls : 0; r < roots.size(); ++r)
        calls.push_back(read_call(tree, roots[r]));
    return calls;
}

} // namespace qx
