// Every word of the public vocabulary goes through the public readers and
// writers: it is read where its row says, stands for its code, is written
// back where its row says, and is taken by exactly the peers it names.
#include "lytFilterParser/vocab/Vocabulary.h"

#include <gtest/gtest.h>

#include <memory>
#include <set>
#include <string>
#include <vector>

#include "tests/support/TestSupport.h"

namespace {

using lytFilterParser::Word;
using lytFilterParser::WordKind;

std::string text(const Word& word) { return std::string(word.text); }

// The request read from `text`; a test failure when it is refused.
std::unique_ptr<NetworkKovaRequest> accepted(const std::string& text) {
  std::string error;
  std::unique_ptr<LYTKovaRequest> request(LYTKovaRequest::getLYTKovaRequest(text, error));
  EXPECT_NE(request, nullptr) << text << ": " << error;
  return std::unique_ptr<NetworkKovaRequest>(dynamic_cast<NetworkKovaRequest*>(request.release()));
}

bool contains(const std::string& written, const std::string& word) {
  return (" " + written).find(" " + word + " ") != std::string::npos;
}

// The peers (bits 1..3) at which validation takes `request`; a thrown
// message counts as refusal.
unsigned validAt(const NetworkKovaRequest& request) {
  unsigned peers = 0;
  for (int peer = 1; peer <= 3; ++peer) {
    NetworkKovaRequest copy(request);
    std::string error;
    try {
      if (copy.isValid(TavVersion(peer), error)) peers |= 1u << peer;
    } catch (const std::string&) {
    }
  }
  return peers;
}

// A value type in a filter, as a key (with an entity, next to a byte or a
// session value) and as a value: where validation takes it and at which peers.
void checkValueType(const Word& word) {
  EXPECT_EQ(lytFilterParser::getValueType(text(word)), word.code);
  const std::string filter = "-f " + text(word) + " x -k src -v wb";
  const std::string keys[] = {"-k " + text(word) + " e -v wb", "-k " + text(word) + " e -v session"};
  const std::string value = "-k src -v " + text(word);
  unsigned places = 0, peers = 0;
  for (const std::string& request : {filter, keys[0], keys[1], value}) {
    const unsigned at = validAt(*accepted(request));
    if (at != 0)
      places |= request == filter  ? lytFilterParser::PLACE_FILTER
                : request == value ? lytFilterParser::PLACE_VALUE
                                   : lytFilterParser::PLACE_KEY;
    peers |= at;
    if (word.written) {
      EXPECT_TRUE(contains(accepted(request)->dump(), text(word))) << request;
    }
  }
  EXPECT_EQ(places, word.places);
  EXPECT_EQ(peers, word.peers);
  if (!word.written) {
    EXPECT_EQ(lfptest::thrownMessage([&] { accepted(value)->dump(); }), "Not a valid argument for type");
  }
}

// An option: a value type after it stands where the option's place says.
void checkOption(const Word& word) {
  std::string error;
  std::unique_ptr<LYTKovaRequest> read(LYTKovaRequest::getLYTKovaRequest(text(word) + " src", error));
  const auto* request = dynamic_cast<const NetworkKovaRequest*>(read.get());
  unsigned places = 0;
  if (request != nullptr && !request->getFilter().getChildren().empty()) places |= lytFilterParser::PLACE_FILTER;
  if (request != nullptr && !request->getKeys().empty()) places |= lytFilterParser::PLACE_KEY;
  if (request != nullptr && !request->getValues().empty()) places |= lytFilterParser::PLACE_VALUE;
  EXPECT_EQ(places, word.places);
}

// The requests a word of the current syntax is read in: the peers that
// take any of them are the word's peers, and the last one is written.
std::vector<std::string> probes(const Word& word) {
  const std::string w = text(word);
  switch (word.kind) {
    case WordKind::FilterOperator: return {"-f " + w + " [ -f src a -f dst b ] -k src -v wb"};
    case WordKind::Negation: return {"-f src " + w + " a -k src -v wb"};
    case WordKind::InterfaceDirection: return {"-f interface eth0" + w + " -k src -v wb"};
    case WordKind::AccumulationMode:
    case WordKind::ColumnOption: return {"-k src " + w + " -v wb", "-k src -v wb " + w};
    case WordKind::SortInColumn: return {"-k src -v wb -v pkt " + w, "-k src -v wb " + w};
    case WordKind::SortType: return {"-k src -v wb -s " + w};
    case WordKind::SortOption: return {"-k src -v wb -s top " + w + "1", "-k src -v wb -v pkt -s top " + w + "2"};
    default: return {};
  }
}

// What the word under test set in `request` (the last probe).
int codeOf(const Word& word, const NetworkKovaRequest& request) {
  const TavColumn& value = request.getValues()[request.getValues().size() - 1];
  const AbstractFilter* first =
      request.getFilter().getChildren().empty() ? nullptr : request.getFilter().getChildren()[0].get();
  switch (word.kind) {
    case WordKind::FilterOperator: return request.getFilter().getOperator();
    case WordKind::Negation: return static_cast<const AtomFilter&>(*first).isNegated();
    case WordKind::InterfaceDirection:
      return static_cast<const InterfaceAtomFilter&>(*first).getInterfaces()[0].getDirection();
    case WordKind::AccumulationMode: return value.getAccType();
    case WordKind::ColumnOption: {
      const TavColumnFilter& f = value.getColumnFilter();
      const int options[] = {f.getDirection(), f.getEncryptionMode(), f.getCompressionMode(), f.getCitrixPrintMode(),
                             f.getUrlMode()};
      const int defaults[] = {TAV_DIR_BOTH, TavColumnFilter::BOTH, TavColumnFilter::BOTH, TavColumnFilter::BOTH,
                              TavColumnFilter::URL_FULL};
      // The one option the word set, or the default when it restricts nothing.
      for (int o = 0; o < 5; ++o) {
        if (options[o] != defaults[o]) return options[o];
      }
      return word.code;
    }
    case WordKind::SortInColumn:
    case WordKind::SortType: return request.getSortType();
    default: return word.code;
  }
}

void checkCurrentWord(const Word& word) {
  unsigned peers = 0;
  std::unique_ptr<NetworkKovaRequest> read;
  for (const std::string& request : probes(word)) {
    read = accepted(request);
    ASSERT_NE(read, nullptr);
    peers |= validAt(*read);
  }
  if (!read) return;
  EXPECT_EQ(codeOf(word, *read), word.code);
  EXPECT_EQ(peers, word.peers);
  const std::string written = read->dump();
  EXPECT_EQ(written.find(text(word)) != std::string::npos, word.written) << written;
}

// A legacy word in a legacy line: converted when readable into a request
// that the older peers take, and written by the legacy writer.
void checkLegacyWord(const Word& word) {
  const std::string w = text(word);
  std::string line;
  switch (word.kind) {
    case WordKind::LegacyGroup: line = "-y b -g " + w; break;
    case WordKind::LegacyValue: line = "-y " + w + " -g topsrc"; break;
    case WordKind::LegacyAggregate: line = "-y b -g topsrc -a " + w; break;
    default: return;
  }
  std::string error;
  const std::string converted = LYTKovaRequest::convert(line, TavVersion(2), error);
  if (!word.readable) {
    // Refused, or read as if it were not there.
    std::string ignored;
    const std::string without = LYTKovaRequest::convert(line.substr(0, line.rfind(' ')), TavVersion(2), ignored);
    EXPECT_TRUE(!error.empty() || converted == without) << line;
    return;
  }
  EXPECT_EQ(error, "") << line;
  const std::unique_ptr<NetworkKovaRequest> read = accepted(converted);
  ASSERT_NE(read, nullptr);
  const TavColumnArray& columns = word.kind == WordKind::LegacyValue ? read->getValues() : read->getKeys();
  const std::size_t column = word.kind == WordKind::LegacyAggregate ? columns.size() - 1 : 0;
  EXPECT_EQ(columns[column].getValueType(), word.code) << converted;
  EXPECT_EQ(validAt(*read) & word.peers, word.peers) << converted;
  // A plain group word is written for a key with entities.
  if (word.kind == WordKind::LegacyGroup && read->getSortType() != TAV_SORT_TOP) {
    TavColumnArray keys;
    TavColumn key = read->getKeys()[0];
    key.addEntity(TavEntity(std::string("e")));
    keys.push_back(key);
    EXPECT_TRUE(
        contains(NetworkKovaRequest(read->getFilter(), keys, read->getValues(), TAV_SORT_NONE, 1).dump(TavVersion(2)),
                 "-g " + w));
  } else {
    EXPECT_TRUE(contains(read->dump(TavVersion(2)), w)) << read->dump(TavVersion(2));
  }
}

TEST(Vocabulary, EveryWordIsReadAndWrittenWhereItsRowSays) {
  std::set<WordKind> kinds;
  for (const Word& word : lytFilterParser::vocabulary()) {
    SCOPED_TRACE(std::string(lytFilterParser::wordKindName(word.kind)) + " " + text(word));
    kinds.insert(word.kind);
    if (word.kind == WordKind::ValueType) {
      checkValueType(word);
    } else if (word.kind == WordKind::Option) {
      checkOption(word);
    } else {
      checkCurrentWord(word);
      checkLegacyWord(word);
    }
  }
  EXPECT_EQ(kinds.size(), static_cast<std::size_t>(WordKind::LegacyAggregate) + 1);
}

TEST(Vocabulary, WordsAreFoundByTextAcrossKinds) {
  const std::vector<const Word*> src = lytFilterParser::findWords("src");
  ASSERT_EQ(src.size(), 2u);
  EXPECT_EQ(src[0]->kind, WordKind::ValueType);
  EXPECT_EQ(src[1]->kind, WordKind::LegacyGroup);
  EXPECT_TRUE(lytFilterParser::findWords("Src").empty());
  // The legacy writer's "-filter" and the "vl" words.
  EXPECT_EQ(accepted("-k src -v wb")->dump(TavVersion(1)).rfind(text(*lytFilterParser::findWords("-filter")[0]), 0),
            0u);
  std::string error;
  std::unique_ptr<LYTKovaRequest> link(LYTKovaRequest::getLYTKovaRequest("vl x -t app", error));
  ASSERT_NE(link, nullptr);
  for (const char* word : {"vl", "-t", "application"}) {
    ASSERT_EQ(lytFilterParser::findWords(word).size(), 1u) << word;
    EXPECT_NE(link->dump().find(word), std::string::npos) << word;
  }
}

}  // namespace
