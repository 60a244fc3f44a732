#include "lytFilterParser/filter/AbstractFilter.h"

AbstractFilter::~AbstractFilter() = default;
