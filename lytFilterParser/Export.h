// Symbol visibility for lytFilterParser. The library is built with hidden
// visibility; only what carries LFP_API is part of its binary interface.
#ifndef LYTFILTERPARSER_EXPORT_H
#define LYTFILTERPARSER_EXPORT_H

#if defined(__GNUC__) || defined(__clang__)
#define LFP_API __attribute__((visibility("default")))
#define LFP_HIDDEN __attribute__((visibility("hidden")))
#else
#define LFP_API
#define LFP_HIDDEN
#endif

#endif
