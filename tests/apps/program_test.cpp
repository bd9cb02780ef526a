// The quexel program as its users and scripts meet it: standard output, standard error, exit status.
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <sys/wait.h>

namespace {

struct Outcome {
    std::string out, err;
    int status;
};

std::string content(const std::string& file) {
    std::ostringstream text;
    text << std::ifstream(file, std::ios::binary).rdbuf();
    return text.str();
}

void write(const std::string& file, const std::string& text) { std::ofstream(file, std::ios::binary) << text; }

/// Runs the program with arguments as a shell takes them, and a standard input.
Outcome quexel(const std::string& arguments, const std::string& input = "") {
    write("input", input);
    const int status = std::system((std::string(QX_PROGRAM) + " " + arguments + " <input >out 2>err").c_str());
    return {content("out"), content("err"), WIFEXITED(status) ? WEXITSTATUS(status) : -1};
}

TEST(QuexelEval, PrintsValuesAsAPersonReadsThem) {
    EXPECT_EQ(quexel("eval 'MonthEnd(38000)'").out, "38017\n");
    EXPECT_EQ(quexel("eval --dates 'MonthEnd(38000)+1'").out, "2004-02-01\n");
    EXPECT_EQ(quexel("eval '{1,22;333,4}/3'").out, "0.333333333333333  7.33333333333333\n"
                                                   "              111  1.33333333333333\n");
    EXPECT_EQ(quexel("eval -SUM'(1,2)'").out, "-3\n");
    const Outcome fault = quexel("eval '1+*2'");
    EXPECT_EQ(fault.err, "character 3: unexpected \"*\", expected a value\n");
    EXPECT_EQ(fault.status, 1);
    const Outcome unknown = quexel("eval 'nosuch(1)'");
    EXPECT_EQ(unknown.out + unknown.err, "#NAME?\nunknown function \"nosuch\"\n");
    EXPECT_EQ(unknown.status, 1);
}

TEST(QuexelEval, AnswersALineOfJsonForEachFormula) {
    const Outcome outcome = quexel("eval --json -", "MonthEnd(38000)\r\n"
                                                    "=1/3\n"
                                                    "100000*3\n"
                                                    "1=1\n"
                                                    "\"say \"\"é\"\"\"\n"
                                                    "\"\xff\"\n"
                                                    "MonthEnd(-1)\n"
                                                    "ZZ99\n"
                                                    "1+\n"
                                                    "{1,\"a\";TRUE,#N/A}\n"
                                                    "nosuch()\n"
                                                    "\n"
                                                    "10^308*10");
    EXPECT_EQ(outcome.out, "38017\n"
                           "0.3333333333333333\n"
                           "300000\n"
                           "true\n"
                           "\"say \\\"é\\\"\"\n"
                           "\"\xEF\xBF\xBD\"\n"
                           "{\"error\":\"#NUM!\",\"reason\":\"Date less than minimum allowed value (TheDate)\"}\n"
                           "{\"empty\":true}\n"
                           "{\"syntax\":\"the formula ends where a value is expected\",\"at\":3}\n"
                           "{\"rows\":2,\"columns\":2,\"cells\":[1,\"a\",true,"
                           "{\"error\":\"#N/A\",\"reason\":\"no value is available\"}]}\n"
                           "{\"error\":\"#NAME?\",\"reason\":\"unknown function \\\"nosuch\\\"\"}\n"
                           "{\"syntax\":\"the formula is empty\",\"at\":1}\n"
                           "{\"error\":\"#NUM!\",\"reason\":\"no number can be worked out\"}\n");
    EXPECT_EQ(outcome.err, "");
    EXPECT_EQ(outcome.status, 1); // for the syntax
    EXPECT_EQ(quexel("eval --json -", "nosuch()\nNA()\n").status, 0);
    const Outcome plain = quexel("eval -", "\xEF\xBB\xBF" // as some editors begin a file
                                           "DYear(2005)\n1+\nnosuch()\n");
    EXPECT_EQ(plain.out, "2005\n\n#NAME?\n");
    EXPECT_EQ(plain.err, "line 2: character 3: the formula ends where a value is expected\n"
                         "line 3: unknown function \"nosuch\"\n");
}

TEST(QuexelCalc, PrintsTheTableAndTellsWhatIsWrong) {
    write("model.csv",
          "Date,End,Days\n2026-11-21,=MonthEnd(A2),=B2-A2\n=A2+30,=MonthEnd(A3),=B3-A3\nloop,=B4,=SUM(C2:C3)\n");
    const Outcome outcome = quexel("calc model.csv");
    EXPECT_EQ(outcome.out, "Date        End         Days\n"
                           "2026-11-21  2026-11-30     9\n"
                           "2026-12-21  2026-12-31    10\n"
                           "loop        #REF!         19\n");
    EXPECT_EQ(outcome.err, "model.csv: B4: circular reference: B4 -> B4\n");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(quexel("calc model.csv --out results.csv").out, "");
    EXPECT_EQ(content("results.csv"),
              "Date,End,Days\r\n2026-11-21,2026-11-30,9\r\n2026-12-21,2026-12-31,10\r\nloop,#REF!,19\r\n");
    EXPECT_EQ(quexel("calc - --out -", content("model.csv")).out, content("results.csv"));
    EXPECT_EQ(quexel("calc model.csv --no-dates --out -").out,
              "Date,End,Days\r\n46347,46356,9\r\n46377,46387,10\r\nloop,#REF!,19\r\n");
    std::string faults;
    for (int i = 0; i < 250; ++i) faults += "=SUM(\n";
    const Outcome many = quexel("calc -", faults);
    EXPECT_EQ(std::count(many.err.begin(), many.err.end(), '\n'), 101) << many.err;
    EXPECT_NE(many.err.find("-: and 150 more messages\n"), std::string::npos) << many.err;
    const Outcome none = quexel("calc nosuch.csv");
    EXPECT_EQ(none.err, "nosuch.csv: cannot be read: No such file or directory\n");
    EXPECT_EQ(none.status, 1);
    EXPECT_NE(quexel("calc model.csv --out /nosuch/folder/x.csv").err.find("cannot be written"), std::string::npos);
}

TEST(QuexelCalc, TracesACellAndMonitorsTheCalls) {
    write("model.csv", "2026-11-21,=MonthEnd(A1),=DaysInMonth(B1)\n");
    const Outcome outcome = quexel("calc model.csv --trace C1 --monitor");
    EXPECT_NE(outcome.out.find("DaysInMonth"), std::string::npos);
    EXPECT_EQ(outcome.out.find("MonthEnd"), std::string::npos) << "only the cell itself is explained";
    const std::string monitor = content("qx_CalcMon.qxl");
    EXPECT_NE(monitor.find("\nMonthEnd,"), std::string::npos) << monitor;
    EXPECT_NE(monitor.find("\nDaysInMonth,"), std::string::npos) << monitor;
    std::filesystem::remove("qx_CalcMon.qxl");
    std::filesystem::create_directory("qx_CalcMon.qxl"); // in the file's place
    const Outcome unwritten = quexel("calc model.csv --monitor");
    EXPECT_EQ(unwritten.err, "qx_CalcMon.qxl: cannot be written\n");
    EXPECT_EQ(unwritten.status, 1);
    std::filesystem::remove("qx_CalcMon.qxl");
    EXPECT_EQ(quexel("calc model.csv --trace A1").err, "A1 holds no formula\n");
    EXPECT_EQ(quexel("calc model.csv --trace A1:B2").status, 1);
}

/// The program where no file may grow past 1 kB, which it meets like a full disk. Its output ends with its status.
Outcome quexel_on_a_full_disk(const std::string& arguments) {
    const std::string command = "(trap '' XFSZ; ulimit -f 1; " QX_PROGRAM " " + arguments;
    std::system((command + " 2>err; echo status $?) | cat >out").c_str());
    return {content("out"), content("err"), 0};
}

TEST(Quexel, AFullDiskIsReported) {
    std::string model;
    for (int row = 0; row < 100; ++row) model += "\"=IF(DYear(38000)>0,\"\"\"\",\"\"\"\")\"\n";
    write("model.csv", model);
    const Outcome monitored = quexel_on_a_full_disk("calc model.csv --monitor");
    EXPECT_EQ(monitored.err, "qx_CalcMon.qxl: not complete: the disk is full or failed\n");
    EXPECT_NE(monitored.out.find("status 1\n"), std::string::npos) << monitored.out;
    const Outcome explained =
        quexel_on_a_full_disk("trace 'FInterest(2005,12,2005,0.12,2010,{2005;2005.5},{1000;500})'");
    EXPECT_EQ(explained.err, "qx_Trace.qxl: not complete: the disk is full or failed\n");
    EXPECT_NE(explained.out.find("status 1\n"), std::string::npos);
    EXPECT_NE(explained.out.find("FInterest"), std::string::npos) << "the tree is whole";
}

TEST(QuexelTrace, ItsTextFileIsNoMatterOfTheTree) {
    EXPECT_EQ(quexel("trace 'MonthEnd(38000)' --html page.html").status, 0);
    EXPECT_NE(content("page.html").find("\"copied\":true"), std::string::npos);
    const std::string tree = quexel("trace 'MonthEnd(38000)'").out;
    std::filesystem::remove("qx_Trace.qxl");
    write("precious.txt", "precious");
    std::filesystem::create_symlink("precious.txt", "qx_Trace.qxl");
    const Outcome linked = quexel("trace 'MonthEnd(38000)' --html page.html");
    EXPECT_EQ(linked.err, "qx_Trace.qxl: cannot be written\n");
    EXPECT_EQ(linked.status, 0);
    EXPECT_EQ(content("precious.txt"), "precious");
    EXPECT_NE(content("page.html").find("\"copied\":false"), std::string::npos);
    const std::string warned = quexel("trace 'MonthEnd(38000)'").out;
    EXPECT_EQ(warned.substr(0, warned.find(' ')), tree.substr(0, tree.find(' ')));
    EXPECT_NE(warned.find("\n  Warning "), std::string::npos) << "inside the call, whose place it does not take";
    EXPECT_NE(warned.find("\n  Inputs "), std::string::npos);
    std::filesystem::remove("qx_Trace.qxl");
}

TEST(QuexelCalc, TheExamplesAreInOrder) {
    int models = 0;
    for (const auto& entry : std::filesystem::directory_iterator(QX_SOURCE_DIR "/examples")) {
        if (entry.path().extension() != ".csv") continue;
        ++models;
        const Outcome outcome = quexel("calc '" + entry.path().string() + "'");
        EXPECT_EQ(outcome.status, 0) << entry.path() << "\n" << outcome.err;
        EXPECT_EQ(outcome.out.find('#'), std::string::npos) << entry.path() << " shows an error\n" << outcome.out;
    }
    EXPECT_GT(models, 0);
}

TEST(QuexelReplace, ShowsAndThenWrites) {
    const std::string model = "\xEF\xBB\xBFRent,Note\r\n1200,\"=DpD(A2,30)\"\r\n\r\n\"a \"\"30\"\"\",30\r\n";
    write("model.csv", model);
    const std::string replace = "replace model.csv --find '(\\d)0\\b' --replace '${1}1'";
    const Outcome shown = quexel(replace);
    EXPECT_EQ(shown.out, "A2  1200         ->  1201\n"
                         "B2  =DpD(A2,30)  ->  =DpD(A2,31)\n"
                         "A4  a \"30\"       ->  a \"31\"\n"
                         "B4  30           ->  31\n"
                         "4 of 6 filled cells would change; --write changes the file\n");
    EXPECT_EQ(shown.status, 0);
    EXPECT_EQ(content("model.csv"), model);
    EXPECT_NE(quexel(replace + " --where B1:B9 --write")
                  .out.find("2 of 3 filled cells changed; the former file is model.csv.bak\n"),
              std::string::npos);
    EXPECT_EQ(content("model.csv.bak"), model);
    EXPECT_EQ(content("model.csv"), "\xEF\xBB\xBFRent,Note\r\n1200,\"=DpD(A2,31)\"\r\n\r\n\"a \"\"30\"\"\",31\r\n");
    EXPECT_EQ(quexel("replace model.csv --find '(' --replace x --write").status, 1);
    EXPECT_EQ(quexel("replace model.csv --find x --replace y --where A").err, "\"A\" is not an area such as A1:D50\n");
    EXPECT_EQ(quexel("replace model.csv --find '' --replace y").err,
              "Error: Find text must not be the empty string!\n");
    EXPECT_EQ(quexel("replace nosuch.csv --find x --replace y").status, 1);
    // What cannot be written whole leaves the former file as it was.
    const std::string before = content("model.csv");
    quexel_on_a_full_disk("replace model.csv --find R --replace " + std::string(9000, 'S') + " --write");
    EXPECT_EQ(content("model.csv"), before);
    EXPECT_EQ(quexel("replace model.doc --find x --replace y").status, 1);
}

TEST(QuexelTrace, FoldsTheTrialsOfASearch) {
    const std::string formula = "'IRRT({2005;2006}, {100;110})'"; // no rate makes two receipts worth nothing
    const Outcome outcome = quexel("trace " + formula), all = quexel("trace --all " + formula);
    EXPECT_EQ(
        outcome.out.find("IRRT            = #NUM!  Root not bracketed: We tried, but we couldn't find a solution"), 0u)
        << outcome.out.substr(0, 300);
    const auto lines = [](const std::string& text) { return std::count(text.begin(), text.end(), '\n'); };
    EXPECT_LT(lines(outcome.out), 400);
    EXPECT_GT(lines(all.out), 4000);
}

TEST(QuexelTrace, ComparesTwoTraces) {
    const Outcome outcome = quexel("trace 'DpD(38000, 30)' --against 'DpD(38000, 31)'");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_NE(outcome.out.find("*  Result   38030           38031\n"), std::string::npos) << outcome.out;
    EXPECT_EQ(outcome.out.find("TheDate"), std::string::npos) << "it has not changed\n" << outcome.out;
    EXPECT_NE(quexel("trace 'DpD(38000, 30)' --against 'DpD(38000,30)'").out.find("No differences"), std::string::npos);
    EXPECT_EQ(quexel("trace 'DpD(38000, 30)' --against 'DpD('").status, 1);
}

TEST(QuexelTrace, PrintsTheTree) {
    const Outcome outcome = quexel("trace 'MonthEnd(DYear(38000))'");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.out.find("DYear  = 2004.03494623656\n"), 0u) << outcome.out; // the inner call comes first
    EXPECT_NE(outcome.out.find("\nMonthEnd   = 38017\n  TheDate  "), std::string::npos) << outcome.out;
    EXPECT_NE(outcome.out.find("\n  Inputs "), std::string::npos);
    EXPECT_NE(outcome.out.find("\n  MonthEnd "), std::string::npos);
    EXPECT_NE(outcome.out.find(" lines"), std::string::npos);
    const Outcome failed = quexel("trace 'MonthEnd(-1)'");
    EXPECT_NE(failed.out.find("Error LIB40: Date less than minimum allowed value"), std::string::npos) << failed.out;
    EXPECT_EQ(failed.out.find("MonthEnd   = #NUM!  Date less than minimum allowed value (TheDate).\n"), 0u)
        << failed.out;
    EXPECT_NE(quexel("trace '1+1'").out.find("Nothing To Report"), std::string::npos);
    EXPECT_EQ(quexel("trace '1+'").status, 1);
}

TEST(QuexelFunctions, TellsWhatIsDeclared) {
    const auto all = nlohmann::json::parse(quexel("functions --json").out);
    ASSERT_TRUE(all.is_array());
    const auto found = std::find_if(all.begin(), all.end(), [](const auto& one) { return one["name"] == "DateYMD"; });
    ASSERT_NE(found, all.end());
    EXPECT_EQ((*found)["category"], "QX: Date and Time Calculations");
    EXPECT_EQ((*found)["arguments"].size(), 3u);
    EXPECT_EQ((*found)["arguments"][1]["name"], "Mnth");
    EXPECT_EQ((*found)["arguments"][1]["optional"], false);
    EXPECT_NE(quexel("functions --category 'date and time calculations'").out.find("MonthEnd"), std::string::npos);
    EXPECT_EQ(quexel("functions --category nosuch").status, 1);
    EXPECT_NE(quexel("functions --builtins").out.find("  XLOOKUP "), std::string::npos);
    EXPECT_EQ(quexel("help xirr").out.find("XIRR(values, dates, [guess])\n"), 0u);
    EXPECT_EQ(quexel("help MONTHEND").out.find("MonthEnd(TheDate)\n"), 0u);
    const Outcome wrong = quexel("help MonthEnds");
    EXPECT_EQ(wrong.status, 1);
    EXPECT_NE(wrong.err.find("MonthEnd"), std::string::npos) << wrong.err;
}

TEST(Quexel, MisuseIsTold) {
    EXPECT_EQ(quexel("--version").out.find("quexel "), 0u);
    EXPECT_EQ(quexel("").status, 2);
    const Outcome unknown = quexel("nosuch 1+1");
    EXPECT_EQ(unknown.err, "no command \"nosuch\"\nRun with --help for more information.\n");
    EXPECT_EQ(unknown.status, 2);
    EXPECT_EQ(quexel("calc model.csv --html page.html").status, 2) << "a page of what?";
    EXPECT_EQ(quexel("eval").status, 2);
    EXPECT_EQ(quexel("--help").status, 0);
    EXPECT_EQ(WEXITSTATUS(std::system(QX_PROGRAM " eval 1+1 >/dev/full 2>err")), 1) << "a full disk";
}

} // namespace
