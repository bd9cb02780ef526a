// The error classes: one table of code, class and message makes them all.
//
// A routine that cannot go on throws one of these classes by value; the class alone decides what the cell shows,
// and the context's texts go to the trace:
//
//     throw errlibmin(context);
#pragma once

#include "core/context.h"

#include <string>

// clang-format off
#define QX_ERROR_CLASSES(X) \
    X(INP01, errinput, "Error value in Input ") \
    X(INP02, outofrange, "Out Of Range ") \
    X(INP03, illegalvalue, "Illegal Value ") \
    X(INP05, inputerror, "General Input Error ") \
    X(INP06, outputerror, "Output Error ") \
    X(INP07, functionerror, "Error in function ") \
    X(INP09, notaref, "Expected a cell or range reference, didn't get one ") \
    X(INP10, missingarg, "An argument that is mandatory was missing ") \
    X(INP11, notbool, "Expected a boolean value, didn't get one ") \
    X(INP13, inputerrorrange, "General input error in a range ") \
    X(INP15, illegalannualsequence, "Illegal Annual Sequence ") \
    X(INP17, errinpmin, "Value less than minimum allowed value ") \
    X(INP18, uncalc, "UnCalced Cell ") \
    X(INP19, gotarange, "Expected a single value, got a range ") \
    X(INP20, inputna, "An argument passed to a Quexel Function was an #NA! error.  The #N/A error value occurs when a value is not available to a function or formula ") \
    X(INP21, inputref, "An argument passed to a Quexel Function was an #REF! error.  The #REF! error value occurs when a cell reference is not valid ") \
    X(INP22, inputname, "An argument passed to a Quexel Function was an #NAME? error.  The #NAME? error value occurs when Microsoft Excel doesn't recognize text in a formula. ") \
    X(INP23, inputnum, "An argument passed to a Quexel Function was an #NUM! error.  The #NUM! error value occurs when a problem occurs with a number in a formula or function. ") \
    X(INP24, inputvalue, "An argument passed to a Quexel Function was an #VALUE! error.  The #VALUE! error value occurs when the wrong type of argument or operand is used ") \
    X(INP25, inputdiv, "Quexel Function was an #DIV/0! error.   #DIV/0! error value occurs when a formula divides by 0 (zero). ") \
    X(INP27, inputrangelength2, "Two ranges that are supposed to be the same length were not ") \
    X(INP28, notascending, "Range not in ascending order when it should be ") \
    X(INP29, notdescending, "Range not in descending order when it should be ") \
    X(INP30, rangenot1d, "Range is not 1 dimensional, when it should be ") \
    X(INP31, errinpint, "Expected an Integer, got a floating point number ") \
    X(INP32, insufficientinputs, "Insufficient inputs to come to answer ") \
    X(INP35, missinggrowthdate, "Missing Growth Date ") \
    X(INP36, negativesnotallowed, "Negative values are not allowed ") \
    X(INP37, positivesnotallowed, "Positive values are not allowed ") \
    X(INP38, inputstringerror, "Input string error ") \
    X(INP39, insufficientpolypoints, "Number of data points must be greater than number of polynomial coefficients ") \
    X(INP40, OnlyOneDoIf, "Only one DoIf function  per formula allowed ") \
    X(INP41, invalidcriteria, "Invalid Criteria ") \
    X(LIB01, errlibdateoutofrange, "Date out of acceptable range (years 1900 - 3653) ") \
    X(LIB02, errlibnonsensicaldate, "Nonsensical date generated internally (eg day/month of value zero) ") \
    X(LIB03, errlibstring, "Internal string error ") \
    X(LIB04, errlibnoconverge, "Routine didn't converge ") \
    X(LIB05, errlibnotbracketed, "Root not bracketed ") \
    X(LIB06, errlibunexpected, "Control flowed to an unexpected part of the routine ") \
    X(LIB07, errlibbadexponentiation, "Illegal Exponentiation ") \
    X(LIB08, errlibinfiniteresult, "Infinite result.  Probably caused by a divide by zero.  There is no sensible result the function can return. ") \
    X(LIB09, errlibdivzero, "Divide by Zero ") \
    X(LIB10, errlibannseq, "Erroneous Annual Sequence ") \
    X(LIB16, errlibmax, "Value greater than maximum allowed value ") \
    X(LIB17, errlibmin, "Value less than minimum allowed value ") \
    X(LIB18, errlibbadbase, "Bad Base - the base of a timeperiod must be in exact months(<1900), a decimal year(>1900) or a datenumber (>3000).  It cannot for example be a fraction less than 1. ") \
    X(LIB19, errlibbadnum, "Bad number - Number out of range ") \
    X(LIB20, errlibbadlistprogression, "Bad List Progression ") \
    X(LIB21, errliblookupfailed, "Lookup failed ") \
    X(LIB22, errlibillegalswitch, "Illegal Switch ") \
    X(LIB33, errlibmaxrevs, "Exceeded Maximum Reviews or SubPeriods per period ") \
    X(LIB34, errlibinsuffrange, "Insufficient values in a range to compute this calculation ") \
    X(LIB35, errlibnovalidanswer, "No valid answer possible ") \
    X(LIB36, errlibillegaldaycount, "Illegal Daycount Specification ") \
    X(LIB37, errliboveriterated, "Over-Iterated.  The function iterated to its maximum and still has not found the answer. ") \
    X(LIB39, errlibconstructorerror, "Constructor Error ") \
    X(LIB40, errlibmindate, "Date less than minimum allowed value ") \
    X(LIB41, errlibbaddistribution, "Bad Distribution Specifiers ") \
    X(LIB42, errlibnonsenseinputs, "Nonsensical inputs ") \
    X(LIB43, errlibnopayback, "No payback date exists ") \
    X(LIB44, errliboptreq, "Optional Parameter Required in this context ") \
    X(LIB45, errlibseas, "Error in Seasonal Date Sequence ") \
    X(LIB46, errlibunexpectedcase, "Unexpected case: a set of circumstances arose that the function was not prepared for ") \
    X(LIB47, errrbaddaycount, "Bad DayCount ") \
    X(LIB48, errlibcallback, "Callback Error ") \
    X(LIB49, errlibbadrangematching, "Bad Range matching ") \
    X(LIB50, numbertranslation, "Number translation error ") \
    X(LIB51, polyregerr, "Polynomial Regression Error ") \
    X(LIB52, variablebufferfull, "Variable buffer full ") \
    X(LIB54, inconsistentranges, "Inconsistent range lengths: function expected 2 or more ranges of the same length, but they differed ") \
    X(LIB55, polyfail, "Polynomial solve failed to come up with a valid answer ") \
    X(LIB57, faultycalcs, "Internal calculations faulty ") \
    X(LIB58, unnacceptabledata, "Unacceptable input data ") \
    X(LIB59, unnacceptablesolution, "Unacceptable Solution: a solution cannot be found within acceptable limits of error ") \
    X(LIB60, unnacceptabledate, "Unacceptable date ") \
    X(LIB62, errlibgoalseek, "Goal Seek Error ") \
    X(LIB63, errtimerange, "Time and Base outside acceptable time range ") \
    X(LIB64, errliblargebase, "Base too large ") \
    X(LIB65, errlibregexp, "Error in regular Expression ") \
    X(LIB66, errmissing, "Missing ") \
    X(LIB67, errinconsistent, "Inconsistent. More than one non-identical answers were possible from the the inputs you specified ") \
    X(LIB68, invaliddateorder, "Invalid date order ") \
    X(OUT01, erroutrange, "Error outputting range ")
// clang-format on

namespace qx {

/// What is fixed about an error class. Its address identifies the class.
struct ErrorClass {
    const char* code;
    const char* name;
    const char* text; ///< the message shown to the user, with the code
};

/// Base of the error classes.
class cls_exception {
  public:
    cls_exception(const ErrorClass& kind, const FunctionContext& context)
        : errortext(kind.text), context(tracing ? context : FunctionContext{}), kind_(&kind) {}
    cls_exception(const cls_exception&) = default;
    cls_exception& operator=(const cls_exception&) = default;
    virtual ~cls_exception() = default;

    /// The text that the trace shows: the class's message, then the variable and the context.
    std::string description() const;
    const ErrorClass& kind() const { return *kind_; }

    std::string errortext;
    FunctionContext context;

  private:
    const ErrorClass* kind_;
};

#define QX_DECLARE_ERROR(code_, name_, message_)                                                                       \
    class name_ : public cls_exception {                                                                               \
      public:                                                                                                          \
        static constexpr ErrorClass error_class{#code_, #name_, "Error " #code_ ": " message_};                        \
        explicit name_(const FunctionContext& context) : cls_exception(error_class, context) {}                        \
    };
QX_ERROR_CLASSES(QX_DECLARE_ERROR)
#undef QX_DECLARE_ERROR

/// All classes in the order of their codes.
inline constexpr const ErrorClass* error_classes[] = {
#define QX_LIST_ERROR(code_, name_, message_) &name_::error_class,
    QX_ERROR_CLASSES(QX_LIST_ERROR)
#undef QX_LIST_ERROR
};

} // namespace qx
