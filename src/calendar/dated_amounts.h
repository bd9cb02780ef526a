// DatedAmounts: dates and the amounts that belong to them, as two views of one length.
#pragma once

#include "calendar/date.h"
#include "core/pools.h"
#include "core/view.h"

#include <algorithm>
#include <optional>

namespace qx {

class DatedAmounts {
  public:
    DatedAmounts() {} // as a default, `DatedAmounts()` would first fill the room for the copies with zeros
    /// Of two lists, by the rules of Range::datesize: the shorter length, without the rows at the end that have no
    /// date, nor those that have neither date nor amount. The lists stay as they are, and are copied only if a row
    /// goes, or for the trace.
    DatedAmounts(View<date> Dates, View<double> Amounts) : Dates_(Dates), Amounts_(Amounts) {
        if (!traced() && Dates.size() == Amounts.size() &&
            std::none_of(Dates.begin(), Dates.end(), [](const date& day) { return day.iszero(); }))
            return;
        Range<date>& dates = copied(Dates, own_Dates_);
        Range<double>& amounts = copied(Amounts, own_Amounts_);
        dates.datesize(amounts);
        Dates_ = dates;
        Amounts_ = amounts;
    }

    View<date> Dates() const { return Dates_; }
    View<double> Amounts() const { return Amounts_; }
    int size() const { return Dates_.size(); }

  private:
    template <class T>
    static Range<T>& copied(View<T> list, std::optional<WorkList<T>>& own) {
        Range<T>& copy = *own.emplace();
        copy = list;
        copy.setname(list.name());
        return copy;
    }

    View<date> Dates_;
    View<double> Amounts_;
    std::optional<WorkList<date>> own_Dates_;
    std::optional<WorkList<double>> own_Amounts_;
};

} // namespace qx
