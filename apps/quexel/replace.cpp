#include "apps/quexel/commands.h"
#include "apps/quexel/output.h"

#include "commands/find_replace.h"
#include "hosts/files/document.h"
#include "hosts/files/safe_file.h"
#include "hosts/sheet/csv.h"
#include "hosts/sheet/text.h"

#include <iostream>
#include <map>
#include <memory>
#include <optional>

namespace qx::app {

using files::Document;
using files::FileError;
using sheet::Area;
using sheet::CellAddress;

namespace {

struct Change {
    CellAddress cell;
    std::string place, before, after;
    std::string problem; ///< why the cell stays as it was; empty if it changes
};

/// A model whose cells are looked at one by one, as a user sees them who edits them.
class Contents {
  public:
    virtual ~Contents() = default;
    /// Calls visit(cell, place, content) for the filled cells of the area that the text names, or of the model.
    using Visit = std::function<void(CellAddress, const std::string& place, const std::string& content)>;
    virtual void each(const std::string& where, const Visit& visit) = 0;
    /// Makes the changes, and notes at each that is not possible why.
    virtual void apply(std::vector<Change>& changes) = 0;
    /// The changed model. Throws FileError.
    virtual std::string bytes(bool same_file) = 0;
};

Area area_of_where(const std::string& where) {
    Area area;
    if (!sheet::read_area(where, 0, area)) throw FileError("\"" + where + "\" is not an area such as A1:D50");
    return area;
}

/// Fields that do not change keep their bytes; quotes are written where a field needs them.
class CsvContents final : public Contents {
  public:
    explicit CsvContents(std::string text) : text_(std::move(text)) {
        std::vector<sheet::Problem> problems;
        rows_ = sheet::read_csv(text_, problems);
        if (!problems.empty())
            throw FileError(sheet::address_text(problems.front().cell) + ": " + problems.front().message);
    }

    void each(const std::string& where, const Visit& visit) override {
        const std::optional<Area> area = where.empty() ? std::nullopt : std::optional(area_of_where(where));
        for (std::uint32_t row = 0; row < rows_.size(); ++row)
            for (std::uint32_t column = 0; column < rows_[row].size(); ++column) {
                const CellAddress cell{row, static_cast<std::uint16_t>(column), 0};
                if (!rows_[row][column].empty() && (!area || area->contains(cell)))
                    visit(cell, sheet::address_text(cell), rows_[row][column]);
            }
    }

    void apply(std::vector<Change>& changes) override {
        const std::map<std::string, std::string> problems_before = problems();
        for (const Change& change : changes) rows_[change.cell.row][change.cell.column] = change.after;
        const std::map<std::string, std::string> problems_after = problems();
        for (Change& change : changes) {
            const auto found = problems_after.find(change.place);
            if (found == problems_after.end() || problems_before.contains(change.place)) continue;
            change.problem = found->second;
            rows_[change.cell.row][change.cell.column] = change.before;
        }
    }

    std::string bytes(bool) override {
        const std::size_t end = text_.find('\n');
        const char* const line_end = end != text_.npos && end > 0 && text_[end - 1] == '\r' ? "\r\n" : "\n";
        return sheet::csv_text(rows_, text_, line_end);
    }

  private:
    /// What is wrong with the model as it is now, by cell.
    std::map<std::string, std::string> problems() {
        std::map<std::string, std::string> found;
        sheet::Workbook book;
        for (const sheet::Problem& problem : sheet::load_csv(book, 0, bytes(true)))
            found.emplace(sheet::address_text(problem.cell), problem.message);
        return found;
    }

    std::string text_;
    sheet::CsvRows rows_;
};

class WorkbookContents final : public Contents {
  public:
    WorkbookContents(const std::string& name, std::string bytes) : document_(name, std::move(bytes)) {
        document_.book.recalculate(); // so that it is known which cells a result fills
    }

    void each(const std::string& where, const Visit& visit) override {
        std::vector<Area> areas;
        if (!where.empty()) areas.push_back(document_.area(where));
        for (std::uint16_t number = 0; where.empty() && number < document_.book.sheet_count(); ++number)
            if (const std::optional<Area> used = document_.book.used_area(number)) areas.push_back(*used);
        for (const Area& area : areas)
            document_.book.grid(area.sheet).visit(area, [&](std::uint32_t row, std::uint32_t column, sheet::Cell&) {
                const CellAddress cell{row, static_cast<std::uint16_t>(column), area.sheet};
                if (const std::string content = document_.content(cell); !content.empty())
                    visit(cell, document_.place(cell), content);
                return true;
            });
    }

    void apply(std::vector<Change>& changes) override {
        for (Change& change : changes) try {
                document_.replace_content(change.cell, change.after);
            } catch (const sheet::FormulaError& error) {
                change.problem = "character " + std::to_string(error.column) + ": " + error.what();
            } catch (const FileError& error) {
                change.problem = error.what();
            }
    }

    std::string bytes(bool same_file) override {
        document_.book.recalculate();
        if (document_.type() == files::FileType::xlsx) {
            std::string bytes, why;
            if (as_same_xlsx(document_, bytes, why)) return bytes;
            throw FileError("the file cannot be changed: " + why + "; quexel calc --out makes a new one");
        }
        if (same_file) throw FileError("an .ods file cannot be changed in place; --out FILE.xlsx writes a new one");
        if (!document_.not_kept().empty()) {
            std::cerr << document_.name << ": not carried over:";
            for (const std::string& part : document_.not_kept()) std::cerr << ' ' << part;
            std::cerr << '\n';
        }
        return as_xlsx(document_);
    }

  private:
    Document document_;
};

void check_target(const ReplaceOptions& options, bool is_csv) {
    if (options.write && options.file == "-") throw FileError("standard input cannot be changed");
    if (options.out.empty()) return;
    if (files::same_file(options.out, options.file))
        throw FileError("--out would write over the model; --write changes it");
    const std::string ending = files::ending_of(options.out);
    if (options.out != "-" && ending != (is_csv ? "csv" : "xlsx") && (is_csv || ending != "xlsm"))
        throw FileError(options.out + (is_csv ? ": the changed model is a .csv file; quexel calc --out makes others"
                                              : ": the changed model is an .xlsx file"));
}

int find_and_replace(const ReplaceOptions& options) {
    if (options.find.empty()) throw FileError("Error: Find text must not be the empty string!");
    std::string former = files::read_file(options.file);
    const bool is_csv = files::type_of(former) == files::FileType::csv;
    check_target(options, is_csv);
    std::unique_ptr<Contents> contents;
    try {
        if (is_csv)
            contents = std::make_unique<CsvContents>(former);
        else
            contents = std::make_unique<WorkbookContents>(options.file, former);
    } catch (const FileError& error) {
        throw FileError(options.file + ": " + error.what());
    }

    std::size_t filled = 0;
    std::vector<Change> changes;
    try {
        const Replacer replacer(options.find, options.replacement);
        contents->each(options.where, [&](CellAddress cell, const std::string& place, const std::string& before) {
            ++filled;
            if (std::string after = replacer(before); after != before)
                changes.push_back({cell, place, before, std::move(after), {}});
        });
    } catch (const FileError&) {
        throw;
    } catch (const std::exception& error) {
        throw FileError("\"" + options.find + "\": " + error.what());
    }
    contents->apply(changes);

    std::vector<std::vector<Field>> rows;
    std::size_t changed = 0;
    for (const Change& change : changes) {
        rows.push_back({{change.place}, {sheet::valid_utf8(change.before)}, {"->"}, {sheet::valid_utf8(change.after)}});
        if (change.problem.empty())
            ++changed;
        else
            rows.back().push_back({"stays as it was: " + change.problem});
    }
    const bool writes = changed > 0 && (options.write || !options.out.empty());
    if (writes && options.write) {
        const std::string now = contents->bytes(true);
        files::write_file(options.file + ".bak", former);
        files::write_file(options.file, now);
    } else if (writes) {
        files::write_file(options.out, contents->bytes(false));
    }
    std::ostream& report = options.out == "-" ? std::cerr : std::cout;
    print_table(report, rows);
    report << changed << " of " << filled << (filled == 1 ? " filled cell " : " filled cells ")
           << (writes ? "changed" : "would change")
           << (!writes && changed > 0    ? "; --write changes the file"
               : writes && options.write ? "; the former file is " + options.file + ".bak"
                                         : std::string())
           << '\n';
    return changed == changes.size() ? 0 : 1;
}

} // namespace

int replace(const ReplaceOptions& options) {
    try {
        return find_and_replace(options);
    } catch (const FileError& error) {
        std::cerr << error.what() << '\n';
        return 1;
    }
}

} // namespace qx::app
