#!/usr/bin/env bash
# The library's dynamic symbol table holds its public interface and nothing
# of its internals.
set -euo pipefail
library=$1
symbols=$(nm -DC --defined-only "$library" | sed "s/\[abi:cxx11\]//g")

required=(
  "lytFilterParser::Assert("
  "lytFilterParser::dumpValueType("
  "lytFilterParser::getValueType("
  "lytFilterParser::getKovaType("
  "lytFilterParser::getKovaColumnName("
  "lytFilterParser::getKovaColumnType("
  "lytFilterParser::getNextOpenKovaCoulmn("
  "lytFilterParser::mapKovaColumn("
  "lytFilterParser::vocabulary("
  "lytFilterParser::wordKindName("
  "lytFilterParser::findWords("
  "lytFilterParser::severityName("
  "lytFilterParser::diagnosticCodes("
  "lytFilterParser::findDiagnosticCode("
  "lytFilterParser::lint("
  "lytFilterParser::fidelity("
  "lytFilterParser::convertWithDiagnostics("
  "lytFilterParser::readRefusal("
  "lytFilterParser::suggestWords("
  "lytFilterParser::validate("
  "lytFilterParser::networkColumnArray"
  "lytFilterParser::networkArraySize"
  "LYTKovaRequest::fillFilterList("
  "LYTKovaRequest::getLYTKovaRequest("
  "LYTKovaRequest::convert("
  "NetworkKovaRequest::NetworkKovaRequest("
  "NetworkKovaRequest::parse("
  "NetworkKovaRequest::parseSort("
  "NetworkKovaRequest::getSortType("
  "NetworkKovaRequest::dumpSort("
  "NetworkKovaRequest::addColumn("
  "NetworkKovaRequest::isValid("
  "NetworkKovaRequest::getMinimalValidVersion("
  "NetworkKovaRequest::getKovaColumns("
  "NetworkKovaRequest::mapKovaColumn("
  "NetworkKovaRequest::isDynamic("
  "NetworkKovaRequest::getModuleNames("
  "NetworkKovaRequest::setModuleNames("
  "E2EKovaRequest::E2EKovaRequest("
  "E2EKovaRequest::parseFilter("
  "E2EKovaRequest::parseDataType("
  "E2EKovaRequest::dumpDataType("
  "E2EKovaRequest::getKovaColumnType("
  "E2EKovaRequest::vlColumnArray"
  "E2EKovaRequest::vlArraySize"
  "TavEntity::TavEntity("
  "TavEntity::setFilterString("
  "TavEntity::dump("
  "TavEntity::operator=="
  "TavEntityArray::TavEntityArray("
  "TavEntityArray::parse("
  "TavEntityArray::dump("
  "TavEntityArray::operator=="
  "TavEntityArray::getModuleNames("
  "TavEntityArray::setModuleNames("
  "AtomFilter::isValid("
  "AtomFilter::parseNot("
  "AtomFilter::dumpNot("
  "AtomFilter::getAtomFilter("
  "ContentFilterBase::parse("
  "ContentFilterBase::parseFilterType("
  "ContentFilterBase::parseEntities("
  "ContentFilterBase::compare("
  "ContentFilterBase::dumpEntities("
  "ContentFilter::ContentFilter("
  "ContentFilter::dump("
  "ContentFilter::clone("
  "InterfaceInfo::InterfaceInfo("
  "InterfaceInfo::parseDirection("
  "InterfaceInfo::dumpDirection("
  "InterfaceInfo::operator<"
  "InterfaceInfoList::operator=="
  "InterfaceAtomFilter::InterfaceAtomFilter("
  "InterfaceAtomFilter::parseInterfaceInfoList("
  "InterfaceAtomFilter::dumpInterfaceInfoList("
  "Filter::Filter("
  "Filter::operator="
  "Filter::parse("
  "Filter::parseOperator("
  "Filter::isOperator("
  "Filter::dumpOperator("
  "Filter::deleteFilterList("
  "Filter::isValid("
  "Filter::clone("
  "lytFilterParser::walkFilterTree("
  "lytFilterParser::FilterVisitor::enter("
  "typeinfo for lytFilterParser::FilterVisitor"
  "TavColumnFilter::parse("
  "TavColumnFilter::dump("
  "TavColumn::TavColumn("
  "TavColumn::clone("
  "TavColumn::dump("
  "TavColumn::dumpkeyOrValue("
  "TavColumn::dumpAccumulationMode("
  "TavColumn::parseAccumulationMode("
  "TavColumnArray::dump("
  "TavColumnArray::setModuleNames("
  "lytFilterParser_version_info"
  "__lytFilterParser_version_info"
  "lytFilterParser_version_info_str"
  "typeinfo for LYTKovaRequest"
  "vtable for Filter"
)
forbidden=(
  "lytFilterParser::detail::"
  " main"
)

status=0
for name in "${required[@]}"; do
  if ! grep -qF -- "$name" <<<"$symbols"; then
    echo "not exported: $name"
    status=1
  fi
done
for name in "${forbidden[@]}"; do
  if grep -F -- "$name" <<<"$symbols"; then
    echo "internal symbol exported: $name"
    status=1
  fi
done
# Everything exported belongs to the library's own names or its record.
if grep -vE ' (lytFilterParser|LYTKovaRequest|NetworkKovaRequest|E2EKovaRequest|TavEntity|TavEntityArray|AbstractFilter|AtomFilter|ContentFilterBase|ContentFilter|InterfaceInfo|InterfaceInfoList|InterfaceAtomFilter|Filter|TavColumnFilter|TavColumn|TavColumnArray|__lytFilterParser|typeinfo|vtable|VTT|std::|operator|_init|_fini|__bss|_edata|_end|__odr_asan|__asan|__ubsan|__sanitizer|__tsan)' <<<"$symbols" | grep -v '^$'; then
  echo "unexpected exported symbols above"
  status=1
fi
[ "$status" -eq 0 ] && echo "exported symbols: $(wc -l <<<"$symbols") checked"
exit $status
