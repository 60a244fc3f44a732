// A request read once with its record: the request (or why the reader
// refuses the text) and every diagnostic of it, without reading the text
// again. For a caller that asks for several diagnostics of one input, as a
// tool's explain does; lint(text), fidelity(text, peer) and the others each
// read their text themselves.
#ifndef LYTFILTERPARSER_DIAGNOSTICS_RECORDEDREQUEST_H
#define LYTFILTERPARSER_DIAGNOSTICS_RECORDEDREQUEST_H

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "lytFilterParser/Export.h"
#include "lytFilterParser/base/TavVersion.h"
#include "lytFilterParser/diagnostics/Diagnostic.h"
#include "lytFilterParser/diagnostics/Refusal.h"

class LYTKovaRequest;
class NetworkKovaRequest;

namespace lytFilterParser {

class LFP_API RecordedRequest {
 public:
  // Reads `text` as getLYTKovaRequest does, keeping the place of every item.
  // Throws std::bad_alloc only.
  explicit RecordedRequest(std::string text);
  RecordedRequest(RecordedRequest&&) noexcept;
  RecordedRequest& operator=(RecordedRequest&&) noexcept;
  ~RecordedRequest();

  const std::string& text() const;
  // The request the text gives; null when the reader refuses it or it has no word.
  const LYTKovaRequest* request() const;
  // As readRefusal(text).
  std::optional<Refusal> refusal() const;
  // As lint(text).
  std::vector<Diagnostic> lint() const;
  // As fidelity(text, peer).
  std::vector<Diagnostic> fidelity(TavVersion peer) const;
  // As fidelity(text, completed, peer) without reading the text again, for
  // `completed`: a copy of request() that validation has completed since
  // (which changes modes and the sort, never the items the record places).
  // Throws what dump(peer) throws.
  std::vector<Diagnostic> fidelity(const LYTKovaRequest& completed, TavVersion peer) const;
  // As validate(text, request, peer) on a copy of the request, which
  // validation completes: the request held here stays as read. Nothing for
  // an accepted request, and for a "vl" request, which is not validated.
  std::optional<Refusal> validate(TavVersion peer) const;
  // As validate(text, request, peer) without reading the text again, for
  // `request`: a copy of request(), which validation completes (here and
  // perhaps before, for other peers). Throws what isValid throws.
  std::optional<Refusal> validate(NetworkKovaRequest& request, TavVersion peer) const;

 private:
  struct State;
  std::unique_ptr<State> state;
};

}  // namespace lytFilterParser

#endif
