// The leaf of a filter tree that restricts traffic to named interfaces, each
// optionally with a direction.
#ifndef LYTFILTERPARSER_FILTER_INTERFACEATOMFILTER_H
#define LYTFILTERPARSER_FILTER_INTERFACEATOMFILTER_H

#include "lytFilterParser/filter/AtomFilter.h"
#include "lytFilterParser/filter/InterfaceInfoList.h"

class LFP_API InterfaceAtomFilter : public AtomFilter {
 public:
  // Reads from the "interface" keyword on.
  InterfaceAtomFilter(strList& tokens, strIter& cur);
  InterfaceAtomFilter(const InterfaceInfoList& list, bool negated);
  InterfaceAtomFilter(const InterfaceInfo& item, bool negated);
  InterfaceAtomFilter(const InterfaceAtomFilter& other) = default;
  InterfaceAtomFilter& operator=(const InterfaceAtomFilter& other) = default;
  ~InterfaceAtomFilter() override;

  std::string dump() const override;
  // Interfaces take no part in module-name substitution.
  void getModuleNames(strList& names) const override;
  bool setModuleNames(strIter& oldName, strIter& newName) override;
  AbstractFilter* clone() const override;
  std::string dumpFilterType() const override;

  // Items up to the end, a token beginning with "-" or a token "]".
  void parseInterfaceInfoList(strList& tokens, strIter& cur);
  // " item " for every item.
  std::string dumpInterfaceInfoList() const;

  const InterfaceInfoList& getInterfaces() const { return interfaces; }

 private:
  friend struct lytFilterParser::detail::Reader;

  InterfaceInfoList interfaces;
};

#endif
