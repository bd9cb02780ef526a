// The project of a help file for Windows: what a help compiler makes Quexel.chm from, beside the pages themselves.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace qx::app {

/// A page in the tree of contents.
struct HelpNode {
    std::string title;
    std::string page;
    std::vector<HelpNode> below = {};
};

/// Writes Quexel.hhp, Quexel.hhc (contents) and Quexel.hhk (index). Each function's page has the number with which the
/// function is registered as its topic.
void write_help_project(const std::filesystem::path& folder, const std::vector<HelpNode>& contents);

} // namespace qx::app
