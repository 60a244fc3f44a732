#include "commands.h"

#include "lytFilterParser/request/NetworkKovaRequest.h"
#include "lytFilterParser/vocab/ColumnCatalogue.h"
#include "words.h"

namespace lytreq {

namespace {

Report start(const std::string& text) {
  Report report;
  report.input = text;
  return report;
}

// Reads `text` into `reading`; false (and the fault in `report`) when the
// library rejects it.
bool read(const std::string& text, Reading& reading, Report& report) {
  reading = readRequest(text);
  if (reading.fault) {
    report.fault = reading.fault;
    return false;
  }
  return true;
}

NetworkKovaRequest* networkRequest(Reading& reading, Report& report, const char* what) {
  NetworkKovaRequest* request = dynamic_cast<NetworkKovaRequest*>(reading.request.get());
  if (request == nullptr) {
    report.fault = Fault{
        "this is a \"" + std::string(virtualLinkWord()) + "\" (end-to-end) request: only network requests " + what,
        std::nullopt};
  }
  return request;
}

}  // namespace

Report parseCommand(const std::string& text, std::optional<int> peer) {
  Report report = start(text);
  Reading reading;
  if (!read(text, reading, report)) return report;
  try {
    report.request = peer ? reading.request->dump(TavVersion(*peer)) : reading.request->dump();
  } catch (const std::string& message) {
    report.fault = Fault{message, std::nullopt};
  }
  return report;
}

namespace {

// The oldest peer that accepts `request`: the library's answer, unless its
// check throws on the way (for a type that an older peer's check cannot
// name); then each peer is asked on its own and a throw counts as a refusal.
int minimalPeer(const NetworkKovaRequest& request) {
  NetworkKovaRequest copy(request);
  std::string error;
  try {
    return copy.getMinimalValidVersion(error);
  } catch (const std::string&) {
  }
  for (int peer = TAV_VERSION_LEGACY_1; peer <= TAV_VERSION_CURRENT; ++peer) {
    NetworkKovaRequest forPeer(request);
    try {
      if (forPeer.isValid(TavVersion(peer), error)) return peer;
    } catch (const std::string&) {
    }
  }
  return TAV_VERSION_NONE;
}

}  // namespace

Report checkCommand(const std::string& text, int peer) {
  Report report = start(text);
  report.verdict = true;
  report.peer = peer;
  Reading reading;
  if (!read(text, reading, report)) return report;
  NetworkKovaRequest* request = networkRequest(reading, report, "can be checked");
  if (request == nullptr) return report;

  // The check completes the request it looks at; each question gets a copy.
  NetworkKovaRequest forPeer(*request);
  std::string error;
  bool valid = false;
  try {
    valid = forPeer.isValid(TavVersion(peer), error);
  } catch (const std::string& message) {
    error = message;
  }
  report.minimalPeer = minimalPeer(*request);
  report.valid = valid;
  if (!valid) report.message = error;
  return report;
}

Report convertCommand(const std::string& text, int peer) {
  Report report = start(text);
  Conversion conversion = convertLegacy(text, TavVersion(peer));
  if (conversion.fault) {
    report.fault = conversion.fault;
  } else {
    report.request = conversion.request;
  }
  return report;
}

Report columnsCommand(const std::string& text, int peer) {
  Report report = start(text);
  Reading reading;
  if (!read(text, reading, report)) return report;
  NetworkKovaRequest* request = networkRequest(reading, report, "have query-interface columns");
  if (request == nullptr) return report;

  std::vector<int> numbers;
  try {
    numbers = request->getKovaColumns(TavVersion(peer));
  } catch (const std::string& message) {
    report.fault = Fault{message, std::nullopt};
    return report;
  }

  // Peer 3 maps every key, then every value; older peers ask for the entry
  // name of the first key and the counter of the first value only.
  std::vector<const TavColumn*> order;
  if (peer == TAV_VERSION_CURRENT) {
    for (const TavColumn& key : request->getKeys()) order.push_back(&key);
    for (const TavColumn& value : request->getValues()) order.push_back(&value);
  } else {
    order.push_back(request->getKeys().empty() ? nullptr : &request->getKeys()[0]);
    order.push_back(request->getValues().empty() ? nullptr : &request->getValues()[0]);
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
  report.columns = columns;
  return report;
}

Report namesCommand(const std::string& text) {
  Report report = start(text);
  Reading reading;
  if (!read(text, reading, report)) return report;
  const strList names = reading.request->getModuleNames();
  report.names = std::vector<std::string>(names.begin(), names.end());
  return report;
}

Report resolveCommand(const std::string& text, const NameMap& map) {
  Report report = start(text);
  Reading reading;
  if (!read(text, reading, report)) return report;
  strList names = reading.request->getModuleNames();
  strList resolved;
  for (const std::string& name : names) {
    const auto found = map.find(name);
    if (found == map.end()) {
      report.fault = Fault{"no resolved name in the map for: " + name, findToken(text, name)};
      return report;
    }
    resolved.push_back(found->second);
  }
  try {
    if (!reading.request->setModuleNames(names, resolved)) {
      report.fault = Fault{"the request did not take the resolved names", std::nullopt};
      return report;
    }
    report.request = reading.request->dump();
  } catch (const std::string& message) {
    report.fault = Fault{message, std::nullopt};
  }
  return report;
}

}  // namespace lytreq
