#include "lytFilterParser/column/TavColumnFilter.h"

#include <algorithm>

#include "lytFilterParser/vocab/Syntax.h"

// The written order is the vocabulary's order of column options.
static_assert(int{TavColumnFilter::URL_MODE} == lytFilterParser::detail::COLUMN_URL &&
              int{TavColumnFilter::OPTION_COUNT} == lytFilterParser::detail::COLUMN_OPTION_COUNT);

TavColumnFilter::TavColumnFilter(int encryption, int compression, int dir, int citrixPrint, int url)
    : options{encryption, compression, dir, citrixPrint, url} {}

bool TavColumnFilter::restrictsTraffic() const {
  return std::any_of(options, options + kSlot[URL_MODE], [](int value) { return value != BOTH; });
}
