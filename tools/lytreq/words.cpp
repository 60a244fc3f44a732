#include "words.h"

namespace lytreq {

using lytFilterParser::vocabulary;

std::string_view virtualLinkWord() {
  // The vl words are listed in the order they stand in a request.
  for (const Word& word : vocabulary()) {
    if (word.kind == WordKind::VirtualLink) return word.text;
  }
  return {};
}

std::string valueTypeWord(TavValType type) {
  for (const Word& word : vocabulary()) {
    if (word.kind == WordKind::ValueType && word.code == type) return std::string(word.text);
  }
  return "?";
}

bool isBracket(char c) {
  // The tokenizer cuts a bracket off whatever it touches, one character each.
  static const std::string kBrackets = [] {
    std::string brackets;
    for (const Word& word : vocabulary()) {
      if (word.kind == WordKind::Bracket) brackets += word.text;
    }
    return brackets;
  }();
  return kBrackets.find(c) != std::string::npos;
}

}  // namespace lytreq
