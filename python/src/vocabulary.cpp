// The vocabulary and the version record, as plain data for the package to
// dress (python/lytfilterparser/__init__.py).
#include <pybind11/stl.h>

#include <tuple>
#include <vector>

#include "binding.h"
#include "lytFilterParser/lytFilterParser.h"

namespace lfp_python {

namespace {

using lytFilterParser::Word;
using lytFilterParser::WordKind;

// One word: text, kind, code, meaning, peers that take it, places,
// readable, written.
typedef std::tuple<std::string, WordKind, int, std::string, std::vector<int>, unsigned, bool, bool> WordRow;

std::vector<WordRow> words() {
  std::vector<WordRow> rows;
  for (const Word& word : lytFilterParser::vocabulary()) {
    std::vector<int> peers;
    for (int peer = TAV_VERSION_LEGACY_1; peer <= TAV_VERSION_CURRENT; ++peer) {
      if (word.takenBy(TavVersion(peer))) peers.push_back(peer);
    }
    rows.emplace_back(std::string(word.text), word.kind, word.code, std::string(word.meaning), peers, word.places,
                      word.readable, word.written);
  }
  return rows;
}

// The positions in words() of the words equal to `text`.
std::vector<std::size_t> findWords(const py::str& text) {
  const std::vector<Word>& all = lytFilterParser::vocabulary();
  std::vector<std::size_t> found;
  for (const Word* word : lytFilterParser::findWords(utf8(text))) found.push_back(word - all.data());
  return found;
}

void bindWordKind(py::module_& module) {
  py::enum_<WordKind> kinds(module, "WordKind");
  // The kinds in order, named as the library names its enumerators.
  const char* const names[] = {"Option",       "ValueType",          "FilterOperator",   "Negation",
                               "Bracket",      "InterfaceDirection", "AccumulationMode", "ColumnOption",
                               "SortInColumn", "SortType",           "SortOption",       "VirtualLink",
                               "LegacyOption", "LegacyGroup",        "LegacyValue",      "LegacyAggregate"};
  int value = 0;
  for (const char* name : names) kinds.value(name, WordKind(value++));
}

}  // namespace

void bindVocabulary(py::module_& module) {
  bindWordKind(module);
  module.def("_words", &words);
  module.def("_find_words", &findWords, py::arg("text"));
  module.def(
      "word_kind_name", [](WordKind kind) { return std::string(lytFilterParser::wordKindName(kind)); },
      "word_kind_name(kind: WordKind) -> str\n\nA short name of a kind of word for people.", py::arg("kind"));
  // The code the readers keep for a second kind of concurrent counting, which
  // has no word of its own: it is written as the first kind.
  module.def("_concurrent_codes", [] { return py::make_tuple(int(TAV_ACC_CONCURRENT), int(TAV_ACC_CONCURRENT2)); });
  // The one token that carries a name and its resolved name.
  module.def(
      "_entity_text",
      [](const py::str& name, const py::str& resolved) { return TavEntity(utf8(name), utf8(resolved)).dump(); },
      py::arg("name"), py::arg("resolved"));
  module.attr("PLACE_FILTER") = unsigned(lytFilterParser::PLACE_FILTER);
  module.attr("PLACE_KEY") = unsigned(lytFilterParser::PLACE_KEY);
  module.attr("PLACE_VALUE") = unsigned(lytFilterParser::PLACE_VALUE);
  const lytFilterParserVersionInfo& record = lytFilterParser_version_info;
  module.attr("_version") =
      py::make_tuple(record.majorReleaseNumber, record.minorReleaseNumber, record.optionPackNumber);
}

}  // namespace lfp_python
