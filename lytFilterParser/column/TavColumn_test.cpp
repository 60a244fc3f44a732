// Key and value columns: reading, precedence of options, writing, copies and
// module names; the column list.
#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "lytFilterParser/detail/TestSupport.h"

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
      {TAV_KEY, "svc acc=max -s top", "-k svc acc=max ", "-s top", ""},
      {TAV_KEY, "src 10.0.0.1 10.0.0.2 -v wb", "-k src acc=replace 10.0.0.1 10.0.0.2 ", "-v wb", ""},
      {TAV_KEY, "src [ a b ]", "-k src acc=replace [ a b ] ", "", ""},
      {TAV_KEY, "src a ] b ] -f", "-k src acc=replace a ] b ] ", "-f", ""},
      {TAV_KEY, "src a dir=in acc=sum", "-k src acc=replace a dir=in acc=sum ", "", ""},
      {TAV_KEY, "src [ a ] acc=sum dir=out", "-k src acc=sum dir=out [ a ] ", "", ""},
      {TAV_VALUE, "ab acc=lineUtil url_mod=path enc=no x<>X", "-v ab acc=lineUtil enc=no url_mod=path x<>X ", "", ""},
      {TAV_VALUE, "pkt sort=top acc=new xsort=bottom", "-v pkt acc=new ", "", "xsort=bottom"},
      {TAV_VALUE, "pkt dir=sort", "-v pkt acc=rate ", "", "dir=sort"},
      {TAV_VALUE, "conn acc=rate acc=concurrent", "-v conn acc=concurrent ", "", ""},
      {TAV_KEY, "url -", "-k url acc=replace ", "-", ""},
      // Faults leave the cursor on the offending token.
      {TAV_KEY, "", "<fault> Expected type at this point but there is no data", "", ""},
      {TAV_KEY, "foo", "<fault> Invalid type: foo", "foo", ""},
      {TAV_VALUE, "wb acc=rates", "<fault> Invalid accumulation mode: acc=rates", "acc=rates", ""},
      {TAV_VALUE, "wb xacc=rate", "<fault> Invalid accumulation mode: xacc=rate", "xacc=rate", ""},
      {TAV_VALUE, "wb sort=acc", "<fault> Invalid accumulation mode: sort=acc", "sort=acc", ""},
      {TAV_VALUE, "wb ACC=rate", "<fault> Expected filter type", "ACC=rate", ""},
      {TAV_VALUE, "wb enc=maybe x", "<fault> Unexpected type of encryption mode", "enc=maybe x", ""},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.tokens);
    strList tokens = tokensOf(c.tokens);
    strIter cur = tokens.begin();
    std::string sort;
    try {
      EXPECT_EQ(c.dump, TavColumn(c.role, tokens, cur, sort).dump());
    } catch (const std::string& message) {
      EXPECT_EQ(c.dump, "<fault> " + message);
    }
    EXPECT_EQ(c.left, rest(tokens, cur));
    EXPECT_EQ(c.sort, sort);
  }
  // The closing bracket stays with the column as an entity of its own.
  EXPECT_EQ(4u, parsedColumn(TAV_KEY, "src [ a b ]").getEntities().size());
}

TEST(TavColumnTest, AccumulationModesReadExactlyAndWriteByCode) {
  const std::pair<const char*, TavAccType> read[] = {
      {"acc=replace", TAV_ACC_REPLACE}, {"acc=rate", TAV_ACC_RATE}, {"acc=new", TAV_ACC_NEW},
      {"acc=sum", TAV_ACC_SUM}, {"acc=concurrent", TAV_ACC_CONCURRENT}, {"acc=min", TAV_ACC_MIN},
      {"acc=max", TAV_ACC_MAX}, {"acc=lineUtil", TAV_ACC_LINEUTIL},
  };
  TavColumn column(TAV_VALUE, TAV_WB, TAV_ACC_RATE, TavColumnFilter());
  for (const auto& c : read) {
    SCOPED_TRACE(c.first);
    strList tokens{c.first, "next"};
    strIter cur = tokens.begin();
    column.parseAccumulationMode(tokens, cur);
    EXPECT_EQ(c.second, column.getAccType());
    EXPECT_EQ("next", *cur);
    EXPECT_EQ(std::string(c.first) + " ", column.dumpAccumulationMode());
  }
  strList empty;
  strIter end = empty.end();
  EXPECT_EQ("Expected type at this point but there is no data",
            thrownMessage([&] { column.parseAccumulationMode(empty, end); }));

  column.setAccType(static_cast<TavAccType>(9));
  EXPECT_EQ("-v wb ", column.dump());
  // The second concurrent kind is written as concurrent and reads back as it.
  column.setAccType(TAV_ACC_CONCURRENT2);
  EXPECT_EQ("-v wb acc=concurrent ", column.dump());
  EXPECT_EQ(TAV_ACC_CONCURRENT, parsedColumn(TAV_VALUE, "wb acc=concurrent").getAccType());
}

TEST(TavColumnTest, SettersCloneAndTelNumber) {
  TavColumn column(TAV_KEY, TAV_DST, TAV_ACC_REPLACE, TavColumnFilter());
  column.setKeyOrValue(static_cast<KeyOrValue>(2));
  EXPECT_EQ("dst acc=replace ", column.dump());
  column.setKeyOrValue(TAV_VALUE);
  column.setValueType(TAV_SESSION);
  column.setAccType(TAV_ACC_MIN);
  column.setColumnFilter(TavColumnFilter(1, 2, 0, 2, 3));
  column.addEntity(TavEntity("e1"));
  column.addEntity(TavEntity("e2", "E2"));
  EXPECT_EQ("-v session acc=min dir=in enc=yes url_mod=scheme e1 e2<>E2 ", column.dump());
  std::unique_ptr<TavColumn> cloned(column.clone());
  EXPECT_EQ("-v session acc=min dir=in enc=yes url_mod=scheme e1 e2<>E2 ", cloned->dump());
  // telNumber is read as a type but cannot be written.
  column.setValueType(TAV_TELNUMBER);
  EXPECT_EQ("Not a valid argument for type", thrownMessage([&] { column.dump(); }));
}

// Every column takes part, also types that content filters leave out.
TEST(TavColumnArrayTest, ConcatenatesAndWalksColumnsInOrder) {
  TavColumnArray columns;
  EXPECT_EQ("", columns.dump());
  columns.push_back(parsedColumn(TAV_KEY, "svc a b"));
  columns.push_back(parsedColumn(TAV_KEY, "src"));
  columns.push_back(parsedColumn(TAV_KEY, "interface c"));
  EXPECT_EQ("-k svc acc=replace a b -k src acc=replace -k interface acc=replace c ", columns.dump());
  strList names{"before"};
  columns.getModuleNames(names);
  EXPECT_EQ(strList({"before", "a", "b", "c"}), names);
  strList newNames{"A", "B", "C", "unused"};
  strIter oldCur = ++names.begin(), newCur = newNames.begin();
  EXPECT_TRUE(columns.setModuleNames(oldCur, newCur));
  EXPECT_TRUE(oldCur == names.end());
  EXPECT_EQ("unused", *newCur);
  EXPECT_EQ("-k svc acc=replace a<>A b<>B -k src acc=replace -k interface acc=replace c<>C ", columns.dump());
  // A mismatch throws the expected old name.
  TavColumn column = parsedColumn(TAV_KEY, "src a");
  strList oldNames{"b"};
  oldCur = oldNames.begin();
  EXPECT_EQ("b", thrownMessage([&] { column.setModuleNames(oldCur, newCur); }));
}

}  // namespace
