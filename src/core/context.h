// Who is at work and on what: the names that a failure carries to the trace.
//
// A FunctionContext names four texts, and only while the trace is on. The texts are in one store, equal ones once; the
// context is their number there, so that every routine, date and period can own one, and copy it, for nothing.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace qx {

#ifdef QX_WITHOUT_TRACE // scripts/trace_cost measures what the trace costs while it is off against this
struct Never {
    constexpr operator bool() const { return false; }
    constexpr const Never& operator=(bool) const { return *this; }
};
inline constexpr Never tracing, TraceMuted;
#else
/// The trace is on: items are stored and contexts keep their texts. Set by TraceStart and TraceShow.
inline bool tracing = false;
/// Items are suppressed for a while without ending the trace.
inline bool TraceMuted = false;
#endif

/// True if a trace item would be stored: the one test in front of every text that is built for the trace. The
/// compiler is told to expect that it is not, and keeps what follows out of the way.
inline bool traced() { return __builtin_expect(static_cast<long>(tracing && !TraceMuted), 0L) != 0L; }

class FunctionContext {
  public:
    constexpr FunctionContext() noexcept = default;
    FunctionContext(std::string_view function, std::string_view variable) {
        if (tracing) [[unlikely]]
            setnames(function, variable);
    }

    // Setters act only while the trace is on.
    void setfunction(std::string_view text) { set(&Texts::function, text); }
    void setvariable(std::string_view text) { set(&Texts::variable, text); }
    void setclass(std::string_view text) { set(&Texts::class_name, text); }
    void setmessage(std::string_view text) { set(&Texts::message, text); }
    void setnames(std::string_view function, std::string_view variable);

    const std::string& function() const { return texts().function; }
    const std::string& variable() const { return texts().variable; }
    const std::string& class_name() const { return texts().class_name; }
    const std::string& message() const { return texts().message; }

    /// The lines that an error's description shows: function, variable, message and class, each if not empty.
    std::string text() const;

    /// Empties the store, as a new trace does: contexts from before have no texts any more.
    static void forget_texts();

  private:
    struct Texts {
        std::string function, variable, class_name, message;
    };
    class Store;

    static Store& store();
    const Texts& texts() const;
    void set(std::string Texts::*field, std::string_view text);

    std::uint32_t number_ = 0; ///< 0: it has no texts
};

} // namespace qx
