// Discounted cash flow on dates: present values and internal rates of return of lists of dates and flows.
//
// A flow C at a date d is worth C / (1 + r)^y at NPVDate, y being the years from NPVDate to d under a day count
// (DayCountDisc 0 to 999, with the sequence PrdsDisc), negative for an earlier date. r is an annual equivalent rate
// above -1 (errlibmin). Flows on or before StartDCF are out; the first flow on or after FinishDCF ends the list; a zero
// date leaves that side open. PVTOptions is a sum of options. Functions that take ranges tie dates and flows together
// first (Range::datesize). An empty list is worth 0.
//
// Internal rates of return are those at which the present value at the first date is zero, within IRRAccOpt. With
// IRRMinOpt and IRRMaxOpt at irr_min and irr_max the usual places are searched; otherwise these two first. They throw
// errlibnotbracketed where no rate is found.
#pragma once

#include "calendar/annual_sequence.h"
#include "calendar/date.h"
#include "core/range.h"

namespace qx {

inline constexpr double irr_min = -0.99999;
inline constexpr double irr_max = 10000.0;
inline constexpr double irr_accuracy = 1e-10;
inline constexpr int flows_received_evenly = 1; ///< PVTOptions: each flow arrives over the period to the next date

/// The core of all: present value of dated flows, without checks.
double pvt(double rate, const date& NPVDate, View<date> Dates, View<double> Cashflows, double DayCount,
           const AnnualSequence& Periods, const date& StartDCF, const date& FinishDCF, int options);

double PVT(const date& NPVDate, double DisAER, View<date> Dates, View<double> Cashflows, double DayCountDisc,
           const AnnualSequence& PrdsDisc, const date& StartDCF, const date& FinishDCF, int PVTOptions);
/// Over up to four lists.
double PVTX(const date& NPVDate, double DisAER, View<date> Dates, View<double> Cashflows, double DayCountDisc,
            const AnnualSequence& PrdsDisc, const date& StartDCF, const date& FinishDCF, int PVTOptions,
            View<date> Dates2, View<double> Cashflows2, View<date> Dates3, View<double> Cashflows3, View<date> Dates4,
            View<double> Cashflows4);
/// Less an outlay, and with a capital value on FinishDCF: the value then, at CapRateAER, of the flows from that date
/// on.
double PVTIC(const date& NPVDate, double DisAER, View<date> Dates, View<double> Cashflows, double DayCountDisc,
             const AnnualSequence& PrdsDisc, const date& InvDate, double InvAmt, double CapRateAER,
             const date& StartDCF, const date& FinishDCF, double CapOption, int PVTOptions);
/// With a capital value, over up to four lists. IRRMinOpt, IRRMaxOpt and IRRAccOpt are not used.
double PVTCX(const date& NPVDate, double DisAER, View<date> Dates, View<double> Cashflows, double IRRMinOpt,
             double IRRMaxOpt, double IRRAccOpt, double DayCountDisc, const AnnualSequence& PrdsDisc, double CapRateAER,
             const date& StartDCF, const date& FinishDCF, double CapOption, int PVTOptions, View<date> Dates2,
             View<double> Cashflows2, View<date> Dates3, View<double> Cashflows3, View<date> Dates4,
             View<double> Cashflows4);
/// With the level of RealisationLevels in force on RealisationDate received then, and nothing after it.
double PVTR(const date& NPVDate, double DisAER, const date& RealisationDate, View<date> Dates, View<double> Cashflows,
            View<double> RealisationLevels, double DayCountDisc, const AnnualSequence& PrdsDisc, const date& StartDCF,
            const date& FinishDCF, int PVTOptions);
/// The older name of PVT, with its defaults.
double NPVR(const date& NPVDate, double DisAER, View<date> Dates, View<double> Cashflows);

double IRRT(View<date> Dates, View<double> Cashflows, double IRRMinOpt, double IRRMaxOpt, double IRRAccOpt,
            double DayCountDisc, const AnnualSequence& PrdsDisc, int PVTOptions);
double IRRTX(View<date> Dates, View<double> Cashflows, double IRRMinOpt, double IRRMaxOpt, double IRRAccOpt,
             double DayCountDisc, const AnnualSequence& PrdsDisc, const date& StartDCF, const date& FinishDCF,
             int PVTOptions, View<date> Dates2, View<double> Cashflows2, View<date> Dates3, View<double> Cashflows3,
             View<date> Dates4, View<double> Cashflows4);
double IRRTIC(View<date> Dates, View<double> Cashflows, double IRRMinOpt, double IRRMaxOpt, double IRRAccOpt,
              double DayCountDisc, const AnnualSequence& PrdsDisc, const date& InvDate, double InvAmt,
              double CapRateAER, const date& StartDCF, const date& FinishDCF, double CapOption, int PVTOptions);
double IRRTCX(View<date> Dates, View<double> Cashflows, double IRRMinOpt, double IRRMaxOpt, double IRRAccOpt,
              double DayCountDisc, const AnnualSequence& PrdsDisc, double CapRateAER, const date& StartDCF,
              const date& FinishDCF, double CapOption, int PVTOptions, View<date> Dates2, View<double> Cashflows2,
              View<date> Dates3, View<double> Cashflows3, View<date> Dates4, View<double> Cashflows4);
double IRRTR(const date& RealisationDate, View<date> Dates, View<double> Cashflows, View<double> RealisationLevels,
             double IRRMinOpt, double IRRMaxOpt, double IRRAccOpt, double DayCountDisc, const AnnualSequence& PrdsDisc,
             const date& StartDCF, const date& FinishDCF, int PVTOptions);

/// Macaulay duration: the average time in years from NPVDate, weighted by present values.
double DurationT(const date& NPVDate, double DisAER, View<date> Dates, View<double> Cashflows, double DayCountDisc,
                 const AnnualSequence& PrdsDisc);
/// The average time in years from Start, weighted by the flows.
double AvLifeT(const date& Start, View<date> Dates, View<double> Cashflows, double DayCountDisc,
               const AnnualSequence& PrdsDisc);
/// The date of the first flow at which the running sum reaches MinPayBack from below; with Interpolate the date on
/// which a straight line to it crosses zero. Throws errlibnopayback if it never does.
date PayBackT(View<date> Dates, View<double> Cashflows, double MinPayBack, bool Interpolate, double DayCount,
              const AnnualSequence& Periods, int PayBackOptions);
/// The same on the flows discounted to the first date.
date PayBackDiscT(double DisAER, View<date> Dates, View<double> Cashflows, double MinPayBack, bool Interpolate,
                  double DayCountDisc, const AnnualSequence& PrdsDisc, int PayBackOptions);
inline constexpr int payback_rezeros = 1; ///< PayBackOptions: the sum restarts when a flow turns negative

/// The value at NPVDate of 1 at TheDate.
double PVOne(const date& TheDate, const date& NPVDate, double DisAER, double DayCountDisc,
             const AnnualSequence& PrdsDisc);
double PVOneQ(const date& TheDate, const date& NPVDate, double DisAER);
double NPVOne(const date& TheDate, const date& NPVDate, double DisAER);
/// The same at rates that hold from given dates, or up to given dates. Throws outofrange if there are fewer rates than
/// dates.
double FPVOne(const date& TheDate, const date& NPVDate, View<double> DiscRatesAER, View<date> FromDates,
              double DayCountDisc, const AnnualSequence& PrdsDisc);
double TPVOne(const date& TheDate, const date& NPVDate, View<double> DiscRatesAER, View<date> ToDates,
              double DayCountDisc, const AnnualSequence& PrdsDisc);

/// Reserved: 0.
double EACFT(const date& NPVDate, double DisAER, View<date> Dates, View<double> Cashflows);

} // namespace qx
