#include "lytFilterParser/filter/InterfaceInfo.h"

#include <utility>

InterfaceInfo::InterfaceInfo(std::string name_, TavFilterDirType dir) : name(std::move(name_)), direction(dir) {}

InterfaceInfo::InterfaceInfo(strList& tokens, strIter& cur) : direction(TAV_DIR_BOTH) {
  if (cur == tokens.end()) return;
  const std::string& token = *cur;
  const std::size_t comma = token.find(',');
  if (comma != std::string::npos && comma + 1 < token.size()) {
    parseDirection(token.substr(comma + 1));
    name.assign(token, 0, comma);
  } else {
    name = token;
  }
}

bool InterfaceInfo::operator==(const InterfaceInfo& other) const {
  return name == other.name && direction == other.direction;
}

bool InterfaceInfo::operator<(const InterfaceInfo& other) const {
  const int order = name.compare(other.name);
  if (order != 0) return order < 0;
  return direction < other.direction;
}

void InterfaceInfo::parseDirection(const std::string& suffix) {
  const char first = suffix.empty() ? '\0' : suffix[0];
  if (first == 'I' || first == 'i') {
    direction = TAV_DIR_IN;
  } else if (first == 'O' || first == 'o') {
    direction = TAV_DIR_OUT;
  } else {
    direction = TAV_DIR_BOTH;
  }
}

std::string InterfaceInfo::dumpDirection() const {
  switch (direction) {
    case TAV_DIR_IN: return ",in";
    case TAV_DIR_OUT: return ",out";
    default: return "";
  }
}

void InterfaceInfo::appendTo(std::string& out) const {
  out += name;
  if (direction == TAV_DIR_IN) {
    out += ",in";
  } else if (direction == TAV_DIR_OUT) {
    out += ",out";
  }
}

std::string InterfaceInfo::dump() const {
  std::string out;
  appendTo(out);
  return out;
}
