// Arguments that all present values of projections share.
#pragma once

#include "addin/arguments.h"
#include "projections/present_value.h"

namespace qx {

/// Discount.
constexpr Argument DiscountRate() {
    return Argument{"DisAER", "Discount rate, an annual equivalent rate: 0.08 is 8%"}.within(discount_rate_limits);
}
constexpr ArgumentGroup discount() { return {NPVDate(), DiscountRate()}; }
/// The same with a rate for each step.
constexpr ArgumentGroup discount_in_step(const char* help) {
    return {NPVDate(), Argument{"DisAER", help}.within(discount_rate_limits)};
}

/// CashTerms.
constexpr Argument PaymentDates() {
    return sequence("CashBasis", 4,
                    "Dates on which payments are made: an option number or a range of floats, in the format mm.dd for "
                    "payments in advance or -mm.dd for payments in arrears");
}
constexpr Argument FirstFlow() { return optional("StartDCF", "Flows before it are excluded; one on it counts"); }
constexpr Argument LastFlow() { return optional("FinishDCF", "Flows after it are excluded; one on it counts"); }
constexpr ArgumentGroup cash_terms() {
    return {DayCount(0.0), PaymentDates(), DayCountDisc().within(daycount_limits), PrdsDisc(), FirstFlow(), LastFlow()};
}
/// The same of payments on dates of their own.
constexpr ArgumentGroup discount_terms() {
    return {optional("DayCount", 0.0, "Not used: payments have dates of their own").within(daycount_limits),
            sequence("CashBasis", 4, "Not used: payments have dates of their own"),
            DayCountDisc().within(daycount_limits),
            PrdsDisc(),
            FirstFlow(),
            LastFlow()};
}

} // namespace qx
