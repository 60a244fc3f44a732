// The legacy option syntax of older peers: the reader translates legacy
// tokens into current-syntax words and parses those; the writer builds
// the legacy text from the model.
#include <cstring>
#include <string_view>
#include <utility>

#include "lytFilterParser/detail/Reader.h"
#include "lytFilterParser/detail/Writer.h"
#include "lytFilterParser/detail/Text.h"
#include "lytFilterParser/detail/TokenSequence.h"
#include "lytFilterParser/detail/ValueTypeTable.h"
#include "lytFilterParser/filter/ContentFilterBase.h"
#include "lytFilterParser/filter/InterfaceAtomFilter.h"
#include "lytFilterParser/request/NetworkKovaRequest.h"

using lytFilterParser::detail::fail;
using lytFilterParser::detail::is;

namespace {

struct GroupWord {
  const char* legacy;
  const char* keyType;
};

// "-g" keywords in the reader's order; the "top" ones also ask for sort top.
constexpr GroupWord kGroupRead[] = {
    {"topfw", "fwrule"}, {"topsrc", "src"},         {"topdst", "dst"}, {"topip", "ip"},
    {"topqsrule", "qsrule"}, {"topsvc", "svc"},     {"src", "src"},    {"dst", "dst"},
    {"svc", "svc"},      {"qsrule", "qsrule"},      {"ip", "ip"},
};

struct GroupWritten {
  TavValType type;
  const char* top;
  const char* plain;
};

// "-g" option written for the first key column: top form without entities.
constexpr GroupWritten kGroupWrite[] = {
    {TAV_SVC, "-g topsvc ", "-g svc "},          {TAV_SRC, "-g topsrc ", "-g src "},
    {TAV_DST, "-g topdst ", "-g dst "},          {TAV_IP, "-g topip ", "-g ip "},
    {TAV_QSRULE, "-g topqsrule ", "-g qsrule "}, {TAV_FWRULE, "-g topfw ", "-g topfw "},
};

using lytFilterParser::detail::firstChar;
using lytFilterParser::detail::isChar;
using lytFilterParser::detail::TextTokens;
using lytFilterParser::detail::WordTokens;

// Translates legacy tokens into current-syntax words: views of the tokens
// that pass through, keywords, and the interface items it composes. The
// tokens must outlive the words.
template <class Tokens>
void translateLegacy(Tokens& tokens, WordTokens& out) {
  bool valueGiven = false;
  typename Tokens::iterator cur = tokens.begin();
  const typename Tokens::iterator end = tokens.end();
  const auto take = [&] {
    out.push_back(std::string_view(*cur));
    ++cur;
  };
  const auto drop = [&] { ++cur; };
  const auto emit = [&](const char* word) { out.push_back(std::string_view(word)); };
  while (cur != end) {
    const std::string_view token = *cur;
    const char option = token.size() >= 2 && token[0] == '-' ? token[1] : '\0';
    if (option == 'y') {
      drop();
      emit("-v");
      if (cur == end) fail("Invalid value type");
      switch (firstChar(*cur)) {
        case 'b': emit("wb"); break;
        case 'C': emit("conn"); emit("acc=concurrent"); break;
        case 'c': emit("conn"); emit("acc=new"); break;
        case 'p': emit("pkt"); break;
        default: fail("Invalid value type");
      }
      valueGiven = true;
      drop();
      continue;
    }
    if (option == 'g') {
      drop();
      emit("-k");
      if (cur == end) fail("Invalid key type");
      const GroupWord* group = nullptr;
      for (const GroupWord& word : kGroupRead) {
        if (std::string_view(*cur) == word.legacy) {
          group = &word;
          break;
        }
      }
      if (group == nullptr) fail("Invalid key type");
      drop();
      emit(group->keyType);
      if (std::strncmp(group->legacy, "top", 3) == 0) {
        emit("-s");
        emit("top");
        continue;
      }
      // After a plain group the rest of the line is taken as it stands.
      while (cur != end) take();
      break;
    }
    if (option == 'a') {
      drop();
      if (cur == end) break;
      if (firstChar(*cur) == 'i') {
        drop();
        emit("-k");
        emit("connId");
        continue;
      }
      // Anything else after "-a" is looked at as a filter word.
    }
    if (is(*cur, "interface")) {
      drop();
      emit("-f");
      emit("interface");
      if (cur == end) fail("Invalid interface filter");
      const bool negated = is(*cur, "1");
      drop();
      if (negated) emit("not");
      if (cur == end) fail("Invalid interface filter");
      drop();
      if (cur == end) fail("Invalid interface filter");
      if (isChar(*cur, '[')) {
        drop();
        if (cur == end) fail("Invalid interface filter");
      }
      std::string item(*cur);  // the name, then "," and the direction
      drop();
      if (cur == end) fail("Invalid interface filter");
      item.append(1, ',').append(*cur);
      drop();
      out.push_back(std::move(item));
      continue;
    }
    if (is(*cur, "src") || is(*cur, "dst") || is(*cur, "svc") || is(*cur, "ip")) {
      emit("-f");
      take();
      if (cur == end) fail("Invalid filter");
      const bool negated = is(*cur, "1");
      drop();
      if (negated) emit("not");
      if (cur == end) fail("Invalid filter");
      drop();
      while (cur != end && !isChar(*cur, ']')) take();
      if (cur == end) fail("Invalid filter");
      drop();
      continue;
    }
    drop();
  }
  if (!valueGiven) {
    emit("-v");
    emit("wb");
  }
}

}  // namespace

NetworkKovaRequest::NetworkKovaRequest(strList& tokens, TavVersion version) : NetworkKovaRequest() {
  lytFilterParser::detail::Reader::legacyRequest(*this, tokens, version);
}

template <class Tokens>
void lytFilterParser::detail::Reader::legacyRequest(NetworkKovaRequest& request, Tokens& tokens, TavVersion version) {
  const unsigned peer = static_cast<unsigned>(version);
  if (peer == 3) {
    Iter<Tokens> cur = tokens.begin();
    Reader::request(request, tokens, cur);
    return;
  }
  if (peer > 3) fail("NetworkKovaRequest: Invalid version");
  if (peer == 0) return;
  WordTokens translated;
  translateLegacy(tokens, translated);
  WordTokens::iterator cur = translated.begin();
  Reader::request(request, translated, cur);
}

template void lytFilterParser::detail::Reader::legacyRequest<strList>(NetworkKovaRequest&, strList&, TavVersion);
template void lytFilterParser::detail::Reader::legacyRequest<TextTokens>(NetworkKovaRequest&, TextTokens&, TavVersion);

std::string NetworkKovaRequest::dump(TavVersion version) const {
  if (version == 3) return dump();
  if (version == 1 || version == 2) return dumpLegacy();
  if (version <= 0) return "4.1 and under is not supported";
  return "";
}

std::string NetworkKovaRequest::dumpLegacy() const {
  lytFilterParser::detail::Writer out(128);
  out << "-filter [ and [";
  for (const std::unique_ptr<AbstractFilter>& child : filter.getChildren()) {
    if (child->getIsAtom() == 0) continue;
    const AtomFilter* atom = dynamic_cast<const AtomFilter*>(child.get());
    if (atom == nullptr) continue;
    out << '[';
    out << lytFilterParser::detail::valueTypeKeyword(atom->getFilterType());
    out << ' ';
    out << (atom->isNegated() ? "1 [" : "0 [");
    if (atom->getFilterType() == TAV_INTERFACE) {
      if (const InterfaceAtomFilter* interfaces = dynamic_cast<const InterfaceAtomFilter*>(atom)) {
        for (const InterfaceInfo& item : interfaces->getInterfaces()) {
          out << '[';
          out << item.getName();
          // Legacy peers know no "both": such an entry goes out as outbound.
          out << (item.getDirection() == TAV_DIR_IN ? " in]" : " out]");
        }
      }
    } else if (const ContentFilterBase* content = dynamic_cast<const ContentFilterBase*>(atom)) {
      for (const TavEntity& entity : content->getEntities()) {
        entity.appendTo(out);
        out << ' ';
      }
    }
    out << "]]";
  }
  out << "]] ";

  const bool connIdPair =
      keys.size() == 2 && (keys[0].getValueType() == TAV_CONNID || keys[1].getValueType() == TAV_CONNID);
  out << (connIdPair ? "-a i " : "-a a ");

  if (!values.empty()) {
    const TavColumn& value = values[0];
    const TavValType type = value.getValueType();
    const TavAccType acc = value.getAccType();
    if (type == TAV_WB) {
      out << "-y b ";
    } else if (acc == TAV_ACC_LINEUTIL) {
      out << "-y l ";
    } else if (type == TAV_PKT) {
      out << "-y p ";
    } else if (type == TAV_CONN && acc == TAV_ACC_NEW) {
      out << "-y c ";
    } else if (type == TAV_CONN && acc == TAV_ACC_CONCURRENT) {
      out << "-y C ";
    }
  }

  if (!keys.empty()) {
    const TavColumn& key = keys[0];
    for (const GroupWritten& group : kGroupWrite) {
      if (group.type == key.getValueType()) {
        out << (key.getEntities().empty() ? group.top : group.plain);
        break;
      }
    }
    for (const TavEntity& entity : key.getEntities()) {
      entity.appendTo(out);
      out << ' ';
    }
  }
  return out.finish();
}
