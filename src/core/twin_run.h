// The run of an array twin over its periods, dates or numbers. A twin asks its routine for one after the other; a
// routine that returns `over(here, Time, ...)` answers for all that are left, and does once what does not depend on
// them:
//
//     Kept<double> rates{here, steps.count()};
//     return here.returning(over(here, Time, [&](const timeperiod& period) {
//         return sum(period, [&](int n) { return rates(n, [&] { return Grow(steps.date_of(n), rate, growth, 0); }); });
//     }));
//
// Each answer is calculated in the steps of a single call, and so is the same to the bit. A single call keeps nothing,
// and while the trace is on a twin makes single calls.
#pragma once

#include "core/pools.h"
#include "core/routine.h"

#include <cstddef>
#include <cstring>
#include <memory>
#include <optional>

namespace qx {

/// The routine for which a twin waits, and which may go on over its items.
class TwinWait {
  public:
    static bool for_routine(const char* name) { return routine_ != nullptr && std::strcmp(name, routine_) == 0; }
    /// Lets another routine go on in place of one that returns its answer.
    static void pass_to(const char* routine, const Routine& here) {
        if (for_routine(here.name())) routine_ = routine;
    }

  protected:
    static inline const char* routine_ = nullptr; ///< null if no twin waits
};

/// The items of a twin, one after the other in one place.
template <class Item>
class TwinRun : TwinWait {
  public:
    TwinRun(const char* routine, int n, Range<double>& answers) : n_(n), answers_(answers) {
        routine_ = routine;
        waiting_ = this;
    }
    TwinRun(const TwinRun&) = delete;
    TwinRun& operator=(const TwinRun&) = delete;
    virtual ~TwinRun() { hand_over(); }

    /// Item number i, from 1.
    virtual const Item& set(int i) = 0;

    const Item& first() { return set(at_ = 1); }
    /// Stores the answer for an item and sets the next one; false after the last.
    bool go_on(double answer) {
        answers_(at_) = answer;
        if (at_ == n_) return false;
        set(++at_);
        return true;
    }

    /// The run that waits for a routine, to which it gives an item of its own; null if none does.
    static TwinRun* of(const char* routine, const Item& item) {
        if (waiting_ == nullptr || &item != &waiting_->item_ || !for_routine(routine)) return nullptr;
        TwinRun* const run = waiting_;
        run->hand_over();
        return run;
    }

  protected:
    Item item_;

  private:
    static void hand_over() {
        routine_ = nullptr;
        waiting_ = nullptr;
    }

    static inline TwinRun* waiting_ = nullptr;
    int n_, at_ = 0;
    Range<double>& answers_;
};

/// A routine's answer for an item: `each` of it. Asked by its twin, the routine answers for the items that follow, too.
/// It must return what this returns.
template <class Item, class Each>
double over(const Routine& here, const Item& item, Each each) {
    TwinRun<Item>* const run = TwinRun<Item>::of(here.name(), item);
    double answer;
    do answer = each(item);
    while (run != nullptr && run->go_on(answer));
    return answer;
}

/// Memory for what is kept, released in the reverse order.
class TwinMemory {
  public:
    /// Null if too little is left.
    static void* take(std::size_t bytes) {
        bytes = (bytes + alignment - 1) / alignment * alignment;
        if (bytes > size - used_) return nullptr;
        void* const taken = bytes_ + used_;
        used_ += bytes;
        return taken;
    }
    static void give_back(void* taken) { used_ = static_cast<std::size_t>(static_cast<std::byte*>(taken) - bytes_); }

  private:
    static constexpr std::size_t size = std::size_t{1} << 22, alignment = alignof(std::max_align_t);
    alignas(alignment) static std::byte bytes_[size];
    static inline std::size_t used_ = 0;
};

/// Values of a routine by number, from 1 to n. If its twin waits for it, each is made when it is first asked for, and
/// kept; otherwise each is made when it is asked for, and lasts until the next one is.
template <class T>
class Kept {
  public:
    Kept(const Routine& here, int n) {
        if (n <= 0 || !TwinWait::for_routine(here.name())) return;
        values_ = static_cast<std::optional<T>*>(TwinMemory::take(static_cast<std::size_t>(n) * sizeof *values_));
        if (values_ == nullptr) return;
        n_ = n;
        std::uninitialized_value_construct_n(values_, n);
    }
    Kept(const Kept&) = delete;
    Kept& operator=(const Kept&) = delete;
    ~Kept() {
        if (values_ == nullptr) return;
        std::destroy_n(values_, n_);
        TwinMemory::give_back(values_);
    }

    template <class Make>
    T& operator()(int n, Make make) {
        if (n > n_) return last_.emplace(make());
        std::optional<T>& value = values_[n - 1];
        if (!value) value.emplace(make());
        return *value;
    }
    bool keeps() const { return n_ > 0; }

  private:
    std::optional<T>* values_ = nullptr;
    int n_ = 0;
    std::optional<T> last_;
};

} // namespace qx
