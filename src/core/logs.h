// Log files and timers: the trace's copy on disk and the calculation monitor.
#pragma once

#include <cstdint>
#include <fstream>
#include <string>
#include <string_view>

namespace qx {

/// A text file "qx_NAME.qxl". A file that cannot be opened or written is no failure: it stays empty.
class LogFile {
  public:
    /// Opens path + "qx_" + name + ".qxl", truncating it, and writes the line that names it. An empty path is
    /// the current working directory.
    void open(std::string_view name, std::string_view path = {});
    void write(std::string_view text);     ///< the text, flushed; nothing if the file is not open
    void writeline(std::string_view text); ///< the text and a line end, flushed
    void close();
    bool isopen() const { return stream_.is_open(); }
    const std::string& name() const { return name_; }

  private:
    std::ofstream stream_;
    std::string name_;
};

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
    /// Time since the start, or up to the stop. The timer goes on running.
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
