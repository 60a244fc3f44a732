// The version of the monitoring peer a request is meant for.
#ifndef LYTFILTERPARSER_BASE_TAVVERSION_H
#define LYTFILTERPARSER_BASE_TAVVERSION_H

// Oldest first. Every int is a value: 0 is served by no request, 1 and 2
// read the legacy option syntax, 3 is the current peer, and 4 is what
// getMinimalValidVersion answers when no peer accepts a request.
enum TavVersion : int {
  TAV_VERSION_UNSUPPORTED = 0,
  TAV_VERSION_LEGACY_1 = 1,
  TAV_VERSION_LEGACY_2 = 2,
  TAV_VERSION_CURRENT = 3,
  TAV_VERSION_NONE = 4
};

#endif
