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

// Every code: its enumerator, its name, its severity and its meaning for
// people, in the order of docs/diagnostics.md.
#define LFP_DIAGNOSTIC_CODES(X)                                                                               \
  X(InvisibleCharacter, "invisible-character", Warning, "an invisible or control character inside a word")    \
  X(InlineComment, "inline-comment", Warning, "\"#\" starts no comment: it and the words after it are names") \
  X(FilterAppended, "filter-appended", Warning, "a later -f joins the request's one filter")                  \
  X(OperatorChanged, "operator-changed", Warning, "a filter's operator is not the one written")               \
  X(OperatorIgnored, "operator-ignored", Warning, "a compound filter without filters in it")                  \
  X(OptionRepeated, "option-repeated", Warning, "a setting given twice: the later one counts")                \
  X(WordIgnored, "word-ignored", Warning, "a word that is read and has no effect")                            \
  X(WordMisread, "word-misread", Warning, "a word read as something other than it looks")                     \
  X(ValueDefaulted, "value-defaulted", Warning, "a number replaced by 0 or by the default")                   \
  X(ValueClamped, "value-clamped", Warning, "a number beyond the range the reader keeps")                     \
  X(EntityKeyword, "entity-keyword", Warning, "a name that looks like a keyword")                             \
  X(EntityEmpty, "entity-empty", Warning, "a name with nothing before \"<>\" or \",\"")                       \
  X(EntityDuplicate, "entity-duplicate", Note, "the same name twice in one filter or column")                 \
  X(FilterUnsatisfiable, "filter-unsatisfiable", Warning, "a filter that no traffic can match")               \
  X(AtomEmpty, "atom-empty", Warning, "a filter with no names")                                               \
  X(EntityComma, "entity-comma", Note, "a name holding a comma, probably meant as two names")                 \
  X(PeerUnsupported, "peer-unsupported", Warning, "the peer has no text for the request")                     \
  X(TextUnreadable, "text-unreadable", Warning, "the peer cannot read the text written for it")               \
  X(FilterDropped, "filter-dropped", Warning, "a filter that the written or converted request loses")         \
  X(FilterChanged, "filter-changed", Warning, "a filter that reads back with another negation")               \
  X(ItemDropped, "item-dropped", Warning, "a name that the peer's text loses")                                \
  X(ItemAdded, "item-added", Warning, "a name that the peer's text gains")                                    \
  X(ItemChanged, "item-changed", Warning, "a name that reads back otherwise")                                 \
  X(ColumnDropped, "column-dropped", Warning, "a column that the peer's text loses")                          \
  X(ColumnAdded, "column-added", Warning, "a column that the peer's text gains")                              \
  X(ColumnChanged, "column-changed", Warning, "a column that reads back with another type")                   \
  X(ColumnMoved, "column-moved", Warning, "a column that reads back at another place")                        \
  X(ModeChanged, "mode-changed", Warning, "an accumulation mode that reads back otherwise")                   \
  X(OptionChanged, "option-changed", Warning, "a column option that reads back otherwise")                    \
  X(SortChanged, "sort-changed", Warning, "the sort, its index or its updates read back otherwise")           \
  X(WordSkipped, "word-skipped", Warning, "legacy words the conversion skips")                                \
  X(OptionDoubled, "option-doubled", Warning, "a legacy option given twice where the older peers serve one")  \
  X(ConvertedUnreadable, "converted-unreadable", Warning, "a converted text that the reader refuses")         \
  X(ConvertedRefused, "converted-refused", Warning, "a converted request that its peer refuses")

enum class Code : unsigned char {
#define LFP_CODE_ENUMERATOR(name, code, severity, meaning) name,
  LFP_DIAGNOSTIC_CODES(LFP_CODE_ENUMERATOR)
#undef LFP_CODE_ENUMERATOR
};

// The entry of each code, found by its number.
inline constexpr DiagnosticCode kCodes[] = {
#define LFP_CODE_ENTRY(name, code, severity, meaning) {code, Severity::severity, meaning},
    LFP_DIAGNOSTIC_CODES(LFP_CODE_ENTRY)
#undef LFP_CODE_ENTRY
};
#undef LFP_DIAGNOSTIC_CODES

// "dir=in": the word of column option `option` (an index of kColumnOptions) for `code`.
inline std::string columnOptionWord(std::size_t option, int code) {
  return std::string(kColumnOptions[option].name).append(wordOf<int>(kColumnOptions[option].values, code));
}

// The diagnostics found so far, handed out in the order of the text.
class Findings {
 public:
  void add(Code code, Span at, std::string message) {
    const DiagnosticCode& entry = kCodes[static_cast<unsigned>(code)];
    found.push_back(Diagnostic{std::string(entry.code), entry.severity, std::move(message), at.start, at.length});
  }
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
