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

struct CodeRow {
  Code code;
  DiagnosticCode entry;
};

// In the order of Code.
inline constexpr CodeRow kCodes[] = {
    {Code::InvisibleCharacter,
     {"invisible-character", Severity::Warning, "an invisible or control character inside a word"}},
    {Code::InlineComment,
     {"inline-comment", Severity::Warning, "\"#\" starts no comment: it and the words after it are names"}},
    {Code::FilterAppended, {"filter-appended", Severity::Warning, "a later -f joins the request's one filter"}},
    {Code::OperatorChanged, {"operator-changed", Severity::Warning, "a filter's operator is not the one written"}},
    {Code::OperatorIgnored, {"operator-ignored", Severity::Warning, "a compound filter without filters in it"}},
    {Code::OptionRepeated, {"option-repeated", Severity::Warning, "a setting given twice: the later one counts"}},
    {Code::WordIgnored, {"word-ignored", Severity::Warning, "a word that is read and has no effect"}},
    {Code::WordMisread, {"word-misread", Severity::Warning, "a word read as something other than it looks"}},
    {Code::ValueDefaulted, {"value-defaulted", Severity::Warning, "a number replaced by 0 or by the default"}},
    {Code::ValueClamped, {"value-clamped", Severity::Warning, "a number beyond the range the reader keeps"}},
    {Code::EntityKeyword, {"entity-keyword", Severity::Warning, "a name that looks like a keyword"}},
    {Code::EntityEmpty, {"entity-empty", Severity::Warning, "a name with nothing before \"<>\" or \",\""}},
    {Code::EntityDuplicate, {"entity-duplicate", Severity::Note, "the same name twice in one filter or column"}},
    {Code::FilterUnsatisfiable, {"filter-unsatisfiable", Severity::Warning, "a filter that no traffic can match"}},
    {Code::AtomEmpty, {"atom-empty", Severity::Warning, "a filter with no names"}},
    {Code::EntityComma, {"entity-comma", Severity::Note, "a name holding a comma, probably meant as two names"}},
    {Code::PeerUnsupported, {"peer-unsupported", Severity::Warning, "the peer has no text for the request"}},
    {Code::TextUnreadable, {"text-unreadable", Severity::Warning, "the peer cannot read the text written for it"}},
    {Code::FilterDropped,
     {"filter-dropped", Severity::Warning, "a filter that the written or converted request loses"}},
    {Code::FilterChanged, {"filter-changed", Severity::Warning, "a filter that reads back with another negation"}},
    {Code::ItemDropped, {"item-dropped", Severity::Warning, "a name that the peer's text loses"}},
    {Code::ItemAdded, {"item-added", Severity::Warning, "a name that the peer's text gains"}},
    {Code::ItemChanged, {"item-changed", Severity::Warning, "a name that reads back otherwise"}},
    {Code::ColumnDropped, {"column-dropped", Severity::Warning, "a column that the peer's text loses"}},
    {Code::ColumnAdded, {"column-added", Severity::Warning, "a column that the peer's text gains"}},
    {Code::ColumnChanged, {"column-changed", Severity::Warning, "a column that reads back with another type"}},
    {Code::ColumnMoved, {"column-moved", Severity::Warning, "a column that reads back at another place"}},
    {Code::ModeChanged, {"mode-changed", Severity::Warning, "an accumulation mode that reads back otherwise"}},
    {Code::OptionChanged, {"option-changed", Severity::Warning, "a column option that reads back otherwise"}},
    {Code::SortChanged, {"sort-changed", Severity::Warning, "the sort, its index or its updates read back otherwise"}},
    {Code::WordSkipped, {"word-skipped", Severity::Warning, "legacy words the conversion skips"}},
    {Code::OptionDoubled,
     {"option-doubled", Severity::Warning, "a legacy option given twice where the older peers serve one"}},
    {Code::ConvertedUnreadable,
     {"converted-unreadable", Severity::Warning, "a converted text that the reader refuses"}},
    {Code::ConvertedRefused, {"converted-refused", Severity::Warning, "a converted request that its peer refuses"}},
};

constexpr bool codesInOrder() {
  unsigned index = 0;
  for (const CodeRow& row : kCodes) {
    if (static_cast<unsigned>(row.code) != index++) return false;
  }
  return true;
}
static_assert(codesInOrder(), "a code's row is found by its number");

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
    const DiagnosticCode& entry = kCodes[static_cast<unsigned>(code)].entry;
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
  std::string out;
  out.reserve(word.size() + 2);
  out += '`';
  out.append(word.data(), word.size());
  out += '`';
  return out;
}

}  // namespace detail
}  // namespace lytFilterParser

#endif
