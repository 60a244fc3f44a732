// The words of the request syntax that the tool needs for a role of its
// own (telling a vl request, naming a value type, cutting tokens), taken
// from the library's vocabulary so that the tool cannot drift from the
// syntax the library reads.
#ifndef LYTREQ_WORDS_H
#define LYTREQ_WORDS_H

#include <string>
#include <string_view>

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

}  // namespace lytreq

#endif
