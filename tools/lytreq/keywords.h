// `lytreq keywords`: every word an operator may write in a request, and the
// query interface's column catalogues.
#ifndef LYTREQ_KEYWORDS_H
#define LYTREQ_KEYWORDS_H

#include <ostream>

#include "output.h"

namespace lytreq {

// Headed sections, one keyword per line.
void writeKeywords(std::ostream& out);
// The same as one JSON object.
Json keywordsJson();

}  // namespace lytreq

#endif
