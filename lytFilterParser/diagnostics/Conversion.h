// Converting a legacy command line with diagnostics: what convert returns,
// where its refusal stands in the line, and what the translation skipped
// or dropped on the way.
#ifndef LYTFILTERPARSER_DIAGNOSTICS_CONVERSION_H
#define LYTFILTERPARSER_DIAGNOSTICS_CONVERSION_H

#include <optional>
#include <string>
#include <vector>

#include "lytFilterParser/Export.h"
#include "lytFilterParser/base/TavVersion.h"
#include "lytFilterParser/diagnostics/Diagnostic.h"
#include "lytFilterParser/diagnostics/Refusal.h"

namespace lytFilterParser {

struct Conversion {
  std::string request;                  // exactly what LYTKovaRequest::convert returns
  std::optional<Refusal> refusal;       // convert's error, with its place in the line; none when it has none
  std::vector<Diagnostic> diagnostics;  // positions in bytes of the legacy line
};

// LYTKovaRequest::convert(line, peer, error), and for peers 1 and 2 what
// the translation passes over in silence:
//   word-skipped      words that are no legacy syntax ("garbage", "-n 20"),
//                     consecutive ones as one diagnostic, and a word
//                     where a filter's "[" belongs ("dst 0 a b ]")
//   filter-dropped    a bracketed legacy filter whose first word names no
//                     legacy filter type ("[[foo 1 [x]]]"), a further
//                     interface item, which the reader does not take, or
//                     a legacy filter after a plain group ("-g src src 0
//                     [a]"), read as names: the converted request has no
//                     such filter
//   operator-changed  an "or" of the legacy filter list: the filters are
//                     joined by "and"
//   word-misread      a legacy option, or the letter after "-y" or "-a",
//                     written with more characters: only the first count;
//                     a negation flag other than "0" and "1", read as "0"
// The words the legacy writer itself writes and the reader skips ("-filter",
// "and", the brackets, the "a" after "-a") are no diagnostic. A refusal
// stands on the word the message is about (the "-y" or "-g" argument, the
// word the current-syntax reader stopped on), or at the end of the line.
// Diagnostics are given for a line that converts. Throws what convert
// throws: a message from writing the request ("Not a valid argument for
// type" for a telNumber key).
LFP_API Conversion convertWithDiagnostics(const std::string& line, TavVersion peer);

}  // namespace lytFilterParser

#endif
