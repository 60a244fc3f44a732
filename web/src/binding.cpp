// The WebAssembly face of the library: plain C functions that the
// JavaScript layer (web/package/index.js) calls with numbers only.
//
// How texts cross:
// - In: JavaScript writes the UTF-8 bytes of a text into the input buffer
//   (lfp_input gives it, large enough) with TextEncoder.encodeInto and passes
//   their count; no per-call allocation on either side.
// - Out: every function leaves its text result (a written request, a
//   message, or JSON for structured results) in one result string and puts
//   its address and size in the result slot, which JavaScript reads from
//   memory; TextDecoder makes the string.
// - Places (of a refusal, of a diagnostic) leave in UTF-16 code units of the
//   JavaScript string, not in the library's bytes.
// - Every message the library throws is caught here; nothing unwinds into
//   JavaScript.
//
// A request lives in a Held object that JavaScript owns by its address
// until it calls lfp_free.
#include <emscripten/emscripten.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <new>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "lytFilterParser/LibraryVersion.h"
#include "lytFilterParser/lytFilterParser.h"

namespace {

using lytFilterParser::Diagnostic;
using lytFilterParser::Refusal;
using lytFilterParser::Word;
using lytFilterParser::WordKind;

// ---------------------------------------------------------------------------
// Buffers
// ---------------------------------------------------------------------------

// Read by JavaScript: where the result is, its size in bytes, and a number
// some calls give beside it (the kind of a parsed request).
struct Slot {
  std::uint32_t data;
  std::uint32_t size;
  std::int32_t extra;
};
Slot slot{0, 0, 0};
std::string result;

char* inputData = nullptr;
std::size_t inputCapacity = 0;

void publish() {
  slot.data = static_cast<std::uint32_t>(reinterpret_cast<std::uintptr_t>(result.data()));
  slot.size = static_cast<std::uint32_t>(result.size());
}

void give(std::string text) {
  result = std::move(text);
  publish();
}

std::string input(std::size_t size) { return std::string(inputData, size); }

// ---------------------------------------------------------------------------
// UTF-16 places
// ---------------------------------------------------------------------------

// Places in UTF-16 code units of the bytes of one UTF-8 text: a sequence of
// four bytes is two units, any other character one. Each call counts on
// from the place before, so places in the order of the text cost one pass.
class Units {
 public:
  explicit Units(const std::string& text) : text(text) {}

  std::size_t before(std::size_t to) {
    if (to > text.size()) to = text.size();
    for (; byte < to; ++byte) count += weight(static_cast<unsigned char>(text[byte]));
    for (; byte > to; --byte) count -= weight(static_cast<unsigned char>(text[byte - 1]));
    return count;
  }

 private:
  // A lead byte counts its character's units; continuation bytes count none.
  static std::size_t weight(unsigned char c) {
    if ((c & 0xC0u) == 0x80u) return 0;
    return c >= 0xF0u ? 2 : 1;
  }

  const std::string& text;
  std::size_t byte = 0;
  std::size_t count = 0;
};

// ---------------------------------------------------------------------------
// JSON
// ---------------------------------------------------------------------------

void jsonString(std::string& out, std::string_view text) {
  static const char hex[] = "0123456789abcdef";
  out += '"';
  for (const char c : text) {
    const unsigned char u = static_cast<unsigned char>(c);
    if (c == '"' || c == '\\') {
      out += '\\';
      out += c;
    } else if (u < 0x20u) {
      out += "\\u00";
      out += hex[u >> 4];
      out += hex[u & 0xFu];
    } else {
      out += c;
    }
  }
  out += '"';
}

void jsonNumber(std::string& out, long long number) { out += std::to_string(number); }

void jsonStrings(std::string& out, const std::vector<std::string>& words) {
  out += '[';
  for (std::size_t i = 0; i < words.size(); ++i) {
    if (i) out += ',';
    jsonString(out, words[i]);
  }
  out += ']';
}

void jsonPlace(std::string& out, Units& units, std::size_t start, std::size_t length) {
  const std::size_t first = units.before(start);
  out += ",\"start\":";
  jsonNumber(out, static_cast<long long>(first));
  out += ",\"length\":";
  jsonNumber(out, static_cast<long long>(units.before(start + length) - first));
}

void jsonDiagnostics(std::string& out, const std::vector<Diagnostic>& diagnostics, const std::string& text) {
  Units units(text);
  out += '[';
  for (std::size_t i = 0; i < diagnostics.size(); ++i) {
    const Diagnostic& d = diagnostics[i];
    if (i) out += ',';
    out += "{\"code\":";
    jsonString(out, d.code);
    out += ",\"severity\":";
    jsonString(out, lytFilterParser::severityName(d.severity));
    out += ",\"message\":";
    jsonString(out, d.message);
    jsonPlace(out, units, d.start, d.length);
    out += '}';
  }
  out += ']';
}

// A refusal: {"message", "start", "length", "suggestions"}; a message that
// the refusal is not about has no place.
void jsonFault(std::string& out, const std::string& message, const std::optional<Refusal>& refusal,
               const std::string& text) {
  out += "{\"message\":";
  jsonString(out, message);
  if (refusal && refusal->message == message) {
    Units units(text);
    jsonPlace(out, units, refusal->start, refusal->length);
    out += ",\"suggestions\":";
    jsonStrings(out, refusal->suggestions);
  }
  out += '}';
}

// ---------------------------------------------------------------------------
// Words of the model
// ---------------------------------------------------------------------------

// The written word of `code` among the words of `kind` ("" when none): the
// model names every item as the vocabulary writes it.
std::string_view wordOf(WordKind kind, int code) {
  std::string_view readOnly;
  for (const Word& word : lytFilterParser::vocabulary()) {
    if (word.kind != kind || word.code != code) continue;
    if (word.written) return word.text;
    if (readOnly.empty()) readOnly = word.text;
  }
  return readOnly;
}

// The column option words by option: the vocabulary lists each option's
// values together, the options in the order direction, encryption,
// compression, print, url; an option's words share their name (the text up
// to and with '=').
struct OptionWords {
  std::vector<std::pair<std::string_view, std::vector<const Word*>>> options;

  OptionWords() {
    for (const Word& word : lytFilterParser::vocabulary()) {
      if (word.kind != WordKind::ColumnOption) continue;
      const std::string_view name = word.text.substr(0, word.text.find('=') + 1);
      if (options.empty() || options.back().first != name) options.emplace_back(name, std::vector<const Word*>{});
      options.back().second.push_back(&word);
    }
  }

  std::string_view word(std::size_t option, int code) const {
    if (option >= options.size()) return {};
    for (const Word* w : options[option].second) {
      if (w->code == code) return w->text;
    }
    return {};
  }
};

const OptionWords& optionWords() {
  static const OptionWords words;
  return words;
}

// The word that opens an end-to-end request, which names its kind.
std::string_view virtualLinkWord() {
  for (const Word& word : lytFilterParser::vocabulary()) {
    if (word.kind == WordKind::VirtualLink) return word.text;
  }
  return {};
}

void jsonNames(std::string& out, const TavEntityArray& entities) {
  out += '[';
  bool first = true;
  for (const TavEntity& entity : entities) {
    if (!first) out += ',';
    first = false;
    out += "{\"name\":";
    jsonString(out, entity.getName());
    out += ",\"resolved\":";
    jsonString(out, entity.getResolvedName());
    out += '}';
  }
  out += ']';
}

void jsonColumn(std::string& out, const TavColumn& column) {
  const OptionWords& options = optionWords();
  const TavColumnFilter& filter = column.getColumnFilter();
  // The options in the order the vocabulary lists them: direction,
  // encryption, compression, print, url.
  const int values[] = {filter.getDirection(), filter.getEncryptionMode(), filter.getCompressionMode(),
                        filter.getCitrixPrintMode(), filter.getUrlMode()};
  static const char* const names[] = {"direction", "encryption", "compression", "print", "url"};
  out += "{\"type\":";
  jsonString(out, wordOf(WordKind::ValueType, column.getValueType()));
  out += ",\"mode\":";
  jsonString(out, wordOf(WordKind::AccumulationMode, column.getAccType()));
  out += ",\"options\":{";
  for (std::size_t i = 0; i < 5; ++i) {
    if (i) out += ',';
    out += '"';
    out += names[i];
    out += "\":";
    jsonString(out, options.word(i, values[i]));
  }
  out += "},\"names\":";
  jsonNames(out, column.getEntities());
  out += '}';
}

void jsonColumns(std::string& out, const TavColumnArray& columns) {
  out += '[';
  for (std::size_t i = 0; i < columns.size(); ++i) {
    if (i) out += ',';
    jsonColumn(out, columns[i]);
  }
  out += ']';
}

void jsonAtom(std::string& out, const AbstractFilter& node) {
  if (const auto* content = dynamic_cast<const ContentFilterBase*>(&node)) {
    out += "{\"kind\":\"content\",\"type\":";
    jsonString(out, wordOf(WordKind::ValueType, content->getFilterType()));
    out += ",\"negated\":";
    out += content->isNegated() ? "true" : "false";
    out += ",\"names\":";
    jsonNames(out, content->getEntities());
    out += '}';
    return;
  }
  const auto& interface = dynamic_cast<const InterfaceAtomFilter&>(node);
  out += "{\"kind\":\"interface\",\"negated\":";
  out += interface.isNegated() ? "true" : "false";
  out += ",\"interfaces\":[";
  bool first = true;
  for (const InterfaceInfo& item : interface.getInterfaces()) {
    if (!first) out += ',';
    first = false;
    out += "{\"name\":";
    jsonString(out, item.getName());
    out += ",\"direction\":";
    jsonString(out, wordOf(WordKind::InterfaceDirection, item.getDirection()));
    out += '}';
  }
  out += "]}";
}

// The filter tree, walked with a stack of its own: a request may nest a
// million compounds deep.
void jsonFilter(std::string& out, const Filter& root) {
  struct Open {
    const Filter* filter;
    std::size_t next;
  };
  std::vector<Open> stack;
  auto open = [&](const Filter& filter) {
    out += "{\"kind\":\"compound\",\"operator\":";
    jsonString(out, wordOf(WordKind::FilterOperator, filter.getOperator()));
    out += ",\"children\":[";
    stack.push_back(Open{&filter, 0});
  };
  open(root);
  while (!stack.empty()) {
    Open& top = stack.back();
    const Filter::Children& children = top.filter->getChildren();
    if (top.next == children.size()) {
      out += "]}";
      stack.pop_back();
      continue;
    }
    if (top.next) out += ',';
    const AbstractFilter& child = *children[top.next++];
    if (const auto* compound = dynamic_cast<const Filter*>(&child)) {
      open(*compound);  // `top` is not used after this
    } else {
      jsonAtom(out, child);
    }
  }
}

void jsonModel(std::string& out, const LYTKovaRequest& request) {
  if (const auto* network = dynamic_cast<const NetworkKovaRequest*>(&request)) {
    out += "{\"kind\":\"network\",\"filter\":";
    jsonFilter(out, network->getFilter());
    out += ",\"keys\":";
    jsonColumns(out, network->getKeys());
    out += ",\"values\":";
    jsonColumns(out, network->getValues());
    out += ",\"sort\":{\"type\":";
    jsonString(out, wordOf(WordKind::SortType, network->getSortType()));
    out += ",\"index\":";
    jsonNumber(out, network->getSortIndex());
    out += ",\"updates\":";
    jsonNumber(out, network->getMaxUpdates());
    out += "}}";
    return;
  }
  const auto& link = dynamic_cast<const E2EKovaRequest&>(request);
  out += "{\"kind\":";
  jsonString(out, virtualLinkWord());
  out += ",\"link\":";
  jsonString(out, link.getVLName());
  out += ",\"dataType\":";
  jsonString(out, link.dumpDataType());
  out += '}';
}

// ---------------------------------------------------------------------------
// Requests
// ---------------------------------------------------------------------------

struct Held {
  std::unique_ptr<LYTKovaRequest> request;
  std::string text;  // the UTF-8 text it was read from (places of its findings are in it)

  NetworkKovaRequest* network() { return dynamic_cast<NetworkKovaRequest*>(request.get()); }
};

Held* held(std::uintptr_t handle) { return reinterpret_cast<Held*>(handle); }

// The first character of `name` that a request's text cannot carry in a
// resolved name (a blank, which separates, or a bracket word); 0 for none.
char uncarried(const std::string& name) {
  for (const char c : name) {
    if (c == ' ') return c;
    for (const Word& word : lytFilterParser::vocabulary()) {
      if (word.kind == WordKind::Bracket && word.text.size() == 1 && word.text[0] == c) return c;
    }
  }
  return 0;
}

// Runs `work`, which leaves its result itself; a message the library throws
// becomes the result and the call answers -1.
template <class Work>
int guarded(Work&& work) {
  try {
    return work();
  } catch (const std::string& message) {
    give(message);
  } catch (const std::bad_alloc&) {
    give("the module ran out of memory");
  } catch (const std::exception& e) {
    give(e.what());
  } catch (...) {
    give("unexpected failure");
  }
  return -1;
}

enum Kind : std::int32_t { KIND_NONE = 0, KIND_NETWORK = 1, KIND_VL = 2, KIND_FAULT = 3 };

}  // namespace

extern "C" {

EMSCRIPTEN_KEEPALIVE Slot* lfp_slot() { return &slot; }

// A buffer of at least `size` bytes for the next text; its address.
EMSCRIPTEN_KEEPALIVE char* lfp_input(std::size_t size) {
  if (size > inputCapacity) {
    char* grown = static_cast<char*>(std::realloc(inputData, size));
    if (grown == nullptr) return nullptr;
    inputData = grown;
    inputCapacity = size;
  }
  return inputData;
}

// Reads the text of `size` bytes in the input buffer. Answers the request's
// address (the slot's extra says network or vl), or 0: for an empty text
// (extra KIND_NONE) or a refused one (KIND_FAULT, the result is the fault).
EMSCRIPTEN_KEEPALIVE std::uintptr_t lfp_parse(std::size_t size) {
  slot.extra = KIND_NONE;
  std::uintptr_t handle = 0;
  const int answer = guarded([&] {
    std::string text = input(size);
    std::string error;
    std::unique_ptr<LYTKovaRequest> request(LYTKovaRequest::getLYTKovaRequest(text, error));
    if (!request) {
      if (error.empty()) return 0;
      std::string out;
      jsonFault(out, error, lytFilterParser::readRefusal(text), text);
      give(std::move(out));
      slot.extra = KIND_FAULT;
      return 0;
    }
    slot.extra = dynamic_cast<NetworkKovaRequest*>(request.get()) ? KIND_NETWORK : KIND_VL;
    handle = reinterpret_cast<std::uintptr_t>(new Held{std::move(request), std::move(text)});
    return 0;
  });
  if (answer < 0) {
    // A failure of the module itself (memory): a fault without a place.
    std::string out;
    jsonFault(out, result, std::nullopt, std::string());
    give(std::move(out));
    slot.extra = KIND_FAULT;
  }
  return handle;
}

EMSCRIPTEN_KEEPALIVE void lfp_free(std::uintptr_t handle) { delete held(handle); }

// The request written for `peer`, or as read when `peer` is 0.
EMSCRIPTEN_KEEPALIVE int lfp_dump(std::uintptr_t handle, int peer) {
  return guarded([&] {
    Held& h = *held(handle);
    give(peer == 0 ? h.request->dump() : h.request->dump(TavVersion(peer)));
    return 0;
  });
}

// 1 when valid, 0 when not (the result is the message), -1 on a throw.
EMSCRIPTEN_KEEPALIVE int lfp_check(std::uintptr_t handle, int peer) {
  return guarded([&] {
    std::string error;
    const bool valid = held(handle)->network()->isValid(TavVersion(peer), error);
    give(std::move(error));
    return valid ? 1 : 0;
  });
}

// 0 when the request is valid for `peer`, else 1 with the fault as JSON.
EMSCRIPTEN_KEEPALIVE int lfp_validate(std::uintptr_t handle, int peer) {
  return guarded([&] {
    Held& h = *held(handle);
    const std::optional<Refusal> refusal = lytFilterParser::validate(h.text, *h.network(), TavVersion(peer));
    if (!refusal) return 0;
    std::string out;
    jsonFault(out, refusal->message, refusal, h.text);
    give(std::move(out));
    return 1;
  });
}

// The oldest peer that accepts the request, asked of a copy (the library
// completes the request for every peer it tries); 0 when none does. When the
// library's answer throws on the way (an older peer's check cannot name a
// type), each peer is asked on its own and a throw counts as a refusal.
EMSCRIPTEN_KEEPALIVE int lfp_minimal_peer(std::uintptr_t handle) {
  return guarded([&] {
    const NetworkKovaRequest& request = *held(handle)->network();
    std::string error;
    int peer = TAV_VERSION_NONE;
    try {
      NetworkKovaRequest copy(request);
      peer = copy.getMinimalValidVersion(error);
    } catch (const std::string&) {
      for (int tried = TAV_VERSION_LEGACY_1; tried <= TAV_VERSION_CURRENT && peer == TAV_VERSION_NONE; ++tried) {
        NetworkKovaRequest copy(request);
        try {
          if (copy.isValid(TavVersion(tried), error)) peer = tried;
        } catch (const std::string&) {
        }
      }
    }
    return peer == TAV_VERSION_NONE ? 0 : peer;
  });
}

// The catalogue numbers of the columns for `peer`, as a JSON list.
EMSCRIPTEN_KEEPALIVE int lfp_columns(std::uintptr_t handle, int peer) {
  return guarded([&] {
    const std::vector<int> numbers = held(handle)->network()->getKovaColumns(TavVersion(peer));
    std::string out = "[";
    for (std::size_t i = 0; i < numbers.size(); ++i) {
      if (i) out += ',';
      jsonNumber(out, numbers[i]);
    }
    out += ']';
    give(std::move(out));
    return 0;
  });
}

EMSCRIPTEN_KEEPALIVE int lfp_module_names(std::uintptr_t handle) {
  return guarded([&] {
    const strList names = held(handle)->request->getModuleNames();
    std::string out;
    jsonStrings(out, std::vector<std::string>(names.begin(), names.end()));
    give(std::move(out));
    return 0;
  });
}

// Sets the resolved names: the input buffer holds one per module name, in
// the order of the module names, each ended by a zero byte. 0 when taken;
// 1 with the message when a name cannot be carried or the request refuses.
EMSCRIPTEN_KEEPALIVE int lfp_resolve(std::uintptr_t handle, std::size_t size) {
  return guarded([&] {
    strList resolved;
    const std::string all = input(size);
    for (std::size_t at = 0; at < all.size();) {
      const std::size_t end = all.find('\0', at);
      resolved.emplace_back(all, at, end - at);
      at = end + 1;
    }
    for (const std::string& name : resolved) {
      if (const char c = uncarried(name)) {
        give("the resolved name " + name + " holds \"" + std::string(1, c) + "\", which a request cannot carry");
        return 1;
      }
    }
    Held& h = *held(handle);
    strList names = h.request->getModuleNames();
    if (names.size() != resolved.size() || !h.request->setModuleNames(names, resolved)) {
      give("the request did not take the resolved names");
      return 1;
    }
    return 0;
  });
}

EMSCRIPTEN_KEEPALIVE int lfp_fidelity(std::uintptr_t handle, int peer) {
  return guarded([&] {
    Held& h = *held(handle);
    std::string out;
    jsonDiagnostics(out, lytFilterParser::fidelity(h.text, *h.request, TavVersion(peer)), h.text);
    give(std::move(out));
    return 0;
  });
}

EMSCRIPTEN_KEEPALIVE int lfp_model(std::uintptr_t handle) {
  return guarded([&] {
    std::string out;
    jsonModel(out, *held(handle)->request);
    give(std::move(out));
    return 0;
  });
}

// ---------------------------------------------------------------------------
// Texts
// ---------------------------------------------------------------------------

// The findings of lint as JSON; answers their count (no result when 0).
EMSCRIPTEN_KEEPALIVE int lfp_lint(std::size_t size) {
  return guarded([&] {
    const std::string text = input(size);
    const std::vector<Diagnostic> found = lytFilterParser::lint(text);
    if (found.empty()) return 0;
    std::string out;
    jsonDiagnostics(out, found, text);
    give(std::move(out));
    return static_cast<int>(found.size());
  });
}

// 0 with the converted request, or 1 with the fault as JSON.
EMSCRIPTEN_KEEPALIVE int lfp_convert(std::size_t size, int peer) {
  return guarded([&] {
    const std::string text = input(size);
    std::string error;
    std::string converted = LYTKovaRequest::convert(text, TavVersion(peer), error);
    if (error.empty()) {
      give(std::move(converted));
      return 0;
    }
    std::string out;
    jsonFault(out, error, lytFilterParser::convertWithDiagnostics(text, TavVersion(peer)).refusal, text);
    give(std::move(out));
    return 1;
  });
}

// {"request", "refusal" (a fault or null), "diagnostics"}.
EMSCRIPTEN_KEEPALIVE int lfp_convert_diagnostics(std::size_t size, int peer) {
  return guarded([&] {
    const std::string text = input(size);
    const lytFilterParser::Conversion done = lytFilterParser::convertWithDiagnostics(text, TavVersion(peer));
    std::string out = "{\"request\":";
    jsonString(out, done.request);
    out += ",\"refusal\":";
    if (done.refusal) {
      jsonFault(out, done.refusal->message, done.refusal, text);
    } else {
      out += "null";
    }
    out += ",\"diagnostics\":";
    jsonDiagnostics(out, done.diagnostics, text);
    out += '}';
    give(std::move(out));
    return 0;
  });
}

// The tokens of the text as the library cuts it, as a JSON list.
EMSCRIPTEN_KEEPALIVE int lfp_tokenize(std::size_t size) {
  return guarded([&] {
    strList tokens;
    LYTKovaRequest::fillFilterList(tokens, input(size));
    std::string out;
    jsonStrings(out, std::vector<std::string>(tokens.begin(), tokens.end()));
    give(std::move(out));
    return 0;
  });
}

// Every word: [text, kind name, kind number, code, meaning, peers bits,
// places bits, readable, written]; then the diagnostic codes.
EMSCRIPTEN_KEEPALIVE int lfp_vocabulary() {
  return guarded([&] {
    std::string out = "{\"words\":[";
    bool first = true;
    for (const Word& word : lytFilterParser::vocabulary()) {
      if (!first) out += ',';
      first = false;
      out += '[';
      jsonString(out, word.text);
      out += ',';
      jsonString(out, lytFilterParser::wordKindName(word.kind));
      out += ',';
      jsonNumber(out, static_cast<int>(word.kind));
      out += ',';
      jsonNumber(out, word.code);
      out += ',';
      jsonString(out, word.meaning);
      out += ',';
      jsonNumber(out, word.peers);
      out += ',';
      jsonNumber(out, word.places);
      out += word.readable ? ",true" : ",false";
      out += word.written ? ",true]" : ",false]";
    }
    out += "],\"codes\":[";
    first = true;
    for (const lytFilterParser::DiagnosticCode& code : lytFilterParser::diagnosticCodes()) {
      if (!first) out += ',';
      first = false;
      out += '[';
      jsonString(out, code.code);
      out += ',';
      jsonString(out, lytFilterParser::severityName(code.severity));
      out += ',';
      jsonString(out, code.meaning);
      out += ']';
    }
    out += "],\"columns\":[";
    for (int i = 0;; ++i) {
      const char* name = lytFilterParser::getKovaColumnName(i);
      if (name == nullptr) break;
      if (i) out += ',';
      jsonString(out, name);
    }
    out += "],\"version\":";
    jsonString(out, LFP_LIBRARY_VERSION_STRING);
    out += ",\"current\":";
    jsonNumber(out, TAV_VERSION_CURRENT);
    out += '}';
    give(std::move(out));
    return 0;
  });
}

}  // extern "C"
