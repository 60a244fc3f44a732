// One named value that a filter or a column carries (a host, a network, a
// service ...), with the resolved name that module-name substitution adds.
// In request text the pair travels as one token, "name<>resolved".
#ifndef LYTFILTERPARSER_ENTITY_TAVENTITY_H
#define LYTFILTERPARSER_ENTITY_TAVENTITY_H

#include <string>

#include "lytFilterParser/Export.h"
#include "lytFilterParser/Internals.h"

class LFP_API TavEntity {
 public:
  // An empty name and no resolved name.
  TavEntity() = default;
  TavEntity(std::string name, std::string resolvedName);
  // Splits `text` at its first "<>".
  explicit TavEntity(std::string text);

  // Sets the name from the text before the first "<>" and the resolved name
  // from everything after it; without a separator only the name changes.
  void setFilterString(const std::string& text);

  std::string dump() const;
  // The text of a name pair; note the order of the arguments.
  static std::string dump(const std::string& resolvedName, const std::string& name);

  bool operator==(const TavEntity& other) const;

  const std::string& getName() const { return name; }
  const std::string& getResolvedName() const { return resolvedName; }
  void setResolvedName(const std::string& resolved) { resolvedName = resolved; }

 private:
  friend struct lytFilterParser::detail::Reader;

  std::string name;
  std::string resolvedName;
};

#endif
