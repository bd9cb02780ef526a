#include "apps/quexel/help_index.h"

#include "addin/registration.h"
#include "apps/quexel/function_help.h"
#include "apps/quexel/help_texts.h"
#include "apps/quexel/markdown.h"
#include "apps/quexel/topics.h"
#include "hosts/sheet/builtins.h"
#include "hosts/sheet/text.h"

#include <algorithm>
#include <sstream>

namespace qx::app {

std::vector<HelpEntry> help_index() {
    std::vector<HelpEntry> entries;
    for (const Function* const function : declared_functions()) {
        std::string more;
        for (int i = 0; i < function->arity(); ++i)
            more += std::string(function->args[i].name) + ' ' + function->args[i].help + ' ';
        entries.push_back({function->name, std::string(short_category(function->category)), function->help,
                           std::string(function->name) + ".html", more});
    }
    for (const Topic& topic : topics())
        entries.push_back({topic.name, "Topic", topic.summary, page_of(topic), topic.text});
    for (const Definitions& document : definitions())
        entries.push_back(
            {document.name, "Definitions", title_of_markdown(document.markdown), page_of(document), document.markdown});
    for (const sheet::BuiltinGroup& group : sheet::builtin_groups())
        for (const sheet::Builtin& builtin : group.functions)
            entries.push_back({builtin.name, std::string("Built in: ") + group.title, builtin.help,
                               std::string("built-in.html#") + builtin.name, builtin.arguments});
    for (const Command* command = all_commands(); command != nullptr; command = command->next)
        entries.push_back({command->name,
                           "Command of a spreadsheet",
                           command->help,
                           std::string("commands.html#") + command->name,
                           {}});
    return entries;
}

std::vector<HelpEntry> search(const std::vector<std::string>& words) {
    std::vector<std::string> wanted;
    for (const std::string& word : words) {
        std::istringstream parts(sheet::lower_case(word));
        for (std::string part; parts >> part;) wanted.push_back(part);
    }
    std::vector<std::pair<int, HelpEntry>> found;
    for (HelpEntry& entry : help_index()) {
        const std::string name = sheet::lower_case(entry.name);
        const std::string summary = sheet::lower_case(entry.summary + ' ' + entry.kind);
        const std::string more = sheet::lower_case(entry.more);
        int rank = 0; // the worst of the words' places
        for (const std::string& word : wanted) {
            const int place = name == word                              ? 0
                              : name.find(word) != std::string::npos    ? 1
                              : summary.find(word) != std::string::npos ? 2
                              : more.find(word) != std::string::npos    ? 3
                                                                        : 4;
            rank = std::max(rank, place);
        }
        if (rank < 4 && !wanted.empty()) found.emplace_back(rank, std::move(entry));
    }
    std::stable_sort(found.begin(), found.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
    std::vector<HelpEntry> entries;
    for (auto& [rank, entry] : found) entries.push_back(std::move(entry));
    return entries;
}

} // namespace qx::app
