// The request for a traffic view of the network: a filter tree selecting the
// traffic, key columns grouping it, value columns measuring it, and a sort.
// Read and written in the current syntax and in the legacy option syntax,
// validated against a peer version, and mapped to query-interface columns.
#ifndef LYTFILTERPARSER_REQUEST_NETWORKKOVAREQUEST_H
#define LYTFILTERPARSER_REQUEST_NETWORKKOVAREQUEST_H

#include <string>
#include <vector>

#include "lytFilterParser/Export.h"
#include "lytFilterParser/Internals.h"
#include "lytFilterParser/vocab/Codes.h"
#include "lytFilterParser/column/TavColumn.h"
#include "lytFilterParser/column/TavColumnArray.h"
#include "lytFilterParser/filter/Filter.h"
#include "lytFilterParser/request/LYTKovaRequest.h"
#include "lytFilterParser/base/TokenList.h"

class LFP_API NetworkKovaRequest : public LYTKovaRequest {
 public:
  // The update count that is assumed when none is given, and never written.
  static constexpr int defaultMaxUpdates = 50;

  NetworkKovaRequest(const Filter& filter, const TavColumnArray& keys, const TavColumnArray& values,
                     TavSortType sortType, int sortIndex);
  // Reads current-syntax tokens; the list may be changed (see parse).
  explicit NetworkKovaRequest(strList& tokens);
  // Reads the tokens for peer `version`: 1 and 2 translate the legacy option
  // syntax, 3 reads the current syntax, 0 gives an empty request, anything
  // else throws "NetworkKovaRequest: Invalid version". The translation throws
  // "Invalid value type", "Invalid key type", "Invalid interface filter" or
  // "Invalid filter" for a legacy option or filter that ends early or names
  // no legacy word; its cursor is its own, so these have no position in the
  // caller's list. Then the translated words are read as parse reads.
  NetworkKovaRequest(strList& tokens, TavVersion version);
  NetworkKovaRequest(const NetworkKovaRequest& other) = default;
  NetworkKovaRequest& operator=(const NetworkKovaRequest& other) = default;
  ~NetworkKovaRequest() override;

  std::string dump() const override;
  // Version 3: dump(); 1 and 2: the legacy option text; 0 and below:
  // "4.1 and under is not supported"; above 3: "".
  std::string dump(TavVersion version) const override;
  // The filter's names, then the key columns' names.
  strList getModuleNames() const override;
  bool setModuleNames(strList& oldNames, strList& newNames) override;

  // Reads options "-f", "-k", "-v", "-s" until the end of the list. A bare
  // atom list after "-f" is wrapped in place into one "and" by inserting
  // tokens, so the list is changed. Throws "Invalid option: " + the token
  // for a token that is no option, and what the filter, column and sort
  // readers throw.
  void parse(strList& tokens, strIter& cur);
  // Reads the sort type and its "index=" and "updates=" words. Throws "Sort
  // type expected" at the end, "Invalid sort type: " + the token, or
  // "Invalid option: " + a following token that is neither.
  void parseSort(strList& tokens, strIter& cur);
  // "sort=top" top, "sort=bottom" bottom, anything else none.
  static TavSortType getSortType(const std::string& option);
  std::string dumpSort() const;

  void addColumn(bool isKey, const TavColumn& column);
  void setSortType(TavSortType type) { sortType = type; }
  void setSortIndex(long index) { sortIndex = static_cast<int>(index); }

  // Validation for a peer version: false with one message in `error`.
  // Completes the request in place (conn rate -> concurrent, session rate ->
  // new, dynamic view sort none -> top).
  bool isValid(TavVersion version, std::string& error);
  bool isValid(std::string& error);
  // The oldest version 0..3 that accepts the request, 4 when none does.
  int getMinimalValidVersion(std::string& error);

  // 1-based catalogue positions of keys then values.
  std::vector<std::string> getKovaColumns() const;
  std::vector<int> getKovaColumns(TavVersion version) const;
  // Reorders 0-based catalogue positions into the request's column order.
  bool mapKovaColumn(std::vector<int>& positions) const;
  // No key column carries an entity.
  bool isDynamic() const;

  const Filter& getFilter() const { return filter; }
  Filter& getFilter() { return filter; }
  const TavColumnArray& getKeys() const { return keys; }
  const TavColumnArray& getValues() const { return values; }
  TavSortType getSortType() const { return sortType; }
  int getSortIndex() const { return sortIndex; }
  int getMaxUpdates() const { return maxUpdates; }

 private:
  friend struct lytFilterParser::detail::Reader;
  friend struct lytFilterParser::detail::Validator;
  // An empty request for the readers to fill.
  LFP_HIDDEN NetworkKovaRequest();
  friend class LYTKovaRequest;

  Filter filter;
  TavColumnArray keys;
  TavColumnArray values;
  TavSortType sortType;
  int sortIndex;
  int maxUpdates;
};

#endif
