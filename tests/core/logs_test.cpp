// Log files, timers and the calculation monitor.
#include "core/logs.h"
#include "support/traced.h"

#include <chrono>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <thread>

#ifndef _WIN32
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

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
    std::string text = content("qx_Logs.qxl"); // a line is flushed
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

TEST(LogFile, ReachesTheDiskInBlocksAndWithinATenthOfASecondOfWork) {
    LogFile log;
    log.open("Blocks");
    const std::size_t begun = content("qx_Blocks.qxl").size();
    log.write("waits\n");
    wait_msecs(110);
    log.write("goes\n");
    EXPECT_EQ(content("qx_Blocks.qxl").size(), begun + 11);
    log.write("the last\n");
    log.close();
    EXPECT_EQ(content("qx_Blocks.qxl").size(), begun + 20);
    EXPECT_TRUE(log.complete());
}

#ifndef _WIN32
TEST(LogFile, GoesNeitherThroughALinkNorIntoAPipe) {
    std::filesystem::remove("qx_Plain.qxl");
    std::ofstream("precious.txt") << "precious";
    std::filesystem::create_symlink("precious.txt", "qx_Plain.qxl");
    LogFile log;
    log.open("Plain");
    log.writeline("through the link");
    EXPECT_FALSE(log.isopen());
    EXPECT_FALSE(log.complete());
    EXPECT_EQ(content("precious.txt"), "precious");
    std::filesystem::remove("qx_Plain.qxl");
    ASSERT_EQ(mkfifo("qx_Plain.qxl", 0600), 0);
    log.open("Plain"); // would wait for a reader
    EXPECT_FALSE(log.isopen());
    const int reader = ::open("qx_Plain.qxl", O_RDONLY | O_NONBLOCK);
    log.open("Plain"); // would wait once the pipe is full
    EXPECT_FALSE(log.isopen());
    ::close(reader);
    std::filesystem::remove("qx_Plain.qxl");
    log.open("Plain");
    EXPECT_TRUE(log.isopen());
}

TEST(LogFile, SaysWhenTheDiskIsFull) {
    rlimit former{};
    getrlimit(RLIMIT_FSIZE, &former);
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    const rlimit small{4096, former.rlim_max};
    setrlimit(RLIMIT_FSIZE, &small);
    LogFile log;
    log.open("Full");
    for (int i = 0; i < 1000; ++i) log.write("a line of a log\n");
    log.close();
    setrlimit(RLIMIT_FSIZE, &former);
    std::signal(SIGXFSZ, handler);
    EXPECT_FALSE(log.complete());
}
#endif

TEST(LargeNumberWatch, WritesAtOnceThenOnceASecondAndAtTheEnd) {
    LargeNumberWatch watch;
    watch.saw("First");
    EXPECT_EQ(content("qx_flout.txt"), " Large Number Found: First\n");
    watch.saw("Second");
    EXPECT_EQ(content("qx_flout.txt"), " Large Number Found: First\n");
    wait_msecs(1010);
    watch.saw("Third");
    EXPECT_EQ(content("qx_flout.txt"), " Large Number Found: Third\n");
    std::filesystem::remove("qx_flout.txt");
    watch.saw("Third");
    EXPECT_FALSE(std::filesystem::exists("qx_flout.txt")) << "the line would not change";
    watch.saw("Fourth");
    watch.close();
    EXPECT_EQ(content("qx_flout.txt"), " Large Number Found: Fourth\n");
    std::filesystem::remove("qx_flout.txt");
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
