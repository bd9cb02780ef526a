#include "core/parse_number.h"

#include "core/trace.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <string_view>

namespace qx {

namespace {

// The pound sign and the euro sign in the Windows code page, and as UTF-8.
constexpr std::string_view currency_signs[] = {"\xC2\xA3", "\xE2\x82\xAC", "\xA3", "$", "\x80", ","};
constexpr std::string_view amount_characters = " -+0123456789\xA3$\x80,().";
constexpr std::size_t longest_text = 255;
constexpr int most_removals = 100;

void remove(std::string& text, std::string_view piece) {
    std::size_t at = 0;
    for (int i = 0; i < most_removals && (at = text.find(piece, at)) != std::string::npos; ++i)
        text.erase(at, piece.size());
}

/// Reduces a string to the digits of its number. Returns false if it has none.
bool reduce(std::string& text, bool& negative) {
    if (text.size() > longest_text) text.resize(longest_text);
    for (const std::string_view sign : currency_signs) remove(text, sign);
    const std::size_t start = text.find_first_of(amount_characters);
    if (start == std::string::npos) return false;
    const std::size_t end = text.find_first_not_of(amount_characters, start);
    text = text.substr(start, end == std::string::npos ? end : end - start);
    std::erase_if(text, [](char c) { return c == '(' || c == ')' || c == ' '; });
    if (const std::size_t minus = text.find('-'); minus != std::string::npos) {
        text.erase(minus, 1);
        negative = true;
    }
    if (traced()) trace().argument("Reduced Text", text, "We are going to try to parse this to get a numeric value");
    return true;
}

template <class Number>
Number parse(std::string text, Number otherwise, Number largest) {
    bool negative = false;
    if (!reduce(text, negative)) return otherwise;
    std::string_view digits = text;
    if (digits.starts_with('+') && !digits.starts_with("+-")) digits.remove_prefix(1);
    Number number{};
    const std::errc failure = std::from_chars(digits.data(), digits.data() + digits.size(), number).ec;
    if (failure == std::errc::invalid_argument) return otherwise;
    if (failure == std::errc::result_out_of_range) number = digits.front() == '-' ? -largest : largest;
    return negative ? -number : number;
}

} // namespace

double parsenumber(const std::string& text, double otherwise) { return parse(text, otherwise, 1.7976931348623157e308); }
int parseint(const std::string& text, int otherwise) { return parse(text, otherwise, INT32_MAX); }

} // namespace qx
