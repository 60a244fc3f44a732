// The end-to-end request: the counters of one named virtual link, written
// "vl NAME -t wire|application". It has no legacy form and no module names.
#ifndef LYTFILTERPARSER_REQUEST_E2EKOVAREQUEST_H
#define LYTFILTERPARSER_REQUEST_E2EKOVAREQUEST_H

#include "lytFilterParser/Internals.h"
#include "lytFilterParser/request/LYTKovaRequest.h"
#include "lytFilterParser/vocab/Codes.h"
#include "lytFilterParser/vocab/ColumnCatalogue.h"

class LFP_API E2EKovaRequest : public LYTKovaRequest {
 public:
  // The virtual-link column catalogue.
  static const KovaColumnInfo vlColumnArray[];
  static const int vlArraySize;

  E2EKovaRequest(std::string name, tLytpE2eDataType type);
  // Reads the tokens that follow "vl": the link name, then options. Throws
  // "No virtual link name after vl" for no tokens, and what parseDataType
  // throws.
  explicit E2EKovaRequest(strList& tokens);
  ~E2EKovaRequest() override;

  std::string dump() const override;
  // Version 3: dump(); 0 and below: "4.1 and under is not supported";
  // otherwise "".
  std::string dump(TavVersion version) const override;
  strList getModuleNames() const override;
  // True exactly when `oldNames` is empty.
  bool setModuleNames(strList& oldNames, strList& newNames) override;
  // Reads the options after the name: "-t" anywhere in a token takes the
  // next token as data type; everything else is skipped.
  virtual void parseFilter(strList& tokens, strIter& cur);

  // Reads the data type from the first character of the token at the cursor
  // (the cursor does not move). Throws "No data after direction argument" at
  // the end, "Not a valid argument for dataType" for another character.
  void parseDataType(strList& tokens, strIter& cur);
  std::string dumpDataType() const;
  std::string getVLName() const { return vlName; }
  std::string dumpVLName() const { return vlName; }
  tLytpE2eDataType getDataType() const { return dataType; }

  // The code of the virtual-link catalogue's row `index`, 0 outside 0..14.
  static int getKovaColumnType(int index);

 private:
  friend struct lytFilterParser::detail::Reader;

  std::string vlName;
  tLytpE2eDataType dataType;
};

#endif
