// The fault primitive lives in base/ now; this path keeps callers compiling.
#ifndef LYTFILTERPARSER_REQUEST_ASSERT_H
#define LYTFILTERPARSER_REQUEST_ASSERT_H

#include "lytFilterParser/base/Assert.h"

#endif
