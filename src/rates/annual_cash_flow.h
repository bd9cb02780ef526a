// Discounted cash flow at even distances: the rules of cash_flow.h for flows a year apart (A), a year apart and each
// received PmtsPerYear times in the year that ends on its date (M), and EvenTimeInterval months apart (E).
#pragma once

#include "calendar/annual_sequence.h"
#include "calendar/date.h"
#include "core/range.h"

namespace qx {

double PVA(const date& NPVDate, double DisAER, View<double> AnnualCashFlows, const date& StartAnnDate,
           double DCountDisc, const date& StartDCF, const date& FinishDCF);
double IRRA(View<double> AnnualCashFlows, double IRRMinOpt, double IRRMaxOpt, double IRRAccOpt);
double IRRAX(View<double> AnnualCashFlows, double IRRMinOpt, double IRRMaxOpt, double IRRAccOpt);
double DurationA(const date& NPVDate, double DisAER, View<double> AnnualCashFlows, const date& StartAnnDate,
                 double DCountDisc);
double AvLifeA(const date& Start, View<double> AnnualCashFlows, const date& StartAnnDate, double DCountDisc);
date PayBackA(View<double> AnnualCashFlows, const date& StartAnnDate, double MinPayBack, bool Interpolate,
              double DCount, int PayBackOptions);
date PayBackDiscA(double DisAER, View<double> AnnualCashFlows, const date& StartAnnDate, double MinPayBack,
                  bool Interpolate, double DCountDisc, int PayBackOptions);

double NPVM(const date& NPVDate, double DisAER, View<double> AnnualCashFlows, const date& StartAnnDate,
            double PmtsPerYear);
/// The older name of NPVM.
double NPVMB(const date& NPVDate, double DisAER, View<double> AnnualCashFlows, const date& StartAnnDate,
             double PmtsPerYear);
double IRRM(View<double> AnnualCashFlows, double PmtsPerYear, double IRRMinOpt, double IRRMaxOpt, double IRRAccOpt);
double IRRMX(View<double> AnnualCashFlows, double PmtsPerYear, double IRRMinOpt, double IRRMaxOpt, double IRRAccOpt);
double DurationM(const date& NPVDate, double DisAER, View<double> AnnualCashFlows, const date& StartAnnDate,
                 double PmtsPerYear);
double AvLifeM(const date& Start, View<double> AnnualCashFlows, const date& StartAnnDate, double PmtsPerYear);

double PVE(const date& NPVDate, double DisAER, View<double> EvenCashFlows, const date& EvenTimeStart,
           double EvenTimeInterval, const date& StartDCF, const date& FinishDCF);
double IRRE(View<double> EvenCashFlows, double EvenTimeInterval, double IRRMinOpt, double IRRMaxOpt, double IRRAccOpt);
double IRREX(View<double> EvenCashFlows, double EvenTimeInterval, double IRRMinOpt, double IRRMaxOpt, double IRRAccOpt);
double DurationE(const date& NPVDate, double DisAER, View<double> EvenCashFlows, const date& EvenTimeStart,
                 double EvenTimeInterval);
double AvLifeE(const date& Start, View<double> EvenCashFlows, const date& EvenTimeStart, double EvenTimeInterval);
date PaybackE(View<double> EvenCashFlows, const date& EvenTimeStart, double EvenTimeInterval, double MinPayBack,
              bool Interpolate, int PayBackOptions);
date PayBackDiscE(double DisAER, View<double> EvenCashFlows, const date& EvenTimeStart, double EvenTimeInterval,
                  double MinPayBack, bool Interpolate, int PayBackOptions);

/// The level flow on the same annual dates with the same present value; the M form for flows received PmtsPerYear times
/// in the year.
double EACF(const date& NPVDate, double DisAER, View<double> AnnualCashFlows, const date& StartAnnDate);
double EACFM(const date& NPVDate, double DisAER, View<double> AnnualCashFlows, const date& StartAnnDate,
             double PmtsPerYear);

} // namespace qx
