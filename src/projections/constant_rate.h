// Streams of money that run at so much a year between two dates: how much of one falls into a time period. Every
// projection cuts its stream into pieces of constant rate and asks ConX for each.
#pragma once

#include "calendar/time_period.h"
#include "core/routine.h"

namespace qx {

/// Throws errlibmin or errlibmax unless DayCount is 0 to 999 and ProjMode 0 to 7.
void check_projection(Routine& here, double DayCount, double ProjMode);

/// The period in which a stream from Start to Finish is measured, in place of a worksheet period: itself under
/// accruals, the span that is paid for in it under cash. False if nothing of the stream can fall into it.
bool screen_period(const Routine& here, timeperiod& period, const date& Start, const date& Finish,
                   const AnnualSequence& Periods, double ProjMode);

/// The amount of a stream of AnnualRate a year that falls into a period. ComponentPart says that it is a piece of a
/// longer stream, which goes on at Finish.
double ConX(const timeperiod& Time, const date& Start, const date& Finish, double AnnualRate, double DayCount,
            const AnnualSequence& Periods, double ProjMode, bool ComponentPart);

} // namespace qx
