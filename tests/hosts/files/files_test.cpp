// Workbook files: what goes between the processes, formats, charts, and files that nothing may damage.
#include "hosts/files/child.h"
#include "hosts/files/document.h"
#include "hosts/files/safe_file.h"

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <sys/resource.h>

namespace qx::files {

using sheet::CellAddress;
using sheet::Value;

namespace {

class Folder {
  public:
    Folder() {
        std::string name = (std::filesystem::temp_directory_path() / "quexel_test.XXXXXX").string();
        if (mkdtemp(name.data()) != nullptr) path = name;
    }
    ~Folder() { std::filesystem::remove_all(path); }
    std::filesystem::path path;
    std::size_t files() const {
        return static_cast<std::size_t>(
            std::distance(std::filesystem::directory_iterator(path), std::filesystem::directory_iterator()));
    }
};

} // namespace

TEST(Formats, ShowDatesAndPercentages) {
    for (const char* const date : {"yyyy-mm-dd", "mm-dd-yy", "d-mmm", "mmm-yy", "[$-809]dd mmmm yyyy", "m/d/yy h:mm"})
        EXPECT_EQ(kind_of_format(date), FormatKind::date) << date;
    for (const char* const time : {"h:mm", "[h]:mm:ss", "mm:ss", "[mm]:ss"})
        EXPECT_EQ(kind_of_format(time), FormatKind::time) << time;
    for (const char* const percent : {"0%", "0.00%;[Red]-0.00%"})
        EXPECT_EQ(kind_of_format(percent), FormatKind::percent) << percent;
    for (const char* const number : {"#,##0.00", "\"days\" 0", "0 \\d", "[Red]0", "#,##0_d", "0.00E+00"})
        EXPECT_EQ(kind_of_format(number), FormatKind::number) << number;
    EXPECT_EQ(kind_of_format("General"), FormatKind::general);
    EXPECT_EQ(kind_of_format("@"), FormatKind::text);
}

TEST(Model, ComesOutOfItsBytesWhole) {
    ModelBuilder builder;
    builder.add_sheet("First");
    builder.add_sheet("Second");
    Cell cell;
    cell.row = 7;
    cell.column = 3;
    cell.format = builder.format("0.0%");
    cell.kind = Kind::text;
    cell.text = builder.text("words");
    cell.formula = builder.formula("A1&\"\"");
    builder.add(cell);
    builder.sheet().arrays.push_back({{1, 2, 3, 4, 5}, cell.formula});
    builder.sheet().widths.push_back({0, 4, 12.5});
    builder.model.names.push_back({"Rate", "Second!$A$1", 1});
    builder.note("a note");
    builder.not_kept("charts");
    const std::string bytes = packed(builder.model);
    const Model model = unpacked(bytes);
    EXPECT_EQ(packed(model), bytes);
    ASSERT_EQ(model.sheets.size(), 2u);
    EXPECT_EQ(model.texts[model.sheets[1].cells.at(0).text], "words");
    EXPECT_EQ(model.formats[model.sheets[1].cells[0].format], "0.0%");

    // A reader that has been taken over may send anything: cut short, or with any byte changed, it is a model or not,
    // and never more than that.
    for (std::size_t size = 0; size < bytes.size(); ++size) EXPECT_THROW(unpacked(bytes.substr(0, size)), FileError);
    for (std::size_t at = 0; at < bytes.size(); ++at)
        for (const int change : {1, 0x80, 0xFF}) {
            std::string changed = bytes;
            changed[at] = static_cast<char>(changed[at] ^ change);
            try {
                const Model other = unpacked(changed);
                for (const SheetModel& sheet : other.sheets)
                    for (const Cell& each : sheet.cells) {
                        EXPECT_LT(each.text, other.texts.size());
                        EXPECT_LT(each.format, other.formats.size());
                        EXPECT_LT(each.column, sheet::max_columns);
                    }
            } catch (const FileError&) {}
        }
}

TEST(SafeFile, KeepsTheOldFileIfTheNewOneFails) {
    const Folder folder;
    const std::string name = (folder.path / "model.csv").string();
    write_file(name, "old");
    std::filesystem::permissions(name, std::filesystem::perms(0640));
    const std::string link = (folder.path / "link.csv").string();
    std::filesystem::create_symlink("model.csv", link);
    EXPECT_TRUE(same_file(name, link));
    write_file(link, "new");
    EXPECT_TRUE(std::filesystem::is_symlink(link));
    EXPECT_EQ(read_file(name), "new");
    EXPECT_EQ(std::filesystem::status(name).permissions(), std::filesystem::perms(0640));

    // A full disk: no file may grow beyond 4 kB.
    rlimit before{};
    getrlimit(RLIMIT_FSIZE, &before);
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    const rlimit small{4096, before.rlim_max};
    setrlimit(RLIMIT_FSIZE, &small);
    EXPECT_THROW(write_file(name, std::string(100000, 'x')), FileError);
    setrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, handler);
    EXPECT_EQ(read_file(name), "new");
    EXPECT_EQ(folder.files(), 2u); // nothing is left beside them

    EXPECT_THROW(write_file((folder.path / "none" / "model.csv").string(), "x"), FileError);
    EXPECT_THROW(write_file("/dev/full", "x"), FileError);
    EXPECT_THROW(read_file(folder.path.string()), FileError);
}

TEST(Document, XlsxGivesBackWhatACsvModelHolds) {
    // Every kind of value, entered and calculated, on one sheet.
    Document model("model.csv", "1.5,=A1*2,2026-11-22,=C1+1,TRUE,=NOT(E1)\n"
                                "#N/A,=1/0,words,\"=C2&\"\"!\"\"\",12%,\"=MonthEnd(C1)\"\n"
                                "\"{=A1:B1*{1;2}}\",{},,,,\n{},{},,,,\n");
    model.book.set_value({4, 0, 0}, Value::text("5"));
    model.book.set_value({4, 1, 0}, Value::text("=1+1"));
    model.book.set_value({4, 2, 0}, Value::text(""));
    model.book.set_value({4, 3, 0}, Value::text("a\nb\x01 <&>\" _x0041_ \xC3\xA9"));
    model.book.define_name("Rate", "Sheet1!$A$1");
    model.book.recalculate();
    ASSERT_TRUE(model.notes.empty());

    const std::string bytes = as_xlsx(model);
    // What the file shows without a calculation, then what is calculated from its formulas.
    const Model stored = read_workbook(bytes);
    Document back("back.xlsx", bytes);
    back.book.recalculate();
    EXPECT_TRUE(back.notes.empty());
    const auto area = model.book.used_area(0);
    ASSERT_TRUE(area);
    for (const CellAddress cell : cells_of(*area)) {
        const std::string where = sheet::address_text(cell);
        const Value wanted = model.book.value(cell), found = back.book.value(cell);
        EXPECT_TRUE(wanted.is_error() ? found.is_error() && found.error() == wanted.error() : found.identical(wanted))
            << where;
        const auto in_file =
            std::find_if(stored.sheets[0].cells.begin(), stored.sheets[0].cells.end(),
                         [&](const Cell& each) { return each.row == cell.row && each.column == cell.column; });
        if (wanted.is_blank()) continue;
        ASSERT_NE(in_file, stored.sheets[0].cells.end()) << where;
        if (wanted.is_number()) {
            EXPECT_EQ(in_file->number, wanted.number()) << where;
        }
        if (wanted.is_error()) {
            EXPECT_TRUE(in_file->kind == Kind::error && in_file->number == wanted.error()) << where;
        }
        if (wanted.is(sheet::Type::boolean)) {
            EXPECT_EQ(in_file->kind, Kind::boolean) << where;
        }
        if (wanted.is_text()) {
            EXPECT_EQ(stored.texts[in_file->text], wanted.text()) << where;
        }
    }
    EXPECT_NE(back.book.formula({0, 1, 0}), nullptr);
    EXPECT_EQ(back.book.formula({4, 1, 0}), nullptr);
    EXPECT_EQ(back.area("Rate"), sheet::Area(CellAddress{0, 0, 0}));
}

TEST(Chart, FindsRangesNamesAndLabels) {
    Document model("model.csv", "Year,2026,2027,2028\nNet cash flow,-100,60,70\nDebt,5,4,3\n");
    model.book.define_name("Owed", "Sheet1!$B$3:$D$3");
    const Chart chart = read_chart(model.book, "Money=B2:D2, Owed over year");
    EXPECT_EQ(chart.title, "Money");
    ASSERT_EQ(chart.series.size(), 2u);
    EXPECT_EQ(chart.series[0].name, "Net cash flow");
    EXPECT_EQ(chart.series[1].values, sheet::Area(0, 2, 1, 2, 3));
    EXPECT_EQ(chart.over, sheet::Area(0, 0, 1, 0, 3));
    EXPECT_EQ(read_chart(model.book, "net cash flow").series[0].values, sheet::Area(0, 1, 1, 1, 3));
    EXPECT_THROW(read_chart(model.book, "Cash=nothing here"), FileError);

    // Three columns above and below a zero line: the first goes down by as much as -100 takes of the scale.
    const std::string svg = svg_of(model.book, read_chart(model.book, "B2:D2 over B1:D1"));
    std::size_t columns = 0;
    for (std::size_t at = 0; (at = svg.find("<rect", at)) != std::string::npos; ++at) ++columns;
    EXPECT_EQ(columns, 3u);
    EXPECT_NE(svg.find("2027: 60"), std::string::npos);
}

} // namespace qx::files
