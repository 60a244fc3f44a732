#include "keywords.h"

#include <algorithm>
#include <iomanip>
#include <string>
#include <vector>

#include "lytFilterParser/request/E2EKovaRequest.h"
#include "lytFilterParser/vocab/ColumnCatalogue.h"
#include "lytFilterParser/vocab/ValueType.h"
#include "words.h"

namespace lytreq {

namespace {

using lytFilterParser::vocabulary;
using lytFilterParser::wordKindName;

// The JSON field of each kind of word. The fields of the earlier fixed
// lists keep their names so that scripts reading them go on working. The
// switch names every kind, so a kind the library adds is warned about here.
const char* jsonKey(WordKind kind) {
  switch (kind) {
    case WordKind::Option: return "options";
    case WordKind::ValueType: return "valueTypes";
    case WordKind::FilterOperator: return "filterOperators";
    case WordKind::Negation: return "negations";
    case WordKind::Bracket: return "brackets";
    case WordKind::InterfaceDirection: return "interfaceDirections";
    case WordKind::AccumulationMode: return "accumulationModes";
    case WordKind::ColumnOption: return "columnOptions";
    case WordKind::SortInColumn: return "columnSorts";
    case WordKind::SortType: return "sortTypes";
    case WordKind::SortOption: return "sortOptions";
    case WordKind::VirtualLink: return "vlWords";
    case WordKind::LegacyOption: return "legacyOptions";
    case WordKind::LegacyGroup: return "legacyGroups";
    case WordKind::LegacyValue: return "legacyValues";
    case WordKind::LegacyAggregate: return "legacyAggregation";
  }
  return "words";
}

// The words of one kind; the vocabulary keeps each kind together.
struct Section {
  WordKind kind;
  std::vector<const Word*> words;
};

std::vector<Section> sections() {
  std::vector<Section> result;
  for (const Word& word : vocabulary()) {
    if (result.empty() || result.back().kind != word.kind) result.push_back(Section{word.kind, {}});
    result.back().words.push_back(&word);
  }
  return result;
}

// " (read only)" for a word the writers never write, " (written only)" for
// one the readers do not take.
const char* direction(const Word& word) {
  if (!word.written) return " (read only)";
  if (!word.readable) return " (written only)";
  return "";
}

void writeSection(std::ostream& out, const Section& section) {
  out << wordKindName(section.kind) << ":\n";
  std::size_t width = 0;
  for (const Word* word : section.words) width = std::max(width, word->text.size());
  for (const Word* word : section.words) {
    out << "  " << std::left << std::setw(static_cast<int>(width + 2)) << word->text << std::right << word->meaning
        << direction(*word) << '\n';
  }
}

Json wordJson(const Word& word) {
  Json entry;
  entry["text"] = std::string(word.text);
  entry["meaning"] = std::string(word.meaning);
  Json peers = Json::array();
  for (const TavVersion peer : {TAV_VERSION_LEGACY_1, TAV_VERSION_LEGACY_2, TAV_VERSION_CURRENT}) {
    if (word.takenBy(peer)) peers.push_back(static_cast<int>(peer));
  }
  entry["peers"] = peers;
  entry["read"] = word.readable;
  entry["written"] = word.written;
  if (word.kind == WordKind::LegacyOption) {
    // What a legacy option stands for is the kind of word that follows it.
    if (word.code >= 0) entry["takes"] = jsonKey(static_cast<WordKind>(word.code));
  } else if (word.code >= 0) {
    entry["code"] = word.code;
  }
  if (word.kind == WordKind::ValueType) {
    Json places = Json::array();
    if (word.places & lytFilterParser::PLACE_FILTER) places.push_back("filter");
    if (word.places & lytFilterParser::PLACE_KEY) places.push_back("key");
    if (word.places & lytFilterParser::PLACE_VALUE) places.push_back("value");
    entry["places"] = places;
    // What a column of this type holds in the query interface.
    entry["kovaType"] = static_cast<int>(lytFilterParser::getKovaType(static_cast<TavValType>(word.code)));
  }
  return entry;
}

const char* kovaTypeName(QULET_VT type) {
  switch (type) {
    case QULET_VT_TIME: return "time";
    case QULET_VT_STRING: return "string";
    case QULET_VT_INT32: return "int32";
    case QULET_VT_MESSAGE_ID: return "messageId";
    case QULET_VT_INT64: return "int64";
    default: return "none";
  }
}

void writeCatalogue(std::ostream& out, const KovaColumnInfo* rows, int count) {
  for (int i = 0; i < count; ++i) {
    out << "  " << std::setw(2) << i + 1 << "  " << std::left << std::setw(30) << rows[i].name << std::right << "  "
        << std::setw(2) << static_cast<int>(rows[i].type) << ' ' << kovaTypeName(rows[i].type) << '\n';
  }
}

Json catalogueJson(const KovaColumnInfo* rows, int count) {
  Json list = Json::array();
  for (int i = 0; i < count; ++i) {
    Json row;
    row["number"] = i + 1;
    row["name"] = rows[i].name;
    row["type"] = static_cast<int>(rows[i].type);
    row["typeName"] = kovaTypeName(rows[i].type);
    row["flag"] = rows[i].flag;
    list.push_back(row);
  }
  return list;
}

}  // namespace

void writeKeywords(std::ostream& out) {
  for (const Section& section : sections()) writeSection(out, section);
  out << "network columns (number, name, type code):\n";
  writeCatalogue(out, lytFilterParser::networkColumnArray, lytFilterParser::networkArraySize);
  out << "vl columns (number, name, type code):\n";
  writeCatalogue(out, E2EKovaRequest::vlColumnArray, E2EKovaRequest::vlArraySize);
}

Json keywordsJson() {
  Json object;
  for (const Section& section : sections()) {
    Json words = Json::array();
    for (const Word* word : section.words) words.push_back(wordJson(*word));
    object[jsonKey(section.kind)] = words;
  }
  object["networkColumns"] = catalogueJson(lytFilterParser::networkColumnArray, lytFilterParser::networkArraySize);
  object["vlColumns"] = catalogueJson(E2EKovaRequest::vlColumnArray, E2EKovaRequest::vlArraySize);
  return object;
}

}  // namespace lytreq
