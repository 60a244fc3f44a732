// What an entity, a filter or a column is about (a source, a service, a byte
// counter ...), its keyword in request text, and its query-interface code.
#ifndef LYTFILTERPARSER_VOCAB_VALUETYPE_H
#define LYTFILTERPARSER_VOCAB_VALUETYPE_H

#include <string>

#include "lytFilterParser/Export.h"

enum TavValType : int {
  TAV_SVC = 0,
  TAV_SRC = 1,
  TAV_DST = 2,
  TAV_IP = 3,
  TAV_FWRULE = 4,
  TAV_QSRULE = 5,
  TAV_CONNID = 6,
  TAV_URL = 7,
  TAV_TELNUMBER = 8,
  TAV_INTERFACE = 9,
  TAV_ORIENTATION = 10,
  TAV_AB = 11,
  TAV_WB = 12,
  TAV_PKT = 13,
  TAV_CONN = 14,
  TAV_SESSION = 15,
  TAV_PKTRANGE = 16,
  TAV_TUNNEL = 17,
  TAV_TUNNELTYPE = 18,
  TAV_CITRIX = 19,
  TAV_WDATTACK = 20,
  TAV_NO_TYPE = 21  // a content filter not yet read; has no keyword
};

// Value-type codes of the monitoring query interface. Any int is a value;
// the named ones are those the column catalogues use.
enum QULET_VT : int {
  QULET_VT_NONE = 0,
  QULET_VT_TIME = 16,
  QULET_VT_STRING = 17,
  QULET_VT_INT32 = 28,
  QULET_VT_MESSAGE_ID = 29,
  QULET_VT_INT64 = 30
};

namespace lytFilterParser {

// The keyword of `type`; throws "Not a valid argument for type" for 8
// (telNumber is read but never written) and for values outside 0..20.
LFP_API std::string dumpValueType(TavValType type);

// The type of an exact, case-sensitive keyword; throws "Invalid type: " + keyword.
LFP_API TavValType getValueType(const std::string& keyword);

// The query-interface code of `type`; throws for values outside 0..20.
LFP_API QULET_VT getKovaType(TavValType type);

}  // namespace lytFilterParser

#endif
