// The diagnostic codes as one table, a byte range of a text, and the list a
// diagnosing function fills. Internal: not installed.
#ifndef LYTFILTERPARSER_DIAGNOSTICS_DIAGNOSTICTABLE_H
#define LYTFILTERPARSER_DIAGNOSTICS_DIAGNOSTICTABLE_H

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "lytFilterParser/base/Span.h"
#include "lytFilterParser/diagnostics/Diagnostic.h"
#include "lytFilterParser/vocab/Syntax.h"

namespace lytFilterParser {
namespace detail {

enum class Code : unsigned char {
  InvisibleCharacter,
  InlineComment,
  FilterAppended,
  OperatorChanged,
  OperatorIgnored,
  OptionRepeated,
  WordIgnored,
  WordMisread,
  ValueDefaulted,
  ValueClamped,
  EntityKeyword,
  EntityEmpty,
  EntityDuplicate,
  FilterUnsatisfiable,
  AtomEmpty,
  EntityComma,
  PeerUnsupported,
  TextUnreadable,
  FilterDropped,
  FilterChanged,
  ItemDropped,
  ItemAdded,
  ItemChanged,
  ColumnDropped,
  ColumnAdded,
  ColumnChanged,
  ColumnMoved,
  ModeChanged,
  OptionChanged,
  SortChanged,
  WordSkipped,
  OptionDoubled,
  ConvertedUnreadable,
  ConvertedRefused,
};

// The entry of each code, in the order of Code: a code's entry is found by its number.
inline constexpr DiagnosticCode kCodes[] = {
    {"invisible-character", Severity::Warning, "an invisible or control character inside a word"},
    {"inline-comment", Severity::Warning, "\"#\" starts no comment: it and the words after it are names"},
    {"filter-appended", Severity::Warning, "a later -f joins the request's one filter"},
    {"operator-changed", Severity::Warning, "a filter's operator is not the one written"},
    {"operator-ignored", Severity::Warning, "a compound filter without filters in it"},
    {"option-repeated", Severity::Warning, "a setting given twice: the later one counts"},
    {"word-ignored", Severity::Warning, "a word that is read and has no effect"},
    {"word-misread", Severity::Warning, "a word read as something other than it looks"},
    {"value-defaulted", Severity::Warning, "a number replaced by 0 or by the default"},
    {"value-clamped", Severity::Warning, "a number beyond the range the reader keeps"},
    {"entity-keyword", Severity::Warning, "a name that looks like a keyword"},
    {"entity-empty", Severity::Warning, "a name with nothing before \"<>\" or \",\""},
    {"entity-duplicate", Severity::Note, "the same name twice in one filter or column"},
    {"filter-unsatisfiable", Severity::Warning, "a filter that no traffic can match"},
    {"atom-empty", Severity::Warning, "a filter with no names"},
    {"entity-comma", Severity::Note, "a name holding a comma, probably meant as two names"},
    {"peer-unsupported", Severity::Warning, "the peer has no text for the request"},
    {"text-unreadable", Severity::Warning, "the peer cannot read the text written for it"},
    {"filter-dropped", Severity::Warning, "a filter that the written or converted request loses"},
    {"filter-changed", Severity::Warning, "a filter that reads back with another negation"},
    {"item-dropped", Severity::Warning, "a name that the peer's text loses"},
    {"item-added", Severity::Warning, "a name that the peer's text gains"},
    {"item-changed", Severity::Warning, "a name that reads back otherwise"},
    {"column-dropped", Severity::Warning, "a column that the peer's text loses"},
    {"column-added", Severity::Warning, "a column that the peer's text gains"},
    {"column-changed", Severity::Warning, "a column that reads back with another type"},
    {"column-moved", Severity::Warning, "a column that reads back at another place"},
    {"mode-changed", Severity::Warning, "an accumulation mode that reads back otherwise"},
    {"option-changed", Severity::Warning, "a column option that reads back otherwise"},
    {"sort-changed", Severity::Warning, "the sort, its index or its updates read back otherwise"},
    {"word-skipped", Severity::Warning, "legacy words the conversion skips"},
    {"option-doubled", Severity::Warning, "a legacy option given twice where the older peers serve one"},
    {"converted-unreadable", Severity::Warning, "a converted text that the reader refuses"},
    {"converted-refused", Severity::Warning, "a converted request that its peer refuses"},
};
static_assert(std::size(kCodes) == static_cast<std::size_t>(Code::ConvertedRefused) + 1, "a code without an entry");

// "dir=in": the word of column option `option` (an index of kColumnOptions) for `code`.
inline std::string columnOptionWord(std::size_t option, int code) {
  std::string word(kColumnOptions[option].name);
  word += wordOf<int>(kColumnOptions[option].values, code);
  return word;
}

// The diagnostics found so far, handed out in the order of the text.
class Findings {
 public:
  void add(Code code, Span at, std::string message) {
    const DiagnosticCode& entry = kCodes[static_cast<unsigned>(code)];
    found.push_back(Diagnostic{std::string(entry.code), entry.severity, std::move(message), at.start, at.length});
  }
  bool empty() const { return found.empty(); }
  std::vector<Diagnostic> finish() {
    std::stable_sort(found.begin(), found.end(),
                     [](const Diagnostic& a, const Diagnostic& b) { return a.start < b.start; });
    return std::move(found);
  }

 private:
  std::vector<Diagnostic> found;
};

// "`word`": how messages quote a word of the text.
inline std::string quoted(std::string_view word) {
  std::string out(word.size() + 2, '`');
  word.copy(&out[1], word.size());
  return out;
}

}  // namespace detail
}  // namespace lytFilterParser

#endif
