#include "lytFilterParser/column/TavColumnArray.h"

#include "lytFilterParser/detail/Writer.h"

void TavColumnArray::appendTo(lytFilterParser::detail::Writer& out) const {
  for (const TavColumn& column : columns) column.appendTo(out);
}

std::string TavColumnArray::dump() const {
  lytFilterParser::detail::Writer out;
  appendTo(out);
  return out.finish();
}

void TavColumnArray::getModuleNames(strList& names) const {
  for (const TavColumn& column : columns) column.getModuleNames(names);
}

bool TavColumnArray::setModuleNames(strIter& oldName, strIter& newName) {
  bool all = true;
  for (TavColumn& column : columns) {
    if (!column.setModuleNames(oldName, newName)) all = false;
  }
  return all;
}
