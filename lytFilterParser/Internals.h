// The library's internal reader and writer, declared only: the public classes
// befriend the one and write into the other. Callers never use them.
#ifndef LYTFILTERPARSER_INTERNALS_H
#define LYTFILTERPARSER_INTERNALS_H

namespace lytFilterParser {
namespace detail {
struct Reader;
class Writer;
}  // namespace detail
}  // namespace lytFilterParser

#endif
