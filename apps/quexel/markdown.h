// The little Markdown of docs/ as HTML: headings, paragraphs, tables, lists, code, links and emphasis.
#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace qx::app {

std::string html_escaped(std::string_view text);
/// A JSON string that is safe inside a script element.
std::string script_string(std::string_view text);

struct MarkdownLinks {
    /// The page of a name in code, as `PVM`; empty if there is none. Takes the anchor of its section.
    std::function<std::string(std::string_view code, const std::string& anchor)> of_code;
    /// The page that a link leads to; empty if it is not among the pages.
    std::function<std::string(std::string_view target)> of_target;
};

std::string html_of_markdown(std::string_view markdown, const MarkdownLinks& links);
/// The text of the first heading.
std::string title_of_markdown(std::string_view markdown);

} // namespace qx::app
