// The commands of the trace, the monitor, the help and the random numbers, run as a host runs them: by name.
#include "addin/cells.h"
#include "addin/registration.h"
#include "addin/stub_host.h"
#include "core/logs.h"
#include "core/trace.h"
#include "numerics/random.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

namespace qx::test {
namespace {

int run_command(const std::string& name) {
    for (const Command* command = all_commands(); command != nullptr; command = command->next)
        if (name == command->name) return command->run();
    ADD_FAILURE() << "no command " << name;
    return -1;
}

std::string content(const char* name) {
    std::ifstream file(name);
    std::stringstream text;
    text << file.rdbuf();
    return text.str();
}

TEST(Commands, TraceRunsFromOnToShow) {
    static int shown_items;
    trace().viewer = [](clsTrace2& the_trace) { shown_items = the_trace.count(); };
    EXPECT_EQ(run_command("CPPQX_TraceOn"), 0);
    EXPECT_TRUE(traced());
    trace().info("one");
    EXPECT_EQ(run_command("CPPQX_TraceShow"), 0);
    EXPECT_EQ(shown_items, 1);
    EXPECT_FALSE(tracing);
    EXPECT_EQ(trace().count(), 0);
    trace().viewer = nullptr;
}

TEST(Commands, MonitorRunsFromOnToOff) {
    EXPECT_EQ(run_command("CPPQX_CalcMonOn"), 0);
    EXPECT_TRUE(CalcMonOn);
    CalcMonLog().writeline("line");
    EXPECT_EQ(run_command("CPPQX_CalcMonOff"), 0);
    EXPECT_FALSE(CalcMonOn);
    CalcMonLog().writeline("late");
    const std::string log = content("qx_CalcMon.qxl");
    EXPECT_NE(log.find("\nline\n"), std::string::npos);
    EXPECT_EQ(log.find("late"), std::string::npos);
}

class HelpingHost : public StubHost {
  public:
    std::string opened;
    void show_help(std::string_view, HelpPage page, std::string_view topic) override {
        opened = std::to_string(static_cast<int>(page)) + ":" + std::string(topic);
    }
};

TEST(Commands, HelpOpensAtTheCallersTopic) {
    HelpingHost host;
    Cells cells;
    EXPECT_EQ(run_command("CPPQX_Help"), 0);
    EXPECT_EQ(host.opened, "0:");

    host.coerced = cells.text("10008");
    EXPECT_EQ(run_command("CPPQX_ContextHelp"), 0);
    EXPECT_EQ(host.opened, "15:10008");

    host.caller = cells.array(1, 4, {number_cell(9), number_cell(10), number_cell(0), number_cell(3)});
    EXPECT_EQ(run_command("CPPQX_ContextHelp"), 0);
    EXPECT_EQ(host.opened, "15:");

    host.caller = cells.array(1, 4, {number_cell(9), number_cell(11), number_cell(0), number_cell(3)});
    EXPECT_EQ(run_command("CPPQX_ContextHelp"), 0);
    EXPECT_EQ(host.opened, "15:10008");

    host.fail_all = true;
    EXPECT_EQ(run_command("CPPQX_ContextHelp"), 0);
    EXPECT_EQ(host.opened, "15:");
}

/// A host with a companion workbook of one of the two names.
class CompanionHost : public StubHost {
  public:
    std::string companion;
    int call(int xlfn, OPER* result, int count, OPER* const* arguments) override {
        if (xlfn == xlSheetId) {
            if (text_in(*arguments[0]) != "[" + companion + "]Globals") return xlretFailed;
            *result = {{.num = 0.0}, xltypeRef};
            result->val.mref = {nullptr, 77};
            return xlretSuccess;
        }
        if (xlfn == xlCoerce) {
            const auto& reference = arguments[0]->val.mref;
            EXPECT_EQ(reference.idSheet, 77u);
            const XLREF& cell = reference.lpmref->reftbl[0];
            EXPECT_EQ(cell.rwFirst, 1);
            EXPECT_EQ(cell.colFirst, 3);
            EXPECT_EQ(arguments[1]->val.w, xltypeNum);
            *result = number_cell(4321);
            return xlretSuccess;
        }
        return StubHost::call(xlfn, result, count, arguments);
    }
};

TEST(Commands, RandomNumbersStartAtTheSeedOfTheCompanionWorkbook) {
    CompanionHost host;
    seed_random(4321);
    const double expected = next_random();
    for (const char* name : {"Quexel.xla", "Quexel.xlam"}) {
        host.companion = name;
        EXPECT_EQ(run_command("CPPQX_SetSemiRandom"), 0);
        EXPECT_EQ(next_random(), expected) << name;
        EXPECT_NE(content("qx_SetSemiRandom.qxl")
                      .find("\n1. Entered Semi-Random\n2. Seed obtained=4321\n3. Generator Initialised\n"),
                  std::string::npos);
    }
    host.companion = "";
    run_command("CPPQX_SetSemiRandom");
    EXPECT_NE(content("qx_SetSemiRandom.qxl").find("2. Seed obtained=0\n"), std::string::npos);
    seed_random(default_seed);
}

} // namespace
} // namespace qx::test
