// Faults of a worksheet function's declaration.
#include "addin/declare.h"

#define FORTY_NINE_LETTERS "abcdefghijklmnopqrstuvwxyzabcdefghijklmnopqrstuvw"
#define TWO_HUNDRED_AND_FORTY_FIVE_LETTERS                                                                             \
    FORTY_NINE_LETTERS FORTY_NINE_LETTERS FORTY_NINE_LETTERS FORTY_NINE_LETTERS FORTY_NINE_LETTERS

namespace qx {

double Half(double Value, double Divisor);
double Unknown(const char* Value);
double TwoOfOne(Range<floatblank>& First, Range<floatblank>& Second);

constexpr Function Sound{
    .name = "Half",
    .category = Category::Mathematical,
    .calls = core<qx::Half>,
    .help = "A value divided by another",
    .args = {{"Value", "The value"}, optional("Divisor", 2.0, "What it is divided by")},
    .examples = {"Half(4) = 2"},
};
/// The sound declaration with something in it changed.
template <class Change>
constexpr Function changed(Change change) {
    Function function = Sound;
    change(function);
    return function;
}

namespace worksheet {

constexpr Function Half = changed([](Function& half) {
    (void)half;
#if defined(NO_NAME) // expect: the function has no name
    half.name = "";
#elif defined(OTHER_NAME)              // expect: the name of Half
    half.name = "Halve";
#elif defined(NO_HELP)                 // expect: the function has no help
    half.help = nullptr;
#elif defined(LONG_HELP)               // expect: the function's help is longer than 255 characters
    half.help = TWO_HUNDRED_AND_FORTY_FIVE_LETTERS "0123456789.";
#elif defined(NO_EXAMPLE)              // expect: the function has no example
    half.examples[0] = nullptr;
#elif defined(ARGUMENT_TOO_MANY)       // expect: more arguments than the routine takes cells
    half.args[2] = {"Third", "One too many"};
#elif defined(ARGUMENT_TOO_FEW)        // expect: fewer arguments than the routine takes cells
    half.args[1] = {};
#elif defined(ARGUMENT_TWICE)          // expect: two arguments have the same name
    half.args[1].name = "Value";
#elif defined(ARGUMENT_WITHOUT_HELP)   // expect: an argument has no help
    half.args[0].help = "";
#elif defined(ARGUMENT_WITH_LONG_HELP) // expect: an argument's help is longer than 255 characters
    half.args[0].help = TWO_HUNDRED_AND_FORTY_FIVE_LETTERS "0123456789.";
#elif defined(PRESET_OF_A_TEXT)        // expect: an argument's preset is of another kind than the routine's parameter
    half.args[1] = optional("Divisor", "two", "What it is divided by");
#endif
});

#ifdef WRONG_COUNT // expect: the number of cells of Half
QX_EXPORT(Half, 3);
#else
QX_EXPORT(Half, 2);
#endif
#ifdef DECLARED_TWICE // expect: redefinition of
QX_EXPORT(Half, 2);
#endif
#ifdef NO_SUCH_PARAMETER // expect: a parameter of a type that no cell converts to
constexpr Calls of_pointer = core<Unknown>;
#endif
#ifdef TOO_FEW_SLOTS // expect: more parameters of one type than its pool has slots
constexpr Calls of_two = core<TwoOfOne>;
#endif

} // namespace worksheet
} // namespace qx
