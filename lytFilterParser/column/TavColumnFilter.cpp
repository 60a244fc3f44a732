#include "lytFilterParser/column/TavColumnFilter.h"

#include <string_view>

#include "lytFilterParser/detail/Reader.h"
#include "lytFilterParser/detail/Writer.h"
#include "lytFilterParser/detail/Text.h"

namespace {

struct ValueWord {
  std::string_view word;
  int code;
};

// One option: its name, where the value search starts, the words tried in
// order (containment, so longer words that contain shorter ones come first)
// and the message when none is found. The order of the rows is the order of
// precedence when a token contains several names.
struct OptionRule {
  std::string_view name;
  std::size_t valueFrom;
  ValueWord words[6];
  int wordCount;
  const char* message;
};

enum { RULE_DIR, RULE_ENC, RULE_COMP, RULE_CPRINT, RULE_URL, RULE_COUNT };

constexpr OptionRule kRules[RULE_COUNT] = {
    {"dir=", 4, {{"out", 1}, {"in", 0}, {"both", 2}}, 3, "Unexpected type of direction"},
    {"enc=", 4, {{"no", 0}, {"yes", 1}, {"both", 2}}, 3, "Unexpected type of encryption mode"},
    {"comp=", 5, {{"no", 0}, {"yes", 1}, {"both", 2}}, 3, "Unexpected type of compresstion mode"},
    {"cprint=", 7, {{"no", 0}, {"yes", 1}, {"both", 2}}, 3, "Unexpected type of citrix-print mode"},
    {"url_mod=",
     8,
     {{"full", 0}, {"host_path", 4}, {"scheme_host", 5}, {"host", 1}, {"path", 2}, {"scheme", 3}},
     6,
     "Unexpected type of url mode"},
};

constexpr bool namesEndWithEquals() {
  for (const OptionRule& rule : kRules) {
    if (rule.name.empty() || rule.name.back() != '=') return false;
  }
  return true;
}
static_assert(namesEndWithEquals(), "containsName looks for the names only where a '=' stands");

// Whether `token` contains `name` anywhere. Every name ends with "=", so
// only the places of "=" in the token need a look.
bool containsName(std::string_view token, std::string_view name) {
  for (std::size_t at = token.find('=', name.size() - 1); at != std::string_view::npos; at = token.find('=', at + 1)) {
    if (token.compare(at + 1 - name.size(), name.size(), name) == 0) return true;
  }
  return false;
}

}  // namespace

TavColumnFilter::TavColumnFilter(int encryption, int compression, int dir, int citrixPrint, int url)
    : encryptionMode(encryption), compressionMode(compression), direction(dir), citrixPrintMode(citrixPrint), urlMode(url) {}

void TavColumnFilter::parse(strList& tokens, strIter& cur) { lytFilterParser::detail::Reader::columnFilter(*this, tokens, cur); }

template <class Tokens>
void lytFilterParser::detail::Reader::columnFilter(TavColumnFilter& filter, Tokens& tokens, Iter<Tokens>& cur) {
  if (cur == tokens.end()) fail("Error: Expected end of line");
  const std::string_view token = *cur;
  int* const fields[RULE_COUNT] = {&filter.direction, &filter.encryptionMode, &filter.compressionMode,
                                   &filter.citrixPrintMode, &filter.urlMode};
  for (int r = 0; r < RULE_COUNT; ++r) {
    const OptionRule& rule = kRules[r];
    if (!containsName(token, rule.name)) continue;
    for (int w = 0; w < rule.wordCount; ++w) {
      if (token.find(rule.words[w].word, rule.valueFrom) != std::string_view::npos) {
        *fields[r] = rule.words[w].code;
        ++cur;
        return;
      }
    }
    fail(rule.message);
  }
  fail("Expected filter type");
}

LFP_INSTANTIATE_READER(columnFilter, TavColumnFilter&);

bool TavColumnFilter::restrictsTraffic() const {
  return encryptionMode != BOTH || compressionMode != BOTH || direction != BOTH || citrixPrintMode != BOTH;
}

void TavColumnFilter::appendTo(lytFilterParser::detail::Writer& out) const {
  static constexpr std::string_view kYesNo[] = {"no ", "yes "};
  if (direction == 0) out << "dir=in ";
  if (direction == 1) out << "dir=out ";
  if (encryptionMode == 0 || encryptionMode == 1) out << "enc=" << kYesNo[encryptionMode];
  if (compressionMode == 0 || compressionMode == 1) out << "comp=" << kYesNo[compressionMode];
  if (citrixPrintMode == 0 || citrixPrintMode == 1) out << "cprint=" << kYesNo[citrixPrintMode];
  static constexpr std::string_view kUrl[] = {{}, "host ", "path ", "scheme ", "host_path ", "scheme_host "};
  if (urlMode >= 1 && urlMode <= 5) out << "url_mod=" << kUrl[urlMode];
}

std::string TavColumnFilter::dump() const {
  lytFilterParser::detail::Writer out;
  appendTo(out);
  return out.finish();
}
