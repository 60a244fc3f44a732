// One item of an interface filter: an interface name and the traffic
// direction on it, written "name", "name,in" or "name,out".
#ifndef LYTFILTERPARSER_FILTER_INTERFACEINFO_H
#define LYTFILTERPARSER_FILTER_INTERFACEINFO_H

#include <string>

#include "lytFilterParser/Export.h"
#include "lytFilterParser/Internals.h"
#include "lytFilterParser/base/TokenList.h"
#include "lytFilterParser/vocab/Codes.h"

// Final: dump() is virtual but the destructor is not, so nothing may derive
// from it and be destroyed through an InterfaceInfo.
class LFP_API InterfaceInfo final {
 public:
  InterfaceInfo(std::string name, TavFilterDirType dir);
  // Reads the token under the cursor; the cursor does not move.
  InterfaceInfo(strList& tokens, strIter& cur);

  bool operator==(const InterfaceInfo& other) const;
  // By name (byte-wise), then by direction.
  bool operator<(const InterfaceInfo& other) const;

  virtual std::string dump() const;
  // Sets the direction from the first character of `suffix`: I/i in, O/o
  // out, anything else both.
  void parseDirection(const std::string& suffix);
  // ",in", ",out" or "".
  std::string dumpDirection() const;

  const std::string& getName() const { return name; }
  TavFilterDirType getDirection() const { return direction; }

 private:
  friend struct lytFilterParser::detail::Reader;

  std::string name;
  TavFilterDirType direction;
};

#endif
