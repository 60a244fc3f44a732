#include "lytFilterParser/diagnostics/Refusal.h"

#include <algorithm>
#include <utility>

#include "lytFilterParser/diagnostics/Characters.h"
#include "lytFilterParser/diagnostics/Reading.h"

namespace lytFilterParser {
namespace detail {
namespace {

char lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

bool sameIgnoringCase(std::string_view a, std::string_view b) {
  return a.size() == b.size() &&
         std::equal(a.begin(), a.end(), b.begin(), [](char x, char y) { return lower(x) == lower(y); });
}

std::string withoutInvisible(std::string_view word) {
  std::string visible;
  for (std::size_t i = 0; i < word.size();) {
    const std::size_t invisible = invisibleAt(word, i).length;
    if (invisible == 0) visible += word[i];
    i += invisible == 0 ? 1 : invisible;
  }
  return visible;
}

std::vector<std::string> suggestWords(std::string_view word, WordKinds kinds) {
  const std::string visible = withoutInvisible(word);
  struct Candidate {
    std::size_t rank;
    std::string_view text;
  };
  std::vector<Candidate> found;
  for (const Word& entry : vocabulary()) {
    if (!entry.readable || (kinds & kindBit(entry.kind)) == 0) continue;
    if (entry.text == word) return {};  // the word is one of them: nothing to suggest
    const std::size_t rank = sameIgnoringCase(visible, entry.text) ? 0 : editDistance(visible, entry.text, 2);
    const bool close = rank == 0 || (rank <= 2 && rank < std::min(visible.size(), entry.text.size()));
    const bool known =
        std::any_of(found.begin(), found.end(), [&](const Candidate& c) { return c.text == entry.text; });
    if (close && !known) found.push_back(Candidate{rank, entry.text});
  }
  std::stable_sort(found.begin(), found.end(), [](const Candidate& a, const Candidate& b) { return a.rank < b.rank; });
  std::vector<std::string> suggestions;
  // Words farther than the closest one are no help beside it.
  for (std::size_t i = 0; i < found.size() && i < 3 && found[i].rank == found[0].rank; ++i) {
    suggestions.emplace_back(found[i].text);
  }
  return suggestions;
}

}  // namespace

Refusal refusalAt(std::string message, Span at, WordKinds expected, std::string_view text) {
  Refusal refusal{std::move(message), at.start, at.length, {}};
  if (expected == 0 || at.length == 0) return refusal;
  const std::string_view word = text.substr(at.start, at.length);
  // A word of the vocabulary is known, only misplaced: nothing to suggest.
  if (findWords(word).empty()) refusal.suggestions = suggestWords(word, expected);
  return refusal;
}

}  // namespace detail

std::optional<Refusal> readRefusal(const std::string& text) {
  detail::Reading reading = detail::readText(text, true);
  if (reading.request || reading.fault.empty()) return std::nullopt;
  return detail::refusalAt(std::move(reading.fault), reading.at, reading.record.expected, text);
}

std::vector<std::string> suggestWords(std::string_view word, const std::vector<WordKind>& kinds) {
  detail::WordKinds wanted = kinds.empty() ? ~detail::WordKinds{0} : 0;
  for (const WordKind kind : kinds) wanted |= detail::kindBit(kind);
  return detail::suggestWords(word, wanted);
}

}  // namespace lytFilterParser
