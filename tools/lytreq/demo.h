// `lytreq demo`: the subcommands run on built-in sample requests.
#ifndef LYTREQ_DEMO_H
#define LYTREQ_DEMO_H

#include <ostream>

namespace lytreq {

// Text: headings, each command and what it prints (messages included).
// JSON: one object per sample request.
void runDemo(bool json, std::ostream& out);

}  // namespace lytreq

#endif
