// The token list every parser of the library reads, and the cursor into it.
// A list (not a vector): the network request inserts tokens in place while
// the cursors of its callers stay valid.
#ifndef LYTFILTERPARSER_BASE_TOKENLIST_H
#define LYTFILTERPARSER_BASE_TOKENLIST_H

#include <list>
#include <string>

typedef std::list<std::string> strList;
typedef strList::iterator strIter;

#endif
