// The token list lives in base/ now; this path keeps callers compiling.
#ifndef LYTFILTERPARSER_REQUEST_TOKENLIST_H
#define LYTFILTERPARSER_REQUEST_TOKENLIST_H

#include "lytFilterParser/base/TokenList.h"

#endif
