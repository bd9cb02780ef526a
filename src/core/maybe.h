// An argument of a routine that must distinguish omitted, blank and given.
#pragma once

#include "core/utilities.h"

#include <cstdint>
#include <string>

namespace qx {

/// What stood in an argument's place.
enum class State : std::uint8_t { missing, blank, given };

template <class T>
struct Maybe {
    T value{}; ///< the default unless given
    State state = State::missing;

    bool is_given() const { return state == State::given; }
    bool is_missing() const { return state == State::missing; }
    bool is_blank() const { return state == State::blank; }
};

template <class T>
std::string describe(const Maybe<T>& argument) {
    return argument.is_missing() ? "missing" : argument.is_blank() ? "blank" : describe(argument.value);
}

} // namespace qx
