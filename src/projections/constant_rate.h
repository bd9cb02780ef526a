// Streams of money that run at so much a year between two dates: how much of one falls into a time period. Every
// projection cuts its stream into pieces of constant rate and asks ConX for each.
//
// Under accruals a period holds what accrues in it; under cash (ProjMode 1 or 3) what the payment dates of Periods in it
// settle. All throw errlibmin and errlibmax for a DayCount outside 0 to 999 or a ProjMode outside 0 to 7.
#pragma once

#include "calendar/time_period.h"
#include "core/routine.h"
#include "projections/terms.h"

namespace qx {

/// False, with a note in the trace, if a period ends before it starts.
bool runs_forward(const Routine& here, const timeperiod& period);

/// The period in which a stream is measured, in place of a worksheet period: itself under accruals, the span that is
/// paid for in it under cash. False if nothing of the stream can fall into it.
bool screen_period(const Routine& here, timeperiod& period, const Life& life, const Basis& basis);

/// The amount of a stream of AnnualRate a year that falls into a period. ComponentPart says that it is a piece of a
/// longer stream, which goes on at the end of its life.
double ConX(const timeperiod& Time, const Life& life, double AnnualRate, const Basis& basis, bool ComponentPart);

/// The amounts of one or several streams that fall into a period.
double Con(const timeperiod& Time, const Streams& streams, const Basis& basis);

} // namespace qx
