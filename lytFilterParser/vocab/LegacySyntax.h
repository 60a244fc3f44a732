// The words of the legacy option syntax that older peers read and write
// ("-g topsrc -y b -a i"), each set one table used by both the legacy
// reader and the legacy writer. Its filter words are value-type keywords
// (ValueTypeTable.h). Internal: not installed.
#ifndef LYTFILTERPARSER_VOCAB_LEGACYSYNTAX_H
#define LYTFILTERPARSER_VOCAB_LEGACYSYNTAX_H

#include <string_view>

#include "lytFilterParser/Export.h"
#include "lytFilterParser/detail/Rows.h"
#include "lytFilterParser/vocab/Codes.h"
#include "lytFilterParser/vocab/Syntax.h"
#include "lytFilterParser/vocab/ValueType.h"

namespace lytFilterParser {
namespace detail {

// The legacy options. The reader knows an option by a token's first two
// characters; "-filter" is only written.
enum LegacyOption : char { LEGACY_GROUP = 'g', LEGACY_VALUE = 'y', LEGACY_AGGREGATE = 'a', LEGACY_FILTER = 'f' };
LFP_HIDDEN Rows<Word<LegacyOption>> legacyOptions();
LFP_HIDDEN std::string_view legacyOptionWord(LegacyOption option);

// "-g" words: the key type each groups by, and whether it also sorts top.
struct LegacyGroup {
  std::string_view word;
  TavValType keyType;
  bool top;
};
LFP_HIDDEN Rows<LegacyGroup> legacyGroups();
// The row of `word` (exact), or nullptr.
LFP_HIDDEN const LegacyGroup* legacyGroup(std::string_view word);
// The word written for a first key of `type`: the top form, or the plain
// form for a key with entities where there is one. Empty when none.
LFP_HIDDEN std::string_view legacyGroupWord(TavValType type, bool top);

// "-y" letters: the value type and the mode each stands for. A type or
// mode of -1 matches any and is not read into the request.
struct LegacyValue {
  char letter;
  int type;
  int acc;
  bool read;  // the reader takes it; the others are only written
};
LFP_HIDDEN Rows<LegacyValue> legacyValues();
LFP_HIDDEN const LegacyValue* legacyValueRead(char letter);
// The first row that describes a value column of `type` and `acc`, or nullptr.
LFP_HIDDEN const LegacyValue* legacyValueWritten(TavValType type, TavAccType acc);

// "-a" letters: "i" adds a connection-id key; "a" is written otherwise.
LFP_HIDDEN Rows<Word<int>> legacyAggregates();

// The negation flag of a legacy filter: "1" negated, "0" not.
LFP_HIDDEN std::string_view legacyNegationFlag(bool negated);

}  // namespace detail
}  // namespace lytFilterParser

#endif
