#include "lytFilterParser/filter/InterfaceInfo.h"

#include <string_view>
#include <utility>

#include "lytFilterParser/detail/Reader.h"
#include "lytFilterParser/detail/Writer.h"

InterfaceInfo::InterfaceInfo(std::string name_, TavFilterDirType dir) : name(std::move(name_)), direction(dir) {}

InterfaceInfo::InterfaceInfo(strList& tokens, strIter& cur) : direction(TAV_DIR_BOTH) {
  lytFilterParser::detail::Reader::interfaceInfo(*this, tokens, cur);
}

namespace {

// I/i in, O/o out, anything else (nothing too) both.
TavFilterDirType directionOf(std::string_view suffix) {
  const char first = suffix.empty() ? '\0' : suffix[0];
  if (first == 'I' || first == 'i') return TAV_DIR_IN;
  if (first == 'O' || first == 'o') return TAV_DIR_OUT;
  return TAV_DIR_BOTH;
}

}  // namespace

template <class Tokens>
void lytFilterParser::detail::Reader::interfaceInfo(InterfaceInfo& item, Tokens& tokens, Iter<Tokens>& cur) {
  if (cur == tokens.end()) return;
  const std::string_view token = *cur;
  const std::size_t comma = token.find(',');
  if (comma != std::string_view::npos && comma + 1 < token.size()) {
    item.direction = directionOf(token.substr(comma + 1));
    item.name.assign(token.data(), comma);
  } else {
    item.name.assign(token.data(), token.size());
  }
}

LFP_INSTANTIATE_READER(interfaceInfo, InterfaceInfo&);

bool InterfaceInfo::operator==(const InterfaceInfo& other) const {
  return name == other.name && direction == other.direction;
}

bool InterfaceInfo::operator<(const InterfaceInfo& other) const {
  const int order = name.compare(other.name);
  if (order != 0) return order < 0;
  return direction < other.direction;
}

void InterfaceInfo::parseDirection(const std::string& suffix) { direction = directionOf(suffix); }

std::string InterfaceInfo::dumpDirection() const {
  switch (direction) {
    case TAV_DIR_IN: return ",in";
    case TAV_DIR_OUT: return ",out";
    default: return "";
  }
}

void InterfaceInfo::appendTo(lytFilterParser::detail::Writer& out) const {
  out << name;
  if (direction == TAV_DIR_IN) {
    out << ",in";
  } else if (direction == TAV_DIR_OUT) {
    out << ",out";
  }
}

std::string InterfaceInfo::dump() const {
  lytFilterParser::detail::Writer out;
  appendTo(out);
  return out.finish();
}
