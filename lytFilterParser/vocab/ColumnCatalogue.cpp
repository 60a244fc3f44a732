#include "lytFilterParser/vocab/ColumnCatalogue.h"

#include <cstring>

#include "lytFilterParser/vocab/ColumnAllocation.h"

namespace lytFilterParser {

const KovaColumnInfo networkColumnArray[] = {
    {"time", QULET_VT_TIME, 1},
    {"EntryName", QULET_VT_STRING, 1},
    {"ConnectionID", QULET_VT_INT32, 0},
    {"bandwithBytes", QULET_VT_INT64, 0},
    {"bandwithPackets", QULET_VT_INT64, 0},
    {"concurrentConnection", QULET_VT_INT64, 0},
    {"connectionPerSecond", QULET_VT_INT64, 0},
    {"LineUtilization", QULET_VT_INT64, 0},
    {"diffFromUTC", QULET_VT_INT32, 0},
    {"messageID", QULET_VT_MESSAGE_ID, 0},
    {"VAL32_1", QULET_VT_INT32, 0},
    {"VAL32_2", QULET_VT_INT32, 0},
    {"VAL32_3", QULET_VT_INT32, 0},
    {"VAL32_4", QULET_VT_INT32, 0},
    {"VAL32_5", QULET_VT_INT32, 0},
    {"VAL32_6", QULET_VT_INT32, 0},
    {"VAL64_1", QULET_VT_INT64, 0},
    {"VAL64_2", QULET_VT_INT64, 0},
    {"VAL64_3", QULET_VT_INT64, 0},
    {"VAL64_4", QULET_VT_INT64, 0},
    {"VAL64_5", QULET_VT_INT64, 0},
    {"VAL64_6", QULET_VT_INT64, 0},
    {"STR_1", QULET_VT_STRING, 0},
    {"STR_2", QULET_VT_STRING, 0},
    {"STR_3", QULET_VT_STRING, 0},
    {"STR_4", QULET_VT_STRING, 0},
    {"STR_5", QULET_VT_STRING, 0},
    {"STR_6", QULET_VT_STRING, 0},
};

const int networkArraySize = sizeof networkColumnArray / sizeof networkColumnArray[0];
static_assert(networkArraySize == 28, "network catalogue has 28 rows");

namespace {

// The catalogue index of the column `name`, or -1.
int columnIndex(const char* name) {
  for (int i = 0; i < networkArraySize; ++i) {
    if (std::strcmp(networkColumnArray[i].name, name) == 0) return i;
  }
  return -1;
}

struct Allocation {
  std::mutex mutex;
  const int firstGeneric = columnIndex("VAL32_1");
  int next[detail::kTypeCodes] = {};
};

Allocation& allocation() {
  static Allocation state;
  return state;
}

}  // namespace

namespace detail {

std::mutex& columnAllocationMutex() { return allocation().mutex; }

int nextOpenColumnLocked(QULET_VT type) {
  Allocation& state = allocation();
  if (type == 0) {
    for (int& position : state.next) position = state.firstGeneric;
    return -1;
  }
  const unsigned code = static_cast<unsigned>(type);
  if (code >= static_cast<unsigned>(detail::kTypeCodes)) return -1;
  for (int i = state.next[code]; i < networkArraySize; ++i) {
    if (networkColumnArray[i].type == type) {
      state.next[code] = i + 1;
      return i;
    }
  }
  return -1;
}

}  // namespace detail

const char* getKovaColumnName(int index) {
  return index >= 0 && index < networkArraySize ? networkColumnArray[index].name : nullptr;
}

QULET_VT getKovaColumnType(int index) {
  return index >= 0 && index < networkArraySize ? networkColumnArray[index].type : QULET_VT_NONE;
}

int getNextOpenKovaCoulmn(QULET_VT type) {
  std::lock_guard<std::mutex> lock(detail::columnAllocationMutex());
  return detail::nextOpenColumnLocked(type);
}

std::vector<int> mapKovaColumn(const DravoColumnDefinition* columns, unsigned count) {
  std::vector<int> indices;
  if (columns == nullptr) return indices;
  for (unsigned c = 0; c < count; ++c) {
    const char* name = columns[c].name;
    if (name == nullptr) return std::vector<int>();
    if (std::strcmp(name, "time") == 0 || std::strcmp(name, "diffFromUTC") == 0 ||
        std::strcmp(name, "messageID") == 0) {
      continue;
    }
    const int found = columnIndex(name);
    if (found < 0) return std::vector<int>();
    indices.push_back(found);
  }
  return indices;
}

}  // namespace lytFilterParser
