#include "hosts/sheet/builtin_tools.h"

namespace qx::sheet::builtin {

namespace {

constexpr double most_characters = 1e6;

/// The characters from one, counted from 0, on.
std::string_view characters(std::string_view text, double from, double count) {
    const std::size_t start = character_offset(text, static_cast<std::size_t>(std::min(from, most_characters)));
    text.remove_prefix(start);
    return text.substr(0, character_offset(text, static_cast<std::size_t>(std::min(count, most_characters))));
}

Value find_text(A a, bool exact) {
    const double from = std::trunc(a.number(2, 1.0));
    const std::string_view wanted = a.text(0), text = a.text(1);
    if (!(from >= 1.0 && from <= static_cast<double>(text.size()) + 1.0)) return bad_value();
    const std::size_t start = character_offset(text, static_cast<std::size_t>(from) - 1);
    if (start == text.size() && static_cast<double>(character_count(text)) + 1.0 < from) return bad_value();
    const std::size_t found = exact ? text.find(wanted, start) : find_wildcards(wanted, text, start);
    if (found == std::string_view::npos) return Value::error(xlerrValue, "the text is not found");
    return number(static_cast<double>(character_count(text.substr(0, found))) + 1.0);
}

Value substitute(const Arguments& a) {
    const std::string_view text = a.text(0), old = a.text(1), fresh = a.text(2);
    const double which = std::trunc(a.number(3, 0.0));
    if (a.has(3) && which < 1.0) return bad_value();
    if (old.empty()) return a[0];
    std::string result;
    std::size_t at = 0;
    double occurrence = 0.0;
    for (std::size_t found; (found = text.find(old, at)) != std::string_view::npos;) {
        occurrence += 1.0;
        result += text.substr(at, found - at);
        result += !a.has(3) || occurrence == which ? fresh : old;
        at = found + old.size();
        if (result.size() > longest_text) return bad_value();
    }
    result += text.substr(at);
    return words(result);
}

Value replace(const Arguments& a) {
    const double from = std::trunc(a.number(1)), count = std::trunc(a.number(2));
    if (from < 1.0 || count < 0.0) return bad_value();
    const std::string_view text = a.text(0);
    const std::string_view head = characters(text, 0.0, from - 1.0);
    const std::string_view tail = text.substr(head.size() + characters(text.substr(head.size()), 0.0, count).size());
    return words(std::string(head) + std::string(a.text(3)) + std::string(tail));
}

Value trim(const Arguments& a) {
    std::string result;
    for (const char c : a.text(0))
        if (c != ' ' || (!result.empty() && result.back() != ' ')) result += c;
    if (!result.empty() && result.back() == ' ') result.pop_back();
    return words(result);
}

Value repeat(const Arguments& a) {
    const double times = std::trunc(a.number(1));
    if (times < 0.0 || times * static_cast<double>(a.text(0).size()) > static_cast<double>(longest_text))
        return bad_value();
    std::string text;
    if (!a.text(0).empty())
        for (int left = static_cast<int>(times); left > 0; --left) text += a.text(0);
    return Value::text(text);
}

Value character(const Arguments& a) {
    const double code = std::trunc(a.number(0));
    if (!(code >= 1.0 && code <= 255.0)) return bad_value();
    const auto c = static_cast<unsigned>(code);
    if (c < 0x80) return Value::text(std::string(1, static_cast<char>(c)));
    return Value::text(std::string{static_cast<char>(0xC0 | (c >> 6)), static_cast<char>(0x80 | (c & 0x3F))});
}

Value code(const Arguments& a) {
    const std::string_view text = a.text(0);
    if (text.empty()) return bad_value();
    const auto first = static_cast<unsigned char>(text[0]);
    if ((first == 0xC2 || first == 0xC3) && text.size() > 1)
        return number(((first & 3u) << 6) | (static_cast<unsigned char>(text[1]) & 0x3Fu));
    return number(first < 0x80 ? first : 63.0); // a character of no 8-bit code reads as a question mark
}

/// Texts joined, with delimiters in turn between them.
Value joined_text(A a, int from, const std::vector<std::string>& delimiters, bool skip_empty) {
    std::string text;
    Value error;
    std::size_t count = 0;
    for (int i = from; i < a.count && !error.is_error(); ++i) {
        const Table table(a.calculator, a[i]);
        for (std::uint64_t item = 0; item < table.used(); ++item) {
            const Value& value = table.at(item);
            if (value.is_error()) {
                error = value;
                break;
            }
            const Value piece = to_text(value);
            if (skip_empty && piece.text().empty()) continue;
            if (count > 0 && !delimiters.empty()) text += delimiters[(count - 1) % delimiters.size()];
            ++count;
            text += piece.text();
            if (text.size() > longest_text) return bad_value();
        }
    }
    return error.is_error() ? error : Value::text(text);
}

Value text_join(A a) {
    std::vector<std::string> delimiters;
    Value error;
    each_value(a, 0, [&](const Value& value, bool) {
        if (value.is_error())
            error = value;
        else
            delimiters.emplace_back(to_text(value).text());
        return !error.is_error();
    });
    return error.is_error() ? error : joined_text(a, 2, delimiters, a.truth(1));
}

Value text_in_format(const Arguments& a) {
    double x = 0.0;
    Value error;
    if (a[0].is(Type::boolean) || !to_number(a[0], x, error))
        return a[0].is_text() ? words(formatted_text(a[0].text(), a.text(1))) : to_text(a[0]);
    const auto text = formatted_text(x, a.text(1));
    return text ? Value::text(*text) : bad_value();
}

Value value_of(const Arguments& a) {
    if (a[0].is_number()) return a[0];
    double x = 0.0;
    Value error;
    return !a[0].is(Type::boolean) && to_number(a[0], x, error) ? number(x) : bad_value();
}

/// The text without control characters.
Value clean(A a) {
    std::string text;
    const std::string_view given = a.text(0);
    for (std::size_t at = 0; at < given.size();) {
        const std::size_t length = character_offset(given.substr(at), 1);
        const auto first = static_cast<unsigned char>(given[at]);
        const bool high_control = length == 2 && first == 0xC2 && static_cast<unsigned char>(given[at + 1]) < 0xA0;
        if (first >= 0x20 && first != 0x7F && !high_control) text += given.substr(at, length);
        at += length;
    }
    return words(text);
}

Value fixed(A a) {
    const double places = std::trunc(a.number(1, 2.0));
    if (!(places > -128.0 && places < 128.0)) return bad_value();
    const double x = rounded(a.number(0), static_cast<int>(places));
    const std::string format = (a.has(2) && a.truth(2) ? "0" : "#,##0") +
                               (places > 0.0 ? "." + std::string(static_cast<std::size_t>(places), '0') : "");
    const auto text = formatted_text(x, format);
    return text ? words(*text) : bad_value();
}

const Builtin texts[] = {
    {"LEN", "t", "text", "How many characters a string has",
     [](A a) { return number(static_cast<double>(character_count(a.text(0)))); }},
    {"LEFT", "t|n", "text, [count]", "The first characters of a string",
     [](A a) {
         const double count = std::trunc(a.count > 1 ? a.number(1) : 1.0);
         return count < 0.0 ? bad_value() : Value::text(characters(a.text(0), 0.0, count));
     }},
    {"RIGHT", "t|n", "text, [count]", "The last characters of a string",
     [](A a) {
         const double count = std::trunc(a.count > 1 ? a.number(1) : 1.0);
         const double length = static_cast<double>(character_count(a.text(0)));
         return count < 0.0 ? bad_value() : Value::text(characters(a.text(0), std::max(0.0, length - count), count));
     }},
    {"MID", "tnn", "text, start, count", "Characters from inside a string",
     [](A a) {
         const double from = std::trunc(a.number(1)), count = std::trunc(a.number(2));
         return from < 1.0 || count < 0.0 ? bad_value() : Value::text(characters(a.text(0), from - 1.0, count));
     }},
    {"UPPER", "t", "text", "The text in capital letters", [](A a) { return Value::text(upper_case(a.text(0))); }},
    {"LOWER", "t", "text", "The text in small letters", [](A a) { return Value::text(lower_case(a.text(0))); }},
    {"PROPER", "t", "text", "The text with a capital at the start of each word",
     [](A a) { return Value::text(proper_case(a.text(0))); }},
    {"TRIM", "t", "text", "The text without superfluous blanks", trim},
    {"CLEAN", "t", "text", "The text without control characters", clean},
    {"FIXED", "n|Nb", "number, [decimals], [no_commas]", "A number as text with a fixed number of decimals", fixed},
    {"FIND", "tt|n", "find, text, [start]", "Where a string is inside another; capitals matter",
     [](A a) { return find_text(a, true); }},
    {"SEARCH", "tt|n", "find, text, [start]",
     "Where a string, perhaps with * and ?, is inside another; capitals do not matter",
     [](A a) { return find_text(a, false); }},
    {"SUBSTITUTE", "ttt|n", "text, old, new, [which]", "The text with one string in it replaced by another",
     substitute},
    {"REPLACE", "tnnt", "text, start, count, new", "The text with some characters replaced", replace},
    {"CONCATENATE", "t*", "text, ...", "Texts joined", [](A a) { return joined_text(a, 0, {}, false); }},
    {"CONCAT", "r*", "text, ...", "Strings and ranges of strings joined",
     [](A a) { return joined_text(a, 0, {}, false); }},
    {"TEXTJOIN", "rbr*", "delimiter, skip_empty, text, ...", "Texts joined with a delimiter between them", text_join},
    {"TEXT", "vt", "value, format", "A number as text in a format such as \"#,##0.00\"", text_in_format},
    {"VALUE", "v", "text", "The number that text spells", value_of},
    {"CHAR", "n", "code", "The character of a code, 1 to 255", character},
    {"CODE", "t", "text", "The code of the first character", code},
    {"REPT", "tn", "text, times", "The text repeated", repeat},
    {"EXACT", "tt", "text, text", "TRUE if two strings are equal, capitals included",
     [](A a) { return truth(a.text(0) == a.text(1)); }},
};

} // namespace

std::span<const Builtin> texts_functions() { return texts; }

} // namespace qx::sheet::builtin
