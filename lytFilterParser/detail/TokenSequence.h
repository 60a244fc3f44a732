// Token sequences the readers walk without a token list: TextTokens reads a
// request text in place (what fillFilterList would cut, without building the
// list), WordTokens holds the words the legacy translator hands on (views of
// the legacy text, keywords, and the few words it composes). Internal: not
// installed.
//
// The readers are written once over "a token sequence" (see Reader.h): a
// strList with its iterators, or one of these. Each offers begin(), end(),
// an iterator whose `*` is the token text and `++` the next token, and
// insert(position, "]"): the request reader closes a bare atom list by
// inserting "]" before the next option. Here such a bracket is virtual: the
// key of the position it stands before, kept in `closes`, which iterators
// step through before the real token at that position. The reader only ever
// inserts ahead of its cursor and never behind an earlier insertion, so
// `closes` stays sorted.
#ifndef LYTFILTERPARSER_DETAIL_TOKENSEQUENCE_H
#define LYTFILTERPARSER_DETAIL_TOKENSEQUENCE_H

#include <cstddef>
#include <list>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

#include "lytFilterParser/base/Span.h"
#include "lytFilterParser/detail/Text.h"

// The readers are instantiated for several token sequences, and the
// compiler then stops inlining the steps of the iterator that every rule
// takes at each word; a call per step costs the plain reader 5 to 10 %.
#if defined(__GNUC__) || defined(__clang__)
#define LFP_STEP inline __attribute__((always_inline))
#else
#define LFP_STEP inline
#endif

namespace lytFilterParser {
namespace detail {

// A Source gives positions: first(), next(p), last() (the end), key(p) (a
// number that grows along the sequence) and at(p) (the token's text).
template <class Source>
class TokenSequence : public Source {
 public:
  using Source::Source;
  TokenSequence() = default;
  TokenSequence(const TokenSequence&) = delete;
  TokenSequence& operator=(const TokenSequence&) = delete;

  class iterator {
   public:
    // The token under the iterator; "]" for an inserted bracket.
    LFP_STEP std::string_view operator*() const { return onClose() ? std::string_view(&kClose, 1) : owner->at(pos); }
    LFP_STEP iterator& operator++() {
      if (onClose()) {
        ++close;
      } else {
        pos = owner->next(pos);
      }
      return *this;
    }
    LFP_STEP bool operator==(const iterator& other) const {
      return Source::key(pos) == Source::key(other.pos) && close == other.close;
    }
    LFP_STEP bool operator!=(const iterator& other) const { return !(*this == other); }

   private:
    friend class TokenSequence;
    using Position = typename Source::Position;
    iterator(const TokenSequence* owner_, Position pos_, std::size_t close_)
        : owner(owner_), pos(pos_), close(close_) {}
    LFP_STEP bool onClose() const { return close < owner->closeCount && owner->closeAt(close) == Source::key(pos); }

    const TokenSequence* owner;
    Position pos;
    std::size_t close;  // inserted brackets passed so far
  };

  iterator begin() const { return iterator(this, Source::first(), 0); }
  iterator end() const { return iterator(this, Source::last(), closeCount); }

  // The bytes of the text under the token at `position`, for a source that
  // knows them: an inserted bracket has length 0 where the next token
  // starts, the end has length 0 after the text.
  Span span(const iterator& position) const {
    const Span at = Source::span(position.pos);
    return position.onClose() ? Span{at.start, 0} : at;
  }

  // Puts a "]" before the token at `position` (a real token or the end) and
  // returns an iterator on it, as std::list::insert does.
  iterator insert(const iterator& position, const std::string& /* the bracket */) {
    // The next inline slot, or a new one on the heap once those are taken.
    (closeCount < kInlineCloses ? inlineCloses[closeCount] : moreCloses.emplace_back()) = Source::key(position.pos);
    return iterator(this, position.pos, closeCount++);
  }

 private:
  static constexpr char kClose = kCloseBracket;
  // A request closes one bare atom list, rarely more: those need no allocation.
  static constexpr std::size_t kInlineCloses = 4;
  std::size_t closeAt(std::size_t i) const {
    return i < kInlineCloses ? inlineCloses[i] : moreCloses[i - kInlineCloses];
  }

  std::size_t closeCount = 0;
  std::size_t inlineCloses[kInlineCloses] = {};
  std::vector<std::size_t> moreCloses;
};

// The tokens of a text: brackets stand alone, anything else runs to a blank
// or a bracket; blanks separate.
class TextSource {
 public:
  explicit TextSource(std::string_view text) : data(text.data()), size(text.size()) {}

 protected:
  struct Position {
    std::size_t start;  // the token is [start, end); start == size at the end
    std::size_t end;
  };
  static std::size_t key(const Position& p) { return p.start; }
  Position first() const { return scan(0); }
  LFP_STEP Position next(const Position& p) const { return scan(p.end); }
  Position last() const { return Position{size, size}; }
  LFP_STEP std::string_view at(const Position& p) const { return std::string_view(data + p.start, p.end - p.start); }
  static Span span(const Position& p) { return Span{p.start, p.end - p.start}; }

 private:
  LFP_STEP Position scan(std::size_t from) const {
    while (from < size && data[from] == ' ') ++from;
    std::size_t end = from;
    if (end < size) {
      ++end;
      if (data[from] != kOpenBracket && data[from] != kCloseBracket) {
        while (end < size && data[end] != ' ' && data[end] != kOpenBracket && data[end] != kCloseBracket) ++end;
      }
    }
    return Position{from, end};
  }

  const char* data;
  std::size_t size;
};

// A sequence of words built by the caller; the texts a word views must
// outlive the sequence, except those it composes itself.
class WordSource {
 public:
  WordSource() { words.reserve(32); }

  void push_back(std::string_view word) { words.push_back(word); }
  // Keeps `word` and adds a view of it.
  void push_back(std::string&& word) {
    composed.push_back(std::move(word));
    words.push_back(composed.back());
  }
  // The bytes of the text that the word pushed last stands for, when the
  // caller keeps places (the legacy translator with a trace).
  void placeLast(Span at) {
    places.resize(words.size(), kUnplaced);
    places.back() = at;
  }
  // After the last word: a word without a place (a keyword, a word the
  // caller composed) stands, with length 0, where the next placed word
  // starts, or at `end`, the end of the text.
  void finishPlaces(std::size_t end) {
    places.resize(words.size(), kUnplaced);
    textEnd = end;
    for (std::size_t i = places.size(); i-- > 0;) {
      if (places[i].start == kUnplaced.start) places[i] = Span{end, 0};
      end = places[i].start;
    }
  }

 protected:
  typedef std::size_t Position;
  static std::size_t key(Position p) { return p; }
  Position first() const { return 0; }
  Position next(Position p) const { return p + 1; }
  Position last() const { return words.size(); }
  std::string_view at(Position p) const { return words[p]; }
  Span span(Position p) const { return p < places.size() ? places[p] : Span{textEnd, 0}; }

 private:
  static constexpr Span kUnplaced{static_cast<std::size_t>(-1), 0};
  std::vector<std::string_view> words;
  std::vector<Span> places;
  std::size_t textEnd = 0;
  std::list<std::string> composed;  // nodes do not move, so views of them stay valid
};

typedef TokenSequence<TextSource> TextTokens;
typedef TokenSequence<WordSource> WordTokens;

// A text read in place by a reader that records what it reads
// (Reader::record): the same tokens, of a type of their own, so that the
// readers of every other sequence compile the recording away.
template <int>
class MarkedTextTokens : public TextTokens {
 public:
  using TextTokens::TextTokens;
};
typedef MarkedTextTokens<1> RecordedTextTokens;

// The same, read only for the record (lint): the rules refuse the same
// texts but build no request, which lint would only destroy again.
typedef MarkedTextTokens<2> ScannedTextTokens;

template <class Tokens>
constexpr bool recording =
    std::is_same<Tokens, RecordedTextTokens>::value || std::is_same<Tokens, ScannedTextTokens>::value;
template <class Tokens>
constexpr bool building = !std::is_same<Tokens, ScannedTextTokens>::value;

// The bytes under a token: only a text read in place knows them; other
// sequences give an empty span.
template <class Tokens, class It>
Span spanAt(const Tokens& tokens, const It& at) {
  if constexpr (std::is_base_of<TextTokens, Tokens>::value) return tokens.span(at);
  return Span{};
}

}  // namespace detail
}  // namespace lytFilterParser

#endif
