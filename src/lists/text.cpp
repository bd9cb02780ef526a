#include "lists/text.h"

#include "core/parse_number.h"
#include "core/routine.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <string_view>

namespace qx {

namespace {

constexpr const char* not_found = "not found";

/// The ends of a token in its text.
struct Token {
    std::size_t begin, end;
};

std::optional<Token> find_token(std::string_view text, int number, std::string_view delimiter,
                                std::string_view options) {
    if (text.empty() || delimiter.empty() || number < 1) return std::nullopt;
    const bool runs_count_once = options.find('d') != options.npos;
    const bool end_closes = options.find('e') != options.npos;
    std::size_t begin = 0;
    for (int token = 1;; ++token) {
        const std::size_t end = text.find(delimiter, begin);
        const bool last = end == text.npos;
        if (last && (token < number || !end_closes)) return std::nullopt;
        if (token == number) return Token{begin, last ? text.size() : end};
        begin = end + delimiter.size();
        while (runs_count_once && text.substr(begin).starts_with(delimiter)) begin += delimiter.size();
    }
}

WorkList<double> extract(const char* name, View<anyvalue> InputPoly_s, bool drops_decimals, const char* parsed_words) {
    Routine here{name};
    here.inputs(InputPoly_s);
    const auto kept = [&](double number) { return drops_decimals ? std::trunc(number) : number; };
    WorkList<double> numbers;
    numbers->setname(name);
    if (InputPoly_s.lastnonblank() == 0) {
        here.info("Zero length input array, returning single value of zero");
        numbers->dimension(1);
        numbers(1) = 0;
        return here.returning(std::move(numbers));
    }
    numbers->dimension(InputPoly_s.size(), InputPoly_s.getcolumns());
    for (int i = 1; i <= InputPoly_s.size(); ++i) {
        const anyvalue& cell = InputPoly_s.get(i);
        const TraceBlock pass = here.pass(i);
        if (cell.istext()) {
            here.info("Translating '", cell.text(), "' from text to number");
            numbers(i) = kept(parsenumber(cell.text(), 0.0));
            here.info(parsed_words, " ", numbers(i));
        } else if (cell.isblank()) {
            here.info("A blank cell counts as zero");
            numbers(i) = 0;
        } else {
            here.info("The input was a number and does not need translating from text to number");
            numbers(i) = kept(cell.number());
        }
    }
    return here.returning(std::move(numbers));
}

bool holds_digit(std::string_view piece) { return piece.find_first_of("0123456789") != piece.npos; }

/// Where the dash of a stretch "first-last" is: behind a number. The sign of a number is no such dash.
std::size_t dash_of_stretch(std::string_view piece) {
    for (std::size_t at = piece.find('-'); at != piece.npos; at = piece.find('-', at + 1)) {
        const std::size_t before = piece.substr(0, at).find_last_not_of(' ');
        if (before != piece.npos && std::string_view("0123456789.)").find(piece[before]) != std::string_view::npos)
            return at;
    }
    return piece.npos;
}

} // namespace

std::string GetToken(const std::string& Textstring, int TokenNo, const std::string& Delimiter,
                     const std::string& OptionLetters) {
    Routine here{"GetToken"};
    here.inputs(Textstring, TokenNo, Delimiter, OptionLetters);
    const auto token = find_token(Textstring, TokenNo, Delimiter, OptionLetters);
    return here.returning(token ? Textstring.substr(token->begin, token->end - token->begin) : not_found);
}

std::string GetTokens(const std::string& Textstring, int FirstTokenToFind, int NumberOfTokens,
                      const std::string& Delimiter, const std::string& OptionLetters) {
    Routine here{"GetTokens"};
    here.inputs(Textstring, FirstTokenToFind, NumberOfTokens, Delimiter, OptionLetters);
    if (NumberOfTokens < 1 || NumberOfTokens > static_cast<int>(Textstring.size()) + 1)
        return here.returning(std::string(not_found));
    const auto first = find_token(Textstring, FirstTokenToFind, Delimiter, OptionLetters);
    const auto last =
        first ? find_token(Textstring, FirstTokenToFind + NumberOfTokens - 1, Delimiter, OptionLetters) : first;
    return here.returning(last ? Textstring.substr(first->begin, last->end - first->begin) : not_found);
}

bool InString(const std::string& Textstring, const std::string& LetterSequence) {
    Routine here{"InString"};
    here.inputs(Textstring, LetterSequence);
    return here.returning(Textstring.find(LetterSequence) != std::string::npos);
}

double ExtractNum(const std::string& Textstring, int StartPos, int EndPos) {
    Routine here{"ExtractNum"};
    here.inputs(Textstring, StartPos, EndPos);
    const int first = std::max(StartPos, 1);
    const int last = std::min(EndPos, static_cast<int>(Textstring.size()));
    if (first > last) return here.returning(0.0);
    return here.returning(parsenumber(
        Textstring.substr(static_cast<std::size_t>(first - 1), static_cast<std::size_t>(last - first + 1)), 0.0));
}

WorkList<double> ExInt(View<anyvalue> InputPoly_s) {
    return extract("ExInt", InputPoly_s, true, "Parsed to an integer");
}
WorkList<double> ExFl(View<anyvalue> InputPoly_s) { return extract("ExFl", InputPoly_s, false, "Translated"); }

WorkList<double> ExNumRange(const anyvalue& Textstring, const std::string& Delimiter) {
    Routine here{"ExNumRange"};
    here.inputs(Textstring, Delimiter);
    WorkList<double> numbers;
    numbers->setname("ExNumRange");
    numbers->dimension(0);
    const auto number_in = [&here](std::string_view text) {
        if (!holds_digit(text)) here.fail<numbertranslation>("Textstring", "There is no number in '", text, "'");
        return parsenumber(std::string(text), 0.0);
    };
    const auto append = [&](double first, double last) {
        const double steps = std::floor(std::fabs(last - first) + tolerance);
        if (steps >= range_capacity) here.fail<outofrange>("Textstring", "More than ", range_capacity, " numbers");
        const int before = numbers.size();
        const int count = whole(steps) + 1;
        numbers->dimension(before + count);
        for (int i = 0; i < count; ++i) numbers(before + 1 + i) = first + (last < first ? -i : i);
    };
    if (Textstring.isnumber()) append(Textstring.number(), Textstring.number());
    const std::string_view text = Textstring.text();
    for (std::size_t begin = 0; begin <= text.size();) {
        const std::size_t end = Delimiter.empty() ? text.npos : text.find(Delimiter, begin);
        const std::string_view piece = text.substr(begin, end == text.npos ? end : end - begin);
        begin = end == text.npos ? text.size() + 1 : end + Delimiter.size();
        if (piece.find_first_not_of(' ') == piece.npos) continue;
        const std::size_t dash = dash_of_stretch(piece);
        if (dash == piece.npos)
            append(number_in(piece), number_in(piece));
        else
            append(number_in(piece.substr(0, dash)), number_in(piece.substr(dash + 1)));
        here.info("Piece '", piece, "', ", numbers.size(), " numbers so far");
    }
    return here.returning(std::move(numbers));
}

} // namespace qx
