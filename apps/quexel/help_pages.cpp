// Help as a folder of pages: one for each function, category, topic and file of definitions, and an index. A browser
// gets a search of its own; a help file gets the project from which a help compiler makes it.
#include "apps/quexel/commands.h"

#include "addin/registration.h"
#include "apps/quexel/function_help.h"
#include "apps/quexel/help_index.h"
#include "apps/quexel/help_project.h"
#include "apps/quexel/help_texts.h"
#include "apps/quexel/markdown.h"
#include "apps/quexel/topics.h"
#include "hosts/sheet/builtins.h"
#include "hosts/sheet/text.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <map>
#include <set>
#include <sstream>
#include <stdexcept>

namespace qx::app {

namespace {

std::string link(const std::string& page, std::string_view text) {
    return "<a href=\"" + page + "\">" + html_escaped(text) + "</a>";
}

std::string page_of(const Function& function) { return std::string(function.name) + ".html"; }

std::string page_of(Category category) {
    std::string page = "category-";
    for (const char c : sheet::lower_case(short_category(category)))
        page += std::isalnum(static_cast<unsigned char>(c)) ? c : '-';
    return page + ".html";
}

/// The section with links to related functions; empty without any.
std::string see_also(const std::vector<const Function*>& functions) {
    std::string list;
    for (const Function* const function : functions)
        list += (list.empty() ? "" : ", ") + link(page_of(*function), function->name);
    return list.empty() ? list : "<h2>See also</h2>\n<p>" + list + "</p>\n";
}

std::string rows(const std::vector<std::pair<std::string, std::string>>& table) {
    std::string html = "<div class=\"scroll\"><table>\n";
    for (const auto& [code, text] : table)
        html += "<tr><td><code>" + html_escaped(code) + "</code></td><td>" + html_escaped(text) + "</td></tr>\n";
    return html + "</table></div>\n";
}

/// The text of a topic: paragraphs, and lines that are shown as they are.
std::string html_of_text(std::string_view text) {
    std::istringstream lines{std::string(text)};
    std::string html, paragraph, block;
    const auto finish = [&] {
        if (!paragraph.empty()) html += "<p>" + html_escaped(paragraph) + "</p>\n";
        if (!block.empty()) html += "<pre>" + html_escaped(block) + "</pre>\n";
        paragraph.clear();
        block.clear();
    };
    for (std::string line; std::getline(lines, line);) {
        const bool as_it_is = line.starts_with("  ");
        if (line.empty() || (as_it_is ? !paragraph.empty() : !block.empty())) finish();
        if (line.empty()) continue;
        if (as_it_is)
            block += line.substr(2) + '\n';
        else
            paragraph += (paragraph.empty() ? "" : " ") + line;
    }
    finish();
    return html;
}

/// The head of a page in a browser; the window of a help file has a search of its own.
constexpr const char* search_header =
    "<header><a href=\"index.html\">Quexel help</a>\n<form action=\"index.html\"><input type=\"search\" name=\"q\" "
    "aria-label=\"Search help\" placeholder=\"Search\"></form></header>\n";

class Pages {
  public:
    Pages(std::filesystem::path folder, HelpForm form) : folder_(std::move(folder)), form_(form) {
        std::filesystem::create_directories(folder_);
    }

    int write_all() {
        write_definitions(); // first: the pages of functions lead to them
        const std::vector<const Function*> functions = declared_functions();
        for (const Function* const function : functions) write_function(*function);
        std::map<std::string, std::vector<const Function*>> categories;
        for (const Function* const function : functions)
            categories[std::string(short_category(function->category))].push_back(function);
        for (const auto& [name, members] : categories) write_category(name, members);
        for (const Topic& topic : topics()) write_topic(topic);
        write_builtins();
        write_commands();
        write_index(categories);
        if (form_ == HelpForm::project) write_help_project(folder_, contents(categories));
        return count_;
    }

  private:
    void write(const std::string& page, const std::string& title, const std::string& body) {
        std::string html = help_page_template;
        const auto put = [&](std::string_view place, const std::string& text) {
            html.replace(html.find(place), place.size(), text);
        };
        put("{{body}}", body);
        put("{{header}}", form_ == HelpForm::browser ? search_header : "");
        put("{{title}}", html_escaped(title));
        const std::filesystem::path path = folder_ / page;
        std::ofstream file(path, std::ios::binary);
        file << html;
        file.close();
        if (!file) throw std::runtime_error(path.string() + " cannot be written");
        ++count_;
    }

    void write_definitions() {
        for (const Definitions& document : definitions()) {
            const std::string page = page_of(document);
            const std::string title = title_of_markdown(document.markdown);
            MarkdownLinks links;
            links.of_code = [&](std::string_view code, const std::string& anchor) -> std::string {
                const Function* const function = find_function(code);
                if (function == nullptr || function->name != code) return {};
                definitions_[function].insert({page + "#" + anchor, title});
                return page_of(*function);
            };
            links.of_target = [](std::string_view target) -> std::string {
                const std::size_t anchor = std::min(target.find('#'), target.size());
                for (const Definitions& other : definitions())
                    if (target.substr(0, anchor) == std::string(other.name) + ".md")
                        return page_of(other) + std::string(target.substr(anchor));
                return {};
            };
            write(page, title, html_of_markdown(document.markdown, links));
        }
    }

    static std::string argument_row(const ArgumentHelp& argument) {
        std::string html = "<tr><td><code>" + html_escaped(argument.name) + "</code></td><td><p>" +
                           html_escaped(argument.text) + "</p><p class=\"soft\">" + html_escaped(argument.what);
        if (!argument.range.empty()) html += ", " + html_escaped(argument.range);
        html += argument.preset.empty() ? "; required" : "; default: " + html_escaped(argument.preset);
        if (!argument.topic.empty()) {
            const Topic* const topic = find_topic(argument.topic);
            html += ". See " + link(page_of(*topic), topic->name);
        }
        html += "</p>";
        if (!argument.values.empty()) {
            html += "<details" + std::string(argument.values.size() <= 8 ? " open" : "") +
                    "><summary>Values</summary><table>\n";
            for (const auto& [code, name] : argument.values)
                html +=
                    "<tr><td><code>" + std::to_string(code) + "</code></td><td>" + html_escaped(name) + "</td></tr>\n";
            html += "</table></details>";
        }
        return html + "</td></tr>\n";
    }

    void write_function(const Function& function) {
        const FunctionHelp help = help_of(function);
        std::string body = "<p class=\"soft\">" + link(page_of(function.category), short_category(function.category)) +
                           "</p>\n<h1>" + html_escaped(function.name) + "</h1>\n<p>" + html_escaped(function.help) +
                           "</p>\n";
        if (!help.note.empty()) body += "<p class=\"note\">" + html_escaped(help.note) + "</p>\n";
        body += "<h2>Syntax</h2>\n<p><code>" + html_escaped(help.syntax) + "</code></p>\n";
        if (!help.arguments.empty()) {
            body += "<h2>Arguments</h2>\n<table class=\"stack\">\n";
            for (const ArgumentHelp& argument : help.arguments) body += argument_row(argument);
            body += "</table>\n";
        }
        body += "<h2>Result</h2>\n<p>" + html_escaped(help.result) + "</p>\n";
        body += "<h2>Errors</h2>\n";
        if (!help.errors.empty()) {
            body += "<table class=\"stack\">\n<tr><th>Cause</th><th>Shows</th><th>Reason</th></tr>\n";
            for (const ErrorHelp& error : help.errors)
                body += "<tr><td>" + html_escaped(error.cause) + "</td><td><code>" + error.shows + "</code></td><td>" +
                        html_escaped(error.reason) + "</td></tr>\n";
            body += "</table>\n";
        }
        body += std::string("<p>") +
                (function.errors_as_data ? "Takes error values in its arguments as data."
                                         : "An error value in an argument is returned as it is.") +
                " See " + link("topic-errors.html", "errors") + ".</p>\n";
        body += "<h2>Examples</h2>\n";
        for (const ExampleHelp& example : help.examples) {
            body += "<pre class=\"example\">" + html_escaped(example.formula) + "  " + html_escaped(example.result) +
                    "</pre>\n";
            if (!example.note.empty()) body += "<p class=\"soft\">" + html_escaped(example.note) + "</p>\n";
            if (!example.cells.empty())
                body += "<p class=\"soft\">As an array formula in " + html_escaped(example.cells) + "</p>\n";
        }
        if (const auto found = definitions_.find(&function); found != definitions_.end()) {
            body += "<h2>Definition</h2>\n<p>";
            const char* between = "";
            std::set<std::string> linked;
            for (const auto& [page, title] : found->second)
                if (linked.insert(title).second) {
                    body += between + link(page, title);
                    between = "<br>";
                }
            body += "</p>\n";
        }
        body += see_also(help.related);
        write(page_of(function), function.name, body);
    }

    void write_category(const std::string& name, const std::vector<const Function*>& members) {
        std::string body =
            "<h1>" + html_escaped(name) + "</h1>\n<p>" + html_escaped(overview(members.front()->category)) + "</p>\n";
        std::set<std::string> concepts;
        body += "<table class=\"stack\">\n";
        for (const Function* const function : members) {
            body += "<tr><td>" + link(page_of(*function), function->name) + "</td><td>" + html_escaped(function->help) +
                    "</td></tr>\n";
            for (std::string& topic : concepts_of(*function)) concepts.insert(std::move(topic));
        }
        body += "</table>\n";
        if (!concepts.empty()) {
            body += "<h2>What they have in common</h2>\n<ul>\n";
            for (const std::string& topic : concepts)
                body += "<li>" + link(page_of(*find_topic(topic)), topic) + ": " +
                        html_escaped(find_topic(topic)->summary) + "</li>\n";
            body += "</ul>\n";
        }
        write(page_of(members.front()->category), name, body);
    }

    void write_topic(const Topic& topic) {
        std::string body = "<h1>" + html_escaped(topic.summary) + "</h1>\n" + html_of_text(topic.text);
        if (topic.values.count > 0) body += "<h2>Values</h2>\n" + rows(value_table(topic));
        if (topic.lists_errors) body += "<h2>Messages</h2>\n" + rows(error_table());
        body += see_also(functions_named(topic.see_also));
        write(page_of(topic), topic.name, body);
    }

    void write_builtins() {
        std::string body =
            "<h1>Functions built into the workbook</h1>\n<p>The everyday functions that quexel has beside "
            "those of the library. In a spreadsheet they are the spreadsheet's own.</p>\n";
        for (const sheet::BuiltinGroup& group : sheet::builtin_groups()) {
            body += "<h2>" + html_escaped(group.title) + "</h2>\n<table class=\"stack\">\n";
            for (const sheet::Builtin& builtin : group.functions)
                body += "<tr id=\"" + html_escaped(builtin.name) + "\"><td><code>" + html_escaped(builtin.name) + "(" +
                        html_escaped(builtin.arguments) + ")</code></td><td>" + html_escaped(builtin.help) +
                        "</td></tr>\n";
            body += "</table>\n";
        }
        write("built-in.html", "Functions built into the workbook", body);
    }

    void write_commands() {
        std::string body = "<h1>Commands</h1>\n<p>The add-in's commands, in the menu Quexel of a spreadsheet and for "
                           "macros: <code>Application.Run(\"CPPQX_TraceShow\")</code>.</p>\n<table class=\"stack\">\n";
        std::map<std::string, std::string> commands;
        for (const Command* command = all_commands(); command != nullptr; command = command->next)
            commands[command->name] = command->help;
        for (const auto& [name, text] : commands)
            body +=
                "<tr id=\"" + name + "\"><td><code>" + name + "</code></td><td>" + html_escaped(text) + "</td></tr>\n";
        write("commands.html", "Commands", body + "</table>\n");
    }

    void write_index(const std::map<std::string, std::vector<const Function*>>& categories) {
        const bool searches = form_ == HelpForm::browser;
        std::string body = searches ? "<dl id=\"found\" aria-live=\"polite\"></dl>\n" : "";
        body += "<div id=\"contents\">\n<h1>Quexel help</h1>\n<p>Worksheet functions for models of property, project "
                "finance and banking.";
        body += searches ? " Type in the field above to search.</p>\n" : "</p>\n";
        body += "<h2>Functions</h2>\n<table class=\"stack\">\n";
        for (const auto& [name, members] : categories) {
            const Category category = members.front()->category;
            body += "<tr><td>" + link(page_of(category), name) + " <span class=\"soft\">" +
                    std::to_string(members.size()) + "</span></td><td>" + html_escaped(overview(category)) +
                    "</td></tr>\n";
        }
        body += "<tr><td>" + link("built-in.html", "Built in") +
                "</td><td>The everyday functions of quexel's own workbook.</td></tr>\n<tr><td>" +
                link("commands.html", "Commands") +
                "</td><td>The add-in's commands in a spreadsheet.</td></tr>\n</table>\n";
        const auto list_topics = [&](const char* heading, bool on_functions) {
            body += std::string("<h2>") + heading + "</h2>\n<ul>\n";
            for (const Topic& topic : topics())
                if (topic.on_functions == on_functions)
                    body += "<li>" + link(page_of(topic), topic.name) + ": " + html_escaped(topic.summary) + "</li>\n";
            body += "</ul>\n";
        };
        list_topics("What functions have in common", true);
        body += "<h2>Definitions</h2>\n<ul>\n";
        for (const Definitions& document : definitions())
            body += "<li>" + link(page_of(document), title_of_markdown(document.markdown)) + "</li>\n";
        body += "</ul>\n";
        list_topics("The program", false);
        body += "<h2>All functions</h2>\n<ul class=\"columns\">\n";
        for (const Function* const function : declared_functions())
            body += "<li>" + link(page_of(*function), function->name) + "</li>\n";
        body += "</ul>\n</div>\n";
        if (searches) body += search_script();
        write("index.html", "Contents", body);
    }

    /// The table of all pages, and the script that searches it.
    static std::string search_script() {
        std::string body = "<script id=\"pages\" type=\"application/json\">[";
        const char* between = "\n";
        for (const HelpEntry& entry : help_index()) {
            body += between;
            body += "{\"name\":" + script_string(entry.name) + ",\"kind\":" + script_string(entry.kind) +
                    ",\"summary\":" + script_string(entry.summary) + ",\"page\":" + script_string(entry.page) +
                    ",\"more\":" + script_string(entry.more) + "}";
            between = ",\n";
        }
        return body + "]</script>\n<script>\n" + std::string(help_search_script) + "</script>\n";
    }

    /// The pages as a tree, in the order of the index.
    static std::vector<HelpNode> contents(const std::map<std::string, std::vector<const Function*>>& categories) {
        HelpNode functions{.title = "Functions", .page = "index.html"};
        for (const auto& [name, members] : categories) {
            HelpNode category{.title = name, .page = page_of(members.front()->category)};
            for (const Function* const function : members)
                category.below.push_back({.title = function->name, .page = page_of(*function)});
            functions.below.push_back(std::move(category));
        }
        functions.below.push_back({.title = "Built in", .page = "built-in.html"});
        HelpNode common{.title = "What functions have in common", .page = "index.html"};
        HelpNode program{.title = "The program", .page = "index.html"};
        for (const Topic& topic : topics())
            (topic.on_functions ? common : program).below.push_back({.title = topic.summary, .page = page_of(topic)});
        HelpNode documents{.title = "Definitions", .page = "index.html"};
        for (const Definitions& document : definitions())
            documents.below.push_back({.title = title_of_markdown(document.markdown), .page = page_of(document)});
        return {{.title = "Quexel help", .page = "index.html"}, functions, common, documents,
                {.title = "Commands", .page = "commands.html"}, program};
    }

    std::filesystem::path folder_;
    HelpForm form_;
    std::map<const Function*, std::set<std::pair<std::string, std::string>>> definitions_; ///< page#section, title
    int count_ = 0;
};

} // namespace

int write_help(const std::string& folder, HelpForm form) {
    const int count = Pages(folder, form).write_all();
    const char* const first = form == HelpForm::browser ? "index.html" : "Quexel.hhp";
    std::cerr << count << " pages; open " << (std::filesystem::path(folder) / first).string() << '\n';
    return 0;
}

} // namespace qx::app
