// The library's internal reader, declared only: the public classes befriend
// it so that it fills their fields. Callers never use it.
#ifndef LYTFILTERPARSER_INTERNALS_H
#define LYTFILTERPARSER_INTERNALS_H

namespace lytFilterParser {
namespace detail {
struct Reader;
}  // namespace detail
}  // namespace lytFilterParser

#endif
