#include "lists/money_text.h"

#include "core/routine.h"

#include <cmath>
#include <initializer_list>
#include <string_view>

namespace qx {

namespace {

constexpr int spanish = 1;
constexpr int french = 2;
constexpr int groups = 5; ///< of three digits: units, thousands, millions, billions, trillions

/// The words of a language, with the blanks that join them.
struct Words {
    const char* numbers[30];
    const char* tens[10];     ///< from 10
    const char* hundreds[10]; ///< from 100
    const char* groups[5];    ///< from thousands
    const char* currencies[4];
    const char* subunits[4];
    const char* tens_to_units; ///< between "thirty" and "one"
};

constexpr Words languages[] = {
    {
        {" zero ",        "one ",          "two ",         "three ",         "four ",          "five ",
         "six ",          "seven ",        "eight ",       "nine ",          " ten ",          " eleven ",
         " twelve ",      " thirteen ",    " fourteen ",   " fifteen ",      " sixteen ",      " seventeen ",
         " eighteen ",    " nineteen ",    " twenty ",     " twenty-one ",   " twenty-two ",   " twenty-three ",
         " twenty-four ", " twenty-five ", " twenty-six ", " twenty-seven ", " twenty-eight ", " twenty-nine "},
        {"", " ten", " twenty", " thirty", " forty", " fifty", " sixty", " seventy", " eighty", " ninety"},
        {"", " one hundred ", " two hundred ", " three hundred ", " four hundred ", " five hundred ", " six hundred ",
         " seven hundred ", " eight hundred ", " nine hundred "},
        {"", " thousand", " million", " billion", " trillion"},
        {" dollar", " euro", " pound", " peso"},
        {" cent", " cent", " pence", " centavo"},
        "-",
    },
    {
        {" cero ",         "uno ",          "dos ",         "tres ",         "cuatro ",      "cinco ",
         "seis ",          "siete ",        "ocho ",        "nueve ",        " diez ",       " once ",
         " doce ",         " trece ",       " catorce ",    " quince ",      " dieciseis ",  " diecisiete ",
         " dieciocho ",    " diecinueve ",  " veinte ",     " veintiuno ",   " veintidos ",  " veintitres ",
         " veinticuatro ", " veintecinco ", " veintiseis ", " veintisiete ", " veintiocho ", " veintinueve "},
        {"", " diez", " veinte", " trenta", " cuarenta", " cinquenta", " sesenta", " setenta", " ochenta", " noventa"},
        {"", " ciento ", " doscientos ", " trescientos ", " cuatrocientos ", " quinientos ", " seiscientos ",
         " setecientos ", " ochocientos ", " novecientos "},
        {"", " mil", " millon", " billon", " trillon"},
        {" dolar", " euro", " libra", " peso"},
        {" centavo", " centimo", " penique", " centavo"},
        " y ",
    },
    {
        {" zero ",         "un ",          "deux ",       "trois ",        "quatre ",      "cinq ",
         "six ",           "sept ",        "huit ",       "neuf ",         " dix ",        " onze ",
         " douze ",        " treize ",     " quatorze ",  " quinze ",      " sieze ",      " dix-sept ",
         " dix-huit ",     " dix-neuf ",   " vingt ",     " vingt-et-un ", " vingt-deux ", " vingt-trois ",
         " vingt-quatre ", " vingt-cinq ", " vingt-six ", " vingt-sept ",  " vingt-huit ", " vingt-neuf "},
        {"", " dix", " vingt", " trente", " quarante", " cinquante", " soixante", " soixante-dix", " quatre-vingt",
         " quatre-vingt-dix"},
        {"", " cent ", " deux cents ", " trois cents ", " quatre cents ", " cinq cents ", " six cents ", " sept cents ",
         " huit cents ", " neuf cents "},
        {"", " mille", " million", " billion", " trillion"},
        {" dollar", " euro", " livre", " peso"},
        {" cent", " centime", " pence", " cent"},
        "-",
    },
};

struct Substitution {
    const char* found;
    const char* replacement;
};

// What the joined words become, in this order. The Spanish forms in "z" keep plurals out of the reach of later rows.
constexpr Substitution all_languages[] = {{"pences", "pence"}};
constexpr Substitution english_forms[] = {{"one pence", "one penny"}};
constexpr Substitution spanish_forms[] = {
    {"uno peso", "un peso"},
    {"uno euro", "un euro"},
    {"uno dolare", "un dolare"},
    {"dolares", "dolarez"},
    {"euros", "euroz"},
    {"libras", "libraz"},
    {"pesos", "pesoz"},
    {"dolarez", "de dolares"},
    {"euroz", "de euros"},
    {"libraz", "de libras"},
    {"pesoz", "de pesos"},
    {"uno libra", "un libra"},
    {"rs", "res"},
    {"ls", "les"},
    {"ns", "nes"},
    {"ciento mil", "cien mil"},
    {"ciento millon", "cien millon"},
    {"ciento billon", "cien billon"},
    {"ciento trillon", "cien trillon"},
    {"miles", "mil"},
};
constexpr Substitution french_forms[] = {
    {"un pence", "un penny"}, {"milles", "mille"},       {"millions", "million"},
    {"billions", "billion"},  {"trillions", "trillion"}, {"-un", " et un"},
};

void replace_all(std::string& text, std::string_view found, std::string_view replacement) {
    for (std::size_t at = text.find(found); at != std::string::npos; at = text.find(found, at + replacement.size()))
        text.replace(at, found.size(), replacement);
}

template <std::size_t n>
void substitute(std::string& text, const Substitution (&forms)[n]) {
    for (const Substitution& form : forms) replace_all(text, form.found, form.replacement);
}

/// No blanks at the ends, and none after another.
void tidy(std::string& text) {
    std::string tidied;
    for (const char c : text)
        if (c != ' ' || (!tidied.empty() && tidied.back() != ' ')) tidied += c;
    if (!tidied.empty() && tidied.back() == ' ') tidied.pop_back();
    text = tidied;
}

/// Appends a number from 1 to 999.
void append_group(std::string& text, const Words& words, int number) {
    text += words.hundreds[number / 100];
    const int rest = number % 100;
    if (rest >= 30) {
        text += words.tens[rest / 10];
        if (rest % 10 > 0) {
            text += words.tens_to_units;
            text += words.numbers[rest % 10];
        }
    } else if (rest > 0) {
        text += words.numbers[rest];
    }
}

void append_number(std::string& text, const Words& words, int language, long long number) {
    if (number == 0) text += words.numbers[0];
    long long scale = 1'000'000'000'000;
    for (int group = groups - 1; group >= 0; --group, scale /= 1000) {
        const int digits = static_cast<int>(number / scale % 1000);
        if (digits == 0) continue;
        append_group(text, words, digits);
        text += words.groups[group];
        if (group > 0 && digits != 1 && language != 0) text += 's';
        text += ' ';
    }
}

/// Appends the word of a currency or its subunit, in the plural unless there is just one.
void append_unit(std::string& text, std::string_view unit, long long number) {
    text += unit;
    if (number != 1) text += unit == " dolar" ? "es" : "s";
}

} // namespace

std::string MoneyText(double Amount, int Currency, int Language) {
    Routine here{"MoneyText"};
    here.inputs(Amount, Currency, Language);
    if (!(Amount <= 9'999'999'999'999.0))
        here.fail<outofrange>("Amount", "Number to large (greater than 9,999,999,999,999)");
    if (Amount < 0.0) here.fail<outofrange>("Amount", "Negative Numbers not allowed");
    here.limit(Currency, 0, 3, "Currency");
    here.limit(Language, 0, 2, "Language");

    const Words& words = languages[Language];
    const long long hundredths = std::llround(Amount * 100.0);
    const long long whole_part = hundredths / 100;
    const long long rest = hundredths % 100;
    std::string text;
    append_number(text, words, Language, whole_part);
    append_unit(text, words.currencies[Currency], whole_part);
    if (rest > 0) {
        text += " and ";
        append_number(text, words, Language, rest);
        append_unit(text, words.subunits[Currency], rest);
    }
    tidy(text);
    here.info("In words: ", text);
    substitute(text, all_languages);
    if (Language == spanish)
        substitute(text, spanish_forms);
    else if (Language == french)
        substitute(text, french_forms);
    else
        substitute(text, english_forms);
    tidy(text);
    return here.returning(text);
}

} // namespace qx
