// Pools: the static stores of numbered slots in which worksheet arguments and work ranges live.
//
// A slot's number is fixed in the code of the routine that uses it. Slots are numbered from 1 and keep what they
// held from call to call.
#pragma once

#include "core/range.h"

#include <bit>
#include <cstdint>
#include <utility>

namespace qx {

/// The store of one-value arguments of a type: 19 usable slots.
template <class T>
class VarPool {
  public:
    static constexpr int slots = 20; ///< number 0 is never asked for

    /// The object of a number. Throws outofrange for 20 or more.
    static T& get(int slot) {
        static T objects[slots];
        if (slot >= slots || slot < 0) {
            FunctionContext context;
            context.setclass("VarPool");
            throw outofrange(context);
        }
        return objects[slot];
    }
};

/// How many range slots a type has.
template <class T>
inline constexpr int range_slots = 0;

/// The store of ranges of a type.
template <class T>
class RangePool {
  public:
    static constexpr int slots = range_slots<T>;
    static_assert(slots > 0, "no range pool for this type");

    /// The range of a number, 1 to `slots`. Throws outofrange beyond.
    static Range<T>& get(int slot) {
        if (slot > slots || slot < 1) {
            FunctionContext context;
            context.setclass("RangePool");
            if (tracing)
                context.setmessage(text_of("The range number required (", slot,
                                           ") exceeds the dimensions of the this particular RangePool class (",
                                           slots - 1, ")"));
            throw outofrange(context);
        }
        return ranges[slot - 1];
    }

  private:
    static Range<T> ranges[slots];
};

/// Gives a type a pool of ranges: this in a header, and in one source file QX_RANGE_POOL_STORAGE. (The definition of
/// a template would be in the library's file on Windows with all its zeros.)
#define QX_RANGE_POOL(type_, slots_)                                                                                   \
    template <>                                                                                                        \
    inline constexpr int range_slots<type_> = slots_;                                                                  \
    template <>                                                                                                        \
    Range<type_> RangePool<type_>::ranges[slots_]
#define QX_RANGE_POOL_STORAGE(type_)                                                                                   \
    template <>                                                                                                        \
    Range<type_> RangePool<type_>::ranges[range_slots<type_>] {}

/// How many working lists of a type may be in use at once.
template <class T>
inline constexpr int work_lists = 0;

/// The store of the working lists of a type.
template <class T>
class WorkListPool {
  public:
    static constexpr int count = work_lists<T>;
    static_assert(count > 0 && count <= 32, "no working lists for this type");

    /// A list that nobody uses. Throws outofrange if all are in use.
    static Range<T>& take() {
        const int free = std::countr_one(taken);
        if (free >= count) {
            FunctionContext context;
            context.setclass("WorkListPool");
            if (tracing) context.setmessage(text_of("All ", count, " working lists of one kind are in use."));
            throw outofrange(context);
        }
        taken |= std::uint32_t{1} << free;
        return lists[free];
    }
    static void give_back(Range<T>& list) {
        list.renew();
        taken &= ~(std::uint32_t{1} << (&list - lists));
    }

  private:
    static Range<T> lists[count];
    static inline std::uint32_t taken = 0;
};

/// A list for the work of one routine: empty at first, free again at the end of its scope. It can be returned as the
/// routine's result and read wherever a Range or a View is read.
///
///     WorkList<double> amounts;
///     amounts->append(100.0);
///     total(amounts);
template <class T>
class WorkList {
  public:
    WorkList() : list_(&WorkListPool<T>::take()) {}
    explicit WorkList(int n, int columns = 1) : WorkList() { list_->dimension(n, columns); }
    WorkList(WorkList&& other) noexcept : list_(std::exchange(other.list_, nullptr)) {}
    WorkList& operator=(WorkList&& other) noexcept {
        std::swap(list_, other.list_);
        return *this;
    }
    ~WorkList() {
        if (list_ != nullptr) WorkListPool<T>::give_back(*list_);
    }

    Range<T>& operator*() { return *list_; }
    const Range<T>& operator*() const { return *list_; }
    Range<T>* operator->() { return list_; }
    const Range<T>* operator->() const { return list_; }
    operator Range<T>&() & { return *list_; } // a reference to the list of a temporary would outlive it
    operator View<T>() const { return *list_; }
    T& operator()(int i) { return (*list_)(i); }
    const T& operator()(int i) const { return list_->get(i); }
    const T& get(int i) const { return list_->get(i); }
    int size() const { return list_->size(); }
    const T* begin() const { return std::as_const(*list_).begin(); }
    const T* end() const { return std::as_const(*list_).end(); }

  private:
    Range<T>* list_;
};

template <class T>
std::string describe(const WorkList<T>& list) {
    return describe(View<T>(list));
}

/// A copy of a list in ascending order.
template <class T>
WorkList<T> sorted(View<T> list) {
    WorkList<T> copy;
    *copy = list;
    copy->setname(list.name());
    copy->heapsort(true);
    return copy;
}

/// Gives a type working lists, in a header; QX_WORK_LIST_STORAGE in one source file.
#define QX_WORK_LISTS(type_, count_)                                                                                   \
    template <>                                                                                                        \
    inline constexpr int work_lists<type_> = count_;                                                                   \
    template <>                                                                                                        \
    Range<type_> WorkListPool<type_>::lists[count_]
#define QX_WORK_LIST_STORAGE(type_)                                                                                    \
    template <>                                                                                                        \
    Range<type_> WorkListPool<type_>::lists[work_lists<type_>] {}

QX_WORK_LISTS(double, 32);
QX_WORK_LISTS(int, 4);
QX_WORK_LISTS(std::string, 4);

QX_RANGE_POOL(double, 25);
QX_RANGE_POOL(int, 6);
QX_RANGE_POOL(std::string, 3);
QX_RANGE_POOL(bool, 3);
QX_RANGE_POOL(ministring, 2);

} // namespace qx
