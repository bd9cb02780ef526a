// Pieces of texts: tokens between delimiters, and the numbers that people write in texts.
#pragma once

#include "calendar/anyvalue.h"
#include "core/pools.h"

#include <string>

namespace qx {

/// The text between two delimiters: token 1 starts where the text does. With the option letter "e" the end of the text
/// closes the last token, which is otherwise not found; with "d" delimiters in a row count as one, while otherwise
/// there is an empty token between them. Gives "not found" for a token that is not there, for one below 1, and for an
/// empty string or delimiter.
std::string GetToken(const std::string& Textstring, int TokenNo, const std::string& Delimiter,
                     const std::string& OptionLetters);
/// The text from one token to another with the delimiters between them, or "not found" unless all are there.
std::string GetTokens(const std::string& Textstring, int FirstTokenToFind, int NumberOfTokens,
                      const std::string& Delimiter, const std::string& OptionLetters);

/// True if the letters occur in the text, capitals as they are.
bool InString(const std::string& Textstring, const std::string& LetterSequence);

/// The number in the letters StartPos to EndPos (from 1, both counted) of a string; 0 if there is none.
double ExtractNum(const std::string& Textstring, int StartPos, int EndPos);

/// The numbers of cells, texts parsed as amounts; an empty input gives a single 0. The shape stays. ExInt drops
/// decimals.
WorkList<double> ExInt(View<anyvalue> InputPoly_s);
WorkList<double> ExFl(View<anyvalue> InputPoly_s);

/// The numbers in a string such as "1-3,7,10-12": 1, 2, 3, 7, 10, 11, 12. A range goes in steps of one, up or down. A
/// number is given as it is, a blank gives an empty list. Throws numbertranslation for a piece without a number,
/// outofrange above 10000 numbers.
WorkList<double> ExNumRange(const anyvalue& Textstring, const std::string& Delimiter);

} // namespace qx
