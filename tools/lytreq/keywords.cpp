#include "keywords.h"

#include <iomanip>
#include <string>
#include <vector>

#include "lytFilterParser/request/E2EKovaRequest.h"
#include "lytFilterParser/vocab/ColumnCatalogue.h"
#include "lytFilterParser/vocab/ValueType.h"

namespace lytreq {

namespace {

// A list of keywords. The library keeps its own tables private; these are
// the words its readers accept.
struct Section {
  const char* title;
  const char* key;  // field of the JSON object
  std::vector<std::string> words;
};

const std::vector<Section>& sections() {
  static const std::vector<Section> kSections = {
      {"request options", "options", {"-f", "-k", "-v", "-s"}},
      {"filter words", "filterWords", {"and", "or", "AND", "OR", "not", "NOT", "[", "]"}},
      {"interface directions", "interfaceDirections", {",in", ",out"}},
      {"accumulation modes",
       "accumulationModes",
       {"acc=replace", "acc=rate", "acc=new", "acc=sum", "acc=concurrent", "acc=min", "acc=max", "acc=lineUtil"}},
      {"column options",
       "columnOptions",
       {"dir=in", "dir=out", "dir=both", "enc=no", "enc=yes", "enc=both", "comp=no", "comp=yes", "comp=both",
        "cprint=no", "cprint=yes", "cprint=both", "url_mod=full", "url_mod=host", "url_mod=path", "url_mod=scheme",
        "url_mod=host_path", "url_mod=scheme_host", "sort=top", "sort=bottom"}},
      {"sort types", "sortTypes", {"top", "bottom", "none"}},
      {"sort options", "sortOptions", {"index=N", "updates=N"}},
      {"vl request", "vlWords", {"vl", "-t", "wire", "application"}},
      {"legacy options", "legacyOptions", {"-g", "-y", "-a"}},
      {"legacy groups (-g)",
       "legacyGroups",
       {"topfw", "topsrc", "topdst", "topip", "topqsrule", "topsvc", "src", "dst", "svc", "qsrule", "ip"}},
      {"legacy values (-y)", "legacyValues", {"b", "C", "c", "p"}},
      {"legacy connection ids (-a)", "legacyAggregation", {"i"}},
  };
  return kSections;
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

struct TypeEntry {
  int code;
  std::string keyword;
  QULET_VT kovaType;
};

// The value types the library writes: dumpValueType over 0..20, without
// the one it refuses (telNumber is read but never written).
std::vector<TypeEntry> valueTypes() {
  std::vector<TypeEntry> types;
  for (int code = 0; code <= 20; ++code) {
    try {
      const TavValType type = static_cast<TavValType>(code);
      types.push_back(TypeEntry{code, lytFilterParser::dumpValueType(type), lytFilterParser::getKovaType(type)});
    } catch (const std::string&) {
    }
  }
  return types;
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
  const std::vector<Section>& all = sections();
  out << all[0].title << ":\n";
  for (const std::string& word : all[0].words) out << "  " << word << '\n';
  out << "value types:\n";
  for (const TypeEntry& type : valueTypes()) out << "  " << type.keyword << '\n';
  for (std::size_t s = 1; s < all.size(); ++s) {
    out << all[s].title << ":\n";
    for (const std::string& word : all[s].words) out << "  " << word << '\n';
  }
  out << "network columns (number, name, type code):\n";
  writeCatalogue(out, lytFilterParser::networkColumnArray, lytFilterParser::networkArraySize);
  out << "vl columns (number, name, type code):\n";
  writeCatalogue(out, E2EKovaRequest::vlColumnArray, E2EKovaRequest::vlArraySize);
}

Json keywordsJson() {
  Json object;
  const std::vector<Section>& all = sections();
  object[all[0].key] = all[0].words;
  Json types = Json::array();
  for (const TypeEntry& type : valueTypes()) {
    Json entry;
    entry["keyword"] = type.keyword;
    entry["code"] = type.code;
    entry["kovaType"] = static_cast<int>(type.kovaType);
    types.push_back(entry);
  }
  object["valueTypes"] = types;
  for (std::size_t s = 1; s < all.size(); ++s) object[all[s].key] = all[s].words;
  object["networkColumns"] = catalogueJson(lytFilterParser::networkColumnArray, lytFilterParser::networkArraySize);
  object["vlColumns"] = catalogueJson(E2EKovaRequest::vlColumnArray, E2EKovaRequest::vlArraySize);
  return object;
}

}  // namespace lytreq
