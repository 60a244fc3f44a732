#include "lytFilterParser/request/E2EKovaRequest.h"

#include <utility>

// Reading and writing are with the rest of the syntax, in Reader.cpp and
// Printer.cpp.

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
static_assert(E2EKovaRequest::vlArraySize == 15, "virtual-link catalogue has 15 rows");

E2EKovaRequest::E2EKovaRequest(std::string name, tLytpE2eDataType type) : vlName(std::move(name)), dataType(type) {}

E2EKovaRequest::~E2EKovaRequest() = default;

strList E2EKovaRequest::getModuleNames() const { return strList(); }

bool E2EKovaRequest::setModuleNames(strList& oldNames, strList&) { return oldNames.empty(); }

int E2EKovaRequest::getKovaColumnType(int index) {
  const unsigned row = static_cast<unsigned>(index);
  return row < static_cast<unsigned>(vlArraySize) ? vlColumnArray[row].type : 0;
}
