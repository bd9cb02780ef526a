// Annuities and perpetuities of 1 a year that grow, and their sums without discounting.
//
// PVEG: exponential growth at AnnGrowthRate a year (1, 1 + g, (1 + g)^2 ...), PVLG: linear growth (1, 1 + g, 1 + 2g
// ...), one payment at the end of each year. The M forms receive the year's income PmtsPerYear times a year (positive
// in advance, negative in arrears, 0 read as -1) and let it grow in GrowRevsPerYrOpt steps a year (0: continuously).
// DisAER must be above -0.999999 (errlibmin). Growth may lose all (-1) or more: a negative factor has no fractional
// power (errlibbadexponentiation), and continuous growth is -1 at least (errlibmin). A perpetuity that grows at
// the discount rate or faster throws errlibinfiniteresult; so does an exponential annuity that grows at the discount
// rate.
#pragma once

#include "calendar/annual_sequence.h"
#include "calendar/date.h"
#include "calendar/time_period.h"

#include <optional>

namespace qx {

double PVEGPerp(double DisAER, double AnnGrowthRate);
double PVEGAnn(double DisAER, double TermYrs, double AnnGrowthRate);
double PVEGPerpM(double DisAER, double PmtsPerYear, double AnnGrowthRate, double GrowRevsPerYrOpt);
double PVEGAnnM(double DisAER, double TermYrs, double PmtsPerYear, double AnnGrowthRate, double GrowRevsPerYrOpt);
/// The Gordon model: one payment, and one step of growth, every Periodicity months (above 0).
double PVEGPerPerp(double DisAER, double AnnGrowthRate, double Periodicity);
double PVEGPerAnn(double DisAER, double TermYrs, double AnnGrowthRate, double Periodicity);

double PVLGPerp(double DisAER, double AnnGrowthRate);
double PVLGAnn(double DisAER, double TermYrs, double AnnGrowthRate);
double PVLGPerpM(double DisAER, double PmtsPerYear, double AnnGrowthRate, double GrowRevsPerYrOpt);
double PVLGAnnM(double DisAER, double TermYrs, double PmtsPerYear, double AnnGrowthRate, double GrowRevsPerYrOpt);

/// 0 for a zero growth rate.
double SumEGAnn(double TermYrs, double AnnGrowthRate);
double SumEGAnnM(double TermYrs, double AnnGrowthRate, double GrowRevsPerYrOpt);
/// 0 for a term that is not positive.
double SumEGAnnCont(double TermYrs, double AnnGrowthRate);
double SumLGAnn(double TermYrs, double AnnGrowthRate);
double SumLGAnnM(double TermYrs, double AnnGrowthRate, double GrowRevsPerYrOpt);
double SumLGAnnCont(double TermYrs, double AnnGrowthRate);

/// The amount from month 0 to TermMonths of a stream that runs at `startingrate` a year until FirstRevMonths and then
/// at a market rate (`mktrate` as at BaseDateMonths, growing at GrowthPA) that is taken up every StepLengthMonths; 0:
/// continuously. Throws errlibbadnum for a negative step.
double SumEGStepMktGen(double GrowthPA, double TermMonths, double StepLengthMonths, double FirstRevMonths,
                       double BaseDateMonths, double startingrate, double mktrate);
/// SumEGStepMktGen of one stream up to several times: what the times have in common is worked out once.
class SteppedGrowth {
  public:
    SteppedGrowth(double growth, double step_months, double first_review_months, double base_months, double starting,
                  double market);
    double up_to(double months);
    double first_review_months() const { return first_review_given_; }

  private:
    double growth_, step_, base_, starting_, market_;
    double first_review_, first_review_given_; ///< months
    bool grown_ = false;
    double first_market_ = 0.0, step_growth_ = 0.0; ///< the market rate at the first review, the growth of a step
    double whole_steps_ = -1.0, after_whole_steps_ = 0.0;
};

/// The same from one date to another within a period, measured from startingdate. It makes the stream unless an earlier
/// call has made it for the same terms.
double SumEGStepMktFT(const timeperiod& TimePeriod, double mktrate, double startingrate, double growth,
                      const date& startingdate, const date& basedate, const date& firstrev, const date& from,
                      const date& to, double DayCount, const AnnualSequence& Periods, int StepLengthMonths,
                      bool ComponentPart, std::optional<SteppedGrowth>& stream);

} // namespace qx
