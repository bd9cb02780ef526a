#include "commands/trace_html.h"

#include "commands/trace_comparison.h"
#include "commands/trace_digest.h"

#include <cstdio>
#include <unordered_map>
#include <utility>
#include <vector>

namespace qx {

extern const char trace_page[]; // the page, with places for its title and its data

namespace {

/// Length of the UTF-8 sequence that a string starts with; 0 if it starts with none.
std::size_t sequence_length(std::string_view text) {
    const auto byte = [text](std::size_t i) { return i < text.size() ? static_cast<unsigned char>(text[i]) : 0u; };
    const auto follows = [byte](std::size_t i, unsigned low = 0x80, unsigned high = 0xBF) {
        return byte(i) >= low && byte(i) <= high;
    };
    const unsigned lead = byte(0);
    if (lead < 0x80) return 1;
    if (lead >= 0xC2 && lead <= 0xDF) return follows(1) ? 2 : 0;
    if (lead >= 0xE0 && lead <= 0xEF) // no overlong forms, no surrogates
        return follows(1, lead == 0xE0 ? 0xA0 : 0x80, lead == 0xED ? 0x9F : 0xBF) && follows(2) ? 3 : 0;
    if (lead >= 0xF0 && lead <= 0xF4)
        return follows(1, lead == 0xF0 ? 0x90 : 0x80, lead == 0xF4 ? 0x8F : 0xBF) && follows(2) && follows(3) ? 4 : 0;
    return 0;
}

/// Adds a string as a JSON string that is safe inside a script element.
void append_json(std::string& json, std::string_view text) {
    json += '"';
    const auto escape = [&json](unsigned code) {
        char escaped[8];
        std::snprintf(escaped, sizeof escaped, "\\u%04x", code);
        json += escaped;
    };
    while (!text.empty()) {
        const auto lead = static_cast<unsigned char>(text.front());
        const std::size_t length = sequence_length(text);
        if (length == 0)
            escape(lead == 0x80 ? 0x20AC : lead); // a byte of the code page; 0x80 is the euro sign
        else if (lead < 0x20 || lead == '<' || lead == 0x7F)
            escape(lead);
        else {
            if (lead == '"' || lead == '\\') json += '\\';
            json += text.substr(0, length);
        }
        text.remove_prefix(length == 0 ? 1 : length);
    }
    json += '"';
}

/// Adds a string as HTML.
void append_html(std::string& html, std::string_view text) {
    for (const char letter : text) {
        if (letter == '&')
            html += "&amp;";
        else if (letter == '<')
            html += "&lt;";
        else
            html += letter;
    }
}

/// The data of the page: each string once, and figures for each line.
class PageData {
  public:
    /// Five figures a line: its depth, its kind (plus 100 if it is open at first) and its three texts.
    void add(const TraceTree& tree) {
        for (std::size_t i = 0; i < tree.size(); ++i) {
            add_head(tree.nodes[i].depth, tree.nodes[i].kind, tree.nodes[i].expanded);
            add_texts(tree, i);
        }
    }
    /// Nine figures a line: those of before, the difference, and the three texts of after.
    void add(const TraceTree& before, const TraceTree& after) {
        for (const ComparedNode& line : compare(before, after)) {
            const bool is_old = line.before != ComparedNode::absent;
            add_head(line.depth, is_old ? before.nodes[line.before].kind : after.nodes[line.after].kind, line.expanded);
            add_texts(before, line.before);
            items_ += ',' + std::to_string(static_cast<int>(line.difference) + (line.differs_below ? 10 : 0));
            add_texts(after, line.after);
        }
    }

    void append(std::string& json) const { json += "\"texts\":[" + texts_ + "],\n\"items\":[" + items_ + "]"; }

  private:
    void add_head(int depth, TraceKind kind, bool expanded) {
        if (!items_.empty()) items_ += ',';
        items_ += std::to_string(depth) + ',' + std::to_string(static_cast<int>(kind) + (expanded ? 100 : 0));
    }
    void add_texts(const TraceTree& tree, std::size_t node) {
        const TraceColumns columns = node == ComparedNode::absent ? TraceColumns{} : tree.columns(node);
        for (const std::string_view text : {columns.name, columns.value, columns.description})
            items_ += ',' + std::to_string(number(text));
    }
    std::size_t number(std::string_view text) {
        const auto [place, is_new] = numbers_.try_emplace(text, numbers_.size());
        if (is_new) {
            if (!texts_.empty()) texts_ += ",\n";
            append_json(texts_, text);
        }
        return place->second;
    }

    std::unordered_map<std::string_view, std::size_t> numbers_; ///< of texts that the tree holds
    std::string texts_, items_;
};

/// Writes JSON objects field by field.
class Json {
  public:
    explicit Json(std::string& json) : json_(json) {}

    Json& field(const char* name, std::string_view text) {
        key(name);
        append_json(json_, text);
        return *this;
    }
    Json& field(const char* name, const char* text) { return field(name, std::string_view(text)); }
    Json& field(const char* name, int value) {
        key(name);
        json_ += std::to_string(value);
        return *this;
    }
    Json& field(const char* name, const std::vector<std::string>& texts) {
        return list(name, texts, [this](const std::string& text) { append_json(json_, text); });
    }
    template <class Items, class Write>
    Json& list(const char* name, const Items& items, Write write) {
        key(name);
        json_ += '[';
        bool first = true;
        for (const auto& item : items) {
            if (!first) json_ += ',';
            first = false;
            write(item);
        }
        json_ += ']';
        return *this;
    }

  private:
    void key(const char* name) {
        if (json_.back() != '{') json_ += ',';
        append_json(json_, name);
        json_ += ':';
    }

    std::string& json_;
};

/// The number of an error among the errors of its tree, which folding does not change.
int number_of_error(const TraceTree& tree, std::size_t node) {
    int number = 0;
    for (std::size_t i = 0; i < node; ++i) number += tree.nodes[i].kind == TraceKind::error;
    return number;
}

void append_digest(std::string& json, const TraceTree& tree, const TraceSubject& subject) {
    Json(json).field("subject", subject.formula).field("result", subject.result).field("summary", tree.summary);
    Json(json).list("calls", digest(tree), [&](const CallDigest& call) {
        json += '{';
        Json(json).field("function", call.function).field("results", call.results);
        if (call.failed) Json(json).field("reason", call.reason).field("error", number_of_error(tree, call.error_node));
        Json(json).list("inputs", call.inputs, [&](const InputDigest& input) {
            json += '{';
            Json(json).field("name", input.name).field("values", input.values).field("list", input.is_list);
            Json(json).field("preset", input.is_default).field("note", input.note);
            Json(json).field("description", input.description);
            json += '}';
        });
        Json(json).field("solving", call.solving);
        Json(json).list("steps", call.steps, [&](const StepDigest& step) {
            json += '{';
            Json(json).field("name", step.name).field("times", step.times).field("last", step.last);
            if (!step.argument.empty()) {
                Json(json).field("argument", step.argument);
                char range[80];
                std::snprintf(range, sizeof range, "%.6g to %.6g", step.least, step.most);
                Json(json).field("range", range);
            }
            Json(json).field("details", step.details);
            json += '}';
        });
        Json(json).field("warnings", call.warnings);
        json += '}';
    });
}

/// The page with its data, which `append` adds within the braces of an object.
template <class Append>
std::string filled_page(std::string_view title, Append append) {
    constexpr std::string_view title_place = "{{title}}", trace_place = "{{trace}}";
    const std::string_view page = trace_page;
    const std::size_t title_at = page.find(title_place), trace_at = page.find(trace_place);

    std::string html(page.substr(0, title_at));
    append_html(html, "Quexel Trace");
    if (!title.empty()) append_html(html.append(": "), title);
    html += page.substr(title_at + title_place.size(), trace_at - title_at - title_place.size());
    html += '{';
    append(html);
    html += '}';
    html += page.substr(trace_at + trace_place.size());
    return html;
}

} // namespace

std::string trace_html(const TraceTree& tree, const TraceSubject& subject) {
    return filled_page(subject.formula, [&](std::string& json) {
        append_digest(json, tree, subject);
        json += tree.in_a_file ? ",\"copied\":true,\n" : ",\"copied\":false,\n";
        const TraceTree shown = folded(tree);
        PageData data;
        data.add(shown);
        data.append(json);
    });
}

std::string trace_html(const TraceTree& before, const TraceSubject& subject_before, const TraceTree& after,
                       const TraceSubject& subject_after) {
    const std::string title(subject_before.formula + " against " + subject_after.formula);
    return filled_page(title, [&](std::string& json) {
        append_digest(json, before, subject_before);
        json += ",\n\"against\":{";
        append_digest(json, after, subject_after);
        json += "},\n";
        PageData data;
        data.add(before, after);
        data.append(json);
    });
}

} // namespace qx
