// The buffer every writer of the library appends to: one string sized up
// front and filled through a cursor, so that the many short pieces of a
// request's text (keywords, blanks, names) cost a copy each and no call into
// std::string. Internal: not installed.
#ifndef LYTFILTERPARSER_DETAIL_WRITER_H
#define LYTFILTERPARSER_DETAIL_WRITER_H

#include <charconv>
#include <cstddef>
#include <cstring>
#include <string>
#include <string_view>
#include <utility>

namespace lytFilterParser {
namespace detail {

class Writer {
 public:
  // `estimate` is a guess of the text's length; a longer text grows the buffer.
  explicit Writer(std::size_t estimate = 64) {
    text.resize(estimate < 16 ? 16 : estimate);
    pos = &text[0];
    end = pos + text.size();
  }
  Writer(const Writer&) = delete;
  Writer& operator=(const Writer&) = delete;

  Writer& operator<<(std::string_view piece) {
    if (static_cast<std::size_t>(end - pos) < piece.size()) grow(piece.size());
    copy(pos, piece.data(), piece.size());
    pos += piece.size();
    return *this;
  }
  Writer& operator<<(char c) {
    if (pos == end) grow(1);
    *pos++ = c;
    return *this;
  }
  // Decimal, as "%d" writes it.
  // Written in place: an int takes at most 11 characters.
  Writer& operator<<(int value) {
    if (end - pos < 11) grow(11);
    pos = std::to_chars(pos, end, value).ptr;
    return *this;
  }

  // The text written so far; the writer is spent.
  std::string finish() {
    text.resize(static_cast<std::size_t>(pos - text.data()));
    return std::move(text);
  }

 private:
  // Most pieces are a keyword, a blank or a short name: those are copied
  // with two fixed-size moves that may overlap instead of a call to memcpy.
  static void copy(char* to, const char* from, std::size_t n) {
    if (n >= 8 && n <= 16) {
      std::memcpy(to, from, 8);
      std::memcpy(to + n - 8, from + n - 8, 8);
    } else if (n >= 4 && n < 8) {
      std::memcpy(to, from, 4);
      std::memcpy(to + n - 4, from + n - 4, 4);
    } else if (n > 0 && n < 4) {
      to[0] = from[0];
      to[n / 2] = from[n / 2];
      to[n - 1] = from[n - 1];
    } else if (n > 16) {
      std::memcpy(to, from, n);
    }
  }

  void grow(std::size_t more) {
    const std::size_t used = static_cast<std::size_t>(pos - text.data());
    text.resize(2 * text.size() + more);
    pos = &text[0] + used;
    end = &text[0] + text.size();
  }

  std::string text;
  char* pos;
  char* end;
};

}  // namespace detail
}  // namespace lytFilterParser

#endif
