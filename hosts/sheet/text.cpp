#include "hosts/sheet/text.h"

#include "hosts/sheet/calendar.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdio>

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

/// The text with the case of its letters changed: `first` and `last` bound the ASCII letters to change.
std::string change_case(std::string_view text, char first, char last) {
    std::string changed(text);
    const unsigned latin_first = first == 'a' ? 0xA0 : 0x80;
    for (std::size_t i = 0; i < changed.size(); ++i) {
        const unsigned c = byte_at(changed, i);
        const bool ascii = changed[i] >= first && changed[i] <= last;
        const bool latin = i > 0 && byte_at(changed, i - 1) == 0xC3 && c >= latin_first && c <= latin_first + 0x1E &&
                           c != latin_first + 0x17;
        if (ascii || latin) changed[i] = static_cast<char>(changed[i] ^ 0x20);
    }
    return changed;
}

unsigned folded(std::string_view text, std::size_t i) {
    const unsigned c = byte_at(text, i);
    if (c >= 'a' && c <= 'z') return c ^ 0x20;
    return i > 0 && byte_at(text, i - 1) == 0xC3 && c >= 0xA0 && c <= 0xBE && c != 0xB7 ? c ^ 0x20 : c;
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

std::string upper_case(std::string_view text) { return change_case(text, 'a', 'z'); }
std::string lower_case(std::string_view text) { return change_case(text, 'A', 'Z'); }

int compare_ignoring_case(std::string_view a, std::string_view b) {
    const std::size_t shared = std::min(a.size(), b.size());
    for (std::size_t i = 0; i < shared; ++i) {
        const unsigned left = folded(a, i), right = folded(b, i);
        if (left != right) return left < right ? -1 : 1;
    }
    return a.size() == b.size() ? 0 : a.size() < b.size() ? -1 : 1;
}

bool equal_ignoring_case(std::string_view a, std::string_view b) {
    return a.size() == b.size() && compare_ignoring_case(a, b) == 0;
}

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
        const bool escaped = p + 1 < pattern.size() && pattern[p] == '~';
        if (t < text.size() && p < pattern.size()) {
            if (!escaped && pattern[p] == '?') {
                ++p;
                t = next_character(text, t);
                continue;
            }
            if (folded(pattern, p + escaped) == folded(text, t)) {
                p += 1u + escaped;
                ++t;
                continue;
            }
        }
        if (star == std::string_view::npos || retry >= text.size()) return false;
        retry = next_character(text, retry);
        t = retry;
        p = star;
    }
}

namespace {

std::string_view trimmed(std::string_view text) {
    while (!text.empty() && (text.front() == ' ' || text.front() == '\t')) text.remove_prefix(1);
    while (!text.empty() && (text.back() == ' ' || text.back() == '\t')) text.remove_suffix(1);
    return text;
}

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
        if (text[at] == ',') { // a separator of thousands stands before three digits
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

} // namespace

std::optional<ReadNumber> read_number(std::string_view text) {
    text = trimmed(text);
    if (text.empty()) return {};
    if (const auto value = read_plain_number(text)) return ReadNumber{*value, false};
    double serial = 0.0;
    if (parse_date(text, serial)) return ReadNumber{serial, true};
    const std::size_t blank = text.find(' ');
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
    enum Kind : char { literal, digit, point, comma, percent, exponent, date } kind;
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
        } else if (c == '*') { // fill: a text has no width
            ++at;
        } else if (c == '[') {
            const std::size_t end = format.find(']', at);
            if (end == std::string_view::npos) return {};
            at = end; // colours and conditions do not show in a text
        } else if (c == '0' || c == '#' || c == '?') {
            tokens.push_back({Token::digit, std::string(1, c)});
        } else if (c == '.') {
            tokens.push_back({Token::point, "."});
        } else if (c == ',') {
            tokens.push_back({Token::comma, ","});
        } else if (c == '%') {
            tokens.push_back({Token::percent, "%"});
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

std::string padded(int value, std::size_t width) {
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
        if (unit != 'A') before = unit;
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

std::optional<std::string> number_in_format(double x, const std::vector<Token>& tokens) {
    std::size_t first = tokens.size(), last = 0;
    int whole_places = 0, decimals = 0, least_decimals = 0, least_whole = 0, exponent_places = 0;
    bool after_point = false, after_exponent = false, thousands = false;
    std::string exponent_sign;
    int commas = 0; // since the last digit: each divides by a thousand
    for (std::size_t i = 0; i < tokens.size(); ++i) {
        const Token& token = tokens[i];
        if (token.kind == Token::percent) x *= 100.0;
        if (token.kind == Token::literal || token.kind == Token::percent) continue;
        first = std::min(first, i);
        last = i;
        if (token.kind == Token::point) {
            if (!after_exponent) after_point = true;
        } else if (token.kind == Token::exponent) {
            after_exponent = true;
            exponent_sign = token.text;
        } else if (token.kind == Token::comma) {
            ++commas;
        } else {
            if (commas > 0 && !after_point) thousands = true;
            commas = 0;
            if (after_exponent) {
                ++exponent_places;
            } else if (after_point) {
                ++decimals;
                if (token.text == "0") least_decimals = decimals;
            } else {
                ++whole_places;
                if (token.text == "0" || least_whole > 0) ++least_whole;
            }
        }
    }
    std::string text;
    if (first == tokens.size()) {
        for (const Token& token : tokens) text += token.text;
        return text;
    }
    if (decimals > 300 || whole_places > 300) return {};
    for (; commas > 0; --commas) x /= 1000.0;
    int exponent = 0;
    if (after_exponent && x != 0.0) {
        exponent = static_cast<int>(std::floor(std::log10(std::fabs(x))));
        x /= std::pow(10.0, exponent);
        if (rounded(std::fabs(x), decimals) >= 10.0) {
            x /= 10.0;
            ++exponent;
        }
    }
    std::string figures = decimal_digits(x, decimals);
    std::string fraction;
    if (const std::size_t point = figures.find('.'); point != std::string::npos) {
        fraction = figures.substr(point + 1);
        figures.resize(point);
    }
    while (static_cast<int>(fraction.size()) > least_decimals && fraction.back() == '0') fraction.pop_back();
    if (figures == "0") figures.clear();
    if (static_cast<int>(figures.size()) < least_whole)
        figures.insert(0, static_cast<std::size_t>(least_whole) - figures.size(), '0');
    if (thousands)
        for (std::size_t at = figures.size(); at > 3; at -= 3) figures.insert(at - 3, 1, ',');
    if (after_point) figures += "." + fraction;
    if (after_exponent) {
        figures += exponent_sign[0];
        if (exponent < 0 || exponent_sign[1] == '+') figures += exponent < 0 ? '-' : '+';
        figures += padded(std::abs(exponent), static_cast<std::size_t>(exponent_places));
    }
    for (std::size_t i = 0; i < tokens.size(); ++i) {
        if (i == first) text += figures;
        if (tokens[i].kind == Token::percent || (tokens[i].kind == Token::literal && (i < first || i > last)))
            text += tokens[i].text;
        else if (tokens[i].kind == Token::literal)
            return {}; // a literal among the digits
    }
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
    std::vector<std::string_view> sections{format};
    bool quoted = false;
    for (std::size_t at = 0; at < format.size(); ++at) {
        if (format[at] == '"') quoted = !quoted;
        if (format[at] == '\\') ++at;
        if (at >= format.size() || quoted || format[at] != ';') continue;
        const std::size_t start = static_cast<std::size_t>(sections.back().data() - format.data());
        sections.back() = format.substr(start, at - start);
        sections.push_back(format.substr(at + 1));
    }
    std::size_t section = 0;
    if (sections.size() >= 2 && x < 0.0)
        section = 1;
    else if (sections.size() >= 3 && x == 0.0)
        section = 2;
    auto tokens = tokens_of(sections[section]);
    if (!tokens) return {};
    if (std::any_of(tokens->begin(), tokens->end(), [](const Token& token) { return token.kind == Token::date; }))
        return date_in_format(x, *tokens);
    auto text = number_in_format(x, *tokens);
    if (text && x < 0.0 && section == 0 && text->find_first_of("123456789") != std::string::npos)
        text->insert(0, 1, '-');
    return text;
}

} // namespace qx::sheet
