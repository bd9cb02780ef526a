// The worksheet function of rents with a review type each.
#include "realestate/rent_types.h"
#include "addin/declare.h"
#include "addin/rent_arguments.h"

namespace qx::worksheet {

constexpr Function FRentType{
    .name = "FRentType",
    .category = Category::RealEstate,
    .calls = twin<qx::FRentType>,
    .help = "Rent in a period of a lease whose rents, from given dates on, are each fixed, reviewed to a forecast of "
            "the market, or indexed to it, upward-only or collared; and of the relets after it",
    .args = {time_period(),
             {"Start", "Date on which the lease starts, from which its term counts"},
             RentStart(),
             Argument{"FromDates", "Dates from which the rents apply, ascending"}.in_ascending_order(),
             {"AnnRents", "Rents a year, one for each of the dates or one for all; where it is fixed, zero is for the "
                          "market rent"},
             rent_forecast(),
             collars(),
             {"ReviewTypes",
              "How each rent is arrived at, a sum of: 0 fixed, 1 to market, 2 upward-only, 4 collared, 8 "
              "indexed since the last rent; the last one applies to the rest"},
             reviews(),
             {"RelVoid", "Months of void before each relet, or a list of them", {Preset::empty}},
             {"RelRF", "Months without rent at the start of each relet, or a list of them", {Preset::empty}},
             {"RelTerm",
              "Term of the lease and of each relet in years, or a list for the relets; if omitted the lease "
              "does not end",
              {Preset::empty}},
             DayCount(0.0),
             sequence_or_none("CashBasis", "Dates in the year on which rent is paid: 1, 2, 4, 12, negative in arrears, "
                                           "or a range of mm.dd figures; if omitted rent is as it accrues"),
             UOTog()},
    .examples = {"FRentType(2012, 12, 2005, 2005, {2005;2010}, {900;0}, {1000;1500}, 2005, 60, 0, 1200, {0;5}) ~ 1500 "
                 "1e-9",
                 "FRentType(2012, 12, 2005, 2005, {2005;2010}, {900;0}, {1000;1500}, 2005, 60, 1200, 0, {0;5}) ~ 1200 "
                 "1e-9",
                 "FRentType(2012, 12, 2005, 2005, {2005;2010}, {900;0}, {1000;1500}, 2005, 60, 0, 0, {0;8}) ~ 1350 "
                 "1e-9"},
    .see_also = "FStepRentFcst,FStepRentFcstCollar,FStepRentFcstR",
};
QX_EXPORT(FRentType, 20);

} // namespace qx::worksheet
