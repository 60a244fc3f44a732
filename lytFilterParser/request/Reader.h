// The readers of the request syntax, written once for every token sequence:
// a caller's strList (the public parsing constructors and parse functions),
// TextTokens, the text read in place (getLYTKovaRequest), and WordTokens, the
// legacy translator's output (convert). Every rule is defined in Reader.cpp,
// in grammar order; the classes befriend Reader so that it fills their
// fields directly. Internal: not installed.
#ifndef LYTFILTERPARSER_REQUEST_READER_H
#define LYTFILTERPARSER_REQUEST_READER_H

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "lytFilterParser/base/TavVersion.h"
#include "lytFilterParser/base/TokenList.h"
#include "lytFilterParser/detail/TokenSequence.h"

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

struct Reader {
  template <class Tokens>
  using Iter = typename Tokens::iterator;

  // "-f", "-k", "-v", "-s" options up to the end.
  template <class Tokens>
  static void request(NetworkKovaRequest& request, Tokens& tokens, Iter<Tokens>& cur);
  // For peer `version`: 1 and 2 translate the legacy option syntax first.
  template <class Tokens>
  static void legacyRequest(NetworkKovaRequest& request, Tokens& tokens, TavVersion version);
  // The name and the "-t" data type after "vl".
  template <class Tokens>
  static void virtualLink(E2EKovaRequest& request, Tokens& tokens, Iter<Tokens>& cur);
  template <class Tokens>
  static void virtualLinkOptions(E2EKovaRequest& request, Tokens& tokens, Iter<Tokens>& cur);
  template <class Tokens>
  static void dataType(E2EKovaRequest& request, Tokens& tokens, Iter<Tokens>& cur);

  // After "-f"; `listEnd` remembers where bare atom lists end.
  template <class Tokens>
  static void filterOption(NetworkKovaRequest& request, Tokens& tokens, Iter<Tokens>& cur,
                           std::optional<Iter<Tokens>>& listEnd);
  // Operator, optional "[", the "-f" items, the matching "]".
  template <class Tokens>
  static void compound(Filter& filter, Tokens& tokens, Iter<Tokens>& cur, int depth);
  template <class Tokens>
  static void filterOperator(Filter& filter, Tokens& tokens, Iter<Tokens>& cur);
  // The "-f" items of a compound filter, and its "]" when `bracketed`.
  template <class Tokens>
  static void children(Filter& filter, Tokens& tokens, Iter<Tokens>& cur, int depth, bool bracketed);
  template <class Tokens>
  static std::unique_ptr<AtomFilter> atom(Tokens& tokens, Iter<Tokens>& cur);
  template <class Tokens>
  static void negation(AtomFilter& filter, Tokens& tokens, Iter<Tokens>& cur);
  template <class Tokens>
  static void content(ContentFilterBase& filter, Tokens& tokens, Iter<Tokens>& cur);
  // From the "interface" keyword on.
  template <class Tokens>
  static void interfaceFilter(InterfaceAtomFilter& filter, Tokens& tokens, Iter<Tokens>& cur);
  template <class Tokens>
  static void interfaces(InterfaceAtomFilter& filter, Tokens& tokens, Iter<Tokens>& cur);
  template <class Tokens>
  static void interfaceInfo(InterfaceInfo& item, Tokens& tokens, Iter<Tokens>& cur);
  template <class Tokens>
  static void entities(TavEntityArray& entities, Tokens& tokens, Iter<Tokens>& cur);
  // "name<>resolved"; without "<>" only the name is set.
  static void entity(TavEntity& entity, std::string_view text);

  // The type and options of a column; a "sort=" word goes to `sortOption`.
  template <class Tokens>
  static void column(TavColumn& column, Tokens& tokens, Iter<Tokens>& cur, std::string& sortOption);
  template <class Tokens>
  static void accumulation(TavColumn& column, Tokens& tokens, Iter<Tokens>& cur);
  template <class Tokens>
  static void columnFilter(TavColumnFilter& filter, Tokens& tokens, Iter<Tokens>& cur);
  template <class Tokens>
  static void sort(NetworkKovaRequest& request, Tokens& tokens, Iter<Tokens>& cur);
};

}  // namespace detail
}  // namespace lytFilterParser

#endif
