#include "lytFilterParser/entity/TavEntity.h"

#include "lytFilterParser/detail/Writer.h"

#include <utility>

namespace {
constexpr char kSeparator[] = "<>";
}

TavEntity::TavEntity(std::string name_, std::string resolvedName_)
    : name(std::move(name_)), resolvedName(std::move(resolvedName_)) {}

TavEntity::TavEntity(std::string text) { split(text); }

TavEntity::TavEntity(std::string_view token, FromToken) { split(token); }

void TavEntity::setFilterString(const std::string& text) { split(text); }

void TavEntity::split(std::string_view text) {
  const std::size_t at = text.find(std::string_view(kSeparator, 2));
  if (at == std::string_view::npos) {
    name.assign(text.data(), text.size());
    return;
  }
  name.assign(text.data(), at);
  resolvedName.assign(text.data() + at + 2, text.size() - at - 2);
}

void TavEntity::appendTo(lytFilterParser::detail::Writer& out) const {
  out << name;
  if (!resolvedName.empty()) {
    out << kSeparator;
    out << resolvedName;
  }
}

std::string TavEntity::dump() const {
  lytFilterParser::detail::Writer out;
  appendTo(out);
  return out.finish();
}

std::string TavEntity::dump(const std::string& resolvedName_, const std::string& name_) {
  return TavEntity(name_, resolvedName_).dump();
}

bool TavEntity::operator==(const TavEntity& other) const {
  return resolvedName == other.resolvedName && name == other.name;
}
