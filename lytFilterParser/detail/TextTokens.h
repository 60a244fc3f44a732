// The tokens of a request text, read in place: what fillFilterList would put
// into a token list, without building the list. getLYTKovaRequest reads
// through this, so a request costs no allocation per token beyond what its
// object model keeps. Internal: not installed.
//
// The readers are written once over "a token sequence" (see Reader.h): a
// strList with its iterators, or this class with its own. Both offer begin(),
// end(), an iterator whose `*` is the token text and `++` the next token, and
// insert(position, "]"): the request reader closes a bare atom list by
// inserting "]" before the next option. Here such a bracket is virtual, a
// text offset in `closes` that the iterators step through before the real
// token standing at that offset. The reader only ever inserts ahead of its
// cursor and never behind an earlier insertion, so `closes` stays sorted.
#ifndef LYTFILTERPARSER_DETAIL_TEXTTOKENS_H
#define LYTFILTERPARSER_DETAIL_TEXTTOKENS_H

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace lytFilterParser {
namespace detail {

class TextTokens {
 public:
  explicit TextTokens(std::string_view text) : data(text.data()), size(text.size()) {}
  TextTokens(const TextTokens&) = delete;
  TextTokens& operator=(const TextTokens&) = delete;

  class iterator {
   public:
    // The token under the iterator; "]" for an inserted bracket.
    std::string_view operator*() const {
      if (onClose()) return std::string_view("]", 1);
      return std::string_view(owner->data + start, end - start);
    }
    iterator& operator++() {
      if (onClose()) {
        ++close;
      } else {
        start = owner->skipBlanks(end);
        end = owner->tokenEnd(start);
      }
      return *this;
    }
    bool operator==(const iterator& other) const { return start == other.start && close == other.close; }
    bool operator!=(const iterator& other) const { return !(*this == other); }

   private:
    friend class TextTokens;
    iterator(const TextTokens* owner_, std::size_t start_, std::size_t end_, std::size_t close_)
        : owner(owner_), start(start_), end(end_), close(close_) {}
    bool onClose() const { return close < owner->closes.size() && owner->closes[close] == start; }

    const TextTokens* owner;
    std::size_t start;  // the real token's text is [start, end); start == size at the end
    std::size_t end;
    std::size_t close;  // inserted brackets passed so far
  };

  iterator begin() const {
    const std::size_t start = skipBlanks(0);
    return iterator(this, start, tokenEnd(start), 0);
  }
  iterator end() const { return iterator(this, size, size, closes.size()); }

  // Puts a "]" before the token at `position` (a real token or the end) and
  // returns an iterator on it, as std::list::insert does.
  iterator insert(const iterator& position, const char* /* "]" */) {
    closes.push_back(position.start);
    return iterator(this, position.start, position.end, closes.size() - 1);
  }

 private:
  std::size_t skipBlanks(std::size_t pos) const {
    while (pos < size && data[pos] == ' ') ++pos;
    return pos;
  }
  // Brackets are tokens of their own; anything else runs to a blank or bracket.
  std::size_t tokenEnd(std::size_t pos) const {
    if (pos == size) return pos;
    if (data[pos] == '[' || data[pos] == ']') return pos + 1;
    ++pos;
    while (pos < size && data[pos] != ' ' && data[pos] != '[' && data[pos] != ']') ++pos;
    return pos;
  }

  const char* data;
  std::size_t size;
  std::vector<std::size_t> closes;
};

}  // namespace detail
}  // namespace lytFilterParser

#endif
