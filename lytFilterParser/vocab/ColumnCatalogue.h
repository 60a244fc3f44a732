// The query interface's fixed catalogue of network columns, and the lookups
// over it: by index, by type (handing out free generic columns in turn) and
// from a peer's own list of column definitions.
#ifndef LYTFILTERPARSER_VOCAB_COLUMNCATALOGUE_H
#define LYTFILTERPARSER_VOCAB_COLUMNCATALOGUE_H

#include <vector>

#include "lytFilterParser/vocab/ValueType.h"

// One row of a column catalogue. The flag is 1 on the columns that identify
// a row ("time", "EntryName").
struct KovaColumnInfo {
  const char* name;
  QULET_VT type;
  int flag;
};

// The query interface's column-definition record; only the name is read.
struct DravoColumnDefinition {
  const char* name;
};

namespace lytFilterParser {

LFP_API extern const KovaColumnInfo networkColumnArray[];
LFP_API extern const int networkArraySize;

// The name at `index`, or nullptr outside 0..27.
LFP_API const char* getKovaColumnName(int index);
// The code at `index`, or 0 outside 0..27.
LFP_API QULET_VT getKovaColumnType(int index);

// Hands out the next free catalogue column of `type` (-1 when none is left,
// or for a code of 40 and above). Type 0 resets the allocation to the
// generic columns and returns -1. The allocation state is process-wide and
// guarded by a lock.
LFP_API int getNextOpenKovaCoulmn(QULET_VT type);

// Catalogue indices for a peer's column list, skipping "time", "diffFromUTC"
// and "messageID"; empty when one name is unknown.
LFP_API std::vector<int> mapKovaColumn(const DravoColumnDefinition* columns, unsigned count);

}  // namespace lytFilterParser

#endif
