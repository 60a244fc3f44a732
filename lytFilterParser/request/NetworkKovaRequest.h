// The request for a traffic view of the network: a filter tree selecting the
// traffic, key columns grouping it, value columns measuring it, and a sort.
// Read and written in the current syntax and in the legacy option syntax,
// validated against a peer version, and mapped to query-interface columns.
#ifndef LYTFILTERPARSER_REQUEST_NETWORKKOVAREQUEST_H
#define LYTFILTERPARSER_REQUEST_NETWORKKOVAREQUEST_H

#include <vector>

#include "lytFilterParser/column/TavColumnArray.h"
#include "lytFilterParser/filter/Filter.h"
#include "lytFilterParser/request/LYTKovaRequest.h"

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
  // Copies filter, columns, sort and updates of `other`. Assigning a request
  // to itself empties its filter, as Filter's self-assignment does (it
  // deletes its children before cloning the other's, which are the same):
  // the columns and the sort stay. Throws nothing of its own (std::bad_alloc
  // passes).
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
  // The constructor from parts fixes the update count at defaultMaxUpdates;
  // this sets the count that "updates=" carries (written when it differs
  // from the default, checked by isValid), so that a request built from
  // parts can say what a read one says.
  void setMaxUpdates(long updates) { maxUpdates = static_cast<int>(updates); }

  // Validation for a peer version: true when a peer of `version` serves the
  // request; false with one message in `error` ("Support only one value
  // column"). `error` is written only on a refusal: after true it still
  // holds whatever it held before.
  // Changes the request, accepted or not: validation completes it as a peer
  // reads it (a "conn" value with acc=rate becomes acc=concurrent, a session
  // value with acc=rate acc=new, a dynamic view - no key names - without a
  // sort gets "-s top"), so dump() afterwards writes the completed request.
  // Validate a copy to keep the request as it was read.
  // Throws the std::string "Not a valid argument for type" for a telNumber
  // key beside a session value (the message would name the type, which has
  // no keyword to write).
  bool isValid(TavVersion version, std::string& error);
  // isValid for the current version (3).
  bool isValid(std::string& error);
  // The oldest version whose isValid accepts the request (1 to 3; version 0
  // refuses every request), 4 when none does. Runs isValid for 0, 1, 2, 3 in
  // turn and stops at the first that accepts, so it completes the request as
  // isValid does, and `error` keeps the message of the last version that
  // refused (also next to an answer of 1 to 3: "This version is not
  // supported" at least). Throws what isValid throws.
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
  TavSortType sortType = TAV_SORT_NONE;
  int sortIndex = 1;
  int maxUpdates = defaultMaxUpdates;
};

#endif
