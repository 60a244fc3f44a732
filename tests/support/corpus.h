// The fixed texts the benchmarks measure and the diagnostics tests check for false alarms. Hand-written requests sit in
// corpus.cpp; large, deep and scaling requests are generated at startup so
// that the repository does not carry megabytes of text.
#ifndef LFP_TESTS_SUPPORT_CORPUS_H
#define LFP_TESTS_SUPPORT_CORPUS_H

#include <string>
#include <vector>

namespace bench {

enum class CaseKind {
  Typical,        // current-syntax network request, 10 to 30 tokens
  VirtualLink,    // "vl ..." end-to-end request
  Legacy,         // legacy command line, measured through convert
  Large,          // 1,000 entities in a filter and 1,000 in a key column
  Deep,           // filters nested 50 levels
  ScaleKeys,      // scaling series: N entities in one key column
  ScaleDepth,     // scaling series: N nested filter levels
  Refused,        // a typical request spoilt at one token: the reader refuses it
  LegacyRefused,  // a legacy line spoilt at one token: convert refuses it
};

struct TextCase {
  std::string name;  // unique, used in benchmark names: "<kind>/<name>"
  std::string text;
  CaseKind kind;
  long scale;  // entities (ScaleKeys, Large) or levels (ScaleDepth, Deep); 0 otherwise
  // Refused and LegacyRefused: the accepted text of the same length that the
  // refused one is measured against.
  std::string accepted = std::string();
};

// Every case, in the order the benchmarks are registered; the depth series
// goes from 1 to 1,000,000 levels.
std::vector<TextCase> buildCorpus();

// A key column of `count` entities: "-k src 10.0.0.0 10.0.0.1 ... -v wb acc=rate -s top".
std::string keyColumnRequest(long count);
// A filter of `count` entities plus a key column of `count` entities.
std::string largeRequest(long count);
// `levels` compound filters, each holding one atom and the next level, the
// innermost holding two atoms; "and" and "or" alternate:
// "-f and [ -f src a3 -f or [ -f src a2 -f and [ -f src a1 -f dst b1 ] ] ] -k svc -v wb".
std::string nestedRequest(int levels);
// The same nesting without brackets: "-f and -f src a3 -f or -f src a2 ... -k svc -v wb".
std::string nestedUnbracketedRequest(int levels);

const char* kindLabel(CaseKind kind);

}  // namespace bench

#endif
