#include "lists/logic.h"

#include "core/options.h"
#include "core/parse_number.h"
#include "core/routine.h"
#include "core/version.h"

namespace qx {

namespace {

/// The first of n choices that holds, or 0.
template <class Holds>
int first_that(int n, const Holds& holds) {
    for (int i = 1; i <= n; ++i)
        if (holds(i)) return i;
    return 0;
}

/// Tells which choice was made.
void tell(const Routine& here, int choice, const char* kind) {
    if (choice > 0)
        here.info(kind, " ", choice, " decides");
    else
        here.info("No ", kind, " holds, returning the default");
}

template <class Result>
const Result& if_else(const char* name, const Result& Default, const Conditions<Result>& Choices) {
    Routine here{name};
    here.inputs(Default, Choices);
    const int choice = first_that(Choices.most, [&](int i) { return Choices.first[i - 1].value; });
    tell(here, choice, "condition");
    return here.returning(choice > 0 ? Choices.second[choice - 1].value : Default);
}

template <class Result>
const Result& if_else(const char* name, const Result& Default, View<bool> Conds, View<Result> Results) {
    Routine here{name};
    here.inputs(Default, Conds, Results);
    Conds.checksamesize(Results);
    const int choice = first_that(Conds.size(), [&](int i) { return Conds.get(i); });
    tell(here, choice, "condition");
    return here.returning(choice > 0 ? Results.get(choice) : Default);
}

template <class Result>
const Result& switch_case(const char* name, const anyvalue& SwitchVar, const Result& Default,
                          const Cases<Result>& Choices) {
    Routine here{name};
    here.inputs(SwitchVar, Default, Choices);
    const int choice = first_that(Choices.most, [&](int i) {
        const Maybe<anyvalue>& candidate = Choices.first[i - 1];
        return !candidate.is_missing() && case_matches(SwitchVar, candidate.value);
    });
    tell(here, choice, "case");
    return here.returning(choice > 0 ? Choices.second[choice - 1].value : Default);
}

template <class Result>
const Result& switch_case(const char* name, const anyvalue& SwitchVar, const Result& Default, View<anyvalue> Cases,
                          View<Result> Results) {
    Routine here{name};
    here.inputs(SwitchVar, Default, Cases, Results);
    Cases.checksamesize(Results);
    const int choice = first_that(Cases.size(), [&](int i) { return case_matches(SwitchVar, Cases.get(i)); });
    tell(here, choice, "case");
    return here.returning(choice > 0 ? Results.get(choice) : Default);
}

} // namespace

double IfElse(double Default, const Conditions<double>& Choices) { return if_else("IfElse", Default, Choices); }
const std::string& IfElseT(const std::string& DefaultText, const Conditions<std::string>& Choices) {
    return if_else("IfElseT", DefaultText, Choices);
}
double IfElseR(double Default, View<bool> Conds, View<double> Results) {
    return if_else("IfElseR", Default, Conds, Results);
}
const std::string& IfElseRT(const std::string& DefaultTxt, View<bool> Conds, View<std::string> ResultsText) {
    return if_else("IfElseRT", DefaultTxt, Conds, ResultsText);
}

double Switch(const anyvalue& SwitchVar, double Default, const Cases<double>& Choices) {
    return switch_case("Switch", SwitchVar, Default, Choices);
}
const std::string& SwitchT(const anyvalue& SwitchVar, const std::string& DefaultText,
                           const Cases<std::string>& Choices) {
    return switch_case("SwitchT", SwitchVar, DefaultText, Choices);
}
double SwitchR(const anyvalue& SwitchVar, double Default, View<anyvalue> Cases, View<double> Results) {
    return switch_case("SwitchR", SwitchVar, Default, Cases, Results);
}
const std::string& SwitchRT(const anyvalue& SwitchVar, const std::string& DefaultTxt, View<anyvalue> Cases,
                            View<std::string> ResultsText) {
    return switch_case("SwitchRT", SwitchVar, DefaultTxt, Cases, ResultsText);
}

bool case_matches(const anyvalue& SwitchVar, const anyvalue& Case) {
    if (traced())
        trace().info(
            text_of("var type=", static_cast<int>(SwitchVar.kind()), ", case type=", static_cast<int>(Case.kind())));
    const auto say = [](const char* text) {
        if (traced()) trace().info(text);
    };
    const auto equals_amount = [](double number, const std::string& text) {
        const double parsed = parsenumber(text, 0.0);
        if (traced()) trace().info(text_of(" converted to a number ", parsed));
        return isequal(number, parsed);
    };
    if (SwitchVar.isnumber() && Case.istext()) return equals_amount(SwitchVar.number(), Case.text());
    if (SwitchVar.istext() && Case.isnumber()) return equals_amount(Case.number(), SwitchVar.text());
    say(SwitchVar.isnumber() && Case.isnumber() ? "both are numbers"
        : SwitchVar.istext() && Case.istext()   ? "both are text"
                                                : "default equality treatment");
    return SwitchVar == Case;
}

bool OptionPresent(int TheOption, int Options) {
    Routine here{"OptionPresent"};
    here.inputs(TheOption, Options);
    return here.returning(option_present(TheOption, Options));
}

const std::string& QXVer() {
    Routine here{"QXVer"};
    static const std::string text = version();
    return here.returning(text);
}

} // namespace qx
