// Log files, timers and the calculation monitor.
#include "core/logs.h"
#include "support/traced.h"

#include <chrono>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <thread>

namespace qx::test {
namespace {

std::string content(const std::string& name) {
    std::ifstream file(name, std::ios::binary);
    return (std::ostringstream() << file.rdbuf()).str();
}

void wait_msecs(int msecs) { std::this_thread::sleep_for(std::chrono::milliseconds(msecs)); }

TEST(LogFile, WritesAfterItsNamingLineAndOpensAnew) {
    LogFile log;
    log.writeline("before it is open: nothing");
    log.open("Logs");
    EXPECT_EQ(log.name(), "qx_Logs.qxl");
    log.write("a,");
    log.writeline("b");
    std::string text = content("qx_Logs.qxl"); // each write is flushed
    EXPECT_EQ(text.rfind("Quexel Log File qx_Logs.qxl ", 0), 0u) << text;
    EXPECT_EQ(text.substr(text.find('\n') + 1), "a,b\n");
    log.open("Logs");
    log.close();
    log.writeline("after the end: nothing");
    text = content("qx_Logs.qxl");
    EXPECT_EQ(text.find('\n'), text.size() - 1) << text;
}

TEST(LogFile, PathStandsBeforeTheName) {
    std::filesystem::create_directory("logs");
    LogFile log;
    log.open("Deep", "logs/");
    EXPECT_EQ(log.name(), "logs/qx_Deep.qxl");
    EXPECT_TRUE(std::filesystem::exists("logs/qx_Deep.qxl"));
}

using TracedLog = Traced;

TEST_F(TracedLog, OpeningIsNotedAndFailureWarned) {
    LogFile log;
    log.open("Noted");
    EXPECT_EQ(trace().text(1), "Info\t\tA log file has been created here:qx_Noted.qxl");
    log.open("Lost", "no such folder/");
    EXPECT_EQ(trace().text(2), "Warning\t\tFailed to open log file:no such folder/qx_Lost.qxl(fail error)");
    EXPECT_FALSE(log.isopen());
    log.writeline("nowhere");
}

TEST(Timer, GoesOnFromWhereItStopped) {
    clsTimer timer;
    timer.reset(true);
    wait_msecs(20);
    timer.stop();
    const double first = timer.microseconds();
    EXPECT_GE(first, 19'000);
    wait_msecs(30);
    EXPECT_EQ(timer.microseconds(), first) << "a stopped timer stands";
    timer.start(false);
    EXPECT_GE(timer.microseconds(), first - 1'000) << "less the measured overhead of a stop";
    EXPECT_LT(timer.microseconds(), first + 25'000) << "the pause does not count";
    wait_msecs(10);
    EXPECT_GE(timer.microseconds(), first + 9'000) << "read while running";
    timer.start();
    EXPECT_LT(timer.microseconds(), first) << "from zero again";
    timer.reset(false);
    EXPECT_EQ(timer.milliseconds(), 0);
    EXPECT_GT(clsTimer::frequency(), 0);
}

TEST(Timer, IsNeverBelowZero) {
    clsTimer timer;
    timer.reset(false);
    for (int i = 0; i < 1000; ++i) { // shorter than the measured overhead of a start and a stop at times
        timer.start();
        timer.stop();
        EXPECT_GE(timer.microseconds(), 0.0);
    }
}

TEST(Timer, CallsTheHooksOfADerivedTimer) {
    struct Counting : clsTimer {
        void started() override { ++starts; }
        void stopped() override { ++stops; }
        int starts = 0, stops = 0;
    } timer;
    timer.start();
    timer.stop();
    EXPECT_EQ(timer.starts, 1);
    EXPECT_EQ(timer.stops, 1);
}

TEST(Monitor, IsALogWhileItIsOn) {
    CalcMonStart();
    EXPECT_TRUE(CalcMonOn);
    CalcMonLog().writeline("DpD,0,1");
    CalcMonStop();
    EXPECT_FALSE(CalcMonOn);
    CalcMonLog().writeline("dropped");
    const std::string text = content("qx_CalcMon.qxl");
    EXPECT_EQ(text.substr(text.find('\n') + 1), "DpD,0,1\n");
}

} // namespace
} // namespace qx::test
