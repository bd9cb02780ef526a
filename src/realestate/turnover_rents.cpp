#include "realestate/turnover_rents.h"

#include "core/routine.h"
#include "projections/constant_rate.h"
#include "projections/growth.h"
#include "projections/levels.h"
#include "realestate/rent_chain.h"

namespace qx {

namespace {

/// Turnover, and the rent due on it, at a date.
class TurnoverRent {
  public:
    TurnoverRent(Routine& here, const TurnoverTerms& terms, int TurnSwitch)
        : here_(here), terms_(terms), rent_(TurnSwitch == turnover_rent), bands_(terms.rates.RateFromThresholds.size()),
          columns_(terms.rates.RateFromDates.size()) {
        if (TurnSwitch != turnover_rent && TurnSwitch != qualifying_turnover)
            here.fail<errlibillegalswitch>("TurnSwitch", "There is no TurnSwitch of ", TurnSwitch);
        check_reviews(here, terms.GrowEvery, "GrowEvery");
        terms.of_thresholds.check(here);
        terms.growth.check(here);
        terms.rates.RateFromThresholds.checkascending();
        check_table();
        if (rent_)
            here.info("RENT option selected: reporting the amount of turnover RENT in the period");
        else
            here.info("TURNOVER option selected: reporting the amount of TURNOVER in the period (that qualifies for "
                      "turnover rent)");
    }

    /// The amount of a lease in a period under accruals.
    double amount(const timeperiod& period, const Life& life, const Measure& measure) const {
        const date start = std::max(period.from(), life.Start), end = std::min(period.to(), life.Finish);
        const TraceBlock loop = here_.loop("Miniperiods", "Miniperiod Loop over time to calculate turnover and/or "
                                                          "turnover rent in each miniperiod");
        double sum = 0.0;
        date day = start;
        for (int n = 1; day < end; ++n) {
            const date to = std::min(end, next_change(day));
            const TraceBlock pass = here_.pass(n, "Miniperiod from ", day, " to ", to);
            sum += con({day, to}, life, annual_amount(day), measure);
            day = to;
        }
        return sum;
    }

  private:
    void check_table() const {
        const View<double>& table = terms_.rates.MargTurnRates;
        const int rows = std::max(bands_, 1), columns = std::max(columns_, 1);
        const bool line = rows == 1 || columns == 1; // a list, across or down
        if (table.size() < rows * columns || (!line && table.getcolumns() < columns))
            here_.fail<inconsistentranges>("MargTurnRates", "There are ", rows, " thresholds and ", columns,
                                           " dates, but ", table.getrows(), " rows and ", table.getcolumns(),
                                           " columns of rates");
        if (bands_ == 0 && columns_ == 0)
            here_.info("No input RateFromDates and no input Thresholds ie just a single value for turnover percentage");
    }
    double rate(int band, int column) const {
        const View<double>& table = terms_.rates.MargTurnRates;
        if (bands_ <= 1) return table(column);
        if (columns_ <= 1) return table.getcolumns() == 1 || table.getrows() == 1 ? table(band) : table.getxy(1, band);
        return table.getxy(column, band);
    }
    /// The column of the table at a date: 0 before the first.
    int column_at(const date& day) const {
        if (columns_ == 0) return 1;
        int column = 0;
        while (column < columns_ && terms_.rates.RateFromDates(column + 1) <= day) ++column;
        return column;
    }
    double threshold(int band, double growth) const {
        return bands_ == 0 ? 0.0 : terms_.rates.RateFromThresholds(band) * growth;
    }

    double turnover_at(const date& day) const {
        const Turnovers& list = terms_.turnovers;
        if (list.levels.empty()) return 0.0;
        if (list.ToDates.empty() || day >= list.ToDates.last()) {
            const double last = list.levels.single_or(std::max(list.ToDates.size(), 1));
            here_.info("Established the last Turnover of the input Turnovers at date ", day, ": ", last);
            return last;
        }
        const double level = Levels(day, ToSteps{day, list.ToDates}, list.levels);
        here_.info("Established using TLevels() with input Turnovers at date ", day, ": ", level);
        return level;
    }
    double annual_amount(const date& day) const {
        const int column = column_at(day);
        const double turnover =
            turnover_at(day) * (terms_.growth.none() ? 1.0 : Grow(day, 1.0, terms_.growth, terms_.GrowEvery));
        const double growth =
            terms_.of_thresholds.none() ? 1.0 : Grow(day, 1.0, terms_.of_thresholds, terms_.GrowEvery);
        if (!rent_) return std::max(turnover - threshold(1, growth), 0.0);
        if (column == 0) return 0.0;
        double rent = 0.0;
        for (int band = 1; band <= std::max(bands_, 1); ++band) {
            const double from = threshold(band, growth);
            if (turnover <= from) break;
            if (band > 1) here_.info("Incrementing the threshold number to ", band);
            const double next = band < bands_ ? threshold(band + 1, growth) : turnover;
            rent += rate(band, column) * (std::min(turnover, next) - from);
        }
        here_.info("Turnover ", turnover, " a year, rent ", rent);
        return rent;
    }

    /// The first date after a day on which something changes; the end of time if nothing does.
    date next_change(const date& day) const {
        date next = DateCrit;
        const auto consider = [&](const date& change) {
            if (change > day && change < next) next = change;
        };
        for (int n = 1; n <= terms_.turnovers.ToDates.size(); ++n)
            if (terms_.turnovers.ToDates(n) > day) {
                if (n > 1 && terms_.turnovers.ToDates(n - 1) == day)
                    here_.info("Incrementing the ToDate number to ", n);
                consider(terms_.turnovers.ToDates(n));
                break;
            }
        for (const date& from : terms_.rates.RateFromDates) consider(from);
        for (const Growth* growth : {&terms_.growth, &terms_.of_thresholds})
            if (terms_.GrowEvery > 0 && !growth->none())
                consider(review_after(day, growth->dates.first(), terms_.GrowEvery));
        return next;
    }

    const Routine& here_;
    const TurnoverTerms& terms_;
    bool rent_;
    int bands_, columns_;
};

} // namespace

double TStepGTurnRentGrow(const timeperiod& Time, const date& RentStart, View<date> BrksOrExp,
                          const TurnoverTerms& terms, int TurnSwitch, const Basis& basis, int Brk) {
    Routine here{"TStepGTurnRentGrow"};
    here.inputs(Time, RentStart, BrksOrExp, terms, TurnSwitch, basis, Brk);
    basis.check(here);
    const TurnoverRent rent{here, terms, TurnSwitch};
    const date expiry = lease_end(BrksOrExp, Brk);
    timeperiod period = Time;
    if (!screen_rent(here, period, RentStart, expiry, basis)) return here.returning(0.0);
    return here.returning(rent.amount(period, {RentStart, expiry}, {basis.DayCount, basis.Periods}));
}

double TStepGTurnRentGrowR(const timeperiod& Time, const date& RentStart, View<date> BrksOrExp,
                           const TurnoverTerms& terms, const Relets& relets, int TurnSwitch, const Basis& basis,
                           const date& AbFin, int Brk) {
    constexpr int no_options = 0, no_reviews = 0;
    Routine here{"TStepGTurnRentGrowR"};
    here.inputs(Time, RentStart, BrksOrExp, terms, relets, TurnSwitch, basis, AbFin, Brk);
    basis.check(here);
    const TurnoverRent rent{here, terms, TurnSwitch};
    const Measure measure{basis.DayCount, basis.Periods};
    return here.returning(follow_chain(
        here, Time, RentStart, {BrksOrExp, Brk, AbFin, relets, no_options}, no_reviews, basis, {},
        [&](const timeperiod& period, const date& expiry) {
            return rent.amount(period, {RentStart, expiry}, measure);
        },
        [&](const timeperiod& period, const Relet& relet) {
            return rent.amount(period, {relet.rent_start, relet.expiry}, measure);
        }));
}

} // namespace qx
