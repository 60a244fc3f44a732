// The items of one interface filter, in reading order.
#ifndef LYTFILTERPARSER_FILTER_INTERFACEINFOLIST_H
#define LYTFILTERPARSER_FILTER_INTERFACEINFOLIST_H

#include <cstddef>
#include <vector>

#include "lytFilterParser/filter/InterfaceInfo.h"

class LFP_API InterfaceInfoList {
 public:
  typedef std::vector<InterfaceInfo>::const_iterator const_iterator;

  // Same number of items, and every item of this list equals some item of
  // `other`, wherever it stands (items are not paired one to one).
  bool operator==(const InterfaceInfoList& other) const;

  void push_back(const InterfaceInfo& item) { items.push_back(item); }
  void push_back(InterfaceInfo&& item) { items.push_back(std::move(item)); }
  std::size_t size() const { return items.size(); }
  bool empty() const { return items.empty(); }
  const InterfaceInfo& operator[](std::size_t i) const { return items[i]; }
  const_iterator begin() const { return items.begin(); }
  const_iterator end() const { return items.end(); }

 private:
  std::vector<InterfaceInfo> items;
};

#endif
