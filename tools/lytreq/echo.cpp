#include "echo.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <ostream>
#include <vector>

#include "lytFilterParser/diagnostics/Characters.h"

namespace lytreq {

namespace {

const char kEllipsis[] = "\xE2\x80\xA6";  // U+2026, one column

struct Range {
  std::uint32_t first;
  std::uint32_t last;
};

bool inRanges(std::uint32_t c, const Range* ranges, std::size_t count) {
  for (std::size_t i = 0; i < count; ++i) {
    if (c >= ranges[i].first && c <= ranges[i].last) return true;
  }
  return false;
}

// A character the library names invisible (its table holds the controls
// too, which are escaped before this is asked).
bool isInvisible(std::uint32_t c) {
  const lytFilterParser::CodePointTable table = lytFilterParser::invisibleCharacters();
  const lytFilterParser::CodePointRange* range =
      std::lower_bound(table.begin(), table.end(), c,
                       [](const lytFilterParser::CodePointRange& r, std::uint32_t v) { return r.last < v; });
  return range != table.end() && range->first <= c;
}

// Combining marks: drawn on the character before them.
const Range kCombining[] = {{0x0300, 0x036F}, {0x0483, 0x0489}, {0x0591, 0x05BD}, {0x0610, 0x061A}, {0x064B, 0x065F},
                            {0x1AB0, 0x1AFF}, {0x1DC0, 0x1DFF}, {0x20D0, 0x20FF}, {0xFE00, 0xFE0F}, {0xFE20, 0xFE2F}};

// East Asian wide and full-width characters: two columns.
const Range kWide[] = {{0x1100, 0x115E}, {0x2E80, 0x303E}, {0x3041, 0x3163},   {0x3165, 0x33FF},   {0x3400, 0x4DBF},
                       {0x4E00, 0x9FFF}, {0xA000, 0xA4CF}, {0xAC00, 0xD7A3},   {0xF900, 0xFAFF},   {0xFE30, 0xFE4F},
                       {0xFF00, 0xFF60}, {0xFFE0, 0xFFE6}, {0x1F300, 0x1F64F}, {0x1F900, 0x1F9FF}, {0x20000, 0x3FFFD}};

template <std::size_t N>
bool isIn(std::uint32_t c, const Range (&ranges)[N]) {
  return inRanges(c, ranges, N);
}

// One character of the request as measured: where it ends, its columns, and
// whether it is shown as an escape.
struct Cell {
  std::size_t end;
  std::size_t width;
  bool escaped;
};

std::string escape(const char* format, std::uint32_t value) {
  char text[16];
  std::snprintf(text, sizeof text, format, static_cast<unsigned>(value));
  return text;
}

// The length of the UTF-8 sequence at text[i] and its code point; 0 for a
// byte that starts no valid sequence.
std::size_t decode(std::string_view text, std::size_t i, std::uint32_t& c) {
  const unsigned char lead = static_cast<unsigned char>(text[i]);
  const std::size_t length = lead < 0x80           ? 1
                             : (lead >> 5) == 0x6  ? 2
                             : (lead >> 4) == 0xE  ? 3
                             : (lead >> 3) == 0x1E ? 4
                                                   : 0;
  if (length == 0 || i + length > text.size()) return 0;
  c = length == 1 ? lead : lead & (0xFFu >> (length + 1));
  for (std::size_t k = 1; k < length; ++k) {
    const unsigned char next = static_cast<unsigned char>(text[i + k]);
    if ((next & 0xC0u) != 0x80u) return 0;
    c = (c << 6) | (next & 0x3Fu);
  }
  return length;
}

bool isControl(std::uint32_t c) { return c < 0x20 || c == 0x7F || (c >= 0x80 && c < 0xA0); }

// The escape of the character at text[i] (`length` 0: a byte that is not
// UTF-8), or an empty string for a character shown as it is.
std::string escapeOf(std::string_view text, std::size_t i, std::size_t length, std::uint32_t c, bool invisibleToo) {
  if (length == 0) return escape("\\x%02X", static_cast<unsigned char>(text[i]));
  if (c == '\t') return "\\t";
  if (isControl(c)) return escape("\\x%02X", c);
  if (invisibleToo && isInvisible(c)) return escape(c > 0xFFFF ? "\\u{%05X}" : "\\u{%04X}", c);
  return std::string();
}

bool isPlainAscii(unsigned char byte) { return byte >= 0x20 && byte < 0x7F; }

Cell measure(std::string_view text, std::size_t i) {
  if (isPlainAscii(static_cast<unsigned char>(text[i]))) return Cell{i + 1, 1, false};
  std::uint32_t c = 0;
  const std::size_t length = decode(text, i, c);
  const std::string escaped = escapeOf(text, i, length, c, true);
  if (!escaped.empty()) return Cell{i + (length == 0 ? 1 : length), escaped.size(), true};
  if (isIn(c, kCombining)) return Cell{i + length, 0, false};
  if (isIn(c, kWide)) return Cell{i + length, 2, false};
  return Cell{i + length, 1, false};
}

void appendShown(std::string& line, std::string_view text, std::size_t i, const Cell& cell) {
  if (!cell.escaped) {
    line.append(text.substr(i, cell.end - i));
    return;
  }
  std::uint32_t c = 0;
  const std::size_t length = decode(text, i, c);
  line += escapeOf(text, i, length, c, true);
}

// A mark is kept at the first cell start at least this many bytes past the last.
constexpr std::size_t kMarkStride = 256;

// The columns [begin, end) of the shown line that are kept.
struct Window {
  std::size_t begin;
  std::size_t end;
};

Window windowAround(std::size_t total, std::size_t place) {
  if (total <= kEchoWidth) return Window{0, total};
  std::size_t begin = place > kEchoWidth / 4 ? place - kEchoWidth / 4 : 0;
  if (begin + kEchoWidth > total) begin = total - kEchoWidth;
  return Window{begin, begin + kEchoWidth};
}

}  // namespace

EchoText::EchoText(std::string_view text) : text_(text) {
  marks_.push_back(Mark{0, 0});
  std::size_t column = 0;
  for (std::size_t i = 0; i < text.size();) {
    if (i >= marks_.back().byte + kMarkStride) marks_.push_back(Mark{i, column});
    const Cell cell = measure(text, i);
    column += cell.width;
    i = cell.end;
  }
  total_ = column;
}

std::size_t EchoText::columnAt(std::size_t pos) const {
  auto mark =
      std::upper_bound(marks_.begin(), marks_.end(), pos, [](std::size_t p, const Mark& m) { return p < m.byte; });
  --mark;  // the first mark is at byte 0
  std::size_t column = mark->column;
  for (std::size_t i = mark->byte; i < text_.size();) {
    const Cell cell = measure(text_, i);
    if (cell.end > pos) break;
    column += cell.width;
    i = cell.end;
  }
  return column;
}

EchoText::Mark EchoText::cellAtColumn(std::size_t column) const {
  auto mark =
      std::upper_bound(marks_.begin(), marks_.end(), column, [](std::size_t c, const Mark& m) { return c < m.column; });
  --mark;
  Mark at = *mark;
  while (at.byte < text_.size() && at.column < column) {
    const Cell cell = measure(text_, at.byte);
    at.column += cell.width;
    at.byte = cell.end;
  }
  return at;
}

Echo EchoText::echo(Span span) const {
  const std::size_t start = span.start < text_.size() ? span.start : text_.size();
  const std::size_t end = span.length < text_.size() - start ? start + span.length : text_.size();
  const std::size_t place = columnAt(start);
  std::size_t width = columnAt(end) - place;
  const Window window = windowAround(total_ + 1, place);  // one column past the end for an empty span
  Echo echo;
  Mark at = cellAtColumn(window.begin);
  while (at.byte < text_.size()) {
    const Cell cell = measure(text_, at.byte);
    if (at.column + cell.width > window.end) break;
    appendShown(echo.line, text_, at.byte, cell);
    at.column += cell.width;
    at.byte = cell.end;
  }
  std::size_t shownPlace = place - window.begin;
  if (window.begin > 0) {
    echo.line = kEllipsis + echo.line;
    ++shownPlace;
  }
  if (window.end < total_ + 1) echo.line += kEllipsis;
  echo.marker = std::string(shownPlace, ' ') + '^';
  if (place + width > window.end) width = window.end - place;
  if (width > 1) echo.marker.append(width - 1, '~');
  return echo;
}

namespace {

// Hands `text` to `sink` in pieces, escapes in place of what shown() escapes.
template <typename Sink>
void forShown(std::string_view text, Sink&& sink) {
  std::size_t copied = 0;
  for (std::size_t i = 0; i < text.size();) {
    if (isPlainAscii(static_cast<unsigned char>(text[i]))) {
      ++i;
      continue;
    }
    std::uint32_t c = 0;
    const std::size_t length = decode(text, i, c);
    const std::string escaped = escapeOf(text, i, length, c, false);
    const std::size_t next = i + (length == 0 ? 1 : length);
    if (!escaped.empty()) {
      sink(text.substr(copied, i - copied));
      sink(std::string_view(escaped));
      copied = next;
    }
    i = next;
  }
  sink(text.substr(copied));
}

}  // namespace

std::string shown(std::string_view text) {
  std::string result;
  forShown(text, [&](std::string_view piece) { result.append(piece); });
  return result;
}

void writeShown(std::ostream& out, std::string_view text) {
  forShown(text, [&](std::string_view piece) { out << piece; });
}

}  // namespace lytreq
