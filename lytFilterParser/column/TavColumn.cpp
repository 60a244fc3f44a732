#include "lytFilterParser/column/TavColumn.h"

// Reading and writing are with the rest of the syntax, in request/Reader.cpp
// and request/Printer.cpp.

TavColumn::TavColumn(KeyOrValue role, TavValType type, TavAccType acc, const TavEntityArray& list,
                     const TavColumnFilter& filter)
    : keyOrValue(role), valueType(type), accType(acc), entities(list), columnFilter(filter) {}

TavColumn::TavColumn(KeyOrValue role, TavValType type, TavAccType acc, const TavColumnFilter& filter)
    : keyOrValue(role), valueType(type), accType(acc), columnFilter(filter) {}

TavColumn::TavColumn(KeyOrValue role)
    : keyOrValue(role),
      valueType(role == TAV_KEY ? TAV_SVC : TAV_AB),
      accType(role == TAV_KEY ? TAV_ACC_REPLACE : TAV_ACC_RATE) {}

TavColumn::~TavColumn() = default;

TavColumn* TavColumn::clone() const { return new TavColumn(keyOrValue, valueType, accType, entities, columnFilter); }

void TavColumn::getModuleNames(strList& names) const { entities.getModuleNames(names); }

bool TavColumn::setModuleNames(strIter& oldName, strIter& newName) { return entities.setModuleNames(oldName, newName); }
