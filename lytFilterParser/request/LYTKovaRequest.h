// The base of every monitoring request, and the library's entry points: the
// tokenizer, the factory that reads current-syntax text, and the converter
// of legacy command lines.
#ifndef LYTFILTERPARSER_REQUEST_LYTKOVAREQUEST_H
#define LYTFILTERPARSER_REQUEST_LYTKOVAREQUEST_H

#include <string>

#include "lytFilterParser/Export.h"
#include "lytFilterParser/base/TavVersion.h"
#include "lytFilterParser/base/TokenList.h"

// How the readers fail. Every reader of the library (the parsing
// constructors, the parse... functions, getAtomFilter) throws its message as
// a std::string through lytFilterParser::Assert and builds nothing further;
// a constructor that throws leaves no object and leaks nothing. After a
// fault the caller's cursor stands on the token the message names ("Invalid
// type: foo" leaves it on "foo"), or at the end of the list when the message
// says a token is missing ("Expected type at this point but there is no
// data", "`]` expected", "Sort type expected"). Each header says what its
// readers throw. The entry points below catch these messages and hand them
// back in their error argument. A std::string is no std::exception: a
// caller that reads with the throwing constructors, validates or writes
// catches `const std::string&` (a handler for std::exception alone lets the
// message end the program); what the standard library throws
// (std::bad_alloc) passes as it is.
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
  // (`error` is untouched on success and for empty text). Throws nothing of
  // its own; what the standard library throws (std::bad_alloc) passes.
  static LYTKovaRequest* getLYTKovaRequest(const std::string& text, std::string& error);

  // Reads a legacy command line for peer `version` and returns it in the
  // current syntax, or "" with the message in `error`. A message thrown while
  // writing the request (a telNumber key has no written keyword) reaches the
  // caller as a thrown std::string.
  static std::string convert(const std::string& text, TavVersion version, std::string& error);
  // The same for peer version 2.
  static std::string convert(const std::string& text, std::string& error);
};

#endif
