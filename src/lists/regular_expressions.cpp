#include "lists/regular_expressions.h"

#include "core/routine.h"
#include "lists/letters.h"

#include <iterator>
#include <locale>
#include <stdexcept>

#define BOOST_REGEX_MAX_STATE_COUNT 1'000'000 // for a string that is read letter by letter
#include <boost/regex.hpp>

namespace qx {

namespace {

/// How often the engine has looked at the text in this call. Its own bound, the count of states, is only tested when a
/// try fails, which some repeats of nothing never do.
long looks = 0;
constexpr long most_looks = 5'000'000;

void look() {
    if (++looks == most_looks)
        throw std::runtime_error("The search takes too long"); // once: what unwinds looks as well
}

/// A place in a string that counts how often it is looked at.
class Letter {
  public:
    using iterator_category = std::bidirectional_iterator_tag;
    using value_type = wchar_t;
    using difference_type = std::ptrdiff_t;
    using pointer = const wchar_t*;
    using reference = const wchar_t&;

    Letter() = default;
    explicit Letter(const wchar_t* at) : at_(at) {}
    reference operator*() const { return look(), *at_; }
    Letter& operator++() { return ++at_, *this; }
    Letter& operator--() { return --at_, *this; }
    Letter operator++(int) { return Letter(at_++); }
    Letter operator--(int) { return Letter(at_--); }
    friend bool operator==(const Letter& a, const Letter& b) { return look(), a.at_ == b.at_; }

  private:
    const wchar_t* at_ = nullptr;
};

using Match = boost::match_results<Letter>;

/// An expression compiled, from a small store of those used last.
const boost::wregex& compiled(const std::wstring& expression) {
    struct Entry {
        std::wstring expression;
        boost::wregex compiled;
        unsigned long used = 0;
    };
    static Entry store[16];
    static unsigned long clock = 0;
    Entry* oldest = store;
    for (Entry& entry : store) {
        if (entry.used > 0 && entry.expression == expression) {
            entry.used = ++clock;
            return entry.compiled;
        }
        if (entry.used < oldest->used) oldest = &entry;
    }
    oldest->used = 0; // not valid if the compilation fails
    oldest->compiled.imbue(all_letters());
    oldest->compiled.assign(expression);
    oldest->expression = expression;
    oldest->used = ++clock;
    return oldest->compiled;
}

/// A string, the expression sought in it and what replaces it, all read character by character; or byte by byte if one
/// of them is not UTF-8, as texts of a spreadsheet with a code page.
class Search {
  public:
    Search(const std::string& text, const std::string& expression, bool lower_case, const std::string& replacement = {})
        : utf8_(is_utf8(text) && is_utf8(expression) && is_utf8(replacement)), text_(read(text, lower_case)),
          expression_(compiled(read(expression, lower_case))), replacement_(read(replacement, false)) {}

    const boost::wregex& expression() const { return expression_; }
    const std::wstring& replacement() const { return replacement_; }
    Letter begin() const { return Letter(text_.data()); }
    Letter end() const { return Letter(text_.data() + text_.size()); }
    boost::regex_iterator<Letter> matches() const { return {begin(), end(), expression_}; }

    /// Letters of this search as they came.
    std::string written(const std::wstring& letters) const { return text_of(letters, utf8_); }

  private:
    std::wstring read(const std::string& text, bool lower_case) const {
        std::wstring letters = letters_of(text, utf8_);
        if (lower_case)
            std::use_facet<std::ctype<wchar_t>>(all_letters()).tolower(letters.data(), letters.data() + letters.size());
        return letters;
    }

    bool utf8_;
    std::wstring text_;
    const boost::wregex& expression_;
    std::wstring replacement_;
};

/// Runs a search with every failure of the engine as errlibregexp.
template <class Run>
auto guarded(const Routine& here, const Run& run) -> decltype(run()) {
    looks = 0;
    try {
        return run();
    } catch (const cls_exception&) {
        throw;
    } catch (const std::exception& failure) {
        here.fail<errlibregexp>("RegSought", failure.what());
    } catch (...) {
        here.fail<errlibregexp>("RegSought");
    }
}

void append(Range<std::string>& list, const std::string& text) {
    list.dimension(list.size() + 1);
    list.set(list.size(), text);
}

} // namespace

int RegNMatches(const std::string& Textstring, const std::string& RegSought, bool CaseInSensitive) {
    Routine here{"RegNMatches"};
    here.inputs(Textstring, RegSought, CaseInSensitive);
    return here.returning(guarded(here, [&] {
        const Search search(Textstring, RegSought, CaseInSensitive);
        return static_cast<int>(std::distance(search.matches(), {}));
    }));
}

std::string RegSMatch(const std::string& Textstring, const std::string& RegSought, bool CaseInSensitive) {
    Routine here{"RegSMatch"};
    here.inputs(Textstring, RegSought, CaseInSensitive);
    here.info("RegEx Exp ", RegSought);
    return here.returning(guarded(here, [&] {
        const Search search(Textstring, RegSought, CaseInSensitive);
        Match match;
        const bool found = boost::regex_search(search.begin(), search.end(), match, search.expression());
        here.info(found ? "Matched" : "Not Matched");
        return found ? search.written(match.str()) : std::string{};
    }));
}

WorkList<std::string> RegSMatches(const std::string& Textstring, const std::string& RegSought, bool CaseInSensitive) {
    Routine here{"RegSMatches"};
    here.inputs(Textstring, RegSought, CaseInSensitive);
    WorkList<std::string> found;
    found->setname("RegSMatches");
    found->dimension(0);
    guarded(here, [&] {
        const Search search(Textstring, RegSought, CaseInSensitive);
        for (auto match = search.matches(); match != boost::regex_iterator<Letter>(); ++match)
            append(found, search.written(match->str()));
    });
    here.info("Matches found:", found.size());
    return here.returning(std::move(found));
}

WorkList<std::string> RegSplit(const std::string& Textstring, const std::string& RegSought, int SplitMode,
                               bool CaseInSensitive) {
    Routine here{"RegSplit"};
    here.inputs(Textstring, RegSought, SplitMode, CaseInSensitive);
    here.limit(SplitMode, 0, 1, "SplitMode");
    WorkList<std::string> pieces;
    pieces->setname("RegSplit");
    pieces->dimension(0);
    guarded(here, [&] {
        const Search search(Textstring, RegSought, CaseInSensitive);
        const int sub_match = SplitMode == 0 ? -1 : 0;
        boost::regex_token_iterator<Letter> token(search.begin(), search.end(), search.expression(), sub_match);
        for (; token != boost::regex_token_iterator<Letter>(); ++token) append(pieces, search.written(token->str()));
    });
    here.info(pieces.size(), SplitMode == 0 ? " pieces found" : " matches found");
    return here.returning(std::move(pieces));
}

std::string RegReplace(const std::string& Textstring, const std::string& RegSought, const std::string& Replacement,
                       bool CaseInSensitive) {
    Routine here{"RegReplace"};
    here.inputs(Textstring, RegSought, Replacement, CaseInSensitive);
    return here.returning(guarded(here, [&] {
        const Search search(Textstring, RegSought, CaseInSensitive, Replacement);
        std::wstring replaced;
        boost::regex_replace(std::back_inserter(replaced), search.begin(), search.end(), search.expression(),
                             search.replacement());
        return search.written(replaced);
    }));
}

bool RegMatchWhole(const std::string& Textstring, const std::string& RegSought, bool CaseInSensitive) {
    Routine here{"RegMatchWhole"};
    here.inputs(Textstring, RegSought, CaseInSensitive);
    return here.returning(guarded(here, [&] {
        const Search search(Textstring, RegSought, CaseInSensitive);
        return boost::regex_match(search.begin(), search.end(), search.expression());
    }));
}

} // namespace qx
