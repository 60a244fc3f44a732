#include "lytFilterParser/base/Assert.h"

#include <utility>

namespace lytFilterParser {

void Assert(bool condition, std::string message) {
  if (!condition) throw std::move(message);
}

}  // namespace lytFilterParser
