// Fidelity of writing a request for a peer: what the peer's text loses or
// changes. The request is written for the peer with dump(TavVersion), that
// text is read back as the peer reads it (the legacy reader for peers 1 and
// 2, the current reader for peer 3), and the two requests are compared item
// by item; each difference is reported at the item's place in the original
// text. Nothing is kept as a list of known losses: whatever the written
// text does not carry shows up.
#ifndef LYTFILTERPARSER_DIAGNOSTICS_FIDELITY_H
#define LYTFILTERPARSER_DIAGNOSTICS_FIDELITY_H

#include <string>
#include <vector>

#include "lytFilterParser/Export.h"
#include "lytFilterParser/base/TavVersion.h"
#include "lytFilterParser/diagnostics/Diagnostic.h"
#include "lytFilterParser/request/LYTKovaRequest.h"

namespace lytFilterParser {

// What writing the request of `text` for `peer` loses, positions in bytes
// of `text`:
//   peer-unsupported  the peer has no text for the request (peers 0 and
//                     below, above 3; a "vl" request for peers 1 and 2)
//   text-unreadable   the peer refuses the text written for it
//   operator-changed  a compound filter reads back with the other operator
//   filter-dropped    a filter the text loses (a nested compound for peers
//                     1 and 2, a type older peers do not filter by)
//   filter-changed    a filter that reads back negated otherwise, or one
//                     the text gains
//   item-dropped, item-added, item-changed   names and interface items
//                     ("eth0" reads back as "eth0,out" for peers 1 and 2)
//   column-dropped, column-added, column-changed, column-moved   columns
//   mode-changed      an accumulation mode ("acc=lineUtil" for peers 1, 2)
//   option-changed    a column option ("dir=in" is not written for them)
//   sort-changed      the sort type and index, or the updates
// The request is taken as the text gives it: validation completes a request
// (isValid), and the form below compares the completed one. A text the
// reader refuses, or without a word, gives no diagnostics. Throws what
// dump(peer) throws ("Not a valid argument for type" for a telNumber column).
LFP_API std::vector<Diagnostic> fidelity(const std::string& text, TavVersion peer);

// The same for `request`, which the caller read from `text` (and may have
// validated since, which completes it). A request that is not the text's
// gets its diagnostics placed on the whole text.
LFP_API std::vector<Diagnostic> fidelity(const std::string& text, const LYTKovaRequest& request, TavVersion peer);

}  // namespace lytFilterParser

#endif
