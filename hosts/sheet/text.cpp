#include "hosts/sheet/text.h"

#include "hosts/sheet/calendar.h"
#include "hosts/sheet/formula.h"

#include <algorithm>
#include <charconv>
#include <clocale>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cwctype>
#include <tuple>
#if !defined(_WIN32)
#include <locale.h>
#endif

namespace qx::sheet {

namespace {

unsigned byte_at(std::string_view text, std::size_t i) {
    return i < text.size() ? static_cast<unsigned char>(text[i]) : 0u;
}

bool is_digit(char c) { return c >= '0' && c <= '9'; }

/// Bytes of the good UTF-8 character at a place; 0 if there is none.
std::size_t character_length(std::string_view text, std::size_t at) {
    const unsigned first = byte_at(text, at);
    if (first < 0x80) return 1;
    const std::size_t length = first >= 0xF0 ? 4 : first >= 0xE0 ? 3 : 2;
    if (first < 0xC2 || first > 0xF4 || at + length > text.size()) return 0;
    for (std::size_t i = 1; i < length; ++i)
        if ((byte_at(text, at + i) & 0xC0) != 0x80) return 0;
    const unsigned second = byte_at(text, at + 1);
    if ((first == 0xE0 && second < 0xA0) || (first == 0xED && second > 0x9F) || (first == 0xF0 && second < 0x90) ||
        (first == 0xF4 && second > 0x8F))
        return 0;
    return length;
}

std::size_t next_character(std::string_view text, std::size_t at) {
    return at + std::max<std::size_t>(1, character_length(text, at));
}

/// The character at a place as a number; a byte that is no part of good UTF-8 stands for itself, above all characters.
char32_t character_at(std::string_view text, std::size_t at, std::size_t& length) {
    const unsigned first = byte_at(text, at);
    length = character_length(text, at);
    if (length == 1) return first;
    if (length == 0) {
        length = 1;
        return 0x110000 + first;
    }
    char32_t character = first & (0x7Fu >> length);
    for (std::size_t i = 1; i < length; ++i) character = (character << 6) | (byte_at(text, at + i) & 0x3F);
    return character;
}

#if defined(_WIN32)
char32_t capital(char32_t c) { return c < 0x10000 ? std::towupper(static_cast<wint_t>(c)) : c; }
char32_t small_letter(char32_t c) { return c < 0x10000 ? std::towlower(static_cast<wint_t>(c)) : c; }
#else
/// The C library's tables of letters, whatever the user's language is.
locale_t letters() {
    static const locale_t locale = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
    return locale;
}
char32_t capital(char32_t c) {
    if (c < 0x80 || c > 0x10FFFF || letters() == nullptr) return c >= 'a' && c <= 'z' ? c - 0x20 : c;
    return towupper_l(static_cast<wint_t>(c), letters());
}
char32_t small_letter(char32_t c) {
    if (c < 0x80 || c > 0x10FFFF || letters() == nullptr) return c >= 'A' && c <= 'Z' ? c + 0x20 : c;
    return towlower_l(static_cast<wint_t>(c), letters());
}
#endif

void append_character(std::string& text, char32_t c) {
    const auto tail = [&](int shift) { text += static_cast<char>(0x80 | ((c >> shift) & 0x3F)); };
    if (c < 0x80) {
        text += static_cast<char>(c);
    } else if (c < 0x800) {
        text += static_cast<char>(0xC0 | (c >> 6));
        tail(0);
    } else if (c < 0x10000) {
        text += static_cast<char>(0xE0 | (c >> 12));
        tail(6);
        tail(0);
    } else if (c < 0x110000) {
        text += static_cast<char>(0xF0 | (c >> 18));
        tail(12);
        tail(6);
        tail(0);
    } else {
        text += static_cast<char>(c - 0x110000);
    }
}

template <class Change>
std::string changed(std::string_view text, Change change) {
    std::string result;
    result.reserve(text.size());
    for (std::size_t at = 0, length = 0; at < text.size(); at += length)
        append_character(result, change(character_at(text, at, length)));
    return result;
}

/// The character at a place as it compares, capitals and small letters alike; `at` goes on behind it.
char32_t folded(std::string_view text, std::size_t& at) {
    const auto first = static_cast<unsigned char>(text[at]);
    if (first < 0x80) {
        ++at;
        return first >= 'a' && first <= 'z' ? first - 0x20u : first;
    }
    std::size_t length = 0;
    const char32_t character = character_at(text, at, length);
    at += length;
    return capital(character);
}

} // namespace

std::size_t character_count(std::string_view text) {
    std::size_t count = 0;
    for (std::size_t at = 0; at < text.size(); at = next_character(text, at)) ++count;
    return count;
}

std::size_t character_offset(std::string_view text, std::size_t character) {
    std::size_t at = 0;
    for (; character > 0 && at < text.size(); --character) at = next_character(text, at);
    return at;
}

std::string valid_utf8(std::string_view text) {
    std::string valid;
    valid.reserve(text.size());
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t length = character_length(text, at);
        valid += length == 0 ? std::string_view("\xEF\xBF\xBD") : text.substr(at, length);
        at += std::max<std::size_t>(1, length);
    }
    return valid;
}

std::string upper_case(std::string_view text) { return changed(text, capital); }
std::string lower_case(std::string_view text) { return changed(text, small_letter); }

std::string proper_case(std::string_view text) {
    bool begins = true;
    return changed(text, [&](char32_t c) {
        const char32_t upper = capital(c), lower = small_letter(c);
        const char32_t result = begins ? upper : lower;
        begins = upper == lower && c != 0xDF; // no letter; the German sharp s has no capital
        return result;
    });
}

int compare_ignoring_case(std::string_view a, std::string_view b) {
    std::size_t i = 0, j = 0;
    while (i < a.size() && j < b.size()) {
        const char32_t left = folded(a, i), right = folded(b, j);
        if (left != right) return left < right ? -1 : 1;
    }
    return i < a.size() ? 1 : j < b.size() ? -1 : 0;
}

bool equal_ignoring_case(std::string_view a, std::string_view b) { return compare_ignoring_case(a, b) == 0; }

namespace {

/// Whether one character of a string fits the pattern at a place, which is not *. Both go on behind what they compare.
bool fits_character(std::string_view pattern, std::size_t& p, std::string_view text, std::size_t& t) {
    if (pattern[p] == '?') {
        ++p;
        t = next_character(text, t);
        return true;
    }
    if (pattern[p] == '~' && p + 1 < pattern.size()) ++p;
    return folded(pattern, p) == folded(text, t);
}

/// The first place, from one on, where a piece of a pattern without * fits; also where that ends.
std::size_t find_piece(std::string_view piece, std::string_view text, std::size_t from, std::size_t& end) {
    for (; from <= text.size(); from = from < text.size() ? next_character(text, from) : from + 1) {
        std::size_t p = 0;
        end = from;
        while (p < piece.size() && end < text.size() && fits_character(piece, p, text, end)) {
            if (p == piece.size()) return from;
        }
        if (piece.empty()) return from;
    }
    return std::string_view::npos;
}

/// The pattern up to its first *.
std::string_view first_piece(std::string_view pattern) {
    std::size_t end = 0;
    while (end < pattern.size() && pattern[end] != '*') end += pattern[end] == '~' ? 2 : 1;
    return pattern.substr(0, std::min(end, pattern.size()));
}

} // namespace

bool matches_wildcards(std::string_view pattern, std::string_view text) {
    std::size_t p = 0, t = 0;
    std::size_t star = std::string_view::npos, retry = 0; // the last * and where its match ends so far
    for (;;) {
        if (p < pattern.size() && pattern[p] == '*') {
            star = ++p;
            retry = t;
            continue;
        }
        if (t == text.size() && p == pattern.size()) return true;
        if (t < text.size() && p < pattern.size() && fits_character(pattern, p, text, t)) continue;
        if (star == std::string_view::npos || retry >= text.size()) return false;
        retry = next_character(text, retry);
        t = retry;
        p = star;
    }
}

std::size_t find_wildcards(std::string_view pattern, std::string_view text, std::size_t from) {
    // Where the piece before the first * fits first, the rest has the most room; so each piece is looked for once.
    std::size_t found = std::string_view::npos;
    for (bool first = true;; first = false) {
        const std::string_view piece = first_piece(pattern);
        std::size_t end = from;
        const std::size_t at = find_piece(piece, text, from, end);
        if (at == std::string_view::npos) return at;
        if (first) found = at;
        if (piece.size() == pattern.size()) return found;
        pattern.remove_prefix(piece.size() + 1);
        from = end;
    }
}

std::string_view trimmed(std::string_view text) {
    while (!text.empty() && (text.front() == ' ' || text.front() == '\t')) text.remove_prefix(1);
    while (!text.empty() && (text.back() == ' ' || text.back() == '\t')) text.remove_suffix(1);
    return text;
}

namespace {

/// h:mm or h:mm:ss as a fraction of a day.
std::optional<double> read_time(std::string_view text) {
    int parts[3] = {0, 0, 0};
    int count = 0;
    for (std::size_t at = 0;; ++at) {
        if (count == 3) return {};
        const std::size_t start = at;
        while (at < text.size() && is_digit(text[at]) && at - start < 4)
            parts[count] = 10 * parts[count] + (text[at++] - '0');
        if (at == start) return {};
        ++count;
        if (at == text.size()) break;
        if (text[at] != ':') return {};
    }
    if (count < 2 || parts[1] > 59 || parts[2] > 59) return {};
    return (parts[0] * 3600.0 + parts[1] * 60.0 + parts[2]) / 86400.0;
}

std::optional<double> read_plain_number(std::string_view text) {
    bool negative = false;
    if (text.size() > 2 && text.front() == '(' && text.back() == ')') {
        negative = true;
        text = trimmed(text.substr(1, text.size() - 2));
    }
    bool percent = false;
    const auto take_sign_or_currency = [&] {
        if (text.empty()) return false;
        if (text.front() == '-' || text.front() == '+') {
            if (text.front() == '-') negative = !negative;
            text.remove_prefix(1);
            return true;
        }
        for (const std::string_view sign : {"$", "\xC2\xA3", "\xE2\x82\xAC"}) // dollar, pound, euro
            if (text.starts_with(sign)) {
                text.remove_prefix(sign.size());
                return true;
            }
        return false;
    };
    if (take_sign_or_currency()) take_sign_or_currency();
    text = trimmed(text);
    if (!text.empty() && text.back() == '%') {
        percent = true;
        text = trimmed(text.substr(0, text.size() - 1));
    }
    char plain[400];
    std::size_t length = 0;
    std::size_t at = 0;
    bool has_digit = false;
    for (; at < text.size() && (is_digit(text[at]) || text[at] == ','); ++at) {
        if (text[at] == ',') { // a separator of thousands is before three digits
            if (at == 0 || at + 3 >= text.size() || !is_digit(text[at + 1]) || !is_digit(text[at + 2]) ||
                !is_digit(text[at + 3]) || (at + 4 < text.size() && is_digit(text[at + 4])))
                return {};
            continue;
        }
        has_digit = true;
        if (length < sizeof plain) plain[length++] = text[at];
    }
    for (; at < text.size(); ++at) {
        const char c = text[at];
        if (!(is_digit(c) || c == '.' || c == 'e' || c == 'E' || c == '+' || c == '-')) return {};
        has_digit = has_digit || is_digit(c);
        if (length < sizeof plain) plain[length++] = c;
    }
    if (!has_digit || length == sizeof plain || plain[0] == '-' || plain[0] == '+' || plain[0] == 'e' ||
        plain[0] == 'E')
        return {};
    double value = 0.0;
    const auto [end, problem] = std::from_chars(plain, plain + length, value);
    if (problem != std::errc{} || end != plain + length) return {};
    if (percent) value /= 100.0;
    return negative ? -value : value;
}

/// A whole number and a fraction, "1 1/2".
std::optional<double> read_fraction(std::string_view text) {
    const bool negative = text.front() == '-';
    if (negative) text.remove_prefix(1);
    const std::size_t blank = text.find(' '), bar = text.find('/');
    if (blank == std::string_view::npos || bar == std::string_view::npos || bar < blank) return {};
    const auto whole_number = [](std::string_view part) -> std::optional<double> {
        if (part.empty() || part.size() > 9 || !std::all_of(part.begin(), part.end(), is_digit)) return {};
        double number = 0.0;
        for (const char c : part) number = 10.0 * number + (c - '0');
        return number;
    };
    const auto whole = whole_number(text.substr(0, blank)),
               above = whole_number(trimmed(text.substr(blank, bar - blank))),
               below = whole_number(trimmed(text.substr(bar + 1)));
    if (!whole || !above || !below || *below == 0.0) return {};
    const double x = *whole + *above / *below;
    return negative ? -x : x;
}

} // namespace

std::optional<ReadNumber> read_number(std::string_view text) {
    text = trimmed(text);
    if (text.empty()) return {};
    const char first = text.front(); // most texts are words
    const bool word = static_cast<char>(first | 0x20) >= 'a' && static_cast<char>(first | 0x20) <= 'z';
    if (double serial = 0.0; word) {
        if (!parse_date(text, serial)) return {};
        return ReadNumber{serial, true};
    }
    if (const auto value = read_plain_number(text)) return ReadNumber{*value, false};
    double serial = 0.0;
    if (parse_date(text, serial)) return ReadNumber{serial, true};
    if (const auto value = read_fraction(text)) return ReadNumber{*value, false};
    const std::size_t blank = text.rfind(' ');
    if (blank != std::string_view::npos && parse_date(text.substr(0, blank), serial)) {
        if (const auto time = read_time(trimmed(text.substr(blank)))) return ReadNumber{serial + *time, true};
        return {};
    }
    if (const auto time = read_time(text)) return ReadNumber{*time, false};
    return {};
}

std::string shortest_text(double x) {
    char text[32];
    if (x == std::trunc(x) && std::fabs(x) < 1e15) // a whole number without an exponent
        return {text, std::to_chars(text, text + sizeof text, static_cast<long long>(x)).ptr};
    const auto end = std::to_chars(text, text + sizeof text, x).ptr;
    return {text, end};
}

std::string general_text(double x, int digits) {
    if (x == 0.0) return "0";
    // Digits and exponent of the number rounded to the wanted precision.
    const auto scientific = [x](int precision, std::string& figures) {
        char text[40];
        const auto end =
            std::to_chars(text, text + sizeof text, std::fabs(x), std::chars_format::scientific, precision - 1).ptr;
        const std::string_view all(text, static_cast<std::size_t>(end - text));
        const std::size_t e = all.find('e');
        figures.assign(1, all[0]);
        if (precision > 1) figures += all.substr(2, e - 2);
        int exponent = 0;
        const char* sign = text + e + 1;
        std::from_chars(*sign == '+' ? sign + 1 : sign, end, exponent);
        return exponent;
    };
    std::string figures;
    int exponent = scientific(digits, figures);
    if (exponent >= digits && exponent < 15) exponent = scientific(exponent + 1, figures);
    figures.erase(figures.find_last_not_of('0') + 1);
    const int count = static_cast<int>(figures.size());
    std::string text = x < 0 ? "-" : "";
    if (exponent >= 15 || (exponent < -4 && count - 1 - exponent > 9)) {
        text += figures.substr(0, 1);
        if (count > 1) text += "." + figures.substr(1);
        text += exponent < 0 ? "E-" : "E+";
        const int size = std::abs(exponent);
        if (size < 10) text += '0';
        return text + std::to_string(size);
    }
    if (exponent < 0) return text + "0." + std::string(static_cast<std::size_t>(-exponent - 1), '0') + figures;
    if (count <= exponent + 1) return text + figures + std::string(static_cast<std::size_t>(exponent + 1 - count), '0');
    return text + figures.substr(0, static_cast<std::size_t>(exponent) + 1) + "." +
           figures.substr(static_cast<std::size_t>(exponent) + 1);
}

std::string display_text(const Value& value, int digits) {
    switch (value.type()) {
    case Type::number:
        return general_text(value.number(), digits);
    case Type::boolean:
        return value.boolean() ? "TRUE" : "FALSE";
    case Type::error:
        return error_text(value.error());
    case Type::text:
        return std::string(value.text());
    case Type::uncalculated:
        return "(not calculated)";
    default:
        return {};
    }
}

// --- Formats ----------------------------------------------------------------------------------------------------

namespace {

struct Token {
    enum Kind : char { literal, digit, point, comma, percent, exponent, date, text_itself } kind;
    std::string text;
};

std::optional<std::vector<Token>> tokens_of(std::string_view format) {
    std::vector<Token> tokens;
    const auto literal = [&](std::string_view text) {
        if (!tokens.empty() && tokens.back().kind == Token::literal)
            tokens.back().text += text;
        else
            tokens.push_back({Token::literal, std::string(text)});
    };
    for (std::size_t at = 0; at < format.size(); ++at) {
        const char c = format[at];
        const char lower = static_cast<char>(c | 0x20);
        if (c == '"') {
            const std::size_t end = format.find('"', at + 1);
            if (end == std::string_view::npos) return {};
            literal(format.substr(at + 1, end - at - 1));
            at = end;
        } else if (c == '\\' || c == '!') {
            if (at + 1 < format.size()) literal(format.substr(++at, 1));
        } else if (c == '_') { // room for a character
            ++at;
            literal(" ");
        } else if (c == '*') { // fill: a string has no width
            ++at;
        } else if (c == '[') {
            const std::size_t end = format.find(']', at);
            if (end == std::string_view::npos) return {};
            // [h] is all the hours, not those of a day.
            const std::string unit = lower_case(format.substr(at + 1, end - at - 1));
            if (!unit.empty() && unit.find_first_not_of(unit[0]) == unit.npos &&
                (unit[0] == 'h' || unit[0] == 'm' || unit[0] == 's'))
                tokens.push_back({Token::date, upper_case(unit)});
            at = end; // colours and conditions do not show in a string
        } else if (c == '0' || c == '#' || c == '?') {
            tokens.push_back({Token::digit, std::string(1, c)});
        } else if (c == '.') {
            tokens.push_back({Token::point, "."});
        } else if (c == ',') {
            tokens.push_back({Token::comma, ","});
        } else if (c == '%') {
            tokens.push_back({Token::percent, "%"});
        } else if (c == '@') {
            tokens.push_back({Token::text_itself, "@"});
        } else if (lower == 'e' && at + 1 < format.size() && (format[at + 1] == '+' || format[at + 1] == '-')) {
            tokens.push_back({Token::exponent, std::string(format.substr(at, 2))});
            ++at;
        } else if (lower == 'y' || lower == 'm' || lower == 'd' || lower == 'h' || lower == 's') {
            std::size_t end = at;
            while (end < format.size() && static_cast<char>(format[end] | 0x20) == lower) ++end;
            tokens.push_back({Token::date, std::string(end - at, lower)});
            at = end - 1;
        } else if (equal_ignoring_case(format.substr(at, 5), "AM/PM")) {
            tokens.push_back({Token::date, "AM/PM"});
            at += 4;
        } else {
            literal(format.substr(at, 1));
        }
    }
    return tokens;
}

std::string padded(long long value, std::size_t width) {
    std::string text = std::to_string(value);
    return text.size() < width ? std::string(width - text.size(), '0') + text : text;
}

std::optional<std::string> date_in_format(double x, std::vector<Token>& tokens) {
    if (x < 0.0 || x >= last_serial + 1.0) return {};
    double days = std::floor(x);
    int seconds = static_cast<int>(std::floor((x - days) * 86400.0 + 0.5));
    if (seconds == 86400) {
        seconds = 0;
        if ((days += 1.0) > last_serial) return {};
    }
    const CivilDate date = civil_of(static_cast<int>(days));
    const char* const weekday = weekday_name(weekday_of(static_cast<int>(days)));
    // An m next to hours or seconds means minutes.
    bool halves = false;
    Token* minutes = nullptr;
    char before = ' ';
    for (Token& token : tokens) {
        if (token.kind != Token::date) continue;
        const char unit = token.text[0];
        if (unit == 'A') halves = true;
        if (unit == 's' && minutes != nullptr && before == 'm') minutes->text[0] = 'n';
        if (unit == 'm') {
            if (before == 'h') token.text[0] = 'n';
            minutes = &token;
        }
        if (unit != 'A') before = static_cast<char>(unit | 0x20); // [h], too, comes before minutes
    }
    std::string text;
    for (const Token& token : tokens) {
        const std::size_t width = token.text.size();
        if (token.kind != Token::date) {
            text += token.text;
            continue;
        }
        switch (token.text[0]) {
        case 'y':
            text += width <= 2 ? padded(date.year % 100, 2) : padded(date.year, 4);
            break;
        case 'm':
            if (width <= 2)
                text += padded(date.month, width);
            else
                text += width == 4 ? std::string(month_name(date.month))
                                   : std::string(month_name(date.month), width == 5 ? 1 : 3);
            break;
        case 'd':
            if (width <= 2)
                text += padded(date.day, width);
            else
                text += width == 3 ? std::string(weekday, 3) : std::string(weekday);
            break;
        case 'h': {
            const int hour = seconds / 3600;
            text += padded(halves ? (hour + 11) % 12 + 1 : hour, std::min<std::size_t>(width, 2));
            break;
        }
        case 'n':
            text += padded(seconds / 60 % 60, std::min<std::size_t>(width, 2));
            break;
        case 's':
            text += padded(seconds % 60, std::min<std::size_t>(width, 2));
            break;
        case 'A':
            text += seconds < 43200 ? "AM" : "PM";
            break;
        case 'H': // elapsed: days, too, in this unit
            text += padded(static_cast<long long>(days) * 24 + seconds / 3600, width);
            break;
        case 'M':
            text += padded(static_cast<long long>(days) * 1440 + seconds / 60, width);
            break;
        case 'S':
            text += padded(static_cast<long long>(days) * 86400 + seconds, width);
            break;
        }
    }
    return text;
}

/// |x| with a number of decimals, halves away from zero as the decimal number reads.
std::string decimal_digits(double x, int decimals) {
    char text[400];
    const auto [end, problem] =
        std::to_chars(text, text + sizeof text, rounded(std::fabs(x), decimals), std::chars_format::fixed, decimals);
    return problem == std::errc{} ? std::string(text, end) : std::string("0");
}

/// What a format of numbers asks for: places before and after the point, in the exponent, and so on.
struct NumberShape {
    int whole_places = 0, least_whole = 0, decimals = 0, least_decimals = 0, exponent_places = 0;
    bool has_point = false, has_exponent = false, thousands = false, has_places = false;
    double scale = 1.0;

    explicit NumberShape(const std::vector<Token>& tokens) {
        int commas = 0; // since the last digit: each divides by a thousand
        for (const Token& token : tokens) {
            switch (token.kind) {
            case Token::percent:
                scale *= 100.0;
                break;
            case Token::point:
                has_point = has_point || !has_exponent;
                break;
            case Token::exponent:
                has_exponent = true;
                break;
            case Token::comma:
                ++commas;
                break;
            case Token::digit:
                has_places = true;
                thousands = thousands || (commas > 0 && !has_point && whole_places > 0);
                commas = 0;
                if (has_exponent) {
                    ++exponent_places;
                } else if (has_point) {
                    ++decimals;
                    if (token.text == "0") least_decimals = decimals;
                } else {
                    ++whole_places;
                    if (token.text == "0" || least_whole > 0) ++least_whole;
                }
                break;
            default:
                break;
            }
        }
        for (; commas > 0; --commas) scale /= 1000.0;
    }
};

/// The power of ten that stands for a number in a format with an exponent: a multiple of the places before the point.
int exponent_of(double x, const NumberShape& shape) {
    if (x == 0.0) return 0;
    const int step = std::max(1, shape.whole_places);
    int exponent = static_cast<int>(std::floor(std::log10(std::fabs(x))));
    const auto multiple = [&] { return static_cast<int>(std::floor(static_cast<double>(exponent) / step)) * step; };
    // What rounds up to the next power of ten takes that.
    const int decimals = shape.decimals + (exponent - multiple());
    if (rounded(std::fabs(x) / std::pow(10.0, exponent), std::max(0, decimals)) >= 10.0) ++exponent;
    return multiple();
}

std::optional<std::string> number_in_format(double x, const std::vector<Token>& tokens) {
    const NumberShape shape(tokens);
    if (shape.decimals > 300 || shape.whole_places > 300) return {};
    x = std::fabs(x * shape.scale);
    int exponent = 0;
    if (shape.has_exponent) {
        exponent = exponent_of(x, shape);
        x /= std::pow(10.0, exponent);
    }
    std::string figures = decimal_digits(x, shape.decimals), fraction;
    if (const std::size_t point = figures.find('.'); point != std::string::npos) {
        fraction = figures.substr(point + 1);
        figures.resize(point);
    }
    while (static_cast<int>(fraction.size()) > shape.least_decimals && fraction.back() == '0') fraction.pop_back();
    if (figures == "0") figures.clear();
    const auto pad = [](std::string& digits, int width) {
        if (static_cast<int>(digits.size()) < width)
            digits.insert(0, static_cast<std::size_t>(width) - digits.size(), '0');
    };
    pad(figures, shape.least_whole);
    std::string power = shape.has_exponent ? std::to_string(std::abs(exponent)) : "";
    pad(power, shape.exponent_places);

    // Digits take their places from the point to the left; what is left over goes to the first of them.
    std::string text;
    int place = shape.whole_places; // of the next digit before the point, from 1 at the point
    std::size_t decimal = 0;
    bool after_point = false, after_exponent = false;
    const auto put_whole = [&](int from, int to) { // the digits at these places, counted from the point
        for (int i = from; i >= to; --i) {
            if (i > static_cast<int>(figures.size())) continue;
            text += figures[figures.size() - static_cast<std::size_t>(i)];
            if (shape.thousands && i > 1 && i % 3 == 1) text += ',';
        }
    };
    for (const Token& token : tokens) {
        switch (token.kind) {
        case Token::digit:
            if (after_exponent) {
                if (!power.empty()) text += std::exchange(power, {});
            } else if (after_point) {
                if (decimal < fraction.size())
                    text += fraction[decimal];
                else if (token.text == "?")
                    text += ' ';
                ++decimal;
            } else {
                if (token.text == "?" && place > static_cast<int>(figures.size())) text += ' ';
                put_whole(place == shape.whole_places ? static_cast<int>(figures.size()) : place, place);
                --place;
            }
            break;
        case Token::point:
            if (after_exponent) break;
            if (shape.whole_places == 0 && !after_point) put_whole(static_cast<int>(figures.size()), 1);
            if (!after_point) text += '.';
            after_point = true;
            break;
        case Token::exponent:
            after_exponent = true;
            text += token.text[0];
            if (exponent < 0 || token.text[1] == '+') text += exponent < 0 ? '-' : '+';
            break;
        case Token::literal:
        case Token::percent:
            text += token.text;
            break;
        default:
            break;
        }
    }
    return text;
}

/// The fraction nearest to a number from 0 to 1 with a denominator up to so many, of equally near ones the simplest.
std::pair<int, int> nearest_fraction(double x, int most) {
    std::pair<int, int> best{0, 1};
    double distance = 2.0;
    for (int under = 1; under <= most; ++under) {
        const int over = static_cast<int>(std::floor(x * under + 0.5));
        const double away = std::fabs(x - static_cast<double>(over) / under);
        if (away >= distance) continue;
        best = {over, under};
        distance = away;
        if (away < 1e-15) break;
    }
    return best;
}

/// A number in a format such as "# ?/?" or "# ??/16"; nothing if the format holds no fraction.
std::optional<std::string> fraction_in_format(double x, const std::vector<Token>& tokens) {
    const auto is_digit_token = [&](std::size_t i) { return i < tokens.size() && tokens[i].kind == Token::digit; };
    std::size_t slash = 1;
    while (slash < tokens.size() &&
           !(tokens[slash].kind == Token::literal && tokens[slash].text.starts_with('/') && is_digit_token(slash - 1)))
        ++slash;
    if (slash >= tokens.size()) return {};
    std::string below = tokens[slash].text.substr(1); // figures of a given denominator, or places for one
    std::size_t after = slash + 1;
    for (; is_digit_token(after); ++after) below += tokens[after].text;
    const bool given = below.find_first_of("123456789") != below.npos;
    const std::size_t figures = std::min(below.find_first_not_of("0123456789?#"), below.size());
    if (figures == 0 || figures > 4) return {};
    const std::string rest = below.substr(figures);
    below.resize(figures);
    std::size_t top = slash;
    while (top > 0 && is_digit_token(top - 1)) --top;
    const bool has_whole = std::any_of(tokens.begin(), tokens.begin() + static_cast<std::ptrdiff_t>(top),
                                       [](const Token& token) { return token.kind == Token::digit; });
    x = std::fabs(x);
    double whole = has_whole ? std::floor(x) : 0.0;
    if (!(x < 1e9)) return general_text(x);
    const int most = static_cast<int>(std::pow(10.0, static_cast<double>(figures))) - 1;
    const double part = x - whole;
    long long over = 0;
    int under = 1;
    if (given) {
        under = std::max(1, std::atoi(below.c_str()));
        over = static_cast<long long>(std::floor(part * under + 0.5));
    } else {
        const double units = std::floor(part); // more than 0 only where the format shows no whole number
        std::tie(over, under) = nearest_fraction(part - units, most);
        over += static_cast<long long>(units) * under;
    }
    if (has_whole && over == under) {
        whole += 1.0;
        over = 0;
    }
    const std::vector<Token> before(tokens.begin(), tokens.begin() + static_cast<std::ptrdiff_t>(top));
    std::string text = has_whole ? number_in_format(whole, before).value_or("") : std::string();
    if (!has_whole)
        for (const Token& token : before) text += token.text;
    std::string above = std::to_string(over), denominator = std::to_string(under);
    const std::size_t width = slash - top;
    if (above.size() < width && tokens[top].text != "#")
        above.insert(0, width - above.size(), tokens[top].text == "0" ? '0' : ' ');
    if (denominator.size() < figures && below[0] != '#') denominator.append(figures - denominator.size(), ' ');
    if (has_whole && over == 0)
        text += std::string(above.size() + 1 + denominator.size(), ' ');
    else
        text += above + "/" + denominator;
    text += rest;
    for (std::size_t i = after; i < tokens.size(); ++i) text += tokens[i].text;
    return text;
}

/// A section of a format, with its condition if it has one.
struct Section {
    std::string_view format;
    Code sign = Code::constant; ///< of the comparison; constant for none
    double limit = 0.0;

    bool holds(double x) const {
        switch (sign) {
        case Code::less:
            return x < limit;
        case Code::at_most:
            return x <= limit;
        case Code::greater:
            return x > limit;
        case Code::at_least:
            return x >= limit;
        case Code::equal:
            return x == limit;
        default:
            return x != limit;
        }
    }
    /// Only numbers below zero get here, so that their sign need not be shown.
    bool only_negative() const {
        return (sign == Code::less && limit <= 0.0) || (sign == Code::at_most && limit < 0.0);
    }
};

constexpr std::pair<std::string_view, Code> comparison_signs[] = {{"<=", Code::at_most}, {">=", Code::at_least},
                                                                  {"<>", Code::unequal}, {"=", Code::equal},
                                                                  {"<", Code::less},     {">", Code::greater}};

/// Reads "[<10]" at the start of a section.
void read_condition(Section& section) {
    const std::string_view format = section.format;
    const std::size_t end = format.find(']');
    if (!format.starts_with('[') || end == std::string_view::npos) return;
    std::string_view inside = format.substr(1, end - 1);
    for (const auto& [sign, code] : comparison_signs) {
        if (!inside.starts_with(sign)) continue;
        inside.remove_prefix(sign.size());
        const auto [after, problem] = std::from_chars(inside.data(), inside.data() + inside.size(), section.limit);
        if (problem == std::errc{} && after == inside.data() + inside.size()) {
            section.sign = code;
            section.format.remove_prefix(end + 1);
        }
        return;
    }
}

std::vector<Section> sections_of(std::string_view format) {
    std::vector<Section> sections{{format}};
    bool quoted = false;
    std::size_t start = 0;
    for (std::size_t at = 0; at < format.size(); ++at) {
        if (format[at] == '"') quoted = !quoted;
        if (format[at] == '\\' && !quoted) ++at;
        if (at >= format.size() || quoted || format[at] != ';') continue;
        sections.back().format = format.substr(start, at - start);
        start = at + 1;
        sections.push_back({format.substr(start)});
    }
    for (Section& section : sections) read_condition(section);
    return sections;
}

/// The section for a number: by the conditions, else by its sign.
std::size_t section_for(double x, const std::vector<Section>& sections) {
    const std::size_t count = std::min<std::size_t>(sections.size(), 3);
    if (sections[0].sign == Code::constant && (count < 2 || sections[1].sign == Code::constant))
        return count >= 2 && x < 0.0 ? 1 : count >= 3 && x == 0.0 ? 2 : 0;
    for (std::size_t i = 0; i < count; ++i)
        if (sections[i].sign == Code::constant ? i + 1 == count || (i == 0 && x > 0.0) : sections[i].holds(x)) return i;
    return count;
}

bool has_kind(const std::vector<Token>& tokens, Token::Kind kind) {
    return std::any_of(tokens.begin(), tokens.end(), [&](const Token& token) { return token.kind == kind; });
}

/// The tokens with @ replaced by a string.
std::string filled_in(const std::vector<Token>& tokens, std::string_view itself) {
    std::string text;
    for (const Token& token : tokens) text += token.kind == Token::text_itself ? itself : std::string_view(token.text);
    return text;
}

} // namespace

double rounded(double x, int places) {
    const double scale = std::pow(10.0, std::abs(places));
    const double scaled = places >= 0 ? std::fabs(x) * scale : std::fabs(x) / scale;
    if (!(scaled < 4503599627370496.0) || scale > 1e300) return places >= 0 ? x : 0.0;
    // A number that reads as a half in fifteen digits is one, whatever its last bits say.
    const double whole = std::floor(scaled + 0.5 + std::min(scaled * 4.5e-16, 0.01));
    return std::copysign(places >= 0 ? whole / scale : whole * scale, x);
}

std::optional<std::string> formatted_text(double x, std::string_view format) {
    if (format.empty()) return std::string();
    if (equal_ignoring_case(format, "General")) return general_text(x);
    const std::vector<Section> sections = sections_of(format);
    const std::size_t which = section_for(x, sections);
    if (which >= sections.size()) return general_text(x);
    const bool conditional = sections[which].sign != Code::constant || sections[0].sign != Code::constant;
    const bool signed_already = conditional ? sections[which].only_negative() : which > 0;
    const std::string minus = x < 0.0 && !signed_already ? "-" : "";
    if (equal_ignoring_case(sections[which].format, "General")) return minus + general_text(std::fabs(x));
    auto tokens = tokens_of(sections[which].format);
    if (!tokens) return {};
    if (has_kind(*tokens, Token::text_itself)) return filled_in(*tokens, general_text(x));
    if (has_kind(*tokens, Token::date)) return date_in_format(x, *tokens);
    auto text = fraction_in_format(x, *tokens);
    if (!text) text = number_in_format(x, *tokens);
    const bool shows = text && (text->find_first_of("123456789") != std::string::npos);
    return shows ? minus + *text : text;
}

std::string formatted_text(std::string_view text, std::string_view format) {
    const std::vector<Section> sections = sections_of(format);
    const std::size_t which = sections.size() >= 4 ? 3 : sections.size() - 1;
    const auto tokens = tokens_of(sections[which].format);
    return tokens && (sections.size() >= 4 || has_kind(*tokens, Token::text_itself)) ? filled_in(*tokens, text)
                                                                                     : std::string(text);
}

} // namespace qx::sheet
