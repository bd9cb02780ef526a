#include "lists/letters.h"

#include <boost/regex/pending/unicode_iterator.hpp>

#include <algorithm>
#include <cwchar>
#include <iterator>
#include <stdexcept>

namespace qx {

bool is_utf8(std::string_view text) {
    using Reader = boost::u8_to_u32_iterator<const char*>;
    const char *const first = text.data(), *const last = first + text.size();
    try {
        for (Reader at(first, first, last), end(last, first, last); at != end; ++at)
            if (*at > static_cast<char32_t>(WCHAR_MAX)) return false;
        return true;
    } catch (const std::out_of_range&) {
        return false;
    }
}

std::wstring letters_of(std::string_view text, bool utf8) {
    std::wstring letters;
    if (utf8)
        letters.assign(boost::u8_to_u32_iterator(text.data()), boost::u8_to_u32_iterator(text.data() + text.size()));
    else
        for (const char byte : text) letters += static_cast<unsigned char>(byte);
    return letters;
}

std::string text_of(const std::wstring& letters, bool utf8) {
    if (!utf8) return std::string(letters.begin(), letters.end());
    try {
        std::string text;
        std::copy(letters.begin(), letters.end(), boost::utf8_output_iterator(std::back_inserter(text)));
        return text;
    } catch (const std::out_of_range&) {
        throw std::runtime_error("The replacement holds a number that is no letter");
    }
}

const std::locale& all_letters() {
    static const std::locale letters = [] {
        try {
            return std::locale("C.UTF-8");
        } catch (const std::runtime_error&) {
            return std::locale::classic();
        }
    }();
    return letters;
}

} // namespace qx
