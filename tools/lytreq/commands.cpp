#include "commands.h"

#include <algorithm>

#include "explain.h"
#include "lytFilterParser/diagnostics/Fidelity.h"
#include "lytFilterParser/diagnostics/Lint.h"
#include "lytFilterParser/diagnostics/Validation.h"
#include "lytFilterParser/request/NetworkKovaRequest.h"
#include "lytFilterParser/vocab/ColumnCatalogue.h"
#include "words.h"

namespace lytreq {

bool Report::rejected() const {
  if (fault || (valid && !*valid)) return true;
  if (!peers || explanation) return false;
  for (const PeerVerdict& verdict : *peers) {
    if (verdict.valid) return false;
  }
  return true;
}

std::vector<Diagnostic> Report::diagnostics() const {
  std::vector<Diagnostic> all = warnings;
  if (peers && !explanation) {
    for (const PeerVerdict& verdict : *peers) all.insert(all.end(), verdict.losses.begin(), verdict.losses.end());
  }
  return all;
}

void Report::dropDiagnostics() {
  warnings.clear();
  if (peers && !explanation) {
    for (PeerVerdict& verdict : *peers) verdict.losses.clear();
  }
}

namespace {

// The fidelity code of a peer that has no text for the request at all.
const char* const kPeerUnsupported = "peer-unsupported";

Report start(const std::string& text, bool oneLine = false) {
  Report report;
  report.input = text;
  report.oneLine = oneLine;
  return report;
}

// Reads `text` into `reading`, with the lint of the text in `report`; false
// (and the fault in `report`) when the library rejects it. With `diagnose`
// (or `record`) the reading keeps its record, which every diagnostic of the
// text reads: the text is read once.
bool read(const std::string& text, Reading& reading, Report& report, bool diagnose, bool record = false) {
  reading = readRequest(text, diagnose || record);
  if (diagnose) report.warnings = reading.recorded ? reading.recorded->lint() : lytFilterParser::lint(text);
  if (reading.fault) {
    report.fault = std::move(reading.fault);
    return false;
  }
  return true;
}

const NetworkKovaRequest* networkRequest(const Reading& reading, Report& report, const char* what) {
  const auto* request = dynamic_cast<const NetworkKovaRequest*>(reading.request());
  if (request == nullptr) {
    report.fault = Fault{
        "this is a \"" + std::string(virtualLinkWord()) + "\" (end-to-end) request: only network requests " + what,
        std::nullopt,
        {}};
  }
  return request;
}

// Adds what a text for a peer loses to the lint of the text, except a loss
// on the very words a lint finding marks: the lint has told that change
// already ("`or` has no filter in it and is ignored" and "this compound
// filter ... is lost" are one fact).
void append(std::vector<Diagnostic>& to, const std::vector<Diagnostic>& more) {
  const std::size_t linted = to.size();
  for (const Diagnostic& loss : more) {
    const auto told = [&](const Diagnostic& d) { return d.start == loss.start && d.length == loss.length; };
    if (std::none_of(to.begin(), to.begin() + static_cast<std::ptrdiff_t>(linted), told)) to.push_back(loss);
  }
}

// The text for a peer, or the message the library threw writing it.
struct Written {
  std::string text;
  std::optional<std::string> fault;
};

// What peer `peer` makes of `request`, read from `text`: a network request
// is checked for the peer (isValid, on a copy, which it completes; a message
// it throws refuses the request, without a place); any request is refused
// by a peer that has no text for it. When the peer accepts the request, the
// verdict has what the text for the peer loses, and `written` (if given)
// that text. A message thrown while writing leaves the verdict as it is,
// without losses, and goes to `written`. Without `diagnose` the losses of a
// network request are not looked for: a peer that accepts one (1 to 3) has
// a text for it, so only the verdict could come of them.
// `own`, when given, is `request` itself, checked in place instead of a
// copy: a caller that needs the request no more saves a copy of every name.
// Without `placed` a refusal has no place (nobody shows it), which spares
// finding the item to blame. Places and losses come from the record of
// `reading` when it has one; without, the text is read again for them.
PeerVerdict judge(const Reading& reading, const std::string& text, const LYTKovaRequest& request, int peer,
                  bool diagnose, Written* written = nullptr, NetworkKovaRequest* own = nullptr, bool placed = true) {
  PeerVerdict verdict;
  verdict.peer = peer;
  const TavVersion version = static_cast<TavVersion>(peer);
  std::optional<NetworkKovaRequest> copy;
  NetworkKovaRequest* checked = own;
  if (const auto* network = dynamic_cast<const NetworkKovaRequest*>(&request); network != nullptr && own == nullptr) {
    checked = &copy.emplace(*network);
  }
  if (checked != nullptr) {
    try {
      if (!placed) {
        if (!checked->isValid(version, verdict.message)) return verdict;
      } else if (const auto refusal = reading.recorded ? reading.recorded->validate(*checked, version)
                                                       : lytFilterParser::validate(text, *checked, version)) {
        verdict.message = refusal->message;
        verdict.where = Span{refusal->start, refusal->length};
        return verdict;
      }
    } catch (const std::string& message) {
      verdict.message = message;
      return verdict;
    }
  }
  const LYTKovaRequest& sent = checked != nullptr ? static_cast<const LYTKovaRequest&>(*checked) : request;
  verdict.valid = true;
  try {
    if (!diagnose && checked != nullptr) {
      if (written != nullptr) written->text = sent.dump(version);
      return verdict;
    }
    std::vector<Diagnostic> losses =
        reading.recorded ? reading.recorded->fidelity(sent, version) : lytFilterParser::fidelity(text, sent, version);
    for (Diagnostic& loss : losses) {
      if (loss.code == kPeerUnsupported) {
        verdict.valid = false;
        verdict.message = loss.message;
        verdict.where = Span{loss.start, loss.length};
        verdict.losses.clear();
        return verdict;
      }
      verdict.losses.push_back(std::move(loss));
    }
    if (written != nullptr) written->text = sent.dump(version);
  } catch (const std::string& message) {
    verdict.losses.clear();
    if (written != nullptr) written->fault = message;
  }
  return verdict;
}

// The verdicts of peers 1 to 3.
std::vector<PeerVerdict> judgeAll(const Reading& reading, const std::string& text, const LYTKovaRequest& request,
                                  bool diagnose) {
  std::vector<PeerVerdict> verdicts;
  for (int peer = TAV_VERSION_LEGACY_1; peer <= TAV_VERSION_CURRENT; ++peer) {
    verdicts.push_back(judge(reading, text, request, peer, diagnose));
  }
  return verdicts;
}

int firstValid(const std::vector<PeerVerdict>& verdicts) {
  for (const PeerVerdict& verdict : verdicts) {
    if (verdict.valid) return verdict.peer;
  }
  return TAV_VERSION_NONE;
}

// The oldest peer that accepts `request`, asked of `request` itself, which
// the checks complete (as getMinimalValidVersion does with every peer it
// tries): the library's answer, unless its check throws on the way (for a
// type that an older peer's check cannot name); then each peer is asked on
// its own, of the request as read (the record's, or read again from
// `text`), and a throw counts as a refusal.
int minimalPeer(const Reading& reading, const std::string& text, NetworkKovaRequest& request) {
  std::string error;
  try {
    return request.getMinimalValidVersion(error);
  } catch (const std::string&) {
  }
  Reading again;
  if (!reading.recorded || reading.recorded->request() == nullptr) again = readRequest(text, false);
  const auto* original = dynamic_cast<const NetworkKovaRequest*>(
      again.request() != nullptr ? again.request() : reading.recorded->request());
  if (original == nullptr) return TAV_VERSION_NONE;
  for (int peer = TAV_VERSION_LEGACY_1; peer <= TAV_VERSION_CURRENT; ++peer) {
    NetworkKovaRequest forPeer(*original);
    try {
      if (forPeer.isValid(TavVersion(peer), error)) return peer;
    } catch (const std::string&) {
    }
  }
  return TAV_VERSION_NONE;
}

}  // namespace

Report parseCommand(const std::string& text, std::optional<int> peer, bool diagnose) {
  Report report = start(text, true);
  Reading reading;
  if (!read(text, reading, report, diagnose)) return report;
  if (!peer) {
    // The text written is the current peer's: what it loses (a left-out
    // "index=" that made the request invalid ...) is told as for --peer.
    try {
      report.request = reading.request()->dump();
      if (diagnose) append(report.warnings, reading.recorded->fidelity(TavVersion(TAV_VERSION_CURRENT)));
    } catch (const std::string& message) {
      report.fault = Fault{message, std::nullopt, {}};
    }
    return report;
  }
  Written written;
  LYTKovaRequest* request = reading.changeable();
  PeerVerdict verdict =
      judge(reading, text, *request, *peer, diagnose, &written, dynamic_cast<NetworkKovaRequest*>(request));
  if (!verdict.valid) {
    report.fault = Fault{verdict.message, verdict.where, {}};
    return report;
  }
  if (written.fault) {
    report.fault = Fault{*written.fault, std::nullopt, {}};
    return report;
  }
  report.request = written.text;
  append(report.warnings, verdict.losses);
  return report;
}

Report checkCommand(const std::string& text, int peer, bool diagnose, bool placed) {
  Report report = start(text);
  report.verdict = true;
  report.peer = peer;
  Reading reading;
  if (!read(text, reading, report, diagnose)) return report;
  if (networkRequest(reading, report, "can be checked") == nullptr) return report;
  auto* request = static_cast<NetworkKovaRequest*>(reading.changeable());

  // Both checks on one request, the one read (or one copy of the recorded
  // one): the oldest peer first, whose checks complete the request as the
  // check for `peer` would.
  report.minimalPeer = minimalPeer(reading, text, *request);
  PeerVerdict verdict = judge(reading, text, *request, peer, diagnose, nullptr, request, placed);
  report.valid = verdict.valid;
  report.message = verdict.message;
  report.where = verdict.where;
  append(report.warnings, verdict.losses);
  return report;
}

Report checkAllCommand(const std::string& text, bool diagnose) {
  Report report = start(text);
  report.verdict = true;
  Reading reading;
  if (!read(text, reading, report, diagnose)) return report;
  const NetworkKovaRequest* request = networkRequest(reading, report, "can be checked");
  if (request == nullptr) return report;
  report.peers = judgeAll(reading, text, *request, diagnose);
  report.minimalPeer = firstValid(*report.peers);
  return report;
}

Report explainCommand(const std::string& text, bool diagnose) {
  Report report = start(text);
  Reading reading;
  // Each peer's losses are part of the explanation: the reading keeps its record.
  if (!read(text, reading, report, diagnose, true)) return report;
  report.explanation = explainRequest(*reading.request());
  report.peers = judgeAll(reading, text, *reading.request(), true);
  report.minimalPeer = firstValid(*report.peers);
  return report;
}

Report convertCommand(const std::string& text, int peer) {
  Report report = start(text, true);
  LegacyConversion conversion = convertLegacy(text, TavVersion(peer));
  report.warnings = std::move(conversion.diagnostics);
  if (conversion.fault) {
    report.fault = std::move(conversion.fault);
  } else {
    report.request = conversion.request;
  }
  return report;
}

std::vector<Column> queryColumns(const NetworkKovaRequest& request, int peer) {
  const std::vector<int> numbers = request.getKovaColumns(TavVersion(peer));

  // Peer 3 maps every key, then every value; older peers ask for the entry
  // name of the first key and the counter of the first value only.
  std::vector<const TavColumn*> order;
  if (peer == TAV_VERSION_CURRENT) {
    for (const TavColumn& key : request.getKeys()) order.push_back(&key);
    for (const TavColumn& value : request.getValues()) order.push_back(&value);
  } else {
    order.push_back(request.getKeys().empty() ? nullptr : &request.getKeys()[0]);
    order.push_back(request.getValues().empty() ? nullptr : &request.getValues()[0]);
  }

  std::vector<Column> columns;
  for (std::size_t i = 0; i < numbers.size(); ++i) {
    Column column;
    column.number = numbers[i];
    const char* name = lytFilterParser::getKovaColumnName(numbers[i] - 1);
    column.name = name != nullptr ? name : "?";
    const TavColumn* source = i < order.size() ? order[i] : nullptr;
    if (source != nullptr) {
      column.role = source->getKeyOrValue() == TAV_KEY ? "key" : "value";
      column.type = valueTypeWord(source->getValueType());
    }
    columns.push_back(column);
  }
  return columns;
}

Report columnsCommand(const std::string& text, int peer, bool diagnose) {
  Report report = start(text);
  Reading reading;
  if (!read(text, reading, report, diagnose)) return report;
  const NetworkKovaRequest* request = networkRequest(reading, report, "have query-interface columns");
  if (request == nullptr) return report;
  try {
    report.columns = queryColumns(*request, peer);
  } catch (const std::string& message) {
    report.fault = Fault{message, std::nullopt, {}};
  }
  return report;
}

Report namesCommand(const std::string& text, bool diagnose) {
  Report report = start(text);
  Reading reading;
  if (!read(text, reading, report, diagnose)) return report;
  const strList names = reading.request()->getModuleNames();
  report.names = std::vector<std::string>(names.begin(), names.end());
  return report;
}

Report resolveCommand(const std::string& text, const NameMap& map, bool diagnose) {
  Report report = start(text, true);
  Reading reading;
  if (!read(text, reading, report, diagnose)) return report;
  LYTKovaRequest* request = reading.changeable();
  strList names = request->getModuleNames();
  strList resolved;
  for (const std::string& name : names) {
    const auto found = map.find(name);
    if (found == map.end()) {
      report.fault = Fault{"no resolved name in the map for: " + name, findToken(text, name), {}};
      return report;
    }
    resolved.push_back(found->second);
  }
  try {
    if (!request->setModuleNames(names, resolved)) {
      report.fault = Fault{"the request did not take the resolved names", std::nullopt, {}};
      return report;
    }
    report.request = request->dump();
  } catch (const std::string& message) {
    report.fault = Fault{message, std::nullopt, {}};
  }
  return report;
}

}  // namespace lytreq
