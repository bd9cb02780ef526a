#include "hosts/files/formula_text.h"

#include "addin/registration.h"
#include "hosts/sheet/text.h"

#include <algorithm>
#include <array>
#include <set>
#include <vector>

namespace qx::files {

namespace {

enum class Piece {
    text,     ///< "..." or '...'
    word,     ///< a name, a number, a reference
    brackets, ///< [...]
    sign      ///< one character of anything else
};

struct Token {
    Piece piece;
    std::string_view bytes;
};

bool is_letter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c & 0x80) != 0; }
bool is_digit(char c) { return c >= '0' && c <= '9'; }
bool in_word(char c) { return is_letter(c) || is_digit(c) || c == '_' || c == '.' || c == '$' || c == '\\'; }

/// Takes a formula apart; the pieces in their order are the formula again.
class Scanner {
  public:
    explicit Scanner(std::string_view formula) : formula_(formula) {}

    bool next(Token& token) {
        if (at_ >= formula_.size()) return false;
        const std::size_t start = at_;
        const char c = formula_[at_];
        Piece piece = Piece::sign;
        if (c == '"' || c == '\'') {
            piece = Piece::text;
            for (++at_; at_ < formula_.size(); ++at_)
                if (formula_[at_] == c && (++at_ >= formula_.size() || formula_[at_] != c)) break;
        } else if (c == '[') {
            piece = Piece::brackets;
            int depth = 0;
            for (; at_ < formula_.size(); ++at_) {
                if (formula_[at_] == '\'' && depth > 0) {
                    at_ = std::min(formula_.find('\'', at_ + 1), formula_.size() - 1);
                    continue;
                }
                depth += formula_[at_] == '[' ? 1 : formula_[at_] == ']' ? -1 : 0;
                if (depth == 0) break;
            }
            at_ = std::min(at_ + 1, formula_.size());
        } else if (in_word(c)) {
            piece = Piece::word;
            while (at_ < formula_.size() && in_word(formula_[at_])) ++at_;
        } else {
            ++at_;
        }
        token = {piece, formula_.substr(start, at_ - start)};
        return true;
    }
    /// The character behind the last piece, 0 at the end.
    char behind() const { return at_ < formula_.size() ? formula_[at_] : '\0'; }
    std::string_view rest() const { return formula_.substr(at_); }
    void skip(std::size_t bytes) { at_ = std::min(at_ + bytes, formula_.size()); }

  private:
    std::string_view formula_;
    std::size_t at_ = 0;
};

/// Functions that came after the format, which files mark with _xlfn.; NETWORKDAYS.INTL, WORKDAY.INTL and ISO.CEILING,
/// although later, bear no mark.
constexpr std::array later_functions{"ACOT",
                                     "ACOTH",
                                     "AGGREGATE",
                                     "ARABIC",
                                     "ARRAYTOTEXT",
                                     "BASE",
                                     "BETA.DIST",
                                     "BETA.INV",
                                     "BINOM.DIST",
                                     "BINOM.INV",
                                     "BITAND",
                                     "BITLSHIFT",
                                     "BITOR",
                                     "BITRSHIFT",
                                     "BITXOR",
                                     "BYCOL",
                                     "BYROW",
                                     "CEILING.MATH",
                                     "CEILING.PRECISE",
                                     "CHISQ.DIST",
                                     "CHISQ.DIST.RT",
                                     "CHISQ.INV",
                                     "CHISQ.INV.RT",
                                     "CHOOSECOLS",
                                     "CHOOSEROWS",
                                     "COMBINA",
                                     "CONCAT",
                                     "CONFIDENCE.NORM",
                                     "CONFIDENCE.T",
                                     "COT",
                                     "COTH",
                                     "COVARIANCE.P",
                                     "COVARIANCE.S",
                                     "CSC",
                                     "CSCH",
                                     "DAYS",
                                     "DECIMAL",
                                     "DROP",
                                     "ERF.PRECISE",
                                     "ERFC.PRECISE",
                                     "EXPAND",
                                     "EXPON.DIST",
                                     "F.DIST",
                                     "F.DIST.RT",
                                     "F.INV",
                                     "F.INV.RT",
                                     "FILTER",
                                     "FLOOR.MATH",
                                     "FLOOR.PRECISE",
                                     "FORECAST.LINEAR",
                                     "FORMULATEXT",
                                     "GAMMA",
                                     "GAMMA.DIST",
                                     "GAMMA.INV",
                                     "GAMMALN.PRECISE",
                                     "GAUSS",
                                     "HSTACK",
                                     "HYPGEOM.DIST",
                                     "IFNA",
                                     "IFS",
                                     "ISFORMULA",
                                     "ISOMITTED",
                                     "ISOWEEKNUM",
                                     "LAMBDA",
                                     "LET",
                                     "LOGNORM.DIST",
                                     "LOGNORM.INV",
                                     "MAKEARRAY",
                                     "MAP",
                                     "MAXIFS",
                                     "MINIFS",
                                     "MODE.MULT",
                                     "MODE.SNGL",
                                     "MUNIT",
                                     "NEGBINOM.DIST",
                                     "NORM.DIST",
                                     "NORM.INV",
                                     "NORM.S.DIST",
                                     "NORM.S.INV",
                                     "NUMBERVALUE",
                                     "PDURATION",
                                     "PERCENTILE.EXC",
                                     "PERCENTILE.INC",
                                     "PERCENTRANK.EXC",
                                     "PERCENTRANK.INC",
                                     "PERMUTATIONA",
                                     "PHI",
                                     "POISSON.DIST",
                                     "QUARTILE.EXC",
                                     "QUARTILE.INC",
                                     "RANDARRAY",
                                     "RANK.AVG",
                                     "RANK.EQ",
                                     "REDUCE",
                                     "RRI",
                                     "SCAN",
                                     "SEC",
                                     "SECH",
                                     "SEQUENCE",
                                     "SHEET",
                                     "SHEETS",
                                     "SKEW.P",
                                     "SORT",
                                     "SORTBY",
                                     "STDEV.P",
                                     "STDEV.S",
                                     "SWITCH",
                                     "T.DIST",
                                     "T.DIST.2T",
                                     "T.DIST.RT",
                                     "T.INV",
                                     "T.INV.2T",
                                     "T.TEST",
                                     "TAKE",
                                     "TEXTAFTER",
                                     "TEXTBEFORE",
                                     "TEXTJOIN",
                                     "TEXTSPLIT",
                                     "TOCOL",
                                     "TOROW",
                                     "UNICHAR",
                                     "UNICODE",
                                     "UNIQUE",
                                     "VALUETOTEXT",
                                     "VAR.P",
                                     "VAR.S",
                                     "VSTACK",
                                     "WEIBULL.DIST",
                                     "WRAPCOLS",
                                     "WRAPROWS",
                                     "XLOOKUP",
                                     "XMATCH",
                                     "XOR",
                                     "Z.TEST"};

std::string xlsx_function(std::string_view name) {
    const std::string capitals = sheet::upper_case(name);
    if (find_function(std::string(name)) != nullptr) return "_xll." + std::string(name);
    if (std::find(later_functions.begin(), later_functions.end(), capitals) == later_functions.end())
        return std::string(name);
    return (capitals == "SORT" || capitals == "FILTER" ? "_xlfn._xlws." : "_xlfn.") + capitals;
}

bool strip(std::string_view& text, std::string_view prefix) {
    if (text.size() <= prefix.size() || !sheet::equal_ignoring_case(text.substr(0, prefix.size()), prefix))
        return false;
    text.remove_prefix(prefix.size());
    return true;
}

/// The name of a function without the marks of files and of services.
std::string plain_function(std::string_view name) {
    for (bool more = true; more;) {
        more = false;
        for (const std::string_view mark : {"_xlfn.", "_xlws.", "_xll.", "_xludf.", "_xlpm.", "COM.MICROSOFT.",
                                            "ORG.OPENOFFICE.", "ORG.LIBREOFFICE.", "LEGACY."})
            more = strip(name, mark) || more;
    }
    const auto lower = [&](std::string_view prefix) {
        return name.size() > prefix.size() && sheet::equal_ignoring_case(name.substr(0, prefix.size()), prefix);
    };
    if (lower("com.") || lower("org.") || lower("net.")) { // a service: its last part is the function
        const bool office = lower("com.sun.star.sheet.addin.");
        name.remove_prefix(name.rfind('.') + 1);
        if (office) strip(name, "get");
    }
    return std::string(name);
}

} // namespace

std::string from_xlsx(std::string_view formula) {
    std::string result;
    Scanner scanner(formula);
    std::size_t workbook = std::string::npos; // where the name of another workbook began in the result
    for (Token token{}; scanner.next(token);) {
        const std::size_t start = result.size();
        if (token.piece == Piece::word && scanner.behind() == '(') {
            // 'C:\...\Library.xll'!F(1) and [1]!F(1) are the function F of an add-in.
            if (workbook != std::string::npos) result.resize(workbook);
            const std::string name = plain_function(token.bytes);
            if (name == "SINGLE" && token.bytes != name) {
                result += '@';
            } else if (const std::size_t end = scanner.rest().find(')');
                       name == "ANCHORARRAY" && end != std::string_view::npos) {
                result += scanner.rest().substr(1, end - 1);
                result += '#';
                scanner.skip(end + 1);
            } else {
                result += name;
            }
        } else if (token.piece == Piece::word && token.bytes.starts_with("_xlpm.")) {
            result += token.bytes.substr(6);
        } else {
            result += token.bytes;
        }
        const bool library = token.piece == Piece::text && token.bytes[0] == '\'' &&
                             sheet::lower_case(token.bytes).find(".xl") != std::string::npos &&
                             token.bytes.find('[') == std::string_view::npos;
        if ((library || token.piece == Piece::brackets) && scanner.behind() == '!')
            workbook = start;
        else if (token.bytes != "!")
            workbook = std::string::npos;
    }
    return result;
}

std::string to_xlsx(std::string_view formula) {
    struct Call {
        bool let = false, closes_single = false;
        int argument = 0;
    };
    std::string result;
    std::vector<Call> calls;
    std::set<std::string> variables; // of LET
    Call next_call;
    bool single = false;
    std::size_t reference_start = std::string::npos;
    Scanner scanner(formula);
    for (Token token{}; scanner.next(token);) {
        const char behind = scanner.behind();
        if (token.piece == Piece::sign) {
            const char c = token.bytes[0];
            if (c == '@') {
                single = true;
                result += "_xlfn.SINGLE(";
                continue;
            }
            if (c == '#' && reference_start != std::string::npos) {
                result.insert(reference_start, "_xlfn.ANCHORARRAY(");
                result += ')';
                continue;
            }
            if (c != ':' && c != '!') reference_start = std::string::npos;
            result += c;
            if (c == '(') {
                next_call.closes_single |= single;
                single = false;
                calls.push_back(next_call);
                next_call = {};
            } else if (c == ')' && !calls.empty()) {
                if (calls.back().closes_single) result += ')';
                calls.pop_back();
            } else if (c == ',' && !calls.empty()) {
                ++calls.back().argument;
            }
            continue;
        }
        if (token.piece == Piece::word && behind == '(') {
            result += xlsx_function(token.bytes);
            next_call = {sheet::equal_ignoring_case(token.bytes, "LET"), single, 0};
            single = false;
            continue;
        }
        if (reference_start == std::string::npos) reference_start = result.size();
        const std::string key = sheet::upper_case(token.bytes);
        const bool declares = token.piece == Piece::word && behind == ',' && !calls.empty() && calls.back().let &&
                              calls.back().argument % 2 == 0;
        if (declares) variables.insert(key);
        if (token.piece == Piece::word && variables.contains(key)) result += "_xlpm.";
        result += token.bytes;
        if (single && behind != '!' && behind != ':') {
            result += ')';
            single = false;
        }
    }
    return result;
}

namespace {

/// What is between brackets in an OpenDocument formula: ".A1", "$Sheet2.A1:.B2", "$'My Sheet'.$A$1".
std::string open_reference(std::string_view inside) {
    std::string result;
    bool first = true;
    for (std::size_t at = 0; at <= inside.size();) {
        // One end of the reference: up to a colon outside of quotes.
        std::size_t end = at, point = std::string_view::npos;
        bool quoted = false;
        for (; end < inside.size() && (quoted || inside[end] != ':'); ++end) {
            if (inside[end] == '\'') quoted = !quoted;
            if (!quoted && inside[end] == '.') point = end;
        }
        std::string_view part = inside.substr(at, end - at);
        if (part.find("#REF!") != std::string_view::npos) return "#REF!";
        if (point != std::string_view::npos) {
            std::string_view sheet_name = inside.substr(at, point - at);
            part = inside.substr(point + 1, end - point - 1);
            if (sheet_name.find('#') != std::string_view::npos) return "#REF!"; // of another file
            if (sheet_name.starts_with('$')) sheet_name.remove_prefix(1);
            if (first && !sheet_name.empty()) result += std::string(sheet_name) + "!";
        }
        if (!first) result += ':';
        result += part;
        first = false;
        at = end + 1;
    }
    return result;
}

} // namespace

std::string from_openformula(std::string_view formula) {
    if (const std::size_t colon = formula.find(":="); colon != std::string_view::npos && colon < 8)
        formula.remove_prefix(colon + 1);
    if (formula.starts_with('=')) formula.remove_prefix(1);
    std::string result;
    Scanner scanner(formula);
    int braces = 0;
    for (Token token{}; scanner.next(token);) {
        if (token.piece == Piece::brackets) {
            const std::size_t closing = token.bytes.ends_with(']') ? 2 : 1;
            result += open_reference(token.bytes.substr(1, token.bytes.size() - closing));
        } else if (token.piece == Piece::word && scanner.behind() == '(') {
            result += plain_function(token.bytes);
        } else if (token.piece == Piece::word && token.bytes.starts_with("$$")) { // a name that looks like a sheet
            result += token.bytes.substr(2);
        } else if (token.piece == Piece::sign) {
            const char c = token.bytes[0];
            braces += c == '{' ? 1 : c == '}' ? -1 : 0;
            if (c == ';')
                result += ',';
            else if (c == '|' && braces > 0)
                result += ';';
            else if (c == '~')
                result += ',';
            else
                result += c;
        } else {
            result += token.bytes;
        }
    }
    return result;
}

} // namespace qx::files
