#include "explain.h"

#include <utility>
#include <vector>

#include "echo.h"
#include "lytFilterParser/diagnostics/Diagnostic.h"
#include "lytFilterParser/filter/ContentFilterBase.h"
#include "lytFilterParser/filter/Filter.h"
#include "lytFilterParser/filter/FilterVisitor.h"
#include "lytFilterParser/filter/InterfaceAtomFilter.h"
#include "lytFilterParser/request/E2EKovaRequest.h"
#include "words.h"

namespace lytreq {

namespace {

// Deeper levels of a filter are not moved further in, so that a deep tree
// does not take a line per blank; their lines say their level.
constexpr std::size_t kDeepestIndent = 32;

Json namesJson(const TavEntityArray& entities) {
  Json names = Json::array();
  for (const TavEntity& entity : entities) names.push_back(entity.dump());
  return names;
}

Json atomJson(const AtomFilter& atom) {
  Json node;
  node["type"] = valueTypeWord(atom.getFilterType());
  node["negated"] = atom.isNegated();
  return node;
}

// The nodes of a filter tree in walk order, each with its depth, as the
// library's walk hands them.
class FilterNodes : public lytFilterParser::FilterVisitor {
 public:
  Json nodes = Json::array();

  bool enter(const Filter& filter, std::size_t depth) override {
    Json& entry = add(depth);
    entry["operator"] = codeWord(WordKind::FilterOperator, filter.getOperator());
    return true;
  }
  bool content(const ContentFilter& atom, std::size_t depth) override {
    Json& entry = add(depth);
    entry.update(atomJson(atom));
    entry["names"] = namesJson(atom.getEntities());
    return true;
  }
  bool interfaces(const InterfaceAtomFilter& atom, std::size_t depth) override {
    Json& entry = add(depth);
    entry.update(atomJson(atom));
    Json items = Json::array();
    for (const InterfaceInfo& item : atom.getInterfaces()) {
      Json interface;
      interface["name"] = item.getName();
      interface["direction"] = directionWord(item.getDirection());
      items.push_back(interface);
    }
    entry["interfaces"] = items;
    return true;
  }

 private:
  Json& add(std::size_t depth) {
    Json entry;
    entry["depth"] = depth;
    nodes.push_back(std::move(entry));
    return nodes.back();
  }
};

// The nodes of the filter tree; none for a request without a filter (an
// empty root).
Json filterJson(const Filter& root) {
  if (root.getChildren().empty()) return Json::array();
  FilterNodes nodes;
  lytFilterParser::walkFilterTree(root, nodes);
  return std::move(nodes.nodes);
}

Json columnJson(const TavColumn& column, const Column* query) {
  Json entry;
  entry["type"] = valueTypeWord(column.getValueType());
  entry["mode"] = codeWord(WordKind::AccumulationMode, column.getAccType());
  entry["options"] = columnOptionWords(column.getColumnFilter());
  entry["names"] = namesJson(column.getEntities());
  if (query != nullptr) {
    entry["column"] = Json{{"number", query->number}, {"name", query->name}};
  } else {
    entry["column"] = nullptr;
  }
  return entry;
}

Json networkJson(const NetworkKovaRequest& request) {
  std::vector<Column> query;
  try {
    query = queryColumns(request, TAV_VERSION_CURRENT);
  } catch (const std::string&) {
    // Columns that cannot be mapped have none.
  }
  Json object;
  object["kind"] = "network";
  object["filter"] = filterJson(request.getFilter());
  std::size_t next = 0;
  for (const auto& [field, columns] : {std::pair<const char*, const TavColumnArray*>{"keys", &request.getKeys()},
                                       std::pair<const char*, const TavColumnArray*>{"values", &request.getValues()}}) {
    Json list = Json::array();
    for (const TavColumn& column : *columns) {
      list.push_back(columnJson(column, next < query.size() ? &query[next] : nullptr));
      ++next;
    }
    object[field] = list;
  }
  object["sort"] = Json{{"type", codeWord(WordKind::SortType, request.getSortType())},
                        {"index", request.getSortIndex()},
                        {"updates", request.getMaxUpdates()}};
  return object;
}

// The words of a list, each followed by nothing but the blank between them.
std::string joined(const Json& words) {
  std::string text;
  for (const Json& word : words) text += (text.empty() ? "" : " ") + shown(word.get<std::string>());
  return text;
}

std::string indent(std::size_t level) { return std::string(2 * std::min(level, kDeepestIndent), ' '); }

void writeFilter(const Json& nodes, std::ostream& out) {
  if (nodes.empty()) out << "  filter: none\n";
  for (const Json& node : nodes) {
    const std::size_t depth = node["depth"].get<std::size_t>();
    out << indent(depth + 1);
    if (depth == 0) out << "filter: ";
    if (depth > kDeepestIndent) out << "(level " << depth << ") ";
    if (node.contains("operator")) {
      out << node["operator"].get<std::string>() << '\n';
      continue;
    }
    out << node["type"].get<std::string>();
    if (node["negated"].get<bool>()) out << ' ' << codeWord(WordKind::Negation, kNegated);
    if (node.contains("interfaces")) {
      for (const Json& item : node["interfaces"]) {
        out << ' ' << shown(item["name"].get<std::string>()) << " (" << item["direction"].get<std::string>() << ')';
      }
    } else if (!node["names"].empty()) {
      out << ' ' << joined(node["names"]);
    }
    out << '\n';
  }
}

void writeColumns(const char* label, const Json& columns, std::ostream& out) {
  for (const Json& column : columns) {
    out << "  " << label << ": " << column["type"].get<std::string>() << ' ' << column["mode"].get<std::string>() << ' '
        << joined(column["options"]) << '\n';
    if (!column["names"].empty()) out << "    names: " << joined(column["names"]) << '\n';
    out << "    query column: ";
    if (column["column"].is_null()) {
      out << "none\n";
    } else {
      out << column["column"]["number"].get<int>() << ' ' << column["column"]["name"].get<std::string>() << '\n';
    }
  }
}

}  // namespace

Json explainRequest(const LYTKovaRequest& request) {
  if (const auto* network = dynamic_cast<const NetworkKovaRequest*>(&request)) return networkJson(*network);
  const auto& link = dynamic_cast<const E2EKovaRequest&>(request);
  Json object;
  object["kind"] = std::string(virtualLinkWord());
  object["name"] = link.getVLName();
  object["dataType"] = codeWord(WordKind::VirtualLink, link.getDataType());
  return object;
}

void writeExplanation(const Report& report, std::ostream& out) {
  const Json& tree = *report.explanation;
  out << tree["kind"].get<std::string>() << " request\n";
  if (tree.contains("filter")) {
    writeFilter(tree["filter"], out);
    writeColumns("key", tree["keys"], out);
    writeColumns("value", tree["values"], out);
    const Json& sort = tree["sort"];
    out << "  sort: " << sort["type"].get<std::string>() << ' ' << codeWord(WordKind::SortOption, kSortIndex)
        << sort["index"].get<int>() << ' ' << codeWord(WordKind::SortOption, kSortUpdates) << sort["updates"].get<int>()
        << '\n';
  } else {
    out << "  name: " << shown(tree["name"].get<std::string>()) << '\n';
    out << "  data type: " << tree["dataType"].get<std::string>() << '\n';
  }
  if (!report.peers) return;
  for (const PeerVerdict& verdict : *report.peers) {
    out << "peer " << verdict.peer << ": " << (verdict.valid ? "valid" : "invalid: " + shown(verdict.message)) << '\n';
    for (const Diagnostic& loss : verdict.losses) {
      out << "  " << lytFilterParser::severityName(loss.severity) << ": " << shown(loss.message) << " [" << loss.code
          << "]\n";
    }
  }
}

}  // namespace lytreq
