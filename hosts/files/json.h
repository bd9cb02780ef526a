// Values as JSON: 1.5, true, "text", {"error":"#NUM!","reason":"..."}, {"empty":true}, {"uncalculated":true} or
// {"rows":1,"columns":2,"cells":[1,2]}. Always valid UTF-8.
#pragma once

#include "hosts/sheet/value.h"

#include <string>
#include <string_view>

namespace qx::files {

/// A value; dates as "2026-11-21" if asked, else as numbers.
std::string json_text(const sheet::Value& value, bool dates = false);
/// A string as a JSON string.
std::string json_string(std::string_view text);

} // namespace qx::files
