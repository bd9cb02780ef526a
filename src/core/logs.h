// Log files and timers: the trace's copy on disk, the calculation monitor, and the watch of large numbers.
#pragma once

#include <chrono>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>
#include <string_view>

namespace qx {

/// Opens a plain file for writing, truncating it; null if that fails. Where links and pipes are files, a link is not
/// followed and a pipe or a device is not opened, so that writing neither reaches another file nor waits for a reader.
std::FILE* open_plain_file(const char* name);

/// A text file "qx_NAME.qxl". A file that cannot be opened or written is no failure: it stays empty, and complete()
/// says so.
class LogFile {
  public:
    /// Opens path + "qx_" + name + ".qxl", truncating it, and writes the line that names it. An empty path is
    /// the current working directory.
    void open(std::string_view name, std::string_view path = {});
    /// The text; nothing if the file is not open. It reaches the disk in blocks, at the latest with the first text
    /// that comes a tenth of a second after it, or with close().
    void write(std::string_view text);
    void writeline(std::string_view text); ///< the text and a line end, flushed
    void close();
    bool isopen() const { return stream_ != nullptr; }
    /// True if the last opening succeeded and all that was written since is in the file. Final after close().
    bool complete() const { return complete_; }
    const std::string& name() const { return name_; }

  private:
    using Clock = std::chrono::steady_clock;
    struct Closer {
        void operator()(std::FILE* file) const { std::fclose(file); }
    };

    void flush();

    std::unique_ptr<std::FILE, Closer> stream_;
    Clock::time_point flushed_;
    bool complete_ = false;
    std::string name_;
};

/// The debug watch of large numbers: qx_flout.txt, in the current working directory, names the worksheet function that
/// returned the last one. The file is written when its line would change, at most once a second, and at the end.
class LargeNumberWatch {
  public:
    ~LargeNumberWatch() { close(); }
    void saw(const char* function);
    /// Writes a line that still waits, and forgets: the next large number is written at once.
    void close();

  private:
    void write();

    const char* last_ = nullptr;
    bool waits_ = false;
    std::chrono::steady_clock::time_point next_; ///< the earliest moment to write
};
LargeNumberWatch& large_number_watch();

/// A stop watch on the monotonic clock.
class clsTimer {
  public:
    virtual ~clsTimer() = default;
    virtual void started() {} ///< hook after a start
    virtual void stopped() {} ///< hook after a stop

    /// Back to zero, and running if asked. The first reset measures the overhead of a start and a stop.
    void reset(bool andstart);
    /// Starts from zero, or lets a stopped timer go on from its elapsed time.
    void start(bool fromzero = true);
    void stop();
    /// Time since the start, or up to the stop. The timer keeps running.
    double microseconds() const;
    /// Whole milliseconds.
    long long milliseconds() const { return static_cast<long long>(microseconds() / 1000.0); }

    static std::int64_t frequency(); ///< ticks per second, never 0

  private:
    std::int64_t elapsed_ = 0; ///< ticks when stopped; minus the start reading while running
    bool running_ = false;
    static std::int64_t overhead_;
    static bool calibrated_;
};

clsTimer& TraceTimer();
clsTimer& CalcMonTimer();

/// The calculation monitor: one line per worksheet call, "name,msecs to inputs concluded,msecs in all".
inline bool CalcMonOn = false;
LogFile& CalcMonLog();
void CalcMonStart(); ///< opens qx_CalcMon.qxl and switches the monitor on
void CalcMonStop();

} // namespace qx
