// The per-column options that narrow what a key or value column counts:
// direction, encrypted, compressed or citrix-print traffic, and url part.
// Written as name=value tokens behind the column's type.
#ifndef LYTFILTERPARSER_COLUMN_TAVCOLUMNFILTER_H
#define LYTFILTERPARSER_COLUMN_TAVCOLUMNFILTER_H

#include <string>

#include "lytFilterParser/Export.h"
#include "lytFilterParser/Internals.h"
#include "lytFilterParser/base/TokenList.h"

class LFP_API TavColumnFilter {
 public:
  // Codes of the yes/no options; direction uses 0 in, 1 out, 2 both.
  enum { NO = 0, YES = 1, BOTH = 2 };
  // Codes of the url mode.
  enum { URL_FULL = 0, URL_HOST = 1, URL_PATH = 2, URL_SCHEME = 3, URL_HOST_PATH = 4, URL_SCHEME_HOST = 5 };

  // No restriction: everything "both", url mode "full".
  TavColumnFilter() = default;
  TavColumnFilter(int encryption, int compression, int direction, int citrixPrint, int urlMode);
  TavColumnFilter(const TavColumnFilter& other) = default;
  TavColumnFilter& operator=(const TavColumnFilter& other) = default;

  // Reads one option token at the cursor and advances past it. Throws
  // "Error: Expected end of line" at the end, "Unexpected type of ..." for an
  // option name without a known value, "Expected filter type" for none.
  void parse(strList& tokens, strIter& cur);
  // The options that restrict anything, each followed by a blank.
  std::string dump() const;

  // The options in the order they are written: direction, encryption,
  // compression, citrix print, url mode.
  enum Option { DIRECTION, ENCRYPTION, COMPRESSION, CITRIX_PRINT, URL_MODE, OPTION_COUNT };
  int option(Option o) const { return options[kSlot[o]]; }
  int getEncryptionMode() const { return option(ENCRYPTION); }
  int getCompressionMode() const { return option(COMPRESSION); }
  int getDirection() const { return option(DIRECTION); }
  int getCitrixPrintMode() const { return option(CITRIX_PRINT); }
  int getUrlMode() const { return option(URL_MODE); }
  // True when any of encryption, compression, direction or citrix-print
  // differs from "both".
  bool restrictsTraffic() const;

 private:
  friend struct lytFilterParser::detail::Reader;

  // Where each option is stored: encryption, compression, direction, citrix
  // print, url mode, the layout of the class's five fields before, which
  // programs built with the earlier header read through the inline getters.
  static constexpr unsigned char kSlot[OPTION_COUNT] = {2, 0, 1, 3, 4};
  int options[OPTION_COUNT] = {BOTH, BOTH, BOTH, BOTH, URL_FULL};
};

#endif
