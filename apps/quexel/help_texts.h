// Texts of help that are kept in files of their own.
#pragma once

#include <span>
#include <string>

namespace qx::app {

extern const char help_page_template[];
extern const char help_search_script[];

/// What functions compute, with formulas and sources: a file of docs/ in Markdown.
struct Definitions {
    const char* name;
    const char* markdown;
};
std::span<const Definitions> definitions();
/// The one of a name, in any case; null if there is none.
const Definitions* find_definitions(const std::string& name);
/// The file of its page.
std::string page_of(const Definitions& document);

} // namespace qx::app
