// `lytreq explain`: a request as a tree with every default filled in (the
// operator of the filter, each column's accumulation mode and options, the
// direction of an interface, the sort with its index and updates), each
// column with its query-interface column, and what each peer makes of it.
// Every keyword comes from the library's vocabulary.
#ifndef LYTREQ_EXPLAIN_H
#define LYTREQ_EXPLAIN_H

#include <ostream>

#include "commands.h"

namespace lytreq {

// The request as JSON fields: "kind" ("network" or the vl word), then for a
// network request "filter" (its nodes in walk order, each with its
// "depth": compound nodes {"depth", "operator"}, atoms {"depth", "type",
// "negated", "names"}, interface atoms with "interfaces" [{"name",
// "direction"}] instead of names), "keys" and "values" ({"type", "mode",
// "options", "names", "column": {"number", "name"} or null}) and "sort"
// ({"type", "index", "updates"}); for a vl request "name" and "dataType".
// The tree is built with an explicit stack: a filter of any depth is a list.
Json explainRequest(const LYTKovaRequest& request);

// The explanation of `report` as text: the tree, each level two blanks
// further in, then a line per peer ("peer N: valid", "peer N: invalid:
// MESSAGE") with what its text loses below it.
void writeExplanation(const Report& report, std::ostream& out);

}  // namespace lytreq

#endif
