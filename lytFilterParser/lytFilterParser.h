// lytFilterParser: monitoring-view requests of a network traffic monitor.
//
// How text becomes objects and back
// ---------------------------------
// An operator describes a view as one line, for example
//
//     -f src 10.0.0.1 -k svc -v wb acc=rate -s top
//
// LYTKovaRequest::fillFilterList cuts the line into a token list: only the
// blank separates, and "[" and "]" are always tokens of their own. Every
// reader of the library then takes the list and a cursor into it by
// reference, consumes what it understands, and leaves the cursor on the first
// token it did not take, for its caller. The network request reads options
// ("-f", "-k", "-v", "-s") and hands the tokens behind each one to the reader
// of the filter tree (Filter, ContentFilter, InterfaceAtomFilter), of a
// column (TavColumn with its TavColumnFilter) or of the sort. A fault is the
// message text itself, thrown as a std::string; the entry points turn it into
// the caller's error string.
//
// The entry points (getLYTKovaRequest, convert) run the same readers over the
// text itself, without building the list: a token is a view of the text
// until an object keeps it, so reading costs what the objects hold and no
// more. The constructors and parse functions that take a strList read the
// caller's list as before.
//
// Writing runs the other way: every object writes its own text, each item
// followed by one blank, and a request concatenates filter, key columns,
// value columns and sort. The doubled and trailing blanks this produces are
// part of the text that peers and callers compare byte for byte; reading the
// text again ignores them.
//
// The rules of the current syntax are one file, request/Reader.cpp, in
// grammar order; the tokens are cut by detail/TokenSequence.h, the legacy
// option syntax is translated by request/LegacyTranslator.cpp, and the
// writing is request/Printer.cpp. When the diagnostics ask, the same reader
// records every item it builds with its place in the text (request/Record.h),
// so that no second reading of the text can disagree. Which words fill the grammar's
// places is data: tables under vocab/, which lytFilterParser::vocabulary()
// hands out with each word's kind, meaning and the peers that take it.
// Inside the library a reader reports a fault by its result, so a refused
// text costs what an accepted one does; the public parsing constructors
// throw the message, and the entry points hand it back.
//
// Older peers read an option syntax of their own ("-g topsrc -y b"): the
// legacy reader translates it token by token into the current syntax and
// parses that, and dump(TavVersion) writes it. Before a request is sent, it
// is checked against what a peer of a given version can serve (isValid), and
// its columns are mapped to the query interface's column catalogue.
//
// Quick use:
//
//     std::string error;
//     std::unique_ptr<LYTKovaRequest> request(
//         LYTKovaRequest::getLYTKovaRequest("-f src 10.0.0.1 -k svc -v wb", error));
//     if (request) std::cout << request->dump() << '\n';
//     else std::cerr << error << '\n';
#ifndef LYTFILTERPARSER_LYTFILTERPARSER_H
#define LYTFILTERPARSER_LYTFILTERPARSER_H

#include "lytFilterParser/Export.h"
#include "lytFilterParser/Internals.h"
#include "lytFilterParser/base/Assert.h"
#include "lytFilterParser/base/Span.h"
#include "lytFilterParser/base/TavVersion.h"
#include "lytFilterParser/base/TokenList.h"
#include "lytFilterParser/column/TavColumn.h"
#include "lytFilterParser/column/TavColumnArray.h"
#include "lytFilterParser/column/TavColumnFilter.h"
#include "lytFilterParser/diagnostics/Characters.h"
#include "lytFilterParser/diagnostics/Conversion.h"
#include "lytFilterParser/diagnostics/Diagnostic.h"
#include "lytFilterParser/diagnostics/Fidelity.h"
#include "lytFilterParser/diagnostics/Lint.h"
#include "lytFilterParser/diagnostics/RecordedRequest.h"
#include "lytFilterParser/diagnostics/Refusal.h"
#include "lytFilterParser/diagnostics/Validation.h"
#include "lytFilterParser/entity/TavEntity.h"
#include "lytFilterParser/entity/TavEntityArray.h"
#include "lytFilterParser/filter/AbstractFilter.h"
#include "lytFilterParser/filter/AtomFilter.h"
#include "lytFilterParser/filter/ContentFilter.h"
#include "lytFilterParser/filter/ContentFilterBase.h"
#include "lytFilterParser/filter/Filter.h"
#include "lytFilterParser/filter/FilterVisitor.h"
#include "lytFilterParser/filter/InterfaceAtomFilter.h"
#include "lytFilterParser/filter/InterfaceInfo.h"
#include "lytFilterParser/filter/InterfaceInfoList.h"
#include "lytFilterParser/request/Assert.h"
#include "lytFilterParser/request/E2EKovaRequest.h"
#include "lytFilterParser/request/LYTKovaRequest.h"
#include "lytFilterParser/request/NetworkKovaRequest.h"
#include "lytFilterParser/request/TokenList.h"
#include "lytFilterParser/version/VersionInfo.h"
#include "lytFilterParser/vocab/Codes.h"
#include "lytFilterParser/vocab/ColumnCatalogue.h"
#include "lytFilterParser/vocab/ValueType.h"
#include "lytFilterParser/vocab/Vocabulary.h"

#endif
