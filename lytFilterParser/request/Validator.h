// Validation that also says which item of the request it refused: the
// public isValid runs it without a blame; validate() (diagnostics/) asks for
// one, so that it places the refusal on the item validation itself chose.
// Internal: not installed.
#ifndef LYTFILTERPARSER_REQUEST_VALIDATOR_H
#define LYTFILTERPARSER_REQUEST_VALIDATOR_H

#include <cstddef>
#include <string>

#include "lytFilterParser/base/TavVersion.h"

class NetworkKovaRequest;

namespace lytFilterParser {
namespace detail {

// The item a refusal is about. `index` counts from 0: the key or value
// column, the name of the first key, or the filter node in pre-order (the
// root is node 0).
struct Blame {
  enum Item : unsigned char {
    None,         // accepted
    End,          // a column is missing
    Whole,        // no item is to blame
    KeyColumn,    // the whole key column `index`
    KeyType,      // the type word of key column `index`
    KeyName,      // name `index` of the first key column
    ValueColumn,  // the whole value column `index`
    ValueType,    // the type word of value column `index`
    ValueMode,    // the accumulation word of value column `index`
    ValueNames,   // the first name of value column `index`
    ValueOption,  // the word of column option `option` of value column `index`
    SortIndex,    // the "index=" of the sort
    MaxUpdates,   // the "updates=" of the sort
    FilterAtom    // the type word of filter node `index`
  };
  Item item = None;
  std::size_t index = 0;
  std::size_t option = 0;  // an index of kColumnOptions
};

struct Validator {
  // NetworkKovaRequest::isValid(version, error), which it runs, and on a
  // refusal the item to blame in `*blame` when `blame` is not null.
  static bool isValid(NetworkKovaRequest& request, TavVersion version, std::string& error, Blame* blame);
};

}  // namespace detail
}  // namespace lytFilterParser

#endif
