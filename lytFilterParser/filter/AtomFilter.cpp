#include "lytFilterParser/filter/AtomFilter.h"

#include "lytFilterParser/vocab/ValueTypeTable.h"

// Reading and writing are with the rest of the syntax, in request/Reader.cpp
// and request/Printer.cpp.

bool AtomFilter::isValid(std::string& err) const {
  if (lytFilterParser::detail::hasPlace(filterType, lytFilterParser::detail::kInFilter)) return true;
  // dumpValueType throws for types without a keyword; that fault escapes.
  err = "Invalid Filter Type: " + lytFilterParser::dumpValueType(filterType);
  return false;
}
