// DpP: a date plus a number of periods, found by the solver.
#pragma once

#include "calendar/annual_sequence.h"
#include "calendar/date.h"

namespace qx {

/// The date that lies a number of periods of a sequence (parts of a period by its days) after another: the solver finds
/// the months between them. The date itself for 0 periods. A negative number fails, with errlibnotbracketed or with the
/// error of the date at which the search leaves the calendar.
date DpP(const date& TheDate, double NPer, const AnnualSequence& Periods);

} // namespace qx
