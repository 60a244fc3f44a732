// The key columns or the value columns of one request, in reading order.
#ifndef LYTFILTERPARSER_COLUMN_TAVCOLUMNARRAY_H
#define LYTFILTERPARSER_COLUMN_TAVCOLUMNARRAY_H

#include <cstddef>
#include <vector>

#include "lytFilterParser/column/TavColumn.h"

class LFP_API TavColumnArray {
 public:
  typedef std::vector<TavColumn>::iterator iterator;
  typedef std::vector<TavColumn>::const_iterator const_iterator;

  // Every column's text, nothing between them.
  std::string dump() const;
  void getModuleNames(strList& names) const;
  // Runs every column, also after a failure; true when all succeeded.
  bool setModuleNames(strIter& oldName, strIter& newName);

  void push_back(const TavColumn& column) {
    reserveFirst();
    columns.push_back(column);
  }
  void push_back(TavColumn&& column) {
    reserveFirst();
    columns.push_back(std::move(column));
  }
  std::size_t size() const { return columns.size(); }
  bool empty() const { return columns.empty(); }
  TavColumn& operator[](std::size_t i) { return columns[i]; }
  const TavColumn& operator[](std::size_t i) const { return columns[i]; }
  iterator begin() { return columns.begin(); }
  iterator end() { return columns.end(); }
  const_iterator begin() const { return columns.begin(); }
  const_iterator end() const { return columns.end(); }

 private:
  // A request has a few columns: room for them at the first one.
  void reserveFirst() {
    if (columns.capacity() == 0) columns.reserve(4);
  }

  std::vector<TavColumn> columns;
};

#endif
