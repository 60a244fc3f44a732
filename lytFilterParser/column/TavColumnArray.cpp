#include "lytFilterParser/column/TavColumnArray.h"

void TavColumnArray::getModuleNames(strList& names) const {
  for (const TavColumn& column : columns) column.getModuleNames(names);
}

bool TavColumnArray::setModuleNames(strIter& oldName, strIter& newName) {
  bool all = true;
  for (TavColumn& column : columns) all = column.setModuleNames(oldName, newName) && all;
  return all;
}
