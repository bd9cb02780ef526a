#include "apps/quexel/commands.h"
#include "apps/quexel/output.h"

#include "commands/find_replace.h"
#include "hosts/files/model.h"
#include "hosts/files/safe_file.h"
#include "hosts/sheet/csv.h"
#include "hosts/sheet/text.h"

#include <algorithm>
#include <iostream>
#include <stdexcept>

namespace qx::app {

namespace {

/// The rows as a text, with the line ends and the byte order mark of the former one.
std::string csv_text(const sheet::CsvRows& rows, const std::string& former) {
    const std::size_t first_end = former.find('\n');
    const char* const line_end =
        first_end != former.npos && first_end > 0 && former[first_end - 1] == '\r' ? "\r\n" : "\n";
    std::string text = former.starts_with("\xEF\xBB\xBF") ? "\xEF\xBB\xBF" : "";
    for (const std::vector<std::string>& row : rows) {
        for (std::size_t i = 0; i < row.size(); ++i) {
            if (i > 0) text += ',';
            if (row[i].find_first_of(",\"\r\n") == std::string::npos) {
                text += row[i];
                continue;
            }
            text += '"';
            for (const char c : row[i]) text.append(c == '"' ? 2 : 1, c);
            text += '"';
        }
        text += line_end;
    }
    return text;
}

int show_and_replace(const ReplaceOptions& options) {
    constexpr std::size_t all = static_cast<std::size_t>(-1);
    std::size_t top = 0, left = 0, bottom = all, right = all;
    if (!options.where.empty()) {
        sheet::Area area;
        if (!sheet::read_area(options.where, 0, area)) {
            std::cerr << "\"" << options.where << "\" is no area such as A1:D50\n";
            return 1;
        }
        top = area.first_row;
        left = area.first_column;
        bottom = area.last_row;
        right = area.last_column;
    }
    std::string extension = options.file.substr(std::min(options.file.size(), options.file.rfind('.')));
    std::transform(extension.begin(), extension.end(), extension.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    if (extension != ".csv") {
        std::cerr << options.file << ": find and replace works on CSV files\n";
        return 1;
    }
    if (options.find.empty()) {
        std::cerr << "Error: Find text must not be the empty string!\n";
        return 1;
    }
    const std::string text = files::read_file(options.file);
    std::vector<sheet::Problem> problems;
    sheet::CsvRows rows = sheet::read_csv(text, problems);
    for (std::size_t i = 0; i < std::min(problems.size(), most_messages); ++i)
        std::cerr << options.file << ": " << sheet::address_text(problems[i].cell) << ": " << problems[i].message
                  << '\n';
    if (problems.size() > most_messages)
        std::cerr << options.file << ": and " << problems.size() - most_messages << " more messages\n";
    if (!problems.empty()) return 1;

    std::size_t filled = 0;
    std::vector<std::vector<Field>> changes;
    try {
        const Replacer replacer(options.find, options.replacement);
        for (std::size_t row = top; row < rows.size() && row <= bottom; ++row)
            for (std::size_t column = left; column < rows[row].size() && column <= right; ++column) {
                std::string& field = rows[row][column];
                if (field.empty()) continue;
                ++filled;
                std::string after = replacer(field);
                if (after == field) continue;
                const sheet::CellAddress cell{static_cast<std::uint32_t>(row), static_cast<std::uint16_t>(column), 0};
                changes.push_back(
                    {{sheet::address_text(cell)}, {sheet::valid_utf8(field)}, {"->"}, {sheet::valid_utf8(after)}});
                field = std::move(after);
            }
    } catch (const std::exception& error) {
        std::cerr << "\"" << options.find << "\": " << error.what() << '\n';
        return 1;
    }
    print_table(std::cout, changes);
    const bool write = options.write && !changes.empty();
    if (write) files::write_file(options.file, csv_text(rows, text)); // the former file stays if this fails
    std::cout << changes.size() << " of " << filled << (filled == 1 ? " filled cell " : " filled cells ")
              << (write ? "changed" : "would change")
              << (options.write || changes.empty() ? "" : "; --write changes the file") << '\n';
    return 0;
}

} // namespace

int replace(const ReplaceOptions& options) {
    try {
        return show_and_replace(options);
    } catch (const files::FileError& error) {
        std::cout.flush();
        std::cerr << error.what() << '\n';
        return 1;
    }
}

} // namespace qx::app
