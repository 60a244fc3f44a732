// Checks shared by the fuzz targets: which exceptions may leave the library,
// and when a written request must read back to the same text.
#ifndef LYTFILTERPARSER_FUZZ_FUZZCOMMON_H
#define LYTFILTERPARSER_FUZZ_FUZZCOMMON_H

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <typeinfo>

#include <lytFilterParser/lytFilterParser.h>

namespace fuzz {

[[noreturn]] inline void failure(const char* what, const std::string& detail) {
  std::fprintf(stderr, "property violated: %s\n%s\n", what, detail.c_str());
  std::abort();
}

// Runs `body`; a std::string message is an allowed outcome, anything else
// leaving the library is a defect.
template <typename Body>
bool allowMessage(Body body) {
  try {
    body();
    return true;
  } catch (const std::string&) {
    return false;
  } catch (const std::exception& e) {
    failure("a non-message exception left the library", e.what());
  } catch (...) {
    failure("an unknown exception left the library", "");
  }
}

// Cases where the written text legitimately does not read back to itself:
//  - an entity or interface item whose text is empty ("<>" as entity, ",x"
//    as interface item) vanishes: "-k src <>" writes "-k src acc=replace  ";
//  - a compound filter that is not the root and has at most one child is
//    written without operator and brackets plus two blanks, so reading back
//    lifts its child and loses the blanks: "-f and [ -f or [ -f src a ] -f dst b ]";
//  - a root filter whose only child is compound writes that child with two
//    extra blanks, and the child becomes the root when read back:
//    "-f or [ -f and -f src a -f dst b ]";
//  - an entity or interface item written with a text the reader takes as
//    something else: "not<>" (an entity named "not") first in a filter that
//    is not negated reads back as the negation, and "-f interface not,x"
//    writes "-f interface   not " likewise; a column's first entity written as
//    "acc", "sort" or with "=" ("-k src a=b<>") reads back as an option;
//  - a request that writes only blanks ("-s none") reads back as no request;
//  - resolved names stored by setModuleNames are written as the caller gave
//    them, so after substitution with names holding "[", "]" or a blank the
//    text need not read back; the targets check the text before substituting.
inline bool readsAsNegation(const std::string& text) { return text == "not" || text == "NOT"; }

inline bool readsAsColumnOption(const std::string& text) {
  return text.find("acc") != std::string::npos || text.find("sort") != std::string::npos ||
         text.find('=') != std::string::npos;
}

inline bool filterIsLossy(const Filter& node, bool root) {
  const Filter::Children& children = node.getChildren();
  if (!root && children.size() <= 1) return true;
  if (root && children.size() == 1 && children[0]->getIsAtom() == 0) return true;
  for (const std::unique_ptr<AbstractFilter>& child : children) {
    if (const Filter* inner = dynamic_cast<const Filter*>(child.get())) {
      if (filterIsLossy(*inner, false)) return true;
    } else if (const ContentFilterBase* content = dynamic_cast<const ContentFilterBase*>(child.get())) {
      const TavEntityArray& entities = content->getEntities();
      if (!content->isNegated() && !entities.empty() && readsAsNegation(entities[0].dump())) return true;
      for (const TavEntity& entity : entities) {
        if (entity.dump().empty()) return true;
      }
    } else if (const InterfaceAtomFilter* interfaces = dynamic_cast<const InterfaceAtomFilter*>(child.get())) {
      const InterfaceInfoList& items = interfaces->getInterfaces();
      if (!interfaces->isNegated() && !items.empty() && readsAsNegation(items[0].dump())) return true;
      for (const InterfaceInfo& item : items) {
        if (item.dump().empty()) return true;
      }
    }
  }
  return false;
}

inline bool isLossy(const LYTKovaRequest& request, const std::string& text) {
  if (text.find_first_not_of(' ') == std::string::npos) return true;
  const NetworkKovaRequest* network = dynamic_cast<const NetworkKovaRequest*>(&request);
  if (network == nullptr) return false;
  if (filterIsLossy(network->getFilter(), true)) return true;
  for (const TavColumnArray* columns : {&network->getKeys(), &network->getValues()}) {
    for (const TavColumn& column : *columns) {
      const TavEntityArray& entities = column.getEntities();
      if (!entities.empty() && readsAsColumnOption(entities[0].dump())) return true;
      for (const TavEntity& entity : entities) {
        if (entity.dump().empty()) return true;
      }
    }
  }
  return false;
}

// For a request read from any text: its written text must read back and be
// written again unchanged, unless one of the cases above applies.
inline void checkRoundTrip(const LYTKovaRequest& request) {
  std::string first;
  if (!allowMessage([&] { first = request.dump(); })) return;  // e.g. a telNumber column
  if (isLossy(request, first)) return;
  std::string error;
  std::unique_ptr<LYTKovaRequest> again;
  allowMessage([&] { again.reset(LYTKovaRequest::getLYTKovaRequest(first, error)); });
  if (!again) failure("written text does not read back", first + "\n" + error);
  std::string second;
  if (!allowMessage([&] { second = again->dump(); })) failure("rewriting throws", first);
  if (second != first) failure("written text changes when read back", "[" + first + "]\n[" + second + "]");
}

}  // namespace fuzz

#endif
