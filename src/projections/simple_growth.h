// Growth at dated simple rates: interest accrues under a day count, simple within each piece between two dates of a
// sequence in arrears, and joins the capital at each of them. What discount factors and capitalised interest are made
// of.
#pragma once

#include "calendar/annual_sequence.h"
#include "calendar/time_period.h"
#include "core/routine.h"
#include "projections/interest.h"
#include "rates/compounding.h"

#include <algorithm>

namespace qx {

/// Throws unnacceptabledata unless a sequence is in arrears.
inline void check_arrears(const Routine& here, const AnnualSequence& sequence, const char* variable,
                          const char* message = "PrdsDisc MUST be in arrears for this function") {
    if (!sequence.arrears()) here.fail<unnacceptabledata>(variable, message);
}
inline void check_rates(Routine& here, View<double> IntSimple) {
    for (const double rate : IntSimple) check_rate(here, rate, "IntSimple");
}

/// The pieces between the dates of a sequence of the time from one date to a later one, in order.
template <class Piece>
void for_each_piece(const date& from, const date& to, const AnnualSequence& sequence, Piece&& piece) {
    for (date start = from; start < to;) {
        date end = std::min(sequence.nextdate(start, false), to);
        if (end <= start) end = to; // the calendar's end
        piece(timeperiod(start, end));
        start = end;
    }
}

/// Dated rates and the rule of accrual.
struct DatedRates {
    DatedRates(View<date> FromDatesInt, View<double> IntSimple, double DayCount, const AnnualSequence& Periods)
        : Periods(Periods), accrual(FromDatesInt, IntSimple, DayCount, Periods) {}

    /// The interest received in a piece on a capital.
    double interest(const timeperiod& piece, double capital, double margin = 0.0) const {
        const Life all{piece.from(), piece.to()};
        return -accrual.interest(all, all, capital, margin, false);
    }
    double growth(const date& from, const date& to) const { return 1.0 + interest(timeperiod(from, to), 1.0); }

    const AnnualSequence& Periods;
    const Accrual accrual;
};

/// The growth of 1 up to one date from others before it, which share what lies between the dates of the sequence.
class GrowthTo {
  public:
    GrowthTo(const date& when, const DatedRates& rates)
        : when_(when), rates_(rates), last_(rates.Periods.prevdate(when, true)), since_(when) {}

    double operator()(const date& day) {
        if (day >= when_) return 1.0;
        if (day >= last_) return rates_.growth(day, when_);
        const date next = after(day);
        if (since_ == when_) {
            since_growth_ = rates_.growth(last_, when_);
            since_ = last_;
        }
        if (next < since_) {
            double growth = 1.0;
            for_each_piece(next, since_, rates_.Periods,
                           [&](const timeperiod& piece) { growth *= rates_.growth(piece.from(), piece.to()); });
            since_growth_ *= growth;
            since_ = next;
        }
        for (; since_ < next; since_ = after(since_)) since_growth_ /= rates_.growth(since_, after(since_));
        return rates_.growth(day, next) * since_growth_;
    }

  private:
    date after(const date& day) const { return rates_.Periods.nextdate(day, false); }

    const date when_;
    const DatedRates& rates_;
    const date last_;           ///< the last date of the sequence before it
    date since_;                ///< the date itself, or one of the sequence before it
    double since_growth_ = 1.0; ///< from there on
};

} // namespace qx
