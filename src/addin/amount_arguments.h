// Arguments of spreads and of dated payments, as the functions that project them and those that value them share them.
#pragma once

#include "addin/arguments.h"
#include "numerics/distributions.h"
#include "numerics/interpolation.h"
#include "projections/curves.h"

namespace qx {

// --- Spreads ---------------------------------------------------------------------------------------------------------

constexpr Argument Total() { return {"Total", "The amount that is spread"}; }
constexpr Argument Skew() {
    return optional("Skew", 1.0, "1 is symmetrical, below 1 earlier, above 1 later; 0 all on Start", "symmetrical")
        .within(skew_limits);
}
constexpr Argument Peakness() {
    return optional("Peakness", 0.0,
                    "0 for a sine curve (about 25%, 50%, 25%); higher is flatter, 1000 or more is flat", "sine curve")
        .within(peakness_limits);
}

/// The terms of each kind of spread.
constexpr ArgumentGroup uniform_spread() { return {Start(), Finish(), Total()}; }
constexpr ArgumentGroup curved_spread() { return {Start(), Finish(), Total(), Skew(), Peakness()}; }
constexpr ArgumentGroup general_spread() {
    return {
        Start(), Total(), optional("CompletionDate", "Date of completion; not after Start, all is paid on Start"),
        optional("CurveModel", 0.0, "This variable is included for future use, it is not in use yet."),
        optional(
            "Shape", 0.0,
            "Whole part the skew, from -100 (all on completion) to 100 (all on Start), two decimals the peakedness: "
            "0.00=symmetrical, evenly distributed; -1.00=backloaded;+1.00 frontloaded; 0.50 symmetrical, moderately "
            "peaked; 0,90, "
            "symmetrical, highly peaked.",
            "even")};
}
constexpr ArgumentGroup weighted_spread() {
    return {Start(),
            Finish(),
            Total(),
            {"Weights",
             "Weight of each slice from Start to Finish; they need not sum to 1, and without any the amount is 0",
             {Preset::empty}}};
}
constexpr Argument SliceWeights() {
    return {"Weights", "Weight of each slice, or a single one for all; they need not sum to 1", {Preset::empty}};
}
constexpr ArgumentGroup from_weighted_spread() {
    return {Finish("Date on which the last slice finishes"), Total(),
            FromDates("Date on which each slice starts, ascending"), SliceWeights()};
}
constexpr ArgumentGroup to_weighted_spread() {
    return {Start("Date on which the first slice starts"), Total(),
            ToDates("Date on which each slice finishes, ascending"), SliceWeights()};
}
constexpr ArgumentGroup distributed_spread() {
    return {Start(),
            {"MidPoint", "Date of the distribution's middle: its mode, or its mean"},
            Finish(),
            Total(),
            Argument{"DistType",
                     "1 uniform, 2 triangular, 3 double triangular, 4 normal, 5 lognormal; the last two pay the 1% "
                     "outside their points on Start and Finish"}
                .of(distribution_values)};
}
constexpr ArgumentGroup cumulative_spread() {
    return {
        Start(),
        Finish(),
        Total(),
        {"CumTime", "Parts of the time from Start to Finish that have passed, ascending from 0 up to 1"},
        {"CumAmt", "The part of the total, 0 to 1, spent up to each of these times"},
        optional("InterpType", by_line, "0 step, 1 straight line, 2 cosine, 3 cubic, 4 exponential")
            .of(interpolation_values),
        optional("Tension", 0.0, "For the cubic: above 0 draws the curve tighter, up to 1; below 0 looser, down to -1"),
        optional("Bias", 0.0,
                 "For the cubic: above 0 leans to the slope before each point, up to 1; below 0 after it")};
}
constexpr ArgumentGroup from_stepped_spread() { return {Total(), FromDates(), AnnualRates()}; }
constexpr ArgumentGroup to_stepped_spread() { return {Total(), ToDates(), AnnualRates()}; }
constexpr ArgumentGroup weighted_payments() {
    return {Total(),
            {"PmtDates", "Dates of the payments"},
            {"Weights", "Weight of each payment; they need not sum to 1", {Preset::empty}}};
}

// --- Payments --------------------------------------------------------------------------------------------------------

constexpr Argument PmtDate(const char* name = "PmtDate") { return {name, "Date of the payment"}; }
constexpr Argument PmtDates(const char* name = "PmtDates") { return {name, "Dates of the payments, in any order"}; }
constexpr ArgumentGroup payment() { return {PmtDate(), {"Pmt", "The payment"}}; }
constexpr ArgumentGroup payments() {
    return {PmtDates(), {"Pmts", "The payments, one for each date; of two lists the shorter governs"}};
}

// --- What recurs -----------------------------------------------------------------------------------------------------

constexpr Argument AbsFinish() { return {"AbsFinish", "Date from which nothing recurs"}; }
constexpr Argument Periodicity() { return {"Periodicity", "Months from one repetition to the next"}; }

} // namespace qx
