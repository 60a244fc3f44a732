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

namespace lytreq {

std::string codeWord(WordKind kind, int code) {
  const Word* read = nullptr;
  for (const Word& word : vocabulary()) {
    if (word.kind != kind || word.code != code) continue;
    if (word.written) return std::string(word.text);
    if (read == nullptr) read = &word;
  }
  return read != nullptr ? std::string(read->text) : "?";
}

std::string optionWord(unsigned place) {
  for (const Word& word : vocabulary()) {
    if (word.kind == WordKind::Option && word.places == place) return std::string(word.text);
  }
  return "?";
}

namespace {

// One column option: a filter that restricts only it, which the library
// writes with the option's name, and the option's value in a filter.
struct ColumnOptionProbe {
  TavColumnFilter restricted;
  int (TavColumnFilter::*value)() const;
};

const ColumnOptionProbe kProbes[] = {
    {TavColumnFilter(TavColumnFilter::BOTH, TavColumnFilter::BOTH, TAV_DIR_IN, TavColumnFilter::BOTH,
                     TavColumnFilter::URL_FULL),
     &TavColumnFilter::getDirection},
    {TavColumnFilter(TavColumnFilter::YES, TavColumnFilter::BOTH, TavColumnFilter::BOTH, TavColumnFilter::BOTH,
                     TavColumnFilter::URL_FULL),
     &TavColumnFilter::getEncryptionMode},
    {TavColumnFilter(TavColumnFilter::BOTH, TavColumnFilter::YES, TavColumnFilter::BOTH, TavColumnFilter::BOTH,
                     TavColumnFilter::URL_FULL),
     &TavColumnFilter::getCompressionMode},
    {TavColumnFilter(TavColumnFilter::BOTH, TavColumnFilter::BOTH, TavColumnFilter::BOTH, TavColumnFilter::YES,
                     TavColumnFilter::URL_FULL),
     &TavColumnFilter::getCitrixPrintMode},
    {TavColumnFilter(TavColumnFilter::BOTH, TavColumnFilter::BOTH, TavColumnFilter::BOTH, TavColumnFilter::BOTH,
                     TavColumnFilter::URL_HOST),
     &TavColumnFilter::getUrlMode},
};

// The name of a column option, "=" included, as the library writes it.
std::string optionName(const ColumnOptionProbe& probe) {
  const std::string written = probe.restricted.dump();
  return written.substr(0, written.find('=') + 1);
}

// The column option word of the option named `name` with `value`.
const Word* columnOptionWord(const std::string& name, int value) {
  for (const Word& word : vocabulary()) {
    if (word.kind == WordKind::ColumnOption && word.code == value && word.text.substr(0, name.size()) == name) {
      return &word;
    }
  }
  return nullptr;
}

}  // namespace

std::vector<std::string> columnOptionWords(const TavColumnFilter& filter) {
  // The options in the vocabulary's order, each found by its name.
  std::vector<std::string> words;
  std::string previous;
  for (const Word& word : vocabulary()) {
    if (word.kind != WordKind::ColumnOption) continue;
    const std::string name(word.text.substr(0, word.text.find('=') + 1));
    if (name == previous) continue;
    previous = name;
    for (const ColumnOptionProbe& probe : kProbes) {
      if (optionName(probe) != name) continue;
      const Word* found = columnOptionWord(name, (filter.*probe.value)());
      words.push_back(found != nullptr ? std::string(found->text) : name + "?");
    }
  }
  return words;
}

std::string directionWord(int direction) {
  const Word* found = columnOptionWord(optionName(kProbes[0]), direction);
  if (found == nullptr) return "?";
  return std::string(found->text.substr(found->text.find('=') + 1));
}

}  // namespace lytreq
