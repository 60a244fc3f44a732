// The words of the request syntax that the tool needs for a role of its
// own (telling a vl request, naming a value type, cutting tokens), taken
// from the library's vocabulary so that the tool cannot drift from the
// syntax the library reads.
#ifndef LYTREQ_WORDS_H
#define LYTREQ_WORDS_H

#include <string>
#include <string_view>
#include <vector>

#include "lytFilterParser/column/TavColumnFilter.h"
#include "lytFilterParser/vocab/Codes.h"

#include "lytFilterParser/vocab/ValueType.h"
#include "lytFilterParser/vocab/Vocabulary.h"

namespace lytreq {

using lytFilterParser::Word;
using lytFilterParser::WordKind;

// The word that opens a vl request.
std::string_view virtualLinkWord();

// The keyword of `type`, "telNumber" (read, never written) included; "?"
// for a code without one.
std::string valueTypeWord(TavValType type);

// True for a character that is a token of its own however it is surrounded.
bool isBracket(char c);

// The codes of the vocabulary's negation word and sort options, which
// stand for no enumerator of the public headers: the negation is "true",
// the sort options are numbered in the order Vocabulary.h lists them.
constexpr int kNegated = 1;
constexpr int kSortIndex = 0;
constexpr int kSortUpdates = 1;

// The word of `kind` that stands for `code`: the one the writers write, else
// the first read; "?" for a code without one.
std::string codeWord(WordKind kind, int code);

// The request option ("-f", "-k", "-v") whose value type stands at `place`
// (a WordPlace bit), or, for 0, the sort option.
std::string optionWord(unsigned place);

// Every column option of `filter` with its value, those that restrict
// nothing included ("dir=both"), in the vocabulary's order.
std::vector<std::string> columnOptionWords(const TavColumnFilter& filter);

// "in", "out" or "both": the direction `direction` (TavFilterDirType) as the
// direction column option names it.
std::string directionWord(int direction);

}  // namespace lytreq

#endif
