#include "commands/trace_html.h"

#include <cstdio>
#include <unordered_map>
#include <utility>

namespace qx {

extern const char trace_page[]; // the page, with places for its title and its data

namespace {

/// Length of the UTF-8 sequence that a text starts with; 0 if it starts with none.
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

/// Adds a text as a JSON string that is safe inside a script element.
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

/// Adds a text as HTML.
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

/// The data of the page: each text once, and five figures a node in the order of the trace, which are its depth, its
/// kind (plus 100 if it is open at first) and its three texts.
class PageData {
  public:
    explicit PageData(const TraceTree& tree) {
        std::vector<std::pair<const std::vector<TraceNode>*, std::size_t>> path = {{&tree.roots, 0}};
        while (!path.empty()) {
            auto& [nodes, next] = path.back();
            if (next == nodes->size()) {
                path.pop_back();
                continue;
            }
            const TraceNode& node = (*nodes)[next++];
            add(node, path.size() - 1);
            path.emplace_back(&node.children, 0);
        }
    }

    void append(std::string& json) const { json += "\"texts\":[" + texts_ + "],\n\"items\":[" + items_ + "]"; }

  private:
    void add(const TraceNode& node, std::size_t depth) {
        if (!items_.empty()) items_ += ',';
        items_ += std::to_string(depth) + ',' + std::to_string(static_cast<int>(node.kind) + (node.expanded ? 100 : 0));
        for (const std::string* text : {&node.name, &node.value, &node.description})
            items_ += ',' + std::to_string(number(*text));
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

} // namespace

std::string trace_html(const TraceTree& tree, std::string_view subject) {
    constexpr std::string_view title_place = "{{title}}", trace_place = "{{trace}}";
    const std::string_view page = trace_page;
    const std::size_t title_at = page.find(title_place), trace_at = page.find(trace_place);

    std::string html(page.substr(0, title_at));
    append_html(html, "Quexel Trace");
    if (!subject.empty()) append_html(html.append(": "), subject);
    html += page.substr(title_at + title_place.size(), trace_at - title_at - title_place.size());
    html += "{\"subject\":";
    append_json(html, subject);
    html += ",\"summary\":";
    append_json(html, tree.summary);
    html += tree.in_a_file ? ",\"copied\":true,\n" : ",\"copied\":false,\n";
    PageData(tree).append(html);
    html += '}';
    html += page.substr(trace_at + trace_place.size());
    return html;
}

} // namespace qx
