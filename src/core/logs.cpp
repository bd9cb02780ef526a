#include "core/logs.h"

#include "core/trace.h"

#include <algorithm>
#include <chrono>
#include <ctime>

namespace qx {

void LogFile::open(std::string_view name, std::string_view path) {
    close();
    name_ = std::string(path) + "qx_" + std::string(name) + ".qxl";
    try {
        stream_.open(name_, std::ios::out | std::ios::trunc | std::ios::binary);
    } catch (...) {
        stream_.setstate(std::ios::failbit);
    }
    if (!stream_.is_open() || !stream_) {
        if (traced()) trace().warning("Failed to open log file:" + name_ + "(fail error)");
        stream_.close();
        return;
    }
    const std::time_t now = std::time(nullptr);
    char text[64] = "";
    if (const std::tm* local = std::localtime(&now)) std::strftime(text, sizeof text, "%c", local);
    writeline("Quexel Log File " + name_ + " " + text);
    if (traced()) trace().info("A log file has been created here:" + name_);
}

void LogFile::write(std::string_view text) {
    if (!stream_.is_open()) return;
    try {
        stream_.write(text.data(), static_cast<std::streamsize>(text.size()));
        stream_.flush();
    } catch (...) { // a log never stops a calculation
    }
}

void LogFile::writeline(std::string_view text) { write(std::string(text) + "\n"); }

void LogFile::close() {
    try {
        if (stream_.is_open()) stream_.close();
        stream_.clear();
    } catch (...) {}
}

namespace {

using Clock = std::chrono::steady_clock;

std::int64_t ticks() { return Clock::now().time_since_epoch().count(); }

} // namespace

std::int64_t clsTimer::overhead_ = 0;
bool clsTimer::calibrated_ = false;

std::int64_t clsTimer::frequency() {
    constexpr std::int64_t per_second = Clock::period::den / Clock::period::num;
    return per_second == 0 ? 1 : per_second;
}

void clsTimer::reset(bool andstart) {
    if (!calibrated_) {
        calibrated_ = true;
        overhead_ = 0;
        start();
        stop();
        overhead_ = elapsed_;
    }
    elapsed_ = 0;
    running_ = false;
    if (andstart) start();
}

void clsTimer::start(bool fromzero) {
    if (!running_ || fromzero) elapsed_ = (fromzero ? 0 : elapsed_) - ticks();
    running_ = true;
    started();
}

void clsTimer::stop() {
    if (running_) {
        elapsed_ += ticks() - overhead_;
        running_ = false;
    }
    stopped();
}

double clsTimer::microseconds() const {
    const std::int64_t elapsed = running_ ? elapsed_ + ticks() - overhead_ : elapsed_;
    // A time shorter than the overhead, which varies, is none.
    return static_cast<double>(std::max<std::int64_t>(elapsed, 0)) * 1e6 / static_cast<double>(frequency());
}

clsTimer& TraceTimer() {
    static clsTimer timer;
    return timer;
}

clsTimer& CalcMonTimer() {
    static clsTimer timer;
    return timer;
}

LogFile& CalcMonLog() {
    static LogFile log;
    return log;
}

void CalcMonStart() {
    CalcMonLog().open("CalcMon");
    CalcMonOn = true;
}

void CalcMonStop() {
    CalcMonOn = false;
    CalcMonLog().close();
}

} // namespace qx
