#include "lytFilterParser/diagnostics/RecordedRequest.h"

#include <utility>

#include "lytFilterParser/diagnostics/Reading.h"
#include "lytFilterParser/request/NetworkKovaRequest.h"

namespace lytFilterParser {

// The record views the text: both stay where they are for the state's life.
struct RecordedRequest::State {
  std::string text;
  detail::Reading reading;
};

RecordedRequest::RecordedRequest(std::string text) : state(new State{std::move(text), {}}) {
  state->reading = detail::readText(state->text, true, detail::Keep::RequestAndRecord);
}

RecordedRequest::RecordedRequest(RecordedRequest&&) noexcept = default;
RecordedRequest& RecordedRequest::operator=(RecordedRequest&&) noexcept = default;
RecordedRequest::~RecordedRequest() = default;

const std::string& RecordedRequest::text() const { return state->text; }

const LYTKovaRequest* RecordedRequest::request() const { return state->reading.request.get(); }

std::optional<Refusal> RecordedRequest::refusal() const {
  const detail::Reading& reading = state->reading;
  if (reading.request || reading.fault.empty()) return std::nullopt;
  return detail::refusalAt(reading.fault, reading.at, reading.record.expected, state->text);
}

std::vector<Diagnostic> RecordedRequest::lint() const { return detail::lintReading(state->reading); }

std::vector<Diagnostic> RecordedRequest::fidelity(TavVersion peer) const {
  if (!state->reading.request) return {};
  return detail::compare(*state->reading.request, state->reading, true, peer);
}

std::vector<Diagnostic> RecordedRequest::fidelity(const LYTKovaRequest& completed, TavVersion peer) const {
  return detail::compare(completed, state->reading, true, peer);
}

std::optional<Refusal> RecordedRequest::validate(TavVersion peer) const {
  const auto* network = dynamic_cast<const NetworkKovaRequest*>(state->reading.request.get());
  if (network == nullptr) return std::nullopt;
  NetworkKovaRequest copy(*network);
  return validate(copy, peer);
}

std::optional<Refusal> RecordedRequest::validate(NetworkKovaRequest& request, TavVersion peer) const {
  std::string message;
  detail::Blame blame;
  if (detail::Validator::isValid(request, peer, message, &blame)) return std::nullopt;
  const Span at = detail::blamedPlace(state->reading.record, blame);
  return Refusal{std::move(message), at.start, at.length, {}};
}

}  // namespace lytFilterParser
