// The readers of the request syntax, written once for every token sequence:
// a caller's strList (the public parsing constructors and parse functions),
// TextTokens, the text read in place (getLYTKovaRequest), and WordTokens, the
// legacy translator's output (convert). Every rule is defined in Reader.cpp,
// in grammar order; the classes befriend Reader so that it fills their
// fields directly. Internal: not installed.
#ifndef LYTFILTERPARSER_REQUEST_READER_H
#define LYTFILTERPARSER_REQUEST_READER_H

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "lytFilterParser/base/TavVersion.h"
#include "lytFilterParser/base/TokenList.h"
#include "lytFilterParser/detail/TokenSequence.h"
#include "lytFilterParser/request/Record.h"

class AtomFilter;
class ContentFilterBase;
class E2EKovaRequest;
class Filter;
class InterfaceAtomFilter;
class InterfaceInfo;
class NetworkKovaRequest;
class TavColumn;
class TavColumnFilter;
class TavEntity;
class TavEntityArray;

namespace lytFilterParser {
namespace detail {

// A reader holds the message of the first fault it met. Its rules return
// false after a fault instead of throwing, so that a refused request costs
// no more than an accepted one; the public parsing members throw the
// message through Assert, as callers expect.
struct Reader {
  template <class Tokens>
  using Iter = typename Tokens::iterator;
  // Where the bare atom lists read so far end, once a "-f" has looked.
  template <class Tokens>
  struct ListEnd {
    Iter<Tokens> at;
    bool known;
  };

  std::string fault;
  // Where the rules record what they build when they read
  // RecordedTextTokens (its text the record's text); the rules over any
  // other sequence record nothing and test nothing for it.
  Record* record = nullptr;

  // A whole text: the request, or null after a fault and for a text
  // without a word. "vl" first makes an end-to-end request when `virtualLinks`.
  template <class Tokens>
  std::unique_ptr<LYTKovaRequest> whole(Tokens& tokens, Iter<Tokens>& cur, bool virtualLinks);
  // The record's text as readText reads it: the request, or the fault and where.
  template <class Tokens>
  void read(Reading& reading, bool virtualLinks);
  // "-f", "-k", "-v", "-s" options up to the end.
  template <class Tokens>
  bool request(NetworkKovaRequest& request, Tokens& tokens, Iter<Tokens>& cur);
  // For peer `version`: 1 and 2 translate the legacy option syntax first.
  template <class Tokens>
  bool legacyRequest(NetworkKovaRequest& request, Tokens& tokens, TavVersion version);
  // The name and the "-t" data type after "vl".
  template <class Tokens>
  bool virtualLink(E2EKovaRequest& request, Tokens& tokens, Iter<Tokens>& cur);
  template <class Tokens>
  bool virtualLinkOptions(E2EKovaRequest& request, Tokens& tokens, Iter<Tokens>& cur);
  template <class Tokens>
  bool dataType(E2EKovaRequest& request, Tokens& tokens, Iter<Tokens>& cur);

  // After "-f" at `option`; `listEnd` remembers where bare atom lists end.
  template <class Tokens>
  bool filterOption(NetworkKovaRequest& request, Tokens& tokens, Iter<Tokens>& cur, ListEnd<Tokens>& listEnd,
                    Span option);
  // Operator, optional "[", the "-f" items, the matching "]".
  template <class Tokens>
  bool compound(Filter& filter, Tokens& tokens, Iter<Tokens>& cur);
  template <class Tokens>
  bool filterOperator(Filter& filter, Tokens& tokens, Iter<Tokens>& cur);
  // The "-f" items of a compound filter, and its "]" when `bracketed`;
  // compound filters among them nest to any depth.
  template <class Tokens>
  bool children(Filter& filter, Tokens& tokens, Iter<Tokens>& cur, bool bracketed);
  // nullptr after a fault.
  template <class Tokens>
  std::unique_ptr<AtomFilter> atom(Tokens& tokens, Iter<Tokens>& cur);
  // The same, recording the atom as a child of filter node `parent` read
  // from its "-f" at `option`.
  template <class Tokens>
  std::unique_ptr<AtomFilter> atom(Tokens& tokens, Iter<Tokens>& cur, std::uint32_t parent, Span option);
  // The recording rules record in `record` the negation, the keyword and
  // the names of the atom recorded last.
  template <class Tokens>
  static void negation(AtomFilter& filter, Tokens& tokens, Iter<Tokens>& cur, Record* record = nullptr);
  template <class Tokens>
  bool content(ContentFilterBase& filter, Tokens& tokens, Iter<Tokens>& cur);
  // From the "interface" keyword on.
  template <class Tokens>
  static void interfaceFilter(InterfaceAtomFilter& filter, Tokens& tokens, Iter<Tokens>& cur, Record* record = nullptr);
  template <class Tokens>
  static void interfaces(InterfaceAtomFilter& filter, Tokens& tokens, Iter<Tokens>& cur, Record* record = nullptr);
  template <class Tokens>
  static void interfaceInfo(InterfaceInfo& item, Tokens& tokens, Iter<Tokens>& cur);
  // Records the entities in `record` when reading RecordedTextTokens.
  template <class Tokens>
  static void entities(TavEntityArray& entities, Tokens& tokens, Iter<Tokens>& cur, Record* record = nullptr);
  // "name<>resolved"; without "<>" only the name is set.
  static void entity(TavEntity& entity, std::string_view text);

  // The type and options of a column; a "sort=" word goes to `sortOption`.
  template <class Tokens>
  bool column(TavColumn& column, Tokens& tokens, Iter<Tokens>& cur, std::string& sortOption);
  template <class Tokens>
  bool accumulation(TavColumn& column, Tokens& tokens, Iter<Tokens>& cur);
  template <class Tokens>
  bool columnFilter(TavColumnFilter& filter, Tokens& tokens, Iter<Tokens>& cur);
  template <class Tokens>
  bool sort(NetworkKovaRequest& request, Tokens& tokens, Iter<Tokens>& cur);

  // For the record: a filter node read from its "-f" at `option` and its
  // operator or type word at `head`, and the same complete before `next`.
  std::uint32_t addNode(std::uint32_t parent, bool compound, Span option, Span head);
  void finishNode(std::uint32_t node, Span next);
  Span upTo(Span from, Span next) const;

  // Keeps `message` as the fault, and in the record the kinds of word
  // `expected` where it stands; false.
  bool refuse(std::string_view message, WordKinds expected = 0);
  bool refuse(std::string_view head, std::string_view token, WordKinds expected = 0);
};

}  // namespace detail
}  // namespace lytFilterParser

#endif
