// Helpers shared by the diagnostics tests. Internal; not installed.
#ifndef LYTFILTERPARSER_DIAGNOSTICS_TESTSUPPORT_H
#define LYTFILTERPARSER_DIAGNOSTICS_TESTSUPPORT_H

#include <string>
#include <vector>

#include "lytFilterParser/lytFilterParser.h"

namespace lfptest {

// "code:WORD" for a diagnostic about the bytes WORD of `text`, "code:WORD#2"
// when they are its second occurrence, "code:$" for the end of the text.
inline std::string spelled(const std::string& text, std::size_t start, std::size_t length, const std::string& code) {
  if (length == 0) return code + ":" + (start == text.size() ? "$" : "@" + std::to_string(start));
  const std::string word = text.substr(start, length);
  int occurrence = 1;
  for (std::size_t at = text.find(word); at != std::string::npos && at < start; at = text.find(word, at + 1)) ++occurrence;
  return code + ":" + word + (occurrence > 1 ? "#" + std::to_string(occurrence) : "");
}

inline std::vector<std::string> spelled(const std::string& text, const std::vector<lytFilterParser::Diagnostic>& found) {
  std::vector<std::string> out;
  for (const lytFilterParser::Diagnostic& d : found) out.push_back(spelled(text, d.start, d.length, d.code));
  return out;
}

}  // namespace lfptest

#endif
