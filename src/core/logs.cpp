#include "core/logs.h"

#include "core/trace.h"

#include <algorithm>
#include <cstring>
#include <ctime>

#ifndef _WIN32
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace qx {

namespace {

constexpr std::size_t block = 1 << 16;
constexpr std::chrono::milliseconds longest_wait{100};
constexpr std::chrono::seconds between_watches{1};

} // namespace

// --- Files ----------------------------------------------------------------------------------------------------

std::FILE* open_plain_file(const char* name) {
#ifdef _WIN32
    return std::fopen(name, "wb");
#else
    const int file = ::open(name, O_WRONLY | O_CREAT | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC, 0666);
    if (file < 0) return nullptr;
    struct stat status;
    if (::fstat(file, &status) == 0 && S_ISREG(status.st_mode) && ::ftruncate(file, 0) == 0)
        if (std::FILE* const stream = ::fdopen(file, "wb")) return stream;
    ::close(file);
    return nullptr;
#endif
}

void LogFile::open(std::string_view name, std::string_view path) {
    close();
    name_ = std::string(path) + "qx_" + std::string(name) + ".qxl";
    stream_.reset(open_plain_file(name_.c_str()));
    complete_ = stream_ != nullptr;
    if (!stream_) {
        if (traced()) trace().warning("Failed to open log file:" + name_ + "(fail error)");
        return;
    }
    std::setvbuf(stream_.get(), nullptr, _IOFBF, block);
    const std::time_t now = std::time(nullptr);
    char text[64] = "";
    if (const std::tm* local = std::localtime(&now)) std::strftime(text, sizeof text, "%c", local);
    writeline("Quexel Log File " + name_ + " " + text);
    if (traced()) trace().info("A log file has been created here:" + name_);
}

void LogFile::write(std::string_view text) {
    if (!stream_) return;
    if (std::fwrite(text.data(), 1, text.size(), stream_.get()) != text.size()) complete_ = false;
    if (Clock::now() - flushed_ >= longest_wait) flush();
}

void LogFile::writeline(std::string_view text) {
    write(std::string(text) + "\n");
    flush();
}

void LogFile::flush() {
    if (!stream_) return;
    if (std::fflush(stream_.get()) != 0) complete_ = false;
    flushed_ = Clock::now();
}

void LogFile::close() {
    if (stream_ && std::fclose(stream_.release()) != 0) complete_ = false;
}

void LargeNumberWatch::saw(const char* function) {
    if (last_ != nullptr && (function == last_ || std::strcmp(function, last_) == 0)) return;
    last_ = function;
    waits_ = true;
    if (std::chrono::steady_clock::now() >= next_) write();
}

void LargeNumberWatch::write() {
    waits_ = false;
    if (std::FILE* const file = open_plain_file("qx_flout.txt")) {
        std::fprintf(file, " Large Number Found: %s\n", last_);
        std::fclose(file);
    }
    next_ = std::chrono::steady_clock::now() + between_watches;
}

void LargeNumberWatch::close() {
    if (waits_) write();
    last_ = nullptr;
    next_ = {};
}

LargeNumberWatch& large_number_watch() {
    static LargeNumberWatch watch;
    return watch;
}

// --- Timers ---------------------------------------------------------------------------------------------------

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
