// Request objects: a request the library read, owned by a Python object
// with the text it was read from (the places of its diagnostics are in it),
// and with a lock of its own (binding.h says why).
#include <pybind11/stl.h>

#include <memory>
#include <mutex>
#include <vector>

#include "binding.h"
#include "lytFilterParser/lytFilterParser.h"

namespace lfp_python {

namespace {

class Request {
 public:
  // `recorded`, when given, is the reading `request` is a copy of: its
  // record places what validate and fidelity find without reading the text
  // again, as long as the names stay as read.
  Request(std::unique_ptr<LYTKovaRequest> request, std::string text,
          std::shared_ptr<const lytFilterParser::RecordedRequest> recorded = nullptr)
      : request(std::move(request)), text(std::move(text)), recorded(std::move(recorded)) {}
  Request(const Request&) = delete;
  Request& operator=(const Request&) = delete;
  virtual ~Request() = default;

  py::str dump(std::optional<int> peer) {
    if (peer) peerIn(*peer, TAV_VERSION_LEGACY_1, TAV_VERSION_CURRENT);
    return pythonText(locked([&] { return peer ? request->dump(TavVersion(*peer)) : request->dump(); }));
  }

  py::list moduleNames() {
    const strList names = locked([&] { return request->getModuleNames(); });
    py::list list;
    for (const std::string& name : names) list.append(pythonText(name));
    return list;
  }

  // Sets the resolved names of the module names, in their order (the
  // package checks them); false when the request did not take them.
  bool setModuleNames(const std::vector<py::str>& names, const std::vector<py::str>& resolved) {
    strList oldNames;
    strList newNames;
    for (const py::str& name : names) oldNames.push_back(utf8(name));
    for (const py::str& name : resolved) newNames.push_back(utf8(name));
    return locked([&] {
      recorded.reset();  // the record places the names as read
      return request->setModuleNames(oldNames, newNames);
    });
  }

  // The model of the request, a new object of the package's classes.
  virtual py::object model() = 0;

  py::list fidelity(int peer) {
    peerIn(peer, TAV_VERSION_LEGACY_1, TAV_VERSION_CURRENT);
    return pythonDiagnostics(locked([&] {
      std::vector<lytFilterParser::Diagnostic> found =
          recorded ? recorded->fidelity(*request, TavVersion(peer))
                   : lytFilterParser::fidelity(text, *request, TavVersion(peer));
      inCharacters(found, text);
      return found;
    }));
  }

  virtual std::unique_ptr<Request> copy() = 0;

 protected:
  // Runs `work` on the request under its lock; without the GIL for a large
  // request, or while another thread holds the lock.
  template <class Work>
  auto locked(Work&& work) -> decltype(work()) {
    if (text.size() < kReleaseGilAt) {
      std::unique_lock<std::mutex> lock(mutex, std::try_to_lock);
      if (lock.owns_lock()) return work();
    }
    py::gil_scoped_release release;
    std::lock_guard<std::mutex> lock(mutex);
    return work();
  }

  // Runs `work`, which makes Python objects, on the request under its lock
  // with the GIL held; the GIL is given up only while waiting for the lock.
  template <class Work>
  auto lockedWithGil(Work&& work) -> decltype(work()) {
    std::unique_lock<std::mutex> lock(mutex, std::try_to_lock);
    if (!lock.owns_lock()) {
      py::gil_scoped_release release;
      lock.lock();
    }
    return work();
  }

  std::unique_ptr<LYTKovaRequest> request;
  const std::string text;  // the UTF-8 text it was read from
  // The one reading of `text`, shared with copies (it is never changed);
  // null for a request built from a model or renamed since.
  std::shared_ptr<const lytFilterParser::RecordedRequest> recorded;

 private:
  std::mutex mutex;
};

class NetworkRequest final : public Request {
 public:
  using Request::Request;

  std::pair<bool, std::string> check(int peer) {
    peerIn(peer, TAV_VERSION_UNSUPPORTED, TAV_VERSION_CURRENT);
    return locked([&] {
      std::string error;
      const bool valid = network().isValid(TavVersion(peer), error);
      return std::make_pair(valid, error);
    });
  }

  // check() with the place of a refusal in the text: nothing, or the
  // RequestError of the item that made validation fail.
  void validate(int peer) {
    peerIn(peer, TAV_VERSION_UNSUPPORTED, TAV_VERSION_CURRENT);
    const std::optional<Fault> fault = locked([&]() -> std::optional<Fault> {
      const auto refusal = recorded ? recorded->validate(network(), TavVersion(peer))
                                    : lytFilterParser::validate(text, network(), TavVersion(peer));
      if (!refusal) return std::nullopt;
      return faultOf(refusal->message, refusal, text);
    });
    if (fault) raiseRequestError(*fault);
  }

  // Asked of a copy: the library's answer completes the request for every
  // peer it tries.
  std::optional<int> minimalPeer() {
    const int peer = locked([&] {
      NetworkKovaRequest copy(network());
      std::string error;
      return copy.getMinimalValidVersion(error);
    });
    if (peer == TAV_VERSION_NONE) return std::nullopt;
    return peer;
  }

  std::vector<int> columns(int peer) {
    peerIn(peer, TAV_VERSION_LEGACY_1, TAV_VERSION_CURRENT);
    return locked([&] { return network().getKovaColumns(TavVersion(peer)); });
  }

  py::object model() override {
    return lockedWithGil([&] { return networkModel(network()); });
  }

  std::unique_ptr<Request> copy() override {
    return locked([&] {
      return std::unique_ptr<Request>(
          new NetworkRequest(std::unique_ptr<LYTKovaRequest>(new NetworkKovaRequest(network())), text, recorded));
    });
  }

 private:
  NetworkKovaRequest& network() { return static_cast<NetworkKovaRequest&>(*request); }
};

class E2ERequest final : public Request {
 public:
  using Request::Request;

  std::string name() {
    return locked([&] { return link().getVLName(); });
  }

  py::object model() override {
    return lockedWithGil([&] { return linkModel(link()); });
  }

  std::unique_ptr<Request> copy() override {
    return locked([&] {
      return std::unique_ptr<Request>(
          new E2ERequest(std::unique_ptr<LYTKovaRequest>(new E2EKovaRequest(link())), text, recorded));
    });
  }

 private:
  E2EKovaRequest& link() { return static_cast<E2EKovaRequest&>(*request); }
};

struct Reading {
  std::unique_ptr<LYTKovaRequest> request;  // a copy of the recorded one, to change
  std::shared_ptr<const lytFilterParser::RecordedRequest> recorded;
  std::optional<Fault> fault;  // when the library refused the text
};

std::unique_ptr<LYTKovaRequest> copyOf(const LYTKovaRequest& request) {
  if (const auto* network = dynamic_cast<const NetworkKovaRequest*>(&request)) {
    return std::make_unique<NetworkKovaRequest>(*network);
  }
  return std::make_unique<E2EKovaRequest>(dynamic_cast<const E2EKovaRequest&>(request));
}

// One reading of `text` with its record; nothing for a text of blanks only.
Reading read(const std::string& text) {
  Reading reading;
  if (text.find_first_not_of(' ') == std::string::npos) return reading;  // no word
  auto recorded = std::make_shared<const lytFilterParser::RecordedRequest>(text);
  if (const LYTKovaRequest* request = recorded->request()) {
    reading.request = copyOf(*request);
    reading.recorded = std::move(recorded);
    return reading;
  }
  std::optional<lytFilterParser::Refusal> refusal = recorded->refusal();
  if (refusal) {
    reading.fault = faultOf(refusal->message, refusal, text);
    return reading;
  }
  // A refusal without a place (rare), or no word: read again for the message.
  std::string error;
  std::unique_ptr<LYTKovaRequest>(LYTKovaRequest::getLYTKovaRequest(text, error));
  if (!error.empty()) reading.fault = Fault{std::move(error), std::nullopt, {}};
  return reading;
}

// The Python object of a request read from, or written as, `bytes`.
py::object wrap(std::unique_ptr<LYTKovaRequest> request, std::string bytes,
                std::shared_ptr<const lytFilterParser::RecordedRequest> recorded = nullptr) {
  if (dynamic_cast<NetworkKovaRequest*>(request.get()) != nullptr) {
    return py::cast(std::make_unique<NetworkRequest>(std::move(request), std::move(bytes), std::move(recorded)));
  }
  return py::cast(std::make_unique<E2ERequest>(std::move(request), std::move(bytes), std::move(recorded)));
}

// The request of `text`, None for a text without a word.
py::object parse(const py::str& text) {
  std::string bytes = utf8(text);
  Reading reading = withoutGilIf(bytes.size() >= kReleaseGilAt, [&] { return read(bytes); });
  if (reading.request == nullptr) {
    if (!reading.fault) return py::none();
    raiseRequestError(*reading.fault, bytes);
  }
  return wrap(std::move(reading.request), std::move(bytes), std::move(reading.recorded));
}

// The request a model describes. Its text, where diagnostics place what
// they find, is what it writes (empty when writing it throws).
py::object build(const py::handle& model) {
  std::unique_ptr<LYTKovaRequest> request = buildRequest(model);
  std::string text;
  try {
    text = request->dump();
  } catch (const std::string&) {
    // A request whose text cannot be written keeps no text.
  }
  return wrap(std::move(request), std::move(text));
}

// The conversion of a legacy line; a refusal raises with its place in the
// line, which is looked for only then.
py::str convert(const py::str& text, int peer) {
  peerIn(peer, TAV_VERSION_LEGACY_1, TAV_VERSION_LEGACY_2);
  const std::string bytes = utf8(text);
  std::optional<Fault> fault;
  std::string converted = withoutGilIf(bytes.size() >= kReleaseGilAt, [&] {
    std::string error;
    std::string request = LYTKovaRequest::convert(bytes, TavVersion(peer), error);
    if (!error.empty()) {
      fault = faultOf(error, lytFilterParser::convertWithDiagnostics(bytes, TavVersion(peer)).refusal, bytes);
    }
    return request;
  });
  if (fault) raiseRequestError(*fault);
  return pythonText(converted);
}

py::list tokenize(const py::str& text) {
  const std::string bytes = utf8(text);
  const strList tokens = withoutGilIf(bytes.size() >= kReleaseGilAt, [&] {
    strList list;
    LYTKovaRequest::fillFilterList(list, bytes);
    return list;
  });
  py::list list;
  for (const std::string& token : tokens) list.append(pythonText(token));
  return list;
}

}  // namespace

int peerIn(int peer, int low, int high) {
  if (peer < low || peer > high) {
    throw py::value_error("peer must be " + std::to_string(low) + " to " + std::to_string(high) + ", not " +
                          std::to_string(peer));
  }
  return peer;
}

void bindRequests(py::module_& module) {
  using py::arg;
  const int current = TAV_VERSION_CURRENT;
  // Local to this module: pybind11 then finds the classes in its first
  // lookup on every call and every new request, not after missing there.
  py::class_<Request>(module, "Request", py::module_local(),
                      "A request the library read or built: a NetworkRequest or an E2ERequest. Mutable (check,\n"
                      "validate and resolve change it in place), equal by model, not hashable.")
      .def("dump", &Request::dump, arg("peer") = py::none(),
           "dump(peer: Optional[int] = None) -> str\n\n"
           "The text the library writes for the request: in the current syntax, or for peer 1 to 3 (1 and 2:\n"
           "the legacy option syntax; a link has none, ''). Raises RequestError where the library has no\n"
           "text for it, ValueError for another peer.")
      .def("module_names", &Request::moduleNames,
           "module_names() -> List[str]\n\nThe names the request refers to: the filter's, then the key columns'.")
      .def("_set_module_names", &Request::setModuleNames, arg("names"), arg("resolved"))
      .def("model", &Request::model,
           "model() -> Model\n\n"
           "The request as a NetworkModel or an E2EModel, new frozen dataclasses; build(model) gives the\n"
           "request back. Works at any depth of the filter.")
      .def("fidelity", &Request::fidelity, arg("peer"),
           "fidelity(peer: int) -> List[Diagnostic]\n\n"
           "What writing the request for peer 1 to 3 loses or changes, placed in the text it was parsed\n"
           "from. ValueError for another peer.")
      .def("copy", &Request::copy, "copy() -> Request\n\nAn independent copy, with the same text.")
      .def("__copy__", &Request::copy, "__copy__() -> Request")
      .def(
          "__deepcopy__", [](Request& request, const py::object&) { return request.copy(); }, arg("memo"),
          "__deepcopy__(memo: object) -> Request");
  py::class_<NetworkRequest, Request>(module, "NetworkRequest", py::module_local(),
                                      "A request for a traffic view: filter, key and value columns, sort.")
      .def("check", &NetworkRequest::check, arg("peer") = current,
           "check(peer: int = 3) -> Tuple[bool, str]\n\n"
           "The library's validation for peer 0 to 3: (valid, message). Completes the request in place as\n"
           "the validation does. ValueError for another peer.")
      .def("validate", &NetworkRequest::validate, arg("peer") = current,
           "validate(peer: int = 3) -> None\n\n"
           "check(peer), raising RequestError with the message and the place of the item that made it\n"
           "fail. ValueError for a peer outside 0 to 3.")
      .def("minimal_peer", &NetworkRequest::minimalPeer,
           "minimal_peer() -> Optional[int]\n\nThe oldest peer that accepts the request (asked of a copy), None for "
           "none.")
      .def("columns", &NetworkRequest::columns, arg("peer") = current,
           "columns(peer: int = 3) -> List[int]\n\n"
           "The 1-based query-interface columns of the keys then the values for peer 1 to 3. ValueError\n"
           "for another peer.");
  py::class_<E2ERequest, Request>(module, "E2ERequest", py::module_local(),
                                  "An end-to-end request: the counters of one virtual link.")
      .def_property_readonly("name", &E2ERequest::name, "The name of the virtual link (as link).");

  module.def("parse", &parse, arg("text"),
             "parse(text: str) -> Optional[Request]\n\n"
             "The request of a text: a NetworkRequest, or an E2ERequest for a text that starts with the word\n"
             "vl; None for a text without a word. Raises RequestError with the library's message, its place\n"
             "in characters of the text and suggestions. Every character counts: a line's newline is part of\n"
             "its last word.");
  module.def("build", &build, arg("model"), "build(model: Model) -> Request");
  module.def("convert", &convert, arg("text"), arg("peer") = int(TAV_VERSION_LEGACY_2),
             "convert(text: str, peer: int = 2) -> str\n\n"
             "A legacy command line of peer 1 or 2 in the current syntax. Raises RequestError as parse does,\n"
             "ValueError for another peer.");
  module.def(
      "tokenize", &tokenize, arg("text"),
      "tokenize(text: str) -> List[str]\n\nThe words of a text as the readers cut it: at blanks, and around brackets.");
  module.attr("CURRENT_PEER") = current;
}

}  // namespace lfp_python
