// The tokenizer on any bytes: tokens are never empty, hold no blank, brackets
// stand alone, and together they are the text without its blanks.
#include <cstddef>
#include <cstdint>

#include "FuzzCommon.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string text(reinterpret_cast<const char*>(data), size);
  strList tokens;
  tokens.push_back("kept");
  LYTKovaRequest::fillFilterList(tokens, text);
  if (tokens.front() != "kept") fuzz::failure("existing tokens were changed", text);
  tokens.pop_front();
  std::string joined;
  for (const std::string& token : tokens) {
    if (token.empty()) fuzz::failure("empty token", text);
    if (token.find(' ') != std::string::npos) fuzz::failure("token holds a blank", token);
    if (token.size() > 1 && token.find_first_of("[]") != std::string::npos)
      fuzz::failure("bracket inside a token", token);
    joined += token;
  }
  std::string withoutBlanks;
  for (char c : text) {
    if (c != ' ') withoutBlanks += c;
  }
  if (joined != withoutBlanks) fuzz::failure("tokens do not cover the text", text);
  return 0;
}
