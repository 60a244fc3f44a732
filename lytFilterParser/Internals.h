// The library's internal reader and validator, declared only: the public
// classes befriend them so that they fill and check their fields. Callers
// never use them.
#ifndef LYTFILTERPARSER_INTERNALS_H
#define LYTFILTERPARSER_INTERNALS_H

namespace lytFilterParser {
namespace detail {
struct Reader;
struct Validator;
}  // namespace detail
}  // namespace lytFilterParser

#endif
