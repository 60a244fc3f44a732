// Requests as model objects and back: the package's frozen dataclasses
// (python/lytfilterparser/_model.py) made from a request, and a request made
// from them. The package hands over its classes and, per closed set of
// words, the enum member of every code once at import (_set_model_types).
//
// Both directions walk filter trees with an explicit stack, so they work at
// any depth; a model is made bottom-up, a tree is built top-down by moving
// each new node into its parent (no clones).
#include <array>
#include <climits>
#include <cstddef>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "binding.h"
#include "lytFilterParser/lytFilterParser.h"

namespace lfp_python {

namespace {

// The closed sets of words of a model, in the order _set_model_types takes
// their tables.
enum Words {
  VALUE_TYPE,
  MODE,
  OPERATOR,
  DIRECTION,
  INTERFACE_DIRECTION,
  ENCRYPTION,
  COMPRESSION,
  PRINT,
  URL,
  SORT_TYPE,
  DATA_TYPE,
  WORDS
};
// The model classes, in the order _set_model_types takes them.
enum Classes {
  NAME,
  INTERFACE,
  CONTENT_ATOM,
  INTERFACE_ATOM,
  COMPOUND,
  COLUMN_OPTIONS,
  COLUMN,
  SORT,
  NETWORK_MODEL,
  E2E_MODEL,
  CLASSES
};

// One closed set: the member of each code, and each member's code.
struct Table {
  std::vector<py::object> members;  // by code; None where a code has no member
  py::dict codes;                   // member (or its word) -> code
};

struct Types {
  std::array<py::object, CLASSES> classes;
  std::array<Table, WORDS> tables;
  std::array<std::vector<py::str>, CLASSES> fields;  // each class's field names, interned
  py::tuple empty;
  // The options of a column that restricts nothing, made on first use:
  // most columns have them, and a frozen object can be shared.
  py::object unrestricted;
};

// Held for the life of the process (as the error class): objects must not
// be released after the interpreter is gone.
Types* types = nullptr;

const Types& registered() {
  if (types == nullptr) throw std::logic_error("lytfilterparser: model types not registered");
  return *types;
}

// A new object of model class `which` with `values` as its fields, made as
// the frozen dataclass's own __init__ would store them, without its call.
py::object make(Classes which, std::initializer_list<py::object> values) {
  const Types& t = registered();
  auto* type = reinterpret_cast<PyTypeObject*>(t.classes[which].ptr());
  py::object made = py::reinterpret_steal<py::object>(type->tp_new(type, t.empty.ptr(), nullptr));
  if (!made) throw py::error_already_set();
  std::size_t i = 0;
  for (const py::object& value : values) {
    if (PyObject_GenericSetAttr(made.ptr(), t.fields[which][i++].ptr(), value.ptr()) != 0) {
      throw py::error_already_set();
    }
  }
  return made;
}

py::object member(Words set, int code) {
  const Table& table = registered().tables[set];
  if (code < 0 || static_cast<std::size_t>(code) >= table.members.size() || table.members[code].is_none()) {
    throw std::logic_error("lytfilterparser: no word for code " + std::to_string(code));
  }
  return table.members[code];
}

py::object names(const TavEntityArray& entities) {
  py::tuple list(entities.size());
  std::size_t i = 0;
  for (const TavEntity& entity : entities) {
    list[i++] = make(NAME, {pythonText(entity.getName()), pythonText(entity.getResolvedName())});
  }
  return std::move(list);
}

py::object atom(const AtomFilter& node) {
  if (const auto* interfaces = dynamic_cast<const InterfaceAtomFilter*>(&node)) {
    py::tuple list(interfaces->getInterfaces().size());
    std::size_t i = 0;
    for (const InterfaceInfo& item : interfaces->getInterfaces()) {
      list[i++] = make(INTERFACE, {pythonText(item.getName()), member(INTERFACE_DIRECTION, item.getDirection())});
    }
    return make(INTERFACE_ATOM, {py::bool_(node.isNegated()), std::move(list)});
  }
  const auto& content = static_cast<const ContentFilterBase&>(node);
  return make(CONTENT_ATOM,
              {member(VALUE_TYPE, node.getFilterType()), py::bool_(node.isNegated()), names(content.getEntities())});
}

// The Compound of `root`, made bottom-up: a frame per open compound holds
// the children made so far.
py::object compound(const Filter& root) {
  struct Frame {
    const Filter* filter;
    std::size_t next;
    py::tuple children;
  };
  std::vector<Frame> stack;
  stack.push_back({&root, 0, py::tuple(root.getChildren().size())});
  for (;;) {
    Frame& top = stack.back();
    const Filter::Children& children = top.filter->getChildren();
    if (top.next < children.size()) {
      const AbstractFilter& child = *children[top.next];
      if (child.getIsAtom()) {
        top.children[top.next++] = atom(static_cast<const AtomFilter&>(child));
      } else {
        const auto& inner = static_cast<const Filter&>(child);
        stack.push_back({&inner, 0, py::tuple(inner.getChildren().size())});
      }
      continue;
    }
    py::object made = make(COMPOUND, {member(OPERATOR, top.filter->getOperator()), std::move(top.children)});
    stack.pop_back();
    if (stack.empty()) return made;
    stack.back().children[stack.back().next++] = std::move(made);
  }
}

py::object columnOptions(const TavColumnFilter& options) {
  return make(COLUMN_OPTIONS,
              {member(DIRECTION, options.getDirection()), member(ENCRYPTION, options.getEncryptionMode()),
               member(COMPRESSION, options.getCompressionMode()), member(PRINT, options.getCitrixPrintMode()),
               member(URL, options.getUrlMode())});
}

bool restrictsNothing(const TavColumnFilter& options) {
  const TavColumnFilter none;
  return options.getDirection() == none.getDirection() && options.getEncryptionMode() == none.getEncryptionMode() &&
         options.getCompressionMode() == none.getCompressionMode() &&
         options.getCitrixPrintMode() == none.getCitrixPrintMode() && options.getUrlMode() == none.getUrlMode();
}

py::object columns(const TavColumnArray& list) {
  py::tuple made(list.size());
  std::size_t i = 0;
  for (const TavColumn& column : list) {
    const TavColumnFilter& options = column.getColumnFilter();
    py::object madeOptions;
    if (restrictsNothing(options)) {
      registered();
      if (!types->unrestricted) types->unrestricted = columnOptions(options);
      madeOptions = types->unrestricted;
    } else {
      madeOptions = columnOptions(options);
    }
    made[i++] = make(COLUMN, {member(VALUE_TYPE, column.getValueType()), member(MODE, column.getAccType()),
                              std::move(madeOptions), names(column.getEntities())});
  }
  return std::move(made);
}

// --- building ---------------------------------------------------------------

py::object field(py::handle object, Classes which, std::size_t index) {
  return py::reinterpret_steal<py::object>(PyObject_GetAttr(object.ptr(), registered().fields[which][index].ptr()));
}

// `object` as an instance of model class `which`; TypeError naming `what` otherwise.
void expect(py::handle object, Classes which, const char* what) {
  if (!py::isinstance(object, registered().classes[which])) {
    throw py::type_error(std::string(what) + " must be a " +
                         registered().classes[which].attr("__name__").cast<std::string>() + ", not " +
                         py::str(py::type::of(object).attr("__name__")).cast<std::string>());
  }
}

int code(Words set, py::handle object, const char* what) {
  const Table& table = registered().tables[set];
  PyObject* found = PyDict_GetItemWithError(table.codes.ptr(), object.ptr());
  if (found == nullptr) {
    if (PyErr_Occurred()) throw py::error_already_set();
    throw py::value_error(std::string(what) + ": " + py::repr(object).cast<std::string>() + " is no such word");
  }
  return py::cast<int>(found);
}

bool flag(py::handle object, const char* what) {
  if (!PyBool_Check(object.ptr())) throw py::type_error(std::string(what) + " must be a bool");
  return object.ptr() == Py_True;
}

std::string text(py::handle object, const char* what) {
  if (!py::isinstance<py::str>(object)) throw py::type_error(std::string(what) + " must be a str");
  return utf8(py::reinterpret_borrow<py::str>(object));
}

// The items of a tuple or list field.
py::sequence items(py::handle object, const char* what) {
  if (!py::isinstance<py::tuple>(object) && !py::isinstance<py::list>(object)) {
    throw py::type_error(std::string(what) + " must be a tuple");
  }
  return py::reinterpret_borrow<py::sequence>(object);
}

TavEntityArray entities(py::handle list, const char* what) {
  TavEntityArray made;
  for (py::handle name : items(list, what)) {
    expect(name, NAME, what);
    made.add(TavEntity(text(field(name, NAME, 0), "Name.name"), text(field(name, NAME, 1), "Name.resolved")));
  }
  return made;
}

std::unique_ptr<AbstractFilter> builtAtom(py::handle node) {
  if (py::isinstance(node, registered().classes[INTERFACE_ATOM])) {
    InterfaceInfoList list;
    for (py::handle item : items(field(node, INTERFACE_ATOM, 1), "InterfaceAtom.interfaces")) {
      expect(item, INTERFACE, "an interface");
      const int direction = code(INTERFACE_DIRECTION, field(item, INTERFACE, 1), "Interface.direction");
      list.push_back(InterfaceInfo(text(field(item, INTERFACE, 0), "Interface.name"), TavFilterDirType(direction)));
    }
    return std::make_unique<InterfaceAtomFilter>(list, flag(field(node, INTERFACE_ATOM, 0), "InterfaceAtom.negated"));
  }
  expect(node, CONTENT_ATOM, "a filter child");
  const int type = code(VALUE_TYPE, field(node, CONTENT_ATOM, 0), "ContentAtom.type");
  if (type == TAV_INTERFACE) throw py::value_error("ContentAtom.type: an interface filter is an InterfaceAtom");
  return std::make_unique<ContentFilter>(TavValType(type), flag(field(node, CONTENT_ATOM, 1), "ContentAtom.negated"),
                                         entities(field(node, CONTENT_ATOM, 2), "ContentAtom.names"));
}

// Fills `root` from the Compound `model` top-down: each compound is made,
// linked into its parent, then filled from a frame of its own.
void buildFilter(py::handle model, Filter& root) {
  struct Frame {
    py::sequence children;
    std::size_t next;
    Filter* filter;
  };
  expect(model, COMPOUND, "NetworkModel.filter");
  root.setOperator(FilterOperator(code(OPERATOR, field(model, COMPOUND, 0), "Compound.operator")));
  std::vector<Frame> stack;
  stack.push_back({items(field(model, COMPOUND, 1), "Compound.children"), 0, &root});
  while (!stack.empty()) {
    Frame& top = stack.back();
    if (top.next == top.children.size()) {
      stack.pop_back();
      continue;
    }
    py::object child = top.children[top.next++];
    if (!py::isinstance(child, registered().classes[COMPOUND])) {
      top.filter->addChild(builtAtom(child));
      continue;
    }
    auto inner = std::make_unique<Filter>();
    inner->setOperator(FilterOperator(code(OPERATOR, field(child, COMPOUND, 0), "Compound.operator")));
    Filter* filling = inner.get();
    top.filter->addChild(std::move(inner));
    stack.push_back({items(field(child, COMPOUND, 1), "Compound.children"), 0, filling});
  }
}

TavColumnArray builtColumns(py::handle list, KeyOrValue role, const char* what) {
  TavColumnArray made;
  for (py::handle column : items(list, what)) {
    expect(column, COLUMN, what);
    py::object options = field(column, COLUMN, 2);
    expect(options, COLUMN_OPTIONS, "Column.options");
    const TavColumnFilter filter(code(ENCRYPTION, field(options, COLUMN_OPTIONS, 1), "ColumnOptions.encryption"),
                                 code(COMPRESSION, field(options, COLUMN_OPTIONS, 2), "ColumnOptions.compression"),
                                 code(DIRECTION, field(options, COLUMN_OPTIONS, 0), "ColumnOptions.direction"),
                                 code(PRINT, field(options, COLUMN_OPTIONS, 3), "ColumnOptions.print"),
                                 code(URL, field(options, COLUMN_OPTIONS, 4), "ColumnOptions.url"));
    made.push_back(TavColumn(role, TavValType(code(VALUE_TYPE, field(column, COLUMN, 0), "Column.type")),
                             TavAccType(code(MODE, field(column, COLUMN, 1), "Column.mode")),
                             entities(field(column, COLUMN, 3), "Column.names"), filter));
  }
  return made;
}

int number(py::handle object, const char* what) {
  if (!PyLong_Check(object.ptr()) || PyBool_Check(object.ptr()))
    throw py::type_error(std::string(what) + " must be an int");
  int overflow = 0;
  const long value = PyLong_AsLongAndOverflow(object.ptr(), &overflow);
  if (overflow != 0 || value < INT_MIN || value > INT_MAX)
    throw py::value_error(std::string(what) + " is out of range");
  return static_cast<int>(value);
}

}  // namespace

py::object networkModel(const NetworkKovaRequest& request) {
  py::object sort = make(SORT, {member(SORT_TYPE, request.getSortType()), py::int_(request.getSortIndex()),
                                py::int_(request.getMaxUpdates())});
  return make(NETWORK_MODEL, {compound(request.getFilter()), columns(request.getKeys()), columns(request.getValues()),
                              std::move(sort)});
}

py::object linkModel(const E2EKovaRequest& request) {
  return make(E2E_MODEL, {pythonText(request.getVLName()), member(DATA_TYPE, request.getDataType())});
}

std::unique_ptr<LYTKovaRequest> buildRequest(py::handle model) {
  const Types& t = registered();
  if (py::isinstance(model, t.classes[E2E_MODEL])) {
    return std::make_unique<E2EKovaRequest>(
        text(field(model, E2E_MODEL, 0), "E2EModel.link"),
        tLytpE2eDataType(code(DATA_TYPE, field(model, E2E_MODEL, 1), "E2EModel.data_type")));
  }
  expect(model, NETWORK_MODEL, "the model");
  py::object sort = field(model, NETWORK_MODEL, 3);
  expect(sort, SORT, "NetworkModel.sort");
  auto request = std::make_unique<NetworkKovaRequest>(
      Filter(), builtColumns(field(model, NETWORK_MODEL, 1), TAV_KEY, "NetworkModel.keys"),
      builtColumns(field(model, NETWORK_MODEL, 2), TAV_VALUE, "NetworkModel.values"),
      TavSortType(code(SORT_TYPE, field(sort, SORT, 0), "Sort.type")), number(field(sort, SORT, 1), "Sort.index"));
  request->setMaxUpdates(number(field(sort, SORT, 2), "Sort.updates"));
  buildFilter(field(model, NETWORK_MODEL, 0), request->getFilter());
  return request;
}

void bindModel(py::module_& module) {
  // classes: the model classes in the order of Classes; tables: per set of
  // words in the order of Words, (code, member) pairs.
  module.def("_set_model_types", [](const py::sequence& classes, const py::sequence& tables) {
    // Once: a model being made or read holds on to the types registered.
    if (types != nullptr) throw py::value_error("model types: already set");
    if (classes.size() != CLASSES || tables.size() != WORDS) throw py::value_error("model types: wrong count");
    auto made = std::make_unique<Types>();
    made->empty = py::tuple(0);
    for (std::size_t i = 0; i < CLASSES; ++i) {
      made->classes[i] = classes[i];
      for (py::handle name : made->classes[i].attr("__dataclass_fields__")) {
        py::str interned = py::reinterpret_borrow<py::str>(name);
        PyObject* raw = interned.release().ptr();
        PyUnicode_InternInPlace(&raw);
        made->fields[i].push_back(py::reinterpret_steal<py::str>(raw));
      }
    }
    for (std::size_t i = 0; i < WORDS; ++i) {
      Table& table = made->tables[i];
      for (py::handle item : tables[i]) {
        const py::tuple pair = py::reinterpret_borrow<py::tuple>(item);
        const int code = pair[0].cast<int>();
        py::object word = pair[1];
        if (code < 0) throw py::value_error("model types: negative code");
        if (static_cast<std::size_t>(code) >= table.members.size()) table.members.resize(code + 1, py::none());
        table.members[code] = word;
        // Where two codes share a word (the second concurrent kind), the first is the one built.
        if (!table.codes.contains(word)) table.codes[word] = code;
      }
    }
    types = made.release();
  });
}

}  // namespace lfp_python
