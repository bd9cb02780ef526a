// Strings as regular expressions read them: in wide characters, one for each letter.
//
// A string is UTF-8, or in the code page of a spreadsheet, where each byte is a letter. Strings that are matched with
// one another have to be read in the same way: as UTF-8 if all of them are.
#pragma once

#include <locale>
#include <string>
#include <string_view>

namespace qx {

/// True if a string is UTF-8 and a wide character has room for each of its letters.
bool is_utf8(std::string_view text);
/// The letters of a string that is_utf8, or its bytes.
std::wstring letters_of(std::string_view text, bool utf8);
/// What letters_of came from. Throws std::runtime_error for a number that is no letter.
std::string text_of(const std::wstring& letters, bool utf8);

/// The letters of all languages, small and capital, where the platform has a table of them; else those of English.
const std::locale& all_letters();

} // namespace qx
