// Worksheet functions of levels at a date and over periods.
#include "projections/levels.h"
#include "addin/declare.h"
#include "projections/descriptions.h"

namespace qx::worksheet {

namespace {

constexpr Category at_a_date = Category::InstantaneousLevel;
constexpr Category in_a_period = Category::LevelsOverTime;

constexpr Argument value_date() { return TheDate("Date at which the level is wanted"); }
constexpr Argument in_finish(const char* name = "Finish") {
    return Finish("Date on which the levels finish; the day itself does not count").renamed(name);
}
constexpr Argument in_start(const char* name = "Start") {
    return Start("Date on which the levels start; the day itself counts").renamed(name);
}
constexpr Argument in_from() { return FromDates("Dates from which the levels hold, ascending"); }
constexpr Argument in_to() { return ToDates("Dates up to which the levels hold, ascending"); }
constexpr Argument in_levels() {
    return {"Levels", "Levels in any unit, one for each of the dates, or a single one for all"};
}
constexpr Argument in_gaps() {
    return {"Levels", "Levels in any unit, one for each of the dates, or a single one for all; a zero is filled from "
                      "the market"};
}
constexpr Argument InitialLevel() { return {"InitialLevel", "Level up to the first growth date, in any unit"}; }
constexpr Argument MktLevel() {
    return {"MktLevel", "Level of the market up to the first growth date, in any unit, for the steps of level zero"};
}
constexpr Argument LevelSwitchOpt() {
    return optional(
               "LevelSwitchOpt", 0,
               "0 average over time, 1 mean of start and finish, 2 at the start, 3 at the finish, 4 least, 5 greatest",
               "average over time")
        .of(level_values);
}
constexpr ArgumentGroup more_levels(const char* dates, const char* levels) {
    return {optional(dates, "Dates from which the levels of a further list hold, ascending").in_ascending_order(),
            optional(levels, "Its levels, one for each of its dates, or a single one for all")};
}
constexpr Argument FcstSwitchOpt() {
    return optional("FcstSwitchOpt", 0, "How the forecast is read between its dates: 0 in steps, 1 on straight lines",
                    "in steps");
}

} // namespace

constexpr Function FGrowStep{
    .name = "FGrowStep",
    .category = at_a_date,
    .calls = twin<qx::GrowStep<FromSteps>>,
    .help =
        "Value of an amount grown to the beginning of the step in force at a date, by from-dates; 0 outside the steps",
    .args = {value_date(), in_finish(), {"StartingValue", "Value up to the first growth date"}, in_from(), growth()},
    .examples = {"FGrowStep(2007.5, 2010, 100, {2005;2007}, 2005, 0.1) ~ 121 1e-9"},
    .see_also = "TGrowStep,FGrowStepMkt,Grow,FLevelsGrow",
};
QX_EXPORT(FGrowStep, 6);

constexpr Function TGrowStep{
    .name = "TGrowStep",
    .category = at_a_date,
    .calls = twin<qx::GrowStep<ToSteps>>,
    .help =
        "Value of an amount grown to the beginning of the step in force at a date, by to-dates; 0 outside the steps",
    .args = {value_date(), in_start(), {"StartingValue", "Value up to the first growth date"}, in_to(), growth()},
    .examples = {"TGrowStep(2007.5, 2005, 100, {2007;2010}, 2005, 0.1) ~ 121 1e-9"},
    .see_also = "FGrowStep,TGrowStepMkt,Grow,TLevelsGrow",
};
QX_EXPORT(TGrowStep, 6);

constexpr Function FGrowStepMkt{
    .name = "FGrowStepMkt",
    .category = at_a_date,
    .calls = twin<qx::GrowStepMkt<FromSteps>>,
    .help = "Rate of the step in force at a date, by from-dates; where it is zero, the market rate grown to the "
            "beginning of the step",
    .args = {value_date(),
             in_finish(),
             {"MktAnnRate", "Market rate a year up to the first growth date"},
             in_from(),
             AnnualRates(),
             growth()},
    .examples = {"FGrowStepMkt(2007.5, 2010, 100, {2005;2007}, {90;0}, 2005, 0.1) ~ 121 1e-9"},
    .see_also = "TGrowStepMkt,FGrowStep,FStepGrowMkt",
};
QX_EXPORT(FGrowStepMkt, 7);

constexpr Function TGrowStepMkt{
    .name = "TGrowStepMkt",
    .category = at_a_date,
    .calls = twin<qx::GrowStepMkt<ToSteps>>,
    .help = "Rate of the step in force at a date, by to-dates; where it is zero, the market rate grown to the "
            "beginning of the step",
    .args = {value_date(),
             in_start(),
             {"MktAnnRate", "Market rate a year up to the first growth date"},
             in_to(),
             AnnualRates(),
             growth()},
    .examples = {"TGrowStepMkt(2007.5, 2005, 100, {2007;2010}, {90;0}, 2005, 0.1) ~ 121 1e-9"},
    .see_also = "FGrowStepMkt,TGrowStep,TStepGrowMkt",
};
QX_EXPORT(TGrowStepMkt, 7);

constexpr Function FFcstStep{
    .name = "FFcstStep",
    .category = at_a_date,
    .calls = twin<qx::FcstStep<FromSteps>>,
    .help = "Value that an even forecast gives for the beginning of the step in force at a date, by from-dates; 0 "
            "outside the steps",
    .args = {value_date(), in_finish(), in_from(), forecast(), FcstSwitchOpt()},
    .examples = {"FFcstStep(2006.5, 2010, {2005;2006}, {10;20;30}, 2005, 12) = 20"},
    .see_also = "TFcstStep,Fcst,FLevelsFcst",
};
QX_EXPORT(FFcstStep, 7);

constexpr Function TFcstStep{
    .name = "TFcstStep",
    .category = at_a_date,
    .calls = twin<qx::FcstStep<ToSteps>>,
    .help = "Value that an even forecast gives for the beginning of the step in force at a date, by to-dates; 0 "
            "outside the steps",
    .args = {value_date(), in_start(), in_to(), forecast(), FcstSwitchOpt()},
    .examples = {"TFcstStep(2006.5, 2005, {2006;2010}, {10;20;30}, 2005, 12) = 20"},
    .see_also = "FFcstStep,Fcst,TLevelsFcst",
};
QX_EXPORT(TFcstStep, 7);

constexpr Function Level{
    .name = "Level",
    .category = at_a_date,
    .calls = twin<qx::Level>,
    .help = "A level in force at a date: the level from its start up to its finish, 0 outside",
    .args = {value_date(), in_start(), in_finish(), {"Level", "Level in any unit: units, square metres, money"}},
    .examples = {"Level(2006, 2005, 2010, 40) = 40", "Level(2010, 2005, 2010, 40) = 0"},
    .see_also = "ALevel,FLevels,InBetween",
};
QX_EXPORT(Level, 4);

constexpr Function FLevels{
    .name = "FLevels",
    .category = at_a_date,
    .calls = twin<qx::Levels<FromSteps>>,
    .help = "The level in force at a date, of levels that change on from-dates; 0 outside them",
    .args = {value_date(), in_finish(), in_from(), in_levels()},
    .examples = {"FLevels(2007.5, 2010, {2005;2007}, {10;20}) = 20"},
    .see_also = "TLevels,FALevels,FLevelsGrow,Level",
};
QX_EXPORT(FLevels, 4);

constexpr Function TLevels{
    .name = "TLevels",
    .category = at_a_date,
    .calls = twin<qx::Levels<ToSteps>>,
    .help = "The level in force at a date, of levels that change on to-dates; 0 outside them",
    .args = {value_date(), in_start(), in_to(), in_levels()},
    .examples = {"TLevels(2007.5, 2005, {2007;2010}, {10;20}) = 20"},
    .see_also = "FLevels,TALevels,TLevelsGrow,Level",
};
QX_EXPORT(TLevels, 4);

constexpr Function FLevelsGrow{
    .name = "FLevelsGrow",
    .category = at_a_date,
    .calls = twin<qx::LevelsGrow<FromSteps>>,
    .help = "The level in force at a date, of a level that grows in steps on from-dates: grown to the from-date",
    .args = {value_date(), in_finish(), InitialLevel(), in_from(), growth()},
    .examples = {"FLevelsGrow(2007.5, 2010, 100, {2005;2007}, 2005, 0.1) ~ 121 1e-9"},
    .see_also = "TLevelsGrow,FALevelsGrow,FLevels",
};
QX_EXPORT(FLevelsGrow, 6);

constexpr Function TLevelsGrow{
    .name = "TLevelsGrow",
    .category = at_a_date,
    .calls = twin<qx::LevelsGrow<ToSteps>>,
    .help = "The level in force at a date, of a level that grows in steps on to-dates: grown to the to-date before it",
    .args = {value_date(), in_start(), InitialLevel(), in_to(), growth()},
    .examples = {"TLevelsGrow(2007.5, 2005, 100, {2007;2010}, 2005, 0.1) ~ 121 1e-9"},
    .see_also = "FLevelsGrow,TALevelsGrow,TLevels",
};
QX_EXPORT(TLevelsGrow, 6);

constexpr Function FLevelsFcst{
    .name = "FLevelsFcst",
    .category = at_a_date,
    .calls = twin<qx::LevelsFcst<FromSteps>>,
    .help = "The level in force at a date, of levels that are read from an even forecast on from-dates",
    .args = {value_date(), in_finish(), in_from(), forecast()},
    .examples = {"FLevelsFcst(2006.5, 2010, {2005;2006}, {10;20;30}, 2005, 12) = 20"},
    .see_also = "TLevelsFcst,FALevelsFcst,FLevels",
};
QX_EXPORT(FLevelsFcst, 6);

constexpr Function TLevelsFcst{
    .name = "TLevelsFcst",
    .category = at_a_date,
    .calls = twin<qx::LevelsFcst<ToSteps>>,
    .help = "The level in force at a date, of levels that are read from an even forecast on to-dates",
    .args = {value_date(), in_start(), in_to(), forecast()},
    .examples = {"TLevelsFcst(2006.5, 2005, {2006;2010}, {10;20;30}, 2005, 12) = 20"},
    .see_also = "FLevelsFcst,TALevelsFcst,TLevels",
};
QX_EXPORT(TLevelsFcst, 6);

constexpr Function FLevelsGrowMkt{
    .name = "FLevelsGrowMkt",
    .category = at_a_date,
    .calls = twin<qx::LevelsGrowMkt<FromSteps>>,
    .help = "The level in force at a date, of levels that change on from-dates; a level of zero is the market grown to "
            "the from-date",
    .args = {value_date(), in_finish(), MktLevel(), in_from(), in_gaps(), growth()},
    .examples = {"FLevelsGrowMkt(2007.5, 2010, 100, {2005;2007}, {90;0}, 2005, 0.1) ~ 121 1e-9"},
    .see_also = "TLevelsGrowMkt,FALevelsGrowMkt,FLevels",
};
QX_EXPORT(FLevelsGrowMkt, 7);

constexpr Function TLevelsGrowMkt{
    .name = "TLevelsGrowMkt",
    .category = at_a_date,
    .calls = twin<qx::LevelsGrowMkt<ToSteps>>,
    .help = "The level in force at a date, of levels that change on to-dates; a level of zero is the market grown to "
            "the to-date before it",
    .args = {value_date(), in_start(), MktLevel(), in_to(), in_gaps(), growth()},
    .examples = {"TLevelsGrowMkt(2007.5, 2005, 100, {2007;2010}, {90;0}, 2005, 0.1) ~ 121 1e-9"},
    .see_also = "FLevelsGrowMkt,TALevelsGrowMkt,TLevels",
};
QX_EXPORT(TLevelsGrowMkt, 7);

constexpr Function FLevelsFcstMkt{
    .name = "FLevelsFcstMkt",
    .category = at_a_date,
    .calls = twin<qx::LevelsFcstMkt<FromSteps>>,
    .help = "The level in force at a date, of levels that change on from-dates; a level of zero is read from an even "
            "forecast",
    .args = {value_date(), in_finish(), in_from(), in_gaps(), forecast()},
    .examples = {"FLevelsFcstMkt(2006.5, 2010, {2005;2006}, {5;0}, {10;20;30}, 2005, 12) = 20"},
    .see_also = "TLevelsFcstMkt,FALevelsFcstMkt,FLevels",
};
QX_EXPORT(FLevelsFcstMkt, 7);

constexpr Function TLevelsFcstMkt{
    .name = "TLevelsFcstMkt",
    .category = at_a_date,
    .calls = twin<qx::LevelsFcstMkt<ToSteps>>,
    .help = "The level in force at a date, of levels that change on to-dates; a level of zero is read from an even "
            "forecast",
    .args = {value_date(), in_start(), in_to(), in_gaps(), forecast()},
    .examples = {"TLevelsFcstMkt(2006.5, 2005, {2006;2010}, {5;0}, {10;20;30}, 2005, 12) = 20"},
    .see_also = "FLevelsFcstMkt,TALevelsFcstMkt,TLevels",
};
QX_EXPORT(TLevelsFcstMkt, 7);

constexpr Function FLevelsThenGrow{
    .name = "FLevelsThenGrow",
    .category = at_a_date,
    .calls = twin<qx::LevelsThenGrow<FromSteps>>,
    .help = "The level in force at a date, of levels that change on from-dates, of which the last one grows",
    .args = {value_date(), in_finish(), in_from(), in_levels(), growth(), RevMonthsOpt()},
    .examples = {"FLevelsThenGrow(2007, 2010, {2004;2005}, {90;100}, 2005, 0.1) ~ 121 1e-9",
                 "FLevelsThenGrow(2004.5, 2010, {2004;2005}, {90;100}, 2005, 0.1) = 90"},
    .see_also = "TLevelsThenGrow,FALevelsThenGrow,FLevels",
};
QX_EXPORT(FLevelsThenGrow, 7);

constexpr Function TLevelsThenGrow{
    .name = "TLevelsThenGrow",
    .category = at_a_date,
    .calls = twin<qx::LevelsThenGrow<ToSteps>>,
    .help = "The level in force at a date, of levels that change on to-dates, of which the last one grows after the "
            "last date, for ever",
    .args = {value_date(), in_start(), in_to(), in_levels(), growth(), RevMonthsOpt()},
    .examples = {"TLevelsThenGrow(2007, 2003, {2004;2005}, {90;100}, 2005, 0.1) ~ 121 1e-9",
                 "TLevelsThenGrow(2004.5, 2003, {2004;2005}, {90;100}, 2004, 0.1) = 100"},
    .see_also = "FLevelsThenGrow,TALevelsThenGrow,TLevels",
};
QX_EXPORT(TLevelsThenGrow, 7);

constexpr Function FLevelsCombine{
    .name = "FLevelsCombine",
    .category = at_a_date,
    .calls = twin<qx::FLevelsCombine>,
    .help = "The level in force at a date, of up to four lists of levels that change on from-dates, combined",
    .args = {value_date(), CombineBy().within(combine_switch_limits), in_finish(), in_from(), in_levels(),
             more_levels("FromDates2", "Levels2"), more_levels("FromDates3", "Levels3"),
             more_levels("FromDates4", "Levels4")},
    .examples = {"FLevelsCombine(2006, 0, 2010, {2005;2007}, {10;20}, 2005.5, 3) = 30",
                 "FLevelsCombine(2008, 2, 2010, {2005;2007}, {10;20}, 2005.5, 3, 2006, 1) = 24"},
    .see_also = "FLevels,FStepCombine,DescribeCombineSwitch",
};
QX_EXPORT(FLevelsCombine, 11);

constexpr Function Bal{
    .name = "Bal",
    .category = at_a_date,
    .calls = twin<qx::Bal>,
    .help = "A balance: the sum of the net advances dated on or before a date",
    .args = {value_date(),
             {"AdvanceDates", "Dates of the advances and repayments, in any order"},
             {"NetAdvances", "Amounts: advances positive, repayments negative"}},
    .examples = {"Bal(2006, {2005;2006;2007}, {100;50;-150}) = 150"},
    .see_also = "MkPmts,TotPmts",
};
QX_EXPORT(Bal, 3);

constexpr Function ALevel{
    .name = "ALevel",
    .category = in_a_period,
    .calls = twin<qx::ALevel>,
    .help = "A constant level over a period: averaged over its time, or at its ends",
    .args = {time_period(),
             in_start("StartLevels"),
             in_finish("FinishLevels"),
             {"Level", "Level in any unit: units, square metres, money"},
             LevelSwitchOpt(),
             measure()},
    .examples = {"ALevel(2005, 12, 2005.5, 2010, 40) ~ 20 1e-9", "ALevel(2005, 12, 2005.5, 2010, 40, 3) = 40"},
    .see_also = "Level,FALevels,ALevelGrow,DescribeLevelSwitch",
};
QX_EXPORT(ALevel, 8);

constexpr Function AGrow{
    .name = "AGrow",
    .category = in_a_period,
    .calls = twin<qx::AGrow>,
    .help = "A value that grows at dated annual rates, over a period: averaged over its time, or at its ends",
    .args = {time_period(),
             {"StartingValue", "Value up to the first growth date"},
             growth(),
             LevelSwitchOpt(),
             RevMonthsOpt(),
             measure()},
    .examples = {"AGrow(2006, 12, 100, 2005, 0.1, 0, 12) ~ 110 1e-9",
                 "AGrow(2006, 12, 100, 2005, 0.1, 1) ~ 115.5 1e-9"},
    .see_also = "Grow,ALevelGrow",
};
QX_EXPORT(AGrow, 9);

constexpr Function ALevelGrow{
    .name = "ALevelGrow",
    .category = in_a_period,
    .calls = twin<qx::ALevelGrow>,
    .help = "A level that grows between two dates, over a period: averaged over its time, or at its ends",
    .args = {time_period(), in_start("StartLevels"), in_finish("FinishLevels"), InitialLevel(), growth(),
             LevelSwitchOpt(), RevMonthsOpt(), measure()},
    .examples = {"ALevelGrow(2006, 12, 2005, 2006.5, 100, 2005, 0.1, 0, 12) ~ 55 1e-9",
                 "ALevelGrow(2006, 12, 2005, 2010, 100, 2005, 0.1, 3) ~ 121 1e-9"},
    .see_also = "AGrow,ALevel,ConGrow",
};
QX_EXPORT(ALevelGrow, 11);

constexpr Function FALevels{
    .name = "FALevels",
    .category = in_a_period,
    .calls = twin<qx::ALevels<FromSteps>>,
    .help = "Levels that change on from-dates, over a period: averaged over the time they hold, at its ends, least or "
            "greatest",
    .args = {time_period(), in_finish("FinishLevels"), in_from(), in_levels(), LevelSwitchOpt(), measure()},
    .examples = {"FALevels(2005, 12, 2010, {2004;2005.5}, {10;20}) ~ 15 1e-9",
                 "FALevels(2005, 12, 2010, {2004;2005.5}, {10;20}, 5) = 20"},
    .see_also = "TALevels,FLevels,ALevel,FALevelsGrow",
};
QX_EXPORT(FALevels, 8);

constexpr Function TALevels{
    .name = "TALevels",
    .category = in_a_period,
    .calls = twin<qx::ALevels<ToSteps>>,
    .help = "Levels that change on to-dates, over a period: averaged over the time they hold, at its ends, least or "
            "greatest",
    .args = {time_period(), in_start("StartLevels"), in_to(), in_levels(), LevelSwitchOpt(), measure()},
    .examples = {"TALevels(2005, 12, 2004, {2005.5;2010}, {10;20}) ~ 15 1e-9",
                 "TALevels(2005, 12, 2004, {2005.5;2010}, {10;20}, 5) = 20"},
    .see_also = "FALevels,TLevels,ALevel,TALevelsGrow",
};
QX_EXPORT(TALevels, 8);

constexpr Function FALevelsGrow{
    .name = "FALevelsGrow",
    .category = in_a_period,
    .calls = twin<qx::ALevelsGrow<FromSteps>>,
    .help = "A level that grows in steps on from-dates, over a period: averaged, at its ends, least or greatest",
    .args = {time_period(), in_finish("FinishLevels"), InitialLevel(), in_from(), growth(), LevelSwitchOpt(),
             measure()},
    .examples = {"FALevelsGrow(2005, 12, 2010, 100, {2005;2005.5}, 2004.5, 0.21) ~ 115.5 1e-9",
                 "FALevelsGrow(2005, 12, 2010, 100, {2005;2005.5}, 2004.5, 0.21, 2) ~ 110 1e-9"},
    .see_also = "TALevelsGrow,FLevelsGrow,ALevelGrow",
};
QX_EXPORT(FALevelsGrow, 10);

constexpr Function TALevelsGrow{
    .name = "TALevelsGrow",
    .category = in_a_period,
    .calls = twin<qx::ALevelsGrow<ToSteps>>,
    .help = "A level that grows in steps on to-dates, over a period: averaged, at its ends, least or greatest",
    .args = {time_period(), in_start("StartLevels"), InitialLevel(), in_to(), growth(), LevelSwitchOpt(), measure()},
    .examples = {"TALevelsGrow(2005, 12, 2005, 100, {2005.5;2010}, 2004.5, 0.21, 1) ~ 115.5 1e-9"},
    .see_also = "FALevelsGrow,TLevelsGrow,ALevelGrow",
};
QX_EXPORT(TALevelsGrow, 10);

constexpr Function FALevelsFcst{
    .name = "FALevelsFcst",
    .category = in_a_period,
    .calls = twin<qx::ALevelsFcst<FromSteps>>,
    .help = "Levels read from an even forecast on from-dates, over a period: averaged, at its ends, least or greatest",
    .args = {time_period(), in_finish("FinishLevels"), in_from(), forecast(), LevelSwitchOpt(), measure()},
    .examples = {"FALevelsFcst(2005, 12, 2010, {2005;2005.5}, {10;20;30}, 2005, 6) ~ 15 1e-9"},
    .see_also = "TALevelsFcst,FLevelsFcst",
};
QX_EXPORT(FALevelsFcst, 10);

constexpr Function TALevelsFcst{
    .name = "TALevelsFcst",
    .category = in_a_period,
    .calls = twin<qx::ALevelsFcst<ToSteps>>,
    .help = "Levels read from an even forecast on to-dates, over a period: averaged, at its ends, least or greatest",
    .args = {time_period(), in_start("StartLevels"), in_to(), forecast(), LevelSwitchOpt(), measure()},
    .examples = {"TALevelsFcst(2005, 12, 2005, {2005.5;2010}, {10;20;30}, 2005, 6, 1) ~ 15 1e-9"},
    .see_also = "FALevelsFcst,TLevelsFcst",
};
QX_EXPORT(TALevelsFcst, 10);

constexpr Function FALevelsGrowMkt{
    .name = "FALevelsGrowMkt",
    .category = in_a_period,
    .calls = twin<qx::ALevelsGrowMkt<FromSteps>>,
    .help = "Levels that change on from-dates, a zero being the grown market, over a period: averaged, at its ends, "
            "least or greatest",
    .args = {time_period(), in_finish("FinishLevels"), MktLevel(), in_from(), in_gaps(), growth(), LevelSwitchOpt(),
             measure()},
    .examples = {"FALevelsGrowMkt(2005, 12, 2010, 100, {2005;2005.5}, {90;0}, 2004.5, 0.21) ~ 105.5 1e-9"},
    .see_also = "TALevelsGrowMkt,FLevelsGrowMkt",
};
QX_EXPORT(FALevelsGrowMkt, 11);

constexpr Function TALevelsGrowMkt{
    .name = "TALevelsGrowMkt",
    .category = in_a_period,
    .calls = twin<qx::ALevelsGrowMkt<ToSteps>>,
    .help = "Levels that change on to-dates, a zero being the grown market, over a period: averaged, at its ends, "
            "least or greatest",
    .args = {time_period(), in_start("StartLevels"), MktLevel(), in_to(), in_gaps(), growth(), LevelSwitchOpt(),
             measure()},
    .examples = {"TALevelsGrowMkt(2005, 12, 2005, 100, {2005.5;2010}, {90;0}, 2004.5, 0.21, 3) ~ 121 1e-9"},
    .see_also = "FALevelsGrowMkt,TLevelsGrowMkt",
};
QX_EXPORT(TALevelsGrowMkt, 11);

constexpr Function FALevelsFcstMkt{
    .name = "FALevelsFcstMkt",
    .category = in_a_period,
    .calls = twin<qx::ALevelsFcstMkt<FromSteps>>,
    .help = "Levels that change on from-dates, a zero being read from an even forecast, over a period: averaged, at "
            "its ends, least or greatest",
    .args = {time_period(), in_finish("FinishLevels"), in_from(), in_gaps(), forecast(), LevelSwitchOpt(), measure()},
    .examples = {"FALevelsFcstMkt(2005, 12, 2010, {2005;2005.5}, {5;0}, {10;20;30}, 2005, 6) ~ 12.5 1e-9"},
    .see_also = "TALevelsFcstMkt,FLevelsFcstMkt",
};
QX_EXPORT(FALevelsFcstMkt, 11);

constexpr Function TALevelsFcstMkt{
    .name = "TALevelsFcstMkt",
    .category = in_a_period,
    .calls = twin<qx::ALevelsFcstMkt<ToSteps>>,
    .help = "Levels that change on to-dates, a zero being read from an even forecast, over a period: averaged, at its "
            "ends, least or greatest",
    .args = {time_period(), in_start("StartLevels"), in_to(), in_gaps(), forecast(), LevelSwitchOpt(), measure()},
    .examples = {"TALevelsFcstMkt(2005, 12, 2005, {2005.5;2010}, {5;0}, {10;20;30}, 2005, 6, 3) = 20"},
    .see_also = "FALevelsFcstMkt,TLevelsFcstMkt",
};
QX_EXPORT(TALevelsFcstMkt, 11);

constexpr Function FALevelsThenGrow{
    .name = "FALevelsThenGrow",
    .category = in_a_period,
    .calls = twin<qx::ALevelsThenGrow<FromSteps>>,
    .help = "Levels that change on from-dates, of which the last one grows, over a period: averaged, at its ends, "
            "least or greatest",
    .args = {time_period(), in_finish("FinishLevels"), in_from(), in_levels(), growth(), LevelSwitchOpt(),
             RevMonthsOpt(), measure()},
    .examples = {"FALevelsThenGrow(2006, 12, 2010, {2004;2005}, {90;100}, 2005, 0.1, 0, 12) ~ 110 1e-9"},
    .see_also = "TALevelsThenGrow,FLevelsThenGrow,FStepThenGrow",
};
QX_EXPORT(FALevelsThenGrow, 11);

constexpr Function TALevelsThenGrow{
    .name = "TALevelsThenGrow",
    .category = in_a_period,
    .calls = twin<qx::ALevelsThenGrow<ToSteps>>,
    .help = "Levels that change on to-dates, of which the last one grows after the last date, for ever, over a period: "
            "averaged, at its ends, least or greatest",
    .args = {time_period(), in_start("StartLevels"), in_to(), in_levels(), growth(), LevelSwitchOpt(), RevMonthsOpt(),
             measure()},
    .examples = {"TALevelsThenGrow(2006, 12, 2003, {2004;2005}, {90;100}, 2005, 0.1, 0, 12) ~ 110 1e-9"},
    .see_also = "FALevelsThenGrow,TLevelsThenGrow,TStepThenGrow",
};
QX_EXPORT(TALevelsThenGrow, 11);

} // namespace qx::worksheet
