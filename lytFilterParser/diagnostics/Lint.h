// Lint of a request text: what the reader accepts but may not mean what the
// operator meant. The request the text gives is the same with or without a
// lint; the lint only reports.
#ifndef LYTFILTERPARSER_DIAGNOSTICS_LINT_H
#define LYTFILTERPARSER_DIAGNOSTICS_LINT_H

#include <string>
#include <vector>

#include "lytFilterParser/Export.h"
#include "lytFilterParser/diagnostics/Diagnostic.h"

namespace lytFilterParser {

// The surprises of a current-syntax request text (a network request or a
// "vl" request), in the order of the text, positions in bytes of `text`:
//   invisible-character  a tab, control, no-break space, byte order mark ...
//                        inside a word (only blanks separate words)
//   inline-comment       a name starting with "#": it and the names after it
//                        are names, not a comment
//   filter-appended      a "-f" after the first filter option: it joins the
//                        request's one filter
//   operator-changed     an operator that a later "-f" overrides
//   operator-ignored     a compound filter with no filter in it
//   option-repeated      a mode, column option, sort, "index=", "updates="
//                        or "-t" given twice: the later one counts
//   word-ignored         a sort word that sorts nothing
//   word-misread         a word read as something else than it shows
//                        ("dir=outbound" is dir=out, "eth0,x" both directions)
//   value-defaulted      a number that is no number, or updates of 0 or less
//   value-clamped        a number beyond the int range
//   entity-keyword       a name that is a keyword, or in a column a name
//                        that would be an option in the first place
//   entity-empty         a name with nothing before "<>" or ","
//   entity-duplicate     the same name twice in one filter or column
// A text the reader refuses gets only its invisible characters (readRefusal
// tells why it is refused); an empty text gets none. Ordinary requests get
// none. Throws nothing of its own; std::bad_alloc passes.
LFP_API std::vector<Diagnostic> lint(const std::string& text);

}  // namespace lytFilterParser

#endif
