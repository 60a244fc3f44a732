#include "lytFilterParser/request/E2EKovaRequest.h"

#include <utility>

#include "lytFilterParser/detail/Reader.h"
#include "lytFilterParser/detail/Text.h"

using lytFilterParser::detail::fail;

const KovaColumnInfo E2EKovaRequest::vlColumnArray[] = {
    {"time", QULET_VT_TIME, 1},
    {"A2BBandwithBytes", QULET_VT_INT64, 0},
    {"A2BBandwithPackets", QULET_VT_INT64, 0},
    {"AfromBBandwithBytes", QULET_VT_INT64, 0},
    {"AfromBBandwithPackets", QULET_VT_INT64, 0},
    {"B2ABandwithBytes", QULET_VT_INT64, 0},
    {"B2ABandwithPackets", QULET_VT_INT64, 0},
    {"BfromABandwithBytes", QULET_VT_INT64, 0},
    {"BfromABandwithPackets", QULET_VT_INT64, 0},
    {"A2BBandwithLossPercent_Bytes", QULET_VT_INT32, 0},
    {"B2ABandwithLossPercent_Bytes", QULET_VT_INT32, 0},
    {"A2BBandwithLossPercent_Packets", QULET_VT_INT32, 0},
    {"B2ABandwithLossPercent_Packets", QULET_VT_INT32, 0},
    {"RoundTripTime", QULET_VT_INT32, 0},
    {"diffFromUTC", QULET_VT_MESSAGE_ID, 0},
};

const int E2EKovaRequest::vlArraySize = sizeof vlColumnArray / sizeof vlColumnArray[0];
static_assert(sizeof E2EKovaRequest::vlColumnArray / sizeof E2EKovaRequest::vlColumnArray[0] == 15,
              "virtual-link catalogue has 15 rows");

E2EKovaRequest::E2EKovaRequest(std::string name, tLytpE2eDataType type) : vlName(std::move(name)), dataType(type) {}

E2EKovaRequest::E2EKovaRequest(strList& tokens) : dataType(E2E_DATA_WIRE) {
  strIter cur = tokens.begin();
  lytFilterParser::detail::Reader::virtualLink(*this, tokens, cur);
}

E2EKovaRequest::~E2EKovaRequest() = default;

void E2EKovaRequest::parseFilter(strList& tokens, strIter& cur) {
  lytFilterParser::detail::Reader::virtualLinkOptions(*this, tokens, cur);
}

void E2EKovaRequest::parseDataType(strList& tokens, strIter& cur) {
  lytFilterParser::detail::Reader::dataType(*this, tokens, cur);
}

template <class Tokens>
void lytFilterParser::detail::Reader::virtualLink(E2EKovaRequest& request, Tokens& tokens, Iter<Tokens>& cur) {
  if (cur == tokens.end()) fail("No virtual link name after vl");
  const std::string_view name = *cur;
  request.vlName.assign(name.data(), name.size());
  ++cur;
  virtualLinkOptions(request, tokens, cur);
}

LFP_INSTANTIATE_READER(virtualLink, E2EKovaRequest&);

template <class Tokens>
void lytFilterParser::detail::Reader::virtualLinkOptions(E2EKovaRequest& request, Tokens& tokens, Iter<Tokens>& cur) {
  while (cur != tokens.end()) {
    const std::string_view token = *cur;
    const std::size_t dash = token.find('-');
    if (dash != std::string_view::npos && dash + 1 < token.size() && token[dash + 1] == 't') {
      ++cur;
      dataType(request, tokens, cur);
    }
    ++cur;
  }
}

LFP_INSTANTIATE_READER(virtualLinkOptions, E2EKovaRequest&);

template <class Tokens>
void lytFilterParser::detail::Reader::dataType(E2EKovaRequest& request, Tokens& tokens, Iter<Tokens>& cur) {
  if (cur == tokens.end()) fail("No data after direction argument");
  const char first = firstChar(*cur);
  if (first == 'a') {
    request.dataType = E2E_DATA_APPLICATION;
  } else if (first == 'w') {
    request.dataType = E2E_DATA_WIRE;
  } else {
    fail("Not a valid argument for dataType");
  }
}

LFP_INSTANTIATE_READER(dataType, E2EKovaRequest&);

std::string E2EKovaRequest::dumpDataType() const {
  if (dataType == E2E_DATA_WIRE) return "wire";
  if (dataType == E2E_DATA_APPLICATION) return "application";
  return "";
}

std::string E2EKovaRequest::dump() const {
  std::string out;
  out.reserve(vlName.size() + 18);
  out += "vl ";
  out += vlName;
  out += " -t ";
  out += dumpDataType();
  return out;
}

std::string E2EKovaRequest::dump(TavVersion version) const {
  if (version == 3) return dump();
  if (version <= 0) return "4.1 and under is not supported";
  return "";
}

strList E2EKovaRequest::getModuleNames() const { return strList(); }

bool E2EKovaRequest::setModuleNames(strList& oldNames, strList&) { return oldNames.empty(); }

int E2EKovaRequest::getKovaColumnType(int index) {
  const unsigned row = static_cast<unsigned>(index);
  return row < static_cast<unsigned>(vlArraySize) ? vlColumnArray[row].type : 0;
}
