// The one way the library reports a fault: the message text itself is thrown
// as a std::string, and the entry points hand it to the caller.
#ifndef LYTFILTERPARSER_BASE_ASSERT_H
#define LYTFILTERPARSER_BASE_ASSERT_H

#include <string>

#include "lytFilterParser/Export.h"

namespace lytFilterParser {

// Throws a copy of `message` when `condition` is false.
LFP_API void Assert(bool condition, std::string message);

}  // namespace lytFilterParser

#endif
