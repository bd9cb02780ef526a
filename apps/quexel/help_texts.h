// Texts of help that are kept in files of their own.
#pragma once

#include <span>

namespace qx::app {

extern const char help_page_template[];
extern const char help_search_script[];

/// What functions compute, with formulas and sources: a file of docs/ in Markdown.
struct Definitions {
    const char* name;
    const char* markdown;
};
std::span<const Definitions> definitions();

} // namespace qx::app
