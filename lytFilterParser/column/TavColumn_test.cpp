// Key and value columns: reading, precedence of options, writing and copies.
#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "tests/support/TestSupport.h"

namespace {

using namespace lfptest;

TavColumn parsedColumn(KeyOrValue role, const std::string& text) {
  strList tokens = tokensOf(text);
  strIter cur = tokens.begin();
  std::string sort;
  return TavColumn(role, tokens, cur, sort);
}

TEST(TavColumnTest, ReadsAndWritesWithEveryBlank) {
  const struct {
    KeyOrValue role;
    const char* tokens;  // from the type on
    const char* dump;    // or "<fault> " and the message
    const char* left;    // what the reader did not take
    const char* sort;    // the sort token handed back
  } cases[] = {
      {TAV_KEY, "src 10.0.0.1 10.0.0.2 -v wb", "-k src acc=replace 10.0.0.1 10.0.0.2 ", "-v wb", ""},
      {TAV_KEY, "src a ] b ] -f", "-k src acc=replace a ] b ] ", "-f", ""},
      {TAV_KEY, "src a dir=in acc=sum", "-k src acc=replace a dir=in acc=sum ", "", ""},
      {TAV_KEY, "src [ a ] acc=max dir=out", "-k src acc=max dir=out [ a ] ", "", ""},
      {TAV_VALUE, "ab acc=lineUtil url_mod=path enc=no x<>X", "-v ab acc=lineUtil enc=no url_mod=path x<>X ", "", ""},
      {TAV_VALUE, "pkt sort=top acc=new xsort=bottom", "-v pkt acc=new ", "", "xsort=bottom"},
      {TAV_VALUE, "pkt dir=sort", "-v pkt acc=rate ", "", "dir=sort"},
      {TAV_VALUE, "conn acc=min acc=concurrent", "-v conn acc=concurrent ", "", ""},
      // Faults leave the cursor on the offending token.
      {TAV_KEY, "", "<fault> Expected type at this point but there is no data", "", ""},
      {TAV_KEY, "foo", "<fault> Invalid type: foo", "foo", ""},
      {TAV_VALUE, "wb acc=rates", "<fault> Invalid accumulation mode: acc=rates", "acc=rates", ""},
      {TAV_VALUE, "wb xacc=rate", "<fault> Invalid accumulation mode: xacc=rate", "xacc=rate", ""},
      {TAV_VALUE, "wb sort=acc", "<fault> Invalid accumulation mode: sort=acc", "sort=acc", ""},
      {TAV_VALUE, "wb ACC=rate", "<fault> Expected filter type", "ACC=rate", ""},
  };
  for (const auto& c : cases) {
    strList tokens = tokensOf(c.tokens);
    strIter cur = tokens.begin();
    std::string sort;
    try {
      EXPECT_EQ(c.dump, TavColumn(c.role, tokens, cur, sort).dump()) << c.tokens;
    } catch (const std::string& message) {
      EXPECT_EQ(c.dump, "<fault> " + message) << c.tokens;
    }
    EXPECT_EQ(c.left + std::string("|") + c.sort, rest(tokens, cur) + "|" + sort) << c.tokens;
  }
  // The closing bracket stays with the column as an entity of its own.
  EXPECT_EQ(4u, parsedColumn(TAV_KEY, "src [ a b ]").getEntities().size());
}

TEST(TavColumnTest, CloneAndCodesWithoutOwnKeyword) {
  TavColumn column(TAV_VALUE, TAV_SESSION, TAV_ACC_MIN, TavColumnFilter(1, 2, 0, 2, 3));
  column.addEntity(TavEntity("e1"));
  column.addEntity(TavEntity("e2", "E2"));
  std::unique_ptr<TavColumn> cloned(column.clone());
  EXPECT_EQ("-v session acc=min dir=in enc=yes url_mod=scheme e1 e2<>E2 ", cloned->dump());
  // A role that is neither writes no option word; the second concurrent kind
  // is written as concurrent, an unknown mode not at all.
  column = TavColumn(static_cast<KeyOrValue>(2), TAV_WB, TAV_ACC_CONCURRENT2, TavColumnFilter());
  EXPECT_EQ("wb acc=concurrent ", column.dump());
  column.setAccType(static_cast<TavAccType>(9));
  EXPECT_EQ("wb ", column.dump());
  // telNumber is read as a type but cannot be written.
  column.setValueType(TAV_TELNUMBER);
  EXPECT_EQ("Not a valid argument for type", thrownMessage([&] { column.dump(); }));
}

}  // namespace
