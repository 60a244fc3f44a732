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
  Request(std::unique_ptr<LYTKovaRequest> request, std::string text)
      : request(std::move(request)), text(std::move(text)) {}
  Request(const Request&) = delete;
  Request& operator=(const Request&) = delete;
  virtual ~Request() = default;

  std::string dump(std::optional<int> peer) {
    return locked([&] { return peer ? request->dump(TavVersion(*peer)) : request->dump(); });
  }

  std::vector<std::string> moduleNames() {
    const strList names = locked([&] { return request->getModuleNames(); });
    return std::vector<std::string>(names.begin(), names.end());
  }

  // Sets the resolved name of every module name from `mapping` (any Python
  // mapping of str to str). Nothing changes when a name has none.
  void resolve(const py::object& mapping) {
    strList names = locked([&] { return request->getModuleNames(); });
    strList resolved;
    for (const std::string& name : names) {
      PyObject* found = PyObject_GetItem(mapping.ptr(), py::str(name).ptr());
      if (found == nullptr) {
        if (!PyErr_ExceptionMatches(PyExc_KeyError)) throw py::error_already_set();
        PyErr_Clear();
        raiseRequestError("no resolved name in the mapping for: " + name);
      }
      const py::object value = py::reinterpret_steal<py::object>(found);
      if (!py::isinstance<py::str>(value)) throw py::type_error("the resolved name of " + name + " is not a str");
      resolved.push_back(utf8(value));
    }
    const bool taken = locked([&] { return request->setModuleNames(names, resolved); });
    if (!taken) raiseRequestError("the request did not take the resolved names");
  }

  py::list fidelity(int peer) {
    return pythonDiagnostics(locked([&] {
      std::vector<lytFilterParser::Diagnostic> found = lytFilterParser::fidelity(text, *request, TavVersion(peer));
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

  std::unique_ptr<LYTKovaRequest> request;
  const std::string text;  // the UTF-8 text it was read from

 private:
  std::mutex mutex;
};

class NetworkRequest final : public Request {
 public:
  using Request::Request;

  std::pair<bool, std::string> check(int peer) {
    return locked([&] {
      std::string error;
      const bool valid = network().isValid(TavVersion(peer), error);
      return std::make_pair(valid, error);
    });
  }

  // check() with the place of a refusal in the text: nothing, or the
  // RequestError of the item that made validation fail.
  void validate(int peer) {
    const std::optional<Fault> fault = locked([&]() -> std::optional<Fault> {
      const auto refusal = lytFilterParser::validate(text, network(), TavVersion(peer));
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
    return locked([&] { return network().getKovaColumns(TavVersion(peer)); });
  }

  std::unique_ptr<Request> copy() override {
    return locked([&] {
      return std::unique_ptr<Request>(
          new NetworkRequest(std::unique_ptr<LYTKovaRequest>(new NetworkKovaRequest(network())), text));
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
  std::string dataType() {
    return locked([&] { return link().dumpDataType(); });
  }

  std::unique_ptr<Request> copy() override {
    return locked([&] {
      return std::unique_ptr<Request>(
          new E2ERequest(std::unique_ptr<LYTKovaRequest>(new E2EKovaRequest(link())), text));
    });
  }

 private:
  E2EKovaRequest& link() { return static_cast<E2EKovaRequest&>(*request); }
};

struct Reading {
  std::unique_ptr<LYTKovaRequest> request;
  std::optional<Fault> fault;  // when the library refused the text
};

Reading read(const std::string& text) {
  Reading reading;
  std::string error;
  reading.request.reset(LYTKovaRequest::getLYTKovaRequest(text, error));
  if (!reading.request && !error.empty()) reading.fault = faultOf(error, lytFilterParser::readRefusal(text), text);
  return reading;
}

// The request of `text`, None for a text without a word.
py::object parse(const py::str& text) {
  std::string bytes = utf8(text);
  Reading reading = withoutGilIf(bytes.size() >= kReleaseGilAt, [&] { return read(bytes); });
  if (reading.request == nullptr) {
    if (!reading.fault) return py::none();
    raiseRequestError(*reading.fault);
  }
  if (dynamic_cast<NetworkKovaRequest*>(reading.request.get()) != nullptr) {
    return py::cast(std::make_unique<NetworkRequest>(std::move(reading.request), std::move(bytes)));
  }
  return py::cast(std::make_unique<E2ERequest>(std::move(reading.request), std::move(bytes)));
}

// The conversion of a legacy line; a refusal raises with its place in the
// line, which is looked for only then.
std::string convert(const py::str& text, int peer) {
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
  return converted;
}

std::vector<std::string> tokenize(const py::str& text) {
  const std::string bytes = utf8(text);
  const strList tokens = withoutGilIf(bytes.size() >= kReleaseGilAt, [&] {
    strList list;
    LYTKovaRequest::fillFilterList(list, bytes);
    return list;
  });
  return std::vector<std::string>(tokens.begin(), tokens.end());
}

}  // namespace

void bindRequests(py::module_& module) {
  using py::arg;
  const int current = TAV_VERSION_CURRENT;
  // Local to this module: pybind11 then finds the classes in its first
  // lookup on every call and every new request, not after missing there.
  py::class_<Request>(module, "Request", py::module_local())
      .def("dump", &Request::dump, arg("peer") = py::none())
      .def("module_names", &Request::moduleNames)
      .def("resolve", &Request::resolve, arg("mapping"))
      .def("fidelity", &Request::fidelity, arg("peer"))
      .def("copy", &Request::copy)
      .def("__copy__", &Request::copy)
      .def("__deepcopy__", [](Request& request, const py::object&) { return request.copy(); }, arg("memo"))
      .def("__str__", [](Request& request) { return request.dump(std::nullopt); })
      .def("__repr__", [](const py::object& self) {
        return "<lytfilterparser." + py::type::of(self).attr("__name__").cast<std::string>() + " " +
               py::repr(self.attr("dump")()).cast<std::string>() + ">";
      });
  py::class_<NetworkRequest, Request>(module, "NetworkRequest", py::module_local())
      .def("check", &NetworkRequest::check, arg("peer") = current)
      .def("validate", &NetworkRequest::validate, arg("peer") = current)
      .def("minimal_peer", &NetworkRequest::minimalPeer)
      .def("columns", &NetworkRequest::columns, arg("peer") = current);
  py::class_<E2ERequest, Request>(module, "E2ERequest", py::module_local())
      .def_property_readonly("name", &E2ERequest::name)
      .def_property_readonly("data_type", &E2ERequest::dataType);

  module.def("parse", &parse, arg("text"));
  module.def("convert", &convert, arg("text"), arg("peer") = int(TAV_VERSION_LEGACY_2));
  module.def("tokenize", &tokenize, arg("text"));
  module.attr("CURRENT_PEER") = current;
}

}  // namespace lfp_python
