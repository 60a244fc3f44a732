// `lytreq keywords`: every word an operator may write in a request, and the
// query interface's column catalogues.
#ifndef LYTREQ_KEYWORDS_H
#define LYTREQ_KEYWORDS_H

#include <ostream>

#include "output.h"

namespace lytreq {

// One headed section per kind of word, a word and its meaning per line,
// then the column catalogues.
void writeKeywords(std::ostream& out);
// The same as one JSON object.
Json keywordsJson();

}  // namespace lytreq

#endif
