// Lists made out of lists: combined, sorted, turned, spread, rounded.
#pragma once

#include "core/pools.h"

#include <string>

namespace qx {

/// Each of the values combined with one value, by a CombineSwitch of core/combine.h.
WorkList<double> ApplyToList(int CombineSwitch, View<double> Values, double Value);

/// Two to four lists combined item by item. They have one length, but for a list of one value, which serves them all.
/// Empty lists are ignored. Throws inputrangelength2.
WorkList<double> CombineLists(int CombineSwitch, View<double> Values, View<double> Values2, View<double> Values3,
                              View<double> Values4);

/// The sum of the lists as CombineLists combines them.
double SumCombine(int CombineSwitch, View<double> Values, View<double> Values2, View<double> Values3,
                  View<double> Values4);

/// Texts in alphabetical order (Direction 0) or its reverse (1), small and capital letters alike; empty ones last.
WorkList<std::string> SortText(View<std::string> Texts, int Direction);

/// A rectangle with its rows and columns exchanged.
WorkList<double> TransposeNum(View<double> Values);

/// A value, and the values that each gap in turn leads to.
WorkList<double> AddGaps(double FirstValue, View<double> Gaps);

/// The gaps between neighbours: each value less the one before.
WorkList<double> DiffGaps(View<double> Values);

/// The values rounded to multiples; a multiple of zero leaves them as they are. With KeepTotal their sum is the sum of
/// the values, rounded: each is rounded down, and what is then missing goes to those that lost most. Without it each
/// goes to its nearest multiple, halfway away from zero. Largest remainder, or Hare-Niemeyer, method.
WorkList<double> RoundList(View<double> Values, double Multiple, bool KeepTotal);

/// Tot spread over the positions iStart to iFinish of a list as evenly as whole numbers can be, the units that do not
/// go round at regular steps; 0 before iStart. Throws errlibmin for iStart below 1 and iFinish below iStart, errlibmax
/// for iFinish above 10,000.
WorkList<int> Disperse(int Tot, int iStart, int iFinish);

/// The positions of a part of a list, from `first` to `last`.
struct SubRange {
    int first, last;
};
/// The part of a list of a length from FirstOne to LastOne, 0 standing for its end. Throws errlibmin for positions
/// below 1, outofrange for those beyond the list.
SubRange sub_range(int FirstOne, int LastOne, int length);

/// A check value of the library's cyclic redundancy sums, whatever the list.
int CRC_fl(View<double> InputRange);

} // namespace qx
