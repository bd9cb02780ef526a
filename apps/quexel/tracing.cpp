#include "apps/quexel/tracing.h"
#include "apps/quexel/output.h"

#include "commands/trace_comparison.h"
#include "commands/trace_digest.h"
#include "hosts/sheet/text.h"

#include <algorithm>
#include <fstream>
#include <iostream>

namespace qx::app {

void report_file(const clsTrace2& trace) {
    if (!trace.file_complete())
        std::cerr << trace.file_name()
                  << (trace.file_begun() ? ": not complete: the disk is full or failed\n" : ": cannot be written\n");
}

namespace {

constexpr std::size_t widest_name = 56, widest_value = 24;

std::string padded(std::string text, std::size_t width) {
    const std::size_t length = sheet::character_count(text);
    return text.append(length < width ? width - length : 0, ' ');
}

/// A line of text in valid UTF-8 without blanks at its end.
void print_line(std::string line) {
    line.erase(line.find_last_not_of(' ') + 1);
    std::replace(line.begin(), line.end(), '\n', ' ');
    std::replace(line.begin(), line.end(), '\r', ' ');
    std::cout << line << '\n';
}

std::string valid(std::string_view text) { return sheet::valid_utf8(std::string(text)); }

std::string joined(const std::vector<std::string>& texts) {
    constexpr std::size_t most = 12;
    std::string line;
    for (std::size_t i = 0; i < std::min(texts.size(), most); ++i) line += (i == 0 ? "" : ", ") + texts[i];
    if (texts.size() > most) line += ", ... (" + std::to_string(texts.size()) + ")";
    return valid(line);
}

std::string answer(const CallDigest& call, const TraceSubject& subject) {
    if (call.failed) return (subject.result.empty() ? "error" : subject.result) + "  " + valid(call.reason);
    return subject.result.empty() ? joined(call.results) : subject.result;
}

std::string words(const StepDigest& step) {
    std::string text = step.times == 1 ? "1 call" : std::to_string(step.times) + " calls";
    char range[100];
    if (step.times > 1 && !step.argument.empty()) {
        std::snprintf(range, sizeof range, " from %.6g to %.6g", step.least, step.most);
        text += ", " + step.argument + range;
    }
    if (!step.last.empty()) text += (step.times == 1 ? ", result " : ", last result ") + step.last;
    return valid(text);
}

using Rows = std::vector<std::vector<Field>>;

/// What a modeller asks first of a call, as rows of a name and a string.
Rows in_short(const CallDigest& call, const TraceSubject& subject) {
    Rows rows{{{call.function}, {"= " + answer(call, subject)}}};
    for (const InputDigest& input : call.inputs)
        rows.push_back({{"  " + input.name},
                        {(input.values.empty() && call.failed ? "not understood" : joined(input.values)) +
                         (input.is_default ? "  (default)" : "")}});
    for (const StepDigest& step : call.steps) rows.push_back({{"  " + step.name + "()"}, {words(step)}});
    for (const std::string& text : call.solving) rows.push_back({{"  "}, {valid(text)}});
    return rows;
}

void print_tree(const TraceTree& tree) {
    std::size_t name_width = 0, value_width = 0;
    const auto each = [&tree](auto visit) {
        for (std::size_t i = 0; i < tree.size(); i = tree.nodes[i].fold ? tree.nodes[i].end : i + 1)
            visit(tree.nodes[i], tree.columns(i));
    };
    each([&](const TraceNode& node, const TraceColumns& text) {
        name_width = std::max(name_width, std::min(widest_name, 2 * static_cast<std::size_t>(node.depth) +
                                                                    sheet::character_count(std::string(text.name))));
        value_width = std::max(value_width, std::min(widest_value, sheet::character_count(std::string(text.value))));
    });
    each([&](const TraceNode& node, const TraceColumns& text) {
        print_line(padded(std::string(2 * static_cast<std::size_t>(node.depth), ' ') + valid(text.name), name_width) +
                   "  " + padded(valid(text.value), value_width) + "  " + valid(text.description) +
                   (node.fold ? " (--all shows them)" : ""));
    });
    std::cout << tree.summary << '\n';
}

int write_page(const std::string& name, const std::string& page) {
    std::ofstream file(name, std::ios::binary);
    file << page;
    file.close();
    if (file) return 0;
    std::cerr << "cannot write " << name << '\n';
    return 1;
}

} // namespace

int show(const TraceTree& tree, const TraceSubject& subject, const std::string& html, bool all) {
    const int status = qx::trace().file_begun() && !tree.in_a_file ? 1 : 0; // a part of the trace passes for all of it
    if (!html.empty()) return std::max(status, write_page(html, trace_html(tree, subject)));
    const std::vector<CallDigest> calls = digest(tree);
    for (const CallDigest& call : calls)
        print_table(std::cout, &call == &calls.back() ? in_short(call, subject)
                                                      : Rows{{{call.function}, {"= " + answer(call, {})}}});
    if (!calls.empty()) std::cout << '\n';
    print_tree(all ? tree : folded(tree));
    return status;
}

int show(const TraceTree& before, const TraceSubject& subject_before, const TraceTree& after,
         const TraceSubject& subject_after, const std::string& html) {
    if (!html.empty()) return write_page(html, trace_html(before, subject_before, after, subject_after));
    Rows rows{{{" "}, {""}, {"Before"}, {"After"}},
              {{subject_before.formula == subject_after.formula ? " " : "*"},
               {"Formula"},
               {subject_before.formula},
               {subject_after.formula}},
              {{subject_before.result == subject_after.result ? " " : "*"},
               {"Result"},
               {subject_before.result},
               {subject_after.result}}};
    print_table(std::cout, rows);
    std::cout << '\n';
    rows.clear();
    std::size_t differences = 0;
    for (const ComparedNode& line : compare(before, after)) {
        if (line.difference == Difference::none && !line.differs_below) continue;
        differences += line.difference != Difference::none;
        static constexpr const char* marks[] = {" ", "*", "-", "+"};
        const auto value = [](const TraceTree& tree, std::size_t node) {
            if (node == ComparedNode::absent) return std::string();
            const TraceColumns text = tree.columns(node);
            const bool is_note = text.value.empty() && !tree.has_children(node);
            std::string shown = valid(is_note ? text.description : text.value);
            std::replace(shown.begin(), shown.end(), '\n', ' ');
            constexpr std::size_t widest = 48;
            if (sheet::character_count(shown) > widest)
                shown = shown.substr(0, sheet::character_offset(shown, widest - 3)) + "...";
            return shown;
        };
        const bool is_old = line.before != ComparedNode::absent;
        const std::string_view name = is_old ? before.columns(line.before).name : after.columns(line.after).name;
        rows.push_back({{marks[static_cast<int>(line.difference)]},
                        {std::string(2 * static_cast<std::size_t>(line.depth), ' ') + valid(name)},
                        {value(before, line.before)},
                        {value(after, line.after)}});
    }
    print_table(std::cout, rows);
    std::cout << (differences == 0   ? std::string("No differences")
                  : differences == 1 ? std::string("1 difference")
                                     : std::to_string(differences) + " differences")
              << '\n';
    return 0;
}

} // namespace qx::app
