#include "apps/quexel/help_project.h"

#include "addin/registration.h"
#include "apps/quexel/function_help.h"
#include "apps/quexel/help_index.h"
#include "apps/quexel/markdown.h"
#include "apps/quexel/topics.h"
#include "commands/trace_tree.h"

#include <fstream>
#include <map>
#include <set>
#include <stdexcept>

namespace qx::app {

namespace {

void write_file(const std::filesystem::path& path, const std::string& text) {
    std::ofstream file(path, std::ios::binary);
    file << text;
    file.close();
    if (!file) throw std::runtime_error(path.string() + " cannot be written");
}

std::string site_map(const std::string& items) {
    return "<!DOCTYPE HTML PUBLIC \"-//IETF//DTD HTML//EN\">\n<HTML><HEAD></HEAD><BODY>\n" + items + "</BODY></HTML>\n";
}

std::string item(const std::string& title, const std::string& page) {
    return "<LI><OBJECT type=\"text/sitemap\"><param name=\"Name\" value=\"" + html_escaped(title) +
           "\"><param name=\"Local\" value=\"" + page + "\"></OBJECT>\n";
}

std::string tree(const std::vector<HelpNode>& nodes) {
    std::string list = "<UL>\n";
    for (const HelpNode& node : nodes) {
        list += item(node.title, node.page);
        if (!node.below.empty()) list += tree(node.below);
    }
    return list + "</UL>\n";
}

/// The pages that are opened by their numbers.
std::map<int, std::string> numbered_pages() {
    std::map<int, std::string> pages;
    for (const Function* const function : declared_functions())
        pages[topic_of(*function)] = std::string(function->name) + ".html";
    pages[trace_help_topic] = page_of(*find_topic("trace"));
    return pages;
}

} // namespace

void write_help_project(const std::filesystem::path& folder, const std::vector<HelpNode>& contents) {
    write_file(folder / "Quexel.hhc", site_map(tree(contents)));

    std::string index = "<UL>\n";
    for (const HelpEntry& entry : help_index()) index += item(entry.name, entry.page);
    write_file(folder / "Quexel.hhk", site_map(index + "</UL>\n"));

    std::string project =
        "[OPTIONS]\nCompatibility=1.1 or later\nCompiled file=Quexel.chm\nContents file=Quexel.hhc\n"
        "Index file=Quexel.hhk\nDefault topic=index.html\nDefault Window=main\nTitle=Quexel help\n"
        "Language=0x809 English (United Kingdom)\nFull-text search=Yes\n\n"
        // A pane of contents, index and search; buttons to hide it, back, forward, home, print and options.
        "[WINDOWS]\nmain=\"Quexel help\",\"Quexel.hhc\",\"Quexel.hhk\",\"index.html\",\"index.html\",,,,,0x63520,280,"
        "0x10384e,[60,40,1160,840],,,,,,,0\n\n[FILES]\n";
    // Those with numbers first and ascending: so the compiler lists the numbers in their order.
    std::string aliases, numbers;
    std::set<std::string> listed;
    for (const auto& [number, page] : numbered_pages()) {
        project += page + "\n";
        listed.insert(page);
        aliases += "TOPIC_" + std::to_string(number) + "=" + page + "\n";
        numbers += "#define TOPIC_" + std::to_string(number) + " " + std::to_string(number) + "\n";
    }
    std::set<std::string> others;
    for (const std::filesystem::directory_entry& entry : std::filesystem::directory_iterator(folder))
        if (entry.path().extension() == ".html" && !listed.contains(entry.path().filename().string()))
            others.insert(entry.path().filename().string());
    for (const std::string& page : others) project += page + "\n";
    write_file(folder / "Quexel.hhp", project + "\n[ALIAS]\n" + aliases + "\n[MAP]\n" + numbers);
}

} // namespace qx::app
