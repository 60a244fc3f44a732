// The base of every monitoring request, and the library's entry points: the
// tokenizer, the factory that reads current-syntax text, and the converter
// of legacy command lines.
#ifndef LYTFILTERPARSER_REQUEST_LYTKOVAREQUEST_H
#define LYTFILTERPARSER_REQUEST_LYTKOVAREQUEST_H

#include <string>

#include "lytFilterParser/Export.h"
#include "lytFilterParser/base/TavVersion.h"
#include "lytFilterParser/base/TokenList.h"

class LFP_API LYTKovaRequest {
 public:
  LYTKovaRequest() = default;
  LYTKovaRequest(const LYTKovaRequest&) = default;
  LYTKovaRequest& operator=(const LYTKovaRequest&) = default;
  virtual ~LYTKovaRequest();

  // The request in the current syntax.
  virtual std::string dump() const = 0;
  // The request for a peer of `version`.
  virtual std::string dump(TavVersion version) const = 0;
  // The module names the request refers to, in walk order.
  virtual strList getModuleNames() const = 0;
  // Checks each module name against `oldNames` and stores the matching entry
  // of `newNames` as its resolved name.
  virtual bool setModuleNames(strList& oldNames, strList& newNames) = 0;

  // Appends the tokens of `text`: blanks separate, "[" and "]" stand alone.
  static void fillFilterList(strList& tokens, const std::string& text);

  // Reads current-syntax text ("vl ..." for an end-to-end request). Returns a
  // new object the caller owns, or nullptr with the message in `error`
  // (`error` is untouched on success and for empty text).
  static LYTKovaRequest* getLYTKovaRequest(const std::string& text, std::string& error);

  // Reads a legacy command line for peer `version` and returns it in the
  // current syntax, or "" with the message in `error`.
  static std::string convert(const std::string& text, TavVersion version, std::string& error);
  // The same for peer version 2.
  static std::string convert(const std::string& text, std::string& error);
};

#endif
