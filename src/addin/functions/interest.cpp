// Worksheet functions of simple interest on balances.
#include "projections/interest.h"
#include "addin/declare.h"
#include "projections/simple_rates.h"

namespace qx::worksheet {

namespace {

constexpr Category category = Category::Banking;

constexpr Argument Start() { return {"Start", "Date from which the balance is outstanding"}; }
constexpr Argument Finish() { return {"Finish", "Date up to which the balance is outstanding"}; }
constexpr Argument Balance() {
    return {"Balance", "Amount on which interest accrues: an advance positive, with negative interest"};
}
constexpr Argument FromDates() {
    return Argument{"FromDates", "Dates from which the balances are outstanding, ascending"}.in_ascending_order();
}
constexpr Argument ToDates() {
    return Argument{"ToDates", "Dates up to which the balances are outstanding, ascending"}.in_ascending_order();
}
constexpr Argument Balances() {
    return {"Balances", "Amounts on which interest accrues, one for each date: advances positive"};
}

} // namespace

constexpr Function FInterest{
    .name = "FInterest",
    .category = category,
    .calls = twin<qx::FInterest>,
    .help = "Interest in a period on balances that change on from-dates, at simple rates that change on dates",
    .args = {Time(), Base(), FromDatesInt(), IntSimple(), Finish(), FromDates(), Balances(), DayCount(), PrdsInt(),
             ProjMode()},
    .examples = {"FInterest(2005, 12, 2005, 0.12, 2010, {2005;2006}, {1000;500}) ~ -120 1e-9"},
    .see_also = "TInterest,InterestX,PVFInterest,TotInterestSF",
};
QX_EXPORT(FInterest, 10);

constexpr Function Interest{
    .name = "Interest",
    .category = category,
    .calls = twin<qx::Interest>,
    .help = "Interest in a period on a balance, at one simple rate",
    .args = {Time(), Base(), InterestSimple(), Start(), Finish(), Balance(), DayCount(), PrdsInt(), ProjMode()},
    .examples = {"Interest(2005, 12, 0.12, 2005, 2010, 1000) ~ -120 1e-9"},
    .see_also = "InterestX,FInterest,PVInterest",
};
QX_EXPORT(Interest, 9);

constexpr Function InterestX{
    .name = "InterestX",
    .category = category,
    .calls = twin<qx::InterestX>,
    .help = "Interest in a period on a balance, at simple rates that change on dates",
    .args = {Time(), Base(), FromDatesInt(), IntSimple(), Start(), Finish(), Balance(), DayCount(), PrdsInt(),
             ProjMode()},
    .examples = {"InterestX(2005, 12, {2005;2005.5}, {0.1;0.12}, 2005, 2010, 1000) ~ -110 1e-9"},
    .see_also = "Interest,FInterest,PVInterestX",
};
QX_EXPORT(InterestX, 10);

constexpr Function PVFInterest{
    .name = "PVFInterest",
    .category = category,
    .calls = twin<qx::PVFInterest>,
    .help = "Present value of all interest on balances that change on from-dates, discounted at the same simple rates",
    .args = {NPVDate(), FromDatesInt(), IntSimple(), Finish(), FromDates(), Balances(), DayCount(), PrdsInt()},
    .examples = {"PVFInterest(2005, 2005, 0.1, 2006, 2005, 1100, 5, -1) ~ -100 1e-9"},
    .see_also = "FInterest,PVInterestX,PVTSFX",
};
QX_EXPORT(PVFInterest, 8);

constexpr Function PVInterest{
    .name = "PVInterest",
    .category = category,
    .calls = twin<qx::PVInterest>,
    .help = "Present value of all interest on a balance, discounted at the same simple rate",
    .args = {NPVDate(), InterestSimple(), Start(), Finish(), Balance(), DayCount(), PrdsInt()},
    .examples = {"PVInterest(2005, 0.1, 2005, 2006, 1100, 5, -1) ~ -100 1e-9"},
    .see_also = "Interest,PVInterestX",
};
QX_EXPORT(PVInterest, 7);

constexpr Function PVInterestX{
    .name = "PVInterestX",
    .category = category,
    .calls = twin<qx::PVInterestX>,
    .help = "Present value of all interest on a balance, at simple rates that change on dates and discount too",
    .args = {NPVDate(), FromDatesInt(), IntSimple(), Start(), Finish(), Balance(), DayCount(), PrdsInt()},
    .examples = {"PVInterestX(2005, 2005, 0.1, 2005, 2006, 1100, 5, -1) ~ -100 1e-9"},
    .see_also = "InterestX,PVInterest,PVFInterest",
};
QX_EXPORT(PVInterestX, 8);

constexpr Function TInterest{
    .name = "TInterest",
    .category = category,
    .calls = twin<qx::TInterest>,
    .help = "Interest in a period on balances that change on to-dates, at simple rates that change on dates",
    .args = {Time(), Base(), FromDatesInt(), IntSimple(), Start(), ToDates(), Balances(), DayCount(), PrdsInt(),
             ProjMode()},
    .examples = {"TInterest(2005, 12, 2005, 0.12, 2005, {2005.5;2006}, {1000;500}) ~ -90 1e-9"},
    .see_also = "FInterest,InterestX",
};
QX_EXPORT(TInterest, 10);

constexpr Function TotInterestSF{
    .name = "TotInterestSF",
    .category = category,
    .calls = core<qx::TotInterestSF>,
    .help = "All interest accrued between two dates on balances that change on from-dates",
    .args = {{"Start", "Date from which interest is added up"},
             {"Finish", "Date until which interest is added up"},
             FromDatesInt(),
             IntSimple(),
             FromDates(),
             Balances(),
             DayCount(),
             PrdsInt()},
    .examples = {"TotInterestSF(2005, 2007, 2005, 0.1, {2005;2006}, {1000;500}) ~ -150 1e-9"},
    .see_also = "FInterest",
};
QX_EXPORT(TotInterestSF, 8);

} // namespace qx::worksheet
