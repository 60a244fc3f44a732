// The value types as one table: every property of a type on its row, for the
// readers, writers, validation, the legacy translator and the vocabulary.
// Internal: not installed.
#ifndef LYTFILTERPARSER_VOCAB_VALUETYPETABLE_H
#define LYTFILTERPARSER_VOCAB_VALUETYPETABLE_H

#include <string_view>

#include "lytFilterParser/Export.h"
#include "lytFilterParser/detail/Rows.h"
#include "lytFilterParser/vocab/Codes.h"
#include "lytFilterParser/vocab/ValueType.h"

namespace lytFilterParser {
namespace detail {

// Where a value type may stand, and what it brings there (bits of ValueTypeRow::places).
enum ValueTypePlace : unsigned {
  kInFilter = 1u << 0,            // an atom filter may test it
  kAsKey = 1u << 1,               // a key column may have it
  kAsValue = 1u << 2,             // a value column may have it
  kLegacyKey = 1u << 3,           // older peers group by it
  kLegacyValue = 1u << 4,         // older peers measure it
  kLegacyFilter = 1u << 5,        // a filter word of the legacy syntax
  kModuleNames = 1u << 6,         // a content filter's entities take part in module-name substitution
  kFirstKeyOnly = 1u << 7,        // a key only in the first place
  kNeedsSessionValues = 1u << 8,  // as a key, every value must be a session count
  kNotWithSession = 1u << 9,      // as a key, no session value may be grouped by it
};

struct ValueTypeRow {
  TavValType type;
  std::string_view keyword;
  bool written;  // telNumber is read, never written
  QULET_VT kovaCode;
  unsigned places;
  unsigned valueModes;          // accumulation modes a value column takes, a bit per TavAccType
  int rateBecomes;              // what validation completes "rate" to; -1 keeps it
  const char* filteredMessage;  // refusal of column options that restrict traffic; nullptr allows them
  std::string_view meaning;
};

// Every value type, by code (0..20).
LFP_HIDDEN Rows<ValueTypeRow> valueTypeRows();
// The row of `type`; nullptr outside 0..20.
LFP_HIDDEN const ValueTypeRow* valueTypeRow(TavValType type);
// Whether `type` has a row with every bit of `place`.
LFP_HIDDEN bool hasPlace(TavValType type, unsigned place);

// The written keyword of `type`; throws "Not a valid argument for type" for
// a type without one, as dumpValueType does.
LFP_HIDDEN std::string_view valueTypeKeyword(TavValType type);

// getValueType for a token read in place.
LFP_HIDDEN TavValType valueType(std::string_view keyword);

}  // namespace detail
}  // namespace lytFilterParser

#endif
