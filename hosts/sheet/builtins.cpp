#include "hosts/sheet/builtins.h"

#include "hosts/sheet/text.h"

#include <string>
#include <unordered_map>

namespace qx::sheet {

Builtin::Builtin(const char* name, const char* kinds, const char* arguments, const char* help,
                 Value (*body)(const Arguments&), bool is_volatile)
    : name(name), arguments(arguments), help(help), body(body), is_volatile(is_volatile) {
    bool optional = false;
    int group = 0;
    for (const char* letter = kinds; *letter != '\0'; ++letter) {
        if (*letter == '|') {
            optional = true;
        } else if (*letter == '/') {
            group = letters_;
        } else if (*letter == '*') {
            repeated_ = group > 0 || kinds[0] == '/' ? letters_ - group : 1;
        } else {
            kinds_[letters_++] = *letter;
            if (!optional) ++least;
        }
    }
    most = repeated_ > 0 ? 255 : letters_;
}

namespace builtin {

std::span<const Builtin> logic_functions();
std::span<const Builtin> sums_functions();
std::span<const Builtin> numbers_functions();
std::span<const Builtin> money_functions();
std::span<const Builtin> lookups_functions();
std::span<const Builtin> dates_functions();
std::span<const Builtin> texts_functions();

} // namespace builtin

std::span<const BuiltinGroup> builtin_groups() {
    static const BuiltinGroup groups[] = {
        {"Logic and information", builtin::logic_functions()},
        {"Sums, counts and statistics", builtin::sums_functions()},
        {"Numbers", builtin::numbers_functions()},
        {"Money", builtin::money_functions()},
        {"Lookups and arrays", builtin::lookups_functions()},
        {"Dates and times", builtin::dates_functions()},
        {"Text", builtin::texts_functions()},
    };
    return groups;
}

const Builtin* find_builtin(std::string_view name) {
    static const auto by_name = [] {
        std::unordered_map<std::string_view, const Builtin*> names;
        for (const BuiltinGroup& group : builtin_groups())
            for (const Builtin& builtin : group.functions) names.emplace(builtin.name, &builtin);
        return names;
    }();
    const auto found = by_name.find(upper_case(name));
    return found == by_name.end() ? nullptr : found->second;
}

} // namespace qx::sheet
