#include "lytFilterParser/diagnostics/Validation.h"

#include <cstdint>
#include <utility>

#include "lytFilterParser/diagnostics/Reading.h"
#include "lytFilterParser/request/Validator.h"

namespace lytFilterParser {
namespace detail {
namespace {

Span whole(const Record& outline) { return Span{0, outline.text.size()}; }

Span column(const Record& outline, const RecordColumns& columns, std::size_t c, bool type) {
  if (c >= columns.size()) return whole(outline);
  return type ? columns[c].type : columns[c].whole;
}

// The same in column `c`; the whole text when there is no such column.
Span columnWord(const Record& outline, const RecordColumns& columns, std::size_t c, Part part, std::size_t nth,
                std::size_t option = 0) {
  return c < columns.size() ? columnWord(outline, columns[c], part, nth, option) : whole(outline);
}

// The last "index=" or "updates=" word of the last "-s", else that "-s".
Span sortWord(const Record& outline, Part part) {
  Span found{outline.text.size(), 0};
  for (const SortSetting& setting : outline.sorts) {
    if (setting.column >= 0) continue;
    found = setting.type;
    for (std::uint32_t w = setting.firstWord; w < setting.firstWord + setting.wordCount; ++w) {
      if (outline.words[w].part == part) found = outline.words[w].span;
    }
  }
  return found;
}

}  // namespace

Span columnWord(const Record& outline, const RecordColumn& column, Part part, std::size_t nth, std::size_t option) {
  Span found = column.type;
  std::size_t seen = 0;
  for (std::uint32_t w = column.firstWord; w < column.firstWord + column.wordCount; ++w) {
    const RecordWord& word = outline.words[w];
    if (word.part != part || (part == Part::ColumnOption && word.option != option)) continue;
    found = word.span;
    if (seen++ == nth) return found;
  }
  return nth == kLastWord ? found : column.type;
}

// The place of the item validation blamed, found in the outline of the text.
Span blamedPlace(const Record& outline, const Blame& blame) {
  switch (blame.item) {
    case Blame::End: return Span{outline.text.size(), 0};
    case Blame::KeyColumn: return column(outline, outline.keys, blame.index, false);
    case Blame::KeyType: return column(outline, outline.keys, blame.index, true);
    case Blame::KeyName: return columnWord(outline, outline.keys, 0, Part::Name, blame.index);
    case Blame::ValueColumn: return column(outline, outline.values, blame.index, false);
    case Blame::ValueType: return column(outline, outline.values, blame.index, true);
    case Blame::ValueMode: return columnWord(outline, outline.values, blame.index, Part::Accumulation, kLastWord);
    case Blame::ValueNames: return columnWord(outline, outline.values, blame.index, Part::Name, 0);
    case Blame::ValueOption:
      return columnWord(outline, outline.values, blame.index, Part::ColumnOption, kLastWord, blame.option);
    case Blame::SortIndex: return sortWord(outline, Part::Index);
    case Blame::MaxUpdates: return sortWord(outline, Part::Updates);
    case Blame::FilterAtom:
      return blame.index < outline.nodes.size() ? outline.nodes[blame.index].head : whole(outline);
    default: return whole(outline);
  }
}

}  // namespace detail

std::optional<Refusal> validate(const std::string& text, NetworkKovaRequest& request, TavVersion peer) {
  std::string message;
  detail::Blame blame;
  if (detail::Validator::isValid(request, peer, message, &blame)) return std::nullopt;
  // The text is read again, for the places, only when validation refuses.
  detail::Reading reading;
  const Span at =
      detail::recordFor(text, request, reading) ? detail::blamedPlace(reading.record, blame) : Span{0, text.size()};
  return Refusal{std::move(message), at.start, at.length, {}};
}

}  // namespace lytFilterParser
