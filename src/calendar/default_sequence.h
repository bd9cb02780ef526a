// What an annual sequence is where its preset has no dates of its own: when it is omitted, or a preset such as 14.
#pragma once

#include <cstdint>

namespace qx {

enum class DefaultSequence : std::uint8_t {
    in_advance,      ///< calendar quarters in advance: the general default
    in_arrears,      ///< calendar quarters in arrears: of loans and the time value of money
    none,            ///< no dates: a list that may be missing
    none_if_omitted, ///< no dates if omitted, otherwise the general default
};

} // namespace qx
