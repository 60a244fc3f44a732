#include "echo.h"

#include <cstdint>
#include <cstdio>
#include <vector>

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

// Characters that take no room or look like a blank: spaces other than the
// blank, zero-width characters, direction marks, the byte order mark.
const Range kInvisible[] = {{0x00A0, 0x00A0}, {0x00AD, 0x00AD}, {0x034F, 0x034F}, {0x115F, 0x1160},
                            {0x1680, 0x1680}, {0x180E, 0x180E}, {0x2000, 0x200F}, {0x2028, 0x202F},
                            {0x205F, 0x206F}, {0x3000, 0x3000}, {0x3164, 0x3164}, {0xFEFF, 0xFEFF},
                            {0xFFA0, 0xFFA0}, {0xFFF9, 0xFFFB}, {0xE0000, 0xE007F}};

// Combining marks: drawn on the character before them.
const Range kCombining[] = {{0x0300, 0x036F}, {0x0483, 0x0489}, {0x0591, 0x05BD}, {0x0610, 0x061A},
                            {0x064B, 0x065F}, {0x1AB0, 0x1AFF}, {0x1DC0, 0x1DFF}, {0x20D0, 0x20FF},
                            {0xFE00, 0xFE0F}, {0xFE20, 0xFE2F}};

// East Asian wide and full-width characters: two columns.
const Range kWide[] = {{0x1100, 0x115E}, {0x2E80, 0x303E}, {0x3041, 0x3163}, {0x3165, 0x33FF},
                       {0x3400, 0x4DBF}, {0x4E00, 0x9FFF}, {0xA000, 0xA4CF}, {0xAC00, 0xD7A3},
                       {0xF900, 0xFAFF}, {0xFE30, 0xFE4F}, {0xFF00, 0xFF60}, {0xFFE0, 0xFFE6},
                       {0x1F300, 0x1F64F}, {0x1F900, 0x1F9FF}, {0x20000, 0x3FFFD}};

template <std::size_t N>
bool isIn(std::uint32_t c, const Range (&ranges)[N]) {
  return inRanges(c, ranges, N);
}

// One character of the request as shown: its bytes, its text, its columns.
struct Cell {
  std::size_t start;
  std::size_t end;
  std::string shown;
  std::size_t width;
};

std::string escape(const char* format, std::uint32_t value) {
  char text[16];
  std::snprintf(text, sizeof text, format, static_cast<unsigned>(value));
  return text;
}

// The length of the UTF-8 sequence at text[i] and its code point; 0 for a
// byte that starts no valid sequence.
std::size_t decode(const std::string& text, std::size_t i, std::uint32_t& c) {
  const unsigned char lead = static_cast<unsigned char>(text[i]);
  const std::size_t length = lead < 0x80 ? 1 : (lead >> 5) == 0x6 ? 2 : (lead >> 4) == 0xE ? 3 : (lead >> 3) == 0x1E ? 4 : 0;
  if (length == 0 || i + length > text.size()) return 0;
  c = length == 1 ? lead : lead & (0xFFu >> (length + 1));
  for (std::size_t k = 1; k < length; ++k) {
    const unsigned char next = static_cast<unsigned char>(text[i + k]);
    if ((next & 0xC0u) != 0x80u) return 0;
    c = (c << 6) | (next & 0x3Fu);
  }
  return length;
}

Cell cellAt(const std::string& text, std::size_t i) {
  std::uint32_t c = 0;
  const std::size_t length = decode(text, i, c);
  if (length == 0) return Cell{i, i + 1, escape("\\x%02X", static_cast<unsigned char>(text[i])), 4};
  Cell cell{i, i + length, text.substr(i, length), 1};
  if (c == '\t') {
    cell.shown = "\\t";
  } else if (c < 0x20 || c == 0x7F || (c >= 0x80 && c < 0xA0)) {
    cell.shown = escape("\\x%02X", c);
  } else if (isIn(c, kInvisible)) {
    cell.shown = escape(c > 0xFFFF ? "\\u{%05X}" : "\\u{%04X}", c);
  } else if (isIn(c, kCombining)) {
    cell.width = 0;
    return cell;
  } else if (isIn(c, kWide)) {
    cell.width = 2;
    return cell;
  } else {
    return cell;
  }
  cell.width = cell.shown.size();  // an escape: one column per character
  return cell;
}

std::vector<Cell> cells(const std::string& text) {
  std::vector<Cell> result;
  for (std::size_t i = 0; i < text.size(); i = result.back().end) result.push_back(cellAt(text, i));
  return result;
}

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

Echo echoRequest(const std::string& text, Span span) {
  const std::size_t start = span.start < text.size() ? span.start : text.size();
  const std::vector<Cell> all = cells(text);
  std::size_t total = 0, place = 0, width = 0;
  for (const Cell& cell : all) {
    if (cell.end <= start) place += cell.width;
    if (cell.start >= start && cell.end <= start + span.length) width += cell.width;
    total += cell.width;
  }
  const Window window = windowAround(total + 1, place);  // one column past the end for an empty span
  Echo echo;
  std::size_t column = 0;
  for (const Cell& cell : all) {
    if (column >= window.begin && column + cell.width <= window.end) echo.line += cell.shown;
    column += cell.width;
  }
  std::size_t shownPlace = place - window.begin;
  if (window.begin > 0) {
    echo.line = kEllipsis + echo.line;
    ++shownPlace;
  }
  if (window.end < total + 1) echo.line += kEllipsis;
  echo.marker = std::string(shownPlace, ' ') + '^';
  if (place + width > window.end) width = window.end - place;
  if (width > 1) echo.marker.append(width - 1, '~');
  return echo;
}

}  // namespace lytreq
