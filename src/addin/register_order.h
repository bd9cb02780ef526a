// The order of the register: every worksheet function's name by category, then the commands. A function that
// is declared but not named here fails the tests; one that is named but not declared is not registered.
#pragma once

#include <string_view>

namespace qx {

// clang-format off
inline constexpr std::string_view register_order[] = {
    // Accounting And Tax
    "DepPool", "DepPoolRatio", "DepPoolWIP", "Depreciate", "DepreciatedValue", "DepreciateFcstPer",
    "DepreciateGrowPer", "DepreciateIdxPer", "DepreciatePer", "LIFOCalc", "LIFOPrice", "FAvRate",
    "FAvRateTD", "TAvRate", "TAvRateTD",
    // Time Value Of Money Analysis
    "AERToSimpleX", "APRToSimpleX", "ContToSimpleX", "DFToSimpleX", "RateConvert", "SimpleToAERX",
    "SimpleToAPRX", "SimpleToContX", "SimpleToDFX", "SimpleToSimpleX", "FVM", "IntRateM", "PmtM", "PVEGAnn",
    "PVEGAnnM", "PVEGPerAnn", "PVEGPerp", "PVEGPerPerp", "PVEGPerpM", "PVM", "SumEGAnn", "SumEGAnnCont",
    "SumEGAnnM", "SumLGAnn", "SumLGAnnCont", "SumLGAnnM", "TermM", "FVQX", "IntRateX", "NPerQX", "PMTQX",
    "PMTX", "PVQX", "PVQXX", "RateQX", "AERToCont", "AERToDF", "AERToSimple", "APRToCont", "APRToDF",
    "APRToSimple", "ContToAER", "ContToAPR", "ContToDF", "ContToSimple", "DFToAER", "DFToAPR", "DFToCont",
    "DFToSimple", "SimpleToAER", "SimpleToAPR", "SimpleToCont", "SimpleToDF", "SimpleToSimple", "TermRate",
    "APRToQuoted", "QuotedToAPR",
    // Levels Over Time Projections
    "ALevel", "ALevelGrow", "FALevels", "FALevelsFcst", "FALevelsGrow", "FALevelsThenGrow", "TALevels",
    "TALevelsFcst", "TALevelsGrow", "TALevelsThenGrow", "FALevelsFcstMkt", "FALevelsGrowMkt",
    "TALevelsFcstMkt", "TALevelsGrowMkt", "AGrow",
    // Discounted Cash Flow
    "AvLifeA", "DurationA", "IRRA", "IRRAX", "PayBackA", "PayBackDiscA", "PVA", "AvLifeM", "CorrectionCont",
    "CorrectionDC", "CorrectionM", "DurationM", "EffTimeM", "IRRM", "IRRMX", "LCorrectionM", "NPVM",
    "FPVOne", "PVOne", "PVOneQ", "TPVOne", "AvLifeE", "DurationE", "IRRE", "IRREX", "PayBackDiscE",
    "PaybackE", "PVE", "AvLifeT", "DurationT", "IRRT", "IRRTCX", "IRRTIC", "IRRTR", "IRRTX", "PayBackDiscT",
    "PayBackT", "PVT", "PVTCX", "PVTIC", "PVTR", "PVTSFX", "PVTX",
    // Text
    "RegMatchWhole", "RegNMatches", "RegReplace", "RegSMatch", "RegSMatches", "RegSplit", "MoneyText",
    "Bar", "Gantt", "ExFl", "ExInt", "ExNumRange", "GetToken", "GetTokens", "InString",
    // Compatibility
    "AnnGrowB", "DatePlusYears", "DecYear", "DiffYears", "Happens", "IncDate", "LookUpB", "LotusDate",
    "MakePayment", "MakePayments", "MakePmts", "MarketG", "MFLoan", "MultiPerAnn", "NPVMB", "NPVOne",
    "NPVR", "OneGrow", "PerAnn", "PmtMB", "PVMB", "RentG", "SCurveB", "SIndex", "StepRentG", "TimeSpreadB",
    // Special Dates
    "DpDBD", "DpDBDX", "DpMBD", "DpMBDX", "DpYBD", "DpYBDX", "IsBD", "IsBDX", "NetWorkDaysQX",
    "NetWorkDaysX", "NextBD", "NextBDX", "NextDateListBD", "NextDateSeqBD", "NextDateSeqBDX", "PrevBD",
    "PrevBDX", "PrevDateListBD", "PrevDateSeqBD", "PrevDateSeqBDX", "CalcDate", "CalcDateX", "CreateDate",
    "DescribeHol", "Holiday", "IsHol", "IsWE", "WesternEaster", "WhatHol",
    // Miscellaneous
    "Collar", "CollarDate", "InBetween", "CountErrors", "Safe", "Ev", "Def", "GetNum", "GetStr", "GoalSeek",
    "IfElse", "IfElseR", "IfElseRT", "IfElseT", "SetNum", "SetStr", "Switch", "SwitchR", "SwitchRT",
    "SwitchT", "SwitchX", "ArgValues", "QXVer", "DescribeBD", "DescribeCashBasis", "DescribeCombineSwitch",
    "DescribeDayCount", "DescribeLevelSwitch", "DescribeLoanAcctOutput", "DescribeLoanOutput",
    "DescribeLookup", "DescribePeriods", "DescribePmtsPerYear", "DescribeRounding", "DescribeShape",
    "OptionPresent", "LoanAcctEMH", "DateCeiling", "DateFloor", "DateRound", "Disperse", "RoundDateSeq",
    "RoundList", "RoundMD", "RoundMonthDay", "RoundWeekDay", "SCeiling", "SFloor", "SRound", "AddGaps",
    "DiffGaps", "GV", "SDiv", "SPow", "StdEq", "SV", "ExtEuclid", "PrimeNum", "RelPrime", "uvmodn",
    // Constant Rate Projections
    "ConFcstGrowMkt", "ConFcstMkt", "ConGrowMkt", "ConGrowMktQ", "AnnGrowPer", "ConGrowPer", "ConPer",
    "ConFcstCombine", "ConGrowCombine", "ConRev", "ConRevFcst", "ConRevGrow", "ConRevGrow2", "AnnGrow",
    "AnnRate", "Con", "ConEvent", "ConGrow", "ConGrowQ", "ConIdx", "ConS", "ConSF", "MultiAnnGrow",
    "MultiCon", "MultiConGrow", "RePhaseCon",
    // Projections NPV
    "PVAnnGrow", "PVCon", "PVConGrow", "PVConGrowQ", "PVConQ", "PVMkPmts", "PVMkPmtsSF", "PVFStep",
    "PVFStepIC", "PVFStepICQ", "PVFStepQ", "PVTStep", "PVTStepIC", "PVTStepICQ", "PVTStepQ", "PVDistSpread",
    "PVFStepSpread", "PVGSpread", "PVMkPmtsWeighted", "PVSCumCurve", "PVSCurve", "PVSCurveGrow",
    "PVTStepSpread", "PVUniSpread",
    // Date and Time Calculations
    "AnnSeq", "CashFinish", "CashLenYrs", "CashStart", "CreateTimeBase", "DateNum", "DateSeqNum", "DateYMD",
    "DayName", "DaysInMonth", "DMonth", "DYear", "IsAnniversary", "IsLeap", "IsSeqDate", "MonthEnd",
    "MonthName", "MonthStart", "MostImminent", "MostRecent", "NumPers", "TimeBaseLengths", "WeekNumber",
    "WeekNumberToDate", "DiffD", "DiffDX", "DiffM", "DiffMSeq", "DiffMX", "DiffP", "DiffPSeq", "DiffY",
    "DiffYX", "DatePer", "DateSeq", "DateSeqCombine", "DpD", "DpDX", "DpM", "DpMX", "DpP", "DpY", "DpYX",
    "EDateQX", "NextDateCombine", "NextDateList", "NextDateSeq", "PrevDateList", "PrevDateSeq", "Occurs",
    "TpD", "TpM", "TpMX", "TpY",
    // Petroleum Economics
    "AbandonDate", "Decline", "DeclineRate", "DescribeDecline", "ProdProf", "StartDecline", "STOIIP",
    // Banking
    "BetaIndex", "BetaReturns", "DescribeReturn", "TotalReturn", "TotalReturnQ", "FInterest", "Interest",
    "InterestX", "PVFInterest", "PVInterest", "PVInterestX", "TInterest", "TotInterestSF", "IdxBondFcst",
    "IdxBondGrow", "Loan", "LoanLin", "LoanLinX", "LoanPool", "LoanQ", "LoanRep", "LoanSolve", "LoanX",
    "Mortgage", "MortgageQ", "OptionBinom", "OptionBS", "OptionMonte", "CashAcct", "CurrentAcct",
    "FlexAcct", "LoanAcct", "LoanAcctEM", "Overdraft", "STDAcct", "FutureToSpot", "SpotToSpot",
    "ZeroCoupon",
    // Instantaneous Level Projections
    "Fcst", "FcstCollar", "FcstGrow", "FFcstStep", "IdxFromTo", "SumFcst", "TFcstStep", "FGrowStep",
    "FGrowStepMkt", "Grow", "GrowFromTo", "GrowLin", "GrowMkt", "GrowQ", "TGrowStep", "TGrowStepMkt", "Bal",
    "FLevels", "FLevelsCombine", "FLevelsFcst", "FLevelsGrow", "FLevelsThenGrow", "Level", "TLevels",
    "TLevelsFcst", "TLevelsGrow", "TLevelsThenGrow", "FLevelsFcstMkt", "FLevelsGrowMkt", "TLevelsFcstMkt",
    "TLevelsGrowMkt", "FcstT", "TFcstT",
    // Real Estate
    "FStepRent", "FStepRentFcst", "FStepRentFcstCollar", "FStepRentGrow",
    "IdxRentFcstMktR", "IdxRentFcstR", "IdxRentGrowMktR", "IdxRentGrowR", "TStepIdxRentFcstR", "TStepIdxRentGrowR",
    "LastReview", "LastReviewR", "LeaseDates", "LeaseEnd", "LeaseInfo", "NextReview",
    "NextReviewR", "Occupancy",
    "ReletOccurs", "RentDateInfo", "RentEvent", "RentEventOccurs", "FServChargeGrowR", "FServChargeR",
    "FVacServChargeR", "LeasingFeeFcstR", "LeasingFeeGrowR", "LetCostR", "LetCostRQ", "ServChargeFcstR",
    "ServChargeGrowR", "VacServChargeFcstR", "VacServChargeGrowR", "UKEmptyRatesFcstR", "UKEmptyRatesGrowR",
    "UKRatesFcst", "UKRatesFcstR", "UKRatesGrow", "UKRatesGrowR", "FRentType", "RentFcst", "RentGrow",
    "IRRRentGrow", "PVRentFcst", "PVRentGrow", "PVTStepIdxRentFcstR", "PVTStepIdxRentGrowR", "PVTStepRent",
    "PVTStepRentFcst", "PVTStepRentFcstR", "PVTStepRentGrow", "PVTStepRentGrowIC", "PVTStepRentGrowR",
    "PVTStepRentGrowRIC", "FStepRentFcstR", "FStepRentFcstSFR", "FStepRentGrowR", "FStepRentGrowSFR",
    "RentFcstR", "RentGrowR", "TStepRentFcstR", "TStepRentFcstSFR", "TStepRentGrowR", "TStepRentGrowSFR",
    "TStepGTurnRentGrow", "TStepGTurnRentGrowR", "TStepRent", "TStepRentFcst", "TStepRentFcstCollar",
    "TStepRentGrow", "TStepRentGrowCollar", "CapValue", "CapValueFcstGD", "CapValueG", "CapValueGD",
    "CapValueGrowGD", "CapValueTStepRentGrowR", "EqYield", "EqYieldFcstGD", "EqYieldG", "EqYieldGD",
    "EqYieldGrowGD", "NomToTrue", "TrueToNom", "YPA", "YPADef", "YPP", "YPPDef", "CapValueDCF",
    "CapValueDCFG", "CapValueDCFGD", "EqYieldDCF", "EqYieldDCFG", "EqYieldDCFGD", "ImpDiscRate",
    "ImpGrowth", "NomToTrueDCF", "PVRent", "TheorYield", "TrueToNomDCF", "TWRR", "YPADefDCF", "YPPDefDCF",
    // Range Operations
    "Interp", "InterpCollar", "InterpDate", "InterpDateCollar", "InterpDateExtrap", "InterpExtrap",
    "Interpolate", "InterpolateDate", "Intersection", "FindIf", "LookupN", "LookupNIndex", "LookupNum",
    "LookUpNum2D", "PickMatrix", "PickNum", "Seek", "SeekList", "SeekNum", "SortNum", "SortPick",
    "MaxBetween", "MeanNZ", "MinBetween", "WeightAv", "RangeDir", "ApplyToList", "CombineLists", "CRC_fl",
    "CreateList", "JoinLists", "OneD", "PickEveryNth", "SortText", "SubList", "TransposeNum", "TrimList",
    "Unique", "Coordinates", "GetRef", "RefPlus", "WorkSheetName", "DoBetweenX", "DoIf", "SelCats",
    "SumBounds", "SumCat", "SumCats", "SumCombine", "SumDiv", "SumNeg", "SumPos", "SumSubRange",
    // Interpolated and Curve-Fitted Projections
    "FittedLevel", "InterpedLevel", "FittedRate", "Ramp",
    // Simulation Modelling
    "CumProb", "DescribeDistType", "DistCumulative", "DistDoubleTri", "DistLogNormal", "DistNormal",
    "Distribution", "DistTriangular", "DistUniform", "NRandom", "PartialDependency", "PickRandom",
    "RandNum", "Shuffle",
    // Discrete Amount Projections
    "CarryNeg", "CarryPos", "DoBetween", "MatchPmts", "MkPmt", "MkPmtFcst", "MkPmtGrow", "MkPmtGrowQ",
    "MkPmts", "MkPmtsCats", "MkPmtSF", "MkPmtsFcst", "MkPmtsGroup", "MkPmtsGrow", "MkPmtsIdx", "MkPmtsLag",
    "MkPmtsLagProf", "MkPmtsLagX", "MkPmtsLim", "MkPmtsSeq", "MkPmtsSF", "MkPmtsX", "MkPmtX", "RePhasePmt",
    "RePhasePmts", "SumBetween", "TotPmts", "TotPmtsSF", "MkPmtPer", "MkPmtPerGrow", "MkPmtsIdxPer",
    "MkPmtsPer", "MkPmtsPerFcst", "MkPmtsPerGrow", "MkPmtFcstMkt", "MkPmtPerFcstMkt", "MkPmtsFcstMkt",
    "MkPmtsGrowMkt", "MkPmtsPerFcstMkt", "MkPmtsPerGrowMkt",
    // Mathematical Calculations
    "BestPoly", "CalcPoly", "LinReg", "MeanAvg", "PolyEqn", "PolyReg", "PolyRoot", "RSqrdPoly", "SampleSD",
    "SampleVar", "SignChanges",
    // Stepped Rate Projections
    "FStepFcstMkt", "FStepGrowMkt", "TStepFcstMkt", "TStepGrowMkt", "FStep", "FStepCombine", "FStepFcst",
    "FStepGrow", "FStepGrown", "FStepGrowX", "FStepS", "FStepSF", "FStepThenGrow", "MultiFStep",
    "MultiTStep", "TStep", "TStepCombine", "TStepFcst", "TStepGrow", "TStepGrown", "TStepGrowX", "TStepS",
    "TStepSF", "TStepThenGrow", "FStepRev", "FStepRevFcst", "FStepRevGrow", "FStepThenGrowRev", "TStepRev",
    "TStepRevFcst", "TStepRevGrow", "TStepThenGrowRev",
    // Distributed Amount Projections
    "DistSpread", "FStepSpread", "GSpread", "MkPmtsWeighted", "MultiUniSpread", "SCumCurve", "SCurve",
    "SCurveGrow", "TStepSpread", "UniSpread", "UniSpreadGrow", "DistSpreadAdj", "DistSpreadH",
    "FWeightSpreadAdj", "FWeightSpreadH", "GSpreadAdj", "GSpreadH", "SCurveAdj", "SCurveH",
    "TWeightSpreadAdj", "TWeightSpreadH", "UniSpreadAdj", "UniSpreadH", "WeightSpreadAdj", "WeightSpreadH",
    "SCurveGrowPer", "SCurvePer", "UniSpreadGrowPer", "UniSpreadPer", "DepletionDate", "DepletionDateStart",
    "FWeightSpread", "TWeightSpread", "UniSpreadS", "WeightSpread",
};

inline constexpr std::string_view command_order[] = {
    "CPPQX_xlAutoClose", "CPPQX_TraceOn", "CPPQX_TraceShow", "CPPQX_Help", "CPPQX_ContextHelp",
    "CPPQX_SetSemiRandom", "CPPQX_GoalSeek", "CPPQX_GoalSeekInit", "CPPQX_FindReplace", "CPPQX_CalcMonOn",
    "CPPQX_CalcMonOff",
};
// clang-format on

} // namespace qx
