#include "lytFilterParser/diagnostics/Refusal.h"

#include <algorithm>
#include <utility>

#include "lytFilterParser/diagnostics/Characters.h"
#include "lytFilterParser/diagnostics/Reading.h"
#include "lytFilterParser/vocab/Syntax.h"

namespace lytFilterParser {
namespace detail {
namespace {

// The messages that refuse a word for not being a word of its place, by
// their head, and the kinds of word that stand there.
struct Suggesting {
  std::string_view head;
  std::vector<WordKind> kinds;
};

const std::vector<Suggesting>& suggestingMessages() {
  static const std::vector<Suggesting> messages = [] {
    std::vector<Suggesting> list = {
        {"Invalid type: ", {WordKind::ValueType, WordKind::FilterOperator}},
        {"Invalid option: ", {WordKind::Option, WordKind::SortOption}},
        {"Invalid accumulation mode: ", {WordKind::AccumulationMode}},
        {"Invalid sort type: ", {WordKind::SortType}},
        {"Not a valid operator: ", {WordKind::FilterOperator}},
        {"Expected filter type", {WordKind::ColumnOption}},
        {"Not a valid argument for dataType", {WordKind::VirtualLink}},
        {"Invalid value type", {WordKind::LegacyValue}},
        {"Invalid key type", {WordKind::LegacyGroup}},
    };
    for (const ColumnOption& option : kColumnOptions) list.push_back({option.message, {WordKind::ColumnOption}});
    return list;
  }();
  return messages;
}

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

}  // namespace

Refusal refusalAt(std::string message, Span at, std::string_view text) {
  Refusal refusal{std::move(message), at.start, at.length, {}};
  // A word of the vocabulary is known, only misplaced: nothing to suggest.
  if (at.length == 0 || !findWords(text.substr(at.start, at.length)).empty()) return refusal;
  for (const Suggesting& suggesting : suggestingMessages()) {
    if (refusal.message.compare(0, suggesting.head.size(), suggesting.head) == 0) {
      refusal.suggestions = suggestWords(text.substr(at.start, at.length), suggesting.kinds);
      break;
    }
  }
  return refusal;
}

}  // namespace detail

std::optional<Refusal> readRefusal(const std::string& text) {
  detail::Reading reading = detail::readText(text, true);
  if (reading.request || reading.fault.empty()) return std::nullopt;
  return detail::refusalAt(std::move(reading.fault), reading.at, text);
}

std::vector<std::string> suggestWords(std::string_view word, const std::vector<WordKind>& kinds) {
  const std::string visible = detail::withoutInvisible(word);
  struct Candidate {
    std::size_t rank;
    std::string_view text;
  };
  std::vector<Candidate> found;
  for (const Word& entry : vocabulary()) {
    if (!entry.readable || (!kinds.empty() && std::find(kinds.begin(), kinds.end(), entry.kind) == kinds.end()))
      continue;
    if (entry.text == word) return {};  // the word is one of them: nothing to suggest
    const std::size_t rank = detail::sameIgnoringCase(visible, entry.text) ? 0 : editDistance(visible, entry.text, 2);
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

}  // namespace lytFilterParser
