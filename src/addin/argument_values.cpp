#include "addin/argument_values.h"

#include "addin/function.h"
#include "core/routine.h"

#include <string_view>

namespace qx {

namespace {

/// The values of the argument of a name in whatever function has it as a switch; none if there is none.
SwitchTable values_of(std::string_view name) {
    for (const Registered* each = all_functions(); each != nullptr; each = each->next)
        for (int i = 0; i < each->function.arity(); ++i) {
            const Argument& argument = each->function.args[i];
            if (argument.values.count > 0 && same_letters(argument.name, name)) return argument.values;
        }
    return {};
}

} // namespace

WorkList<std::string> ArgValues(const std::string& ArgName) {
    Routine here{"ArgValues"};
    here.inputs(ArgName);
    const SwitchTable values = values_of(ArgName);
    if (values.count == 0)
        here.fail<errliblookupfailed>("ArgName", "There is no argument with set values of the name ", ArgName);
    WorkList<std::string> texts;
    for (const SwitchValue& value : values)
        if (value.name != nullptr) texts->append(text_of(value.code, ":", value.name));
    here.returning();
    return texts;
}

} // namespace qx
