// Key and value columns: reading, precedence of options, writing, copies and
// module names; the column list.
#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "lytFilterParser/lytFilterParser.h"

namespace {

strList tokensOf(const std::string& text) {
  strList tokens;
  LYTKovaRequest::fillFilterList(tokens, text);
  return tokens;
}

std::string rest(const strList& tokens, strList::const_iterator cur) {
  std::string out;
  for (; cur != tokens.end(); ++cur) out += (out.empty() ? "" : " ") + *cur;
  return out;
}

template <class F>
std::string thrownMessage(F&& action) {
  try {
    action();
  } catch (const std::string& message) {
    return message;
  }
  ADD_FAILURE() << "no message was thrown";
  return "<nothing thrown>";
}

TavColumn parsed(KeyOrValue role, const std::string& text) {
  strList tokens = tokensOf(text);
  strIter cur = tokens.begin();
  std::string sort;
  return TavColumn(role, tokens, cur, sort);
}

TEST(TavColumnTest, ReadsAndWritesWithEveryBlank) {
  const struct {
    KeyOrValue role;
    const char* tokens;  // from the type on
    const char* dump;
    const char* left;  // what the reader did not take
    const char* sort;  // the sort token handed back
  } cases[] = {
      {TAV_KEY, "src", "-k src acc=replace ", "", ""},
      {TAV_VALUE, "wb", "-v wb acc=rate ", "", ""},
      {TAV_VALUE, "wb dir=in acc=rate", "-v wb acc=rate dir=in ", "", ""},
      {TAV_KEY, "svc acc=max -s top", "-k svc acc=max ", "-s top", ""},
      {TAV_KEY, "src 10.0.0.1 10.0.0.2 -v wb", "-k src acc=replace 10.0.0.1 10.0.0.2 ", "-v wb", ""},
      {TAV_KEY, "src [ a b ]", "-k src acc=replace [ a b ] ", "", ""},
      {TAV_KEY, "src a ] b ] -f", "-k src acc=replace a ] b ] ", "-f", ""},
      {TAV_KEY, "src a dir=in acc=sum", "-k src acc=replace a dir=in acc=sum ", "", ""},
      {TAV_KEY, "src [ a ] acc=sum dir=out", "-k src acc=sum dir=out [ a ] ", "", ""},
      {TAV_VALUE, "ab acc=lineUtil url_mod=path enc=no x<>X", "-v ab acc=lineUtil enc=no url_mod=path x<>X ", "", ""},
      {TAV_VALUE, "pkt sort=bottom", "-v pkt acc=rate ", "", "sort=bottom"},
      {TAV_VALUE, "pkt sort=top acc=new xsort=bottom", "-v pkt acc=new ", "", "xsort=bottom"},
      {TAV_VALUE, "pkt dir=sort", "-v pkt acc=rate ", "", "dir=sort"},
      {TAV_VALUE, "conn acc=rate acc=concurrent", "-v conn acc=concurrent ", "", ""},
      {TAV_KEY, "url -", "-k url acc=replace ", "-", ""},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.tokens);
    strList tokens = tokensOf(c.tokens);
    strIter cur = tokens.begin();
    std::string sort;
    TavColumn column(c.role, tokens, cur, sort);
    EXPECT_EQ(c.dump, column.dump());
    EXPECT_EQ(c.left, rest(tokens, cur));
    EXPECT_EQ(c.sort, sort);
  }
}

TEST(TavColumnTest, DefaultsDependOnTheRole) {
  EXPECT_EQ(TAV_ACC_REPLACE, parsed(TAV_KEY, "svc").getAccType());
  const TavColumn value = parsed(TAV_VALUE, "wb");
  EXPECT_EQ(TAV_ACC_RATE, value.getAccType());
  EXPECT_TRUE(value.getEntities().empty());
  EXPECT_EQ(0, value.getColumnFilter().getUrlMode());
  EXPECT_EQ(2, value.getColumnFilter().getDirection());
  // The closing bracket stays with the column as an entity of its own.
  EXPECT_EQ(4u, parsed(TAV_KEY, "src [ a b ]").getEntities().size());
}

TEST(TavColumnTest, ReadFaultsLeaveTheCursorOnTheOffendingToken) {
  const struct {
    KeyOrValue role;
    const char* tokens;
    const char* message;
    const char* left;
  } cases[] = {
      {TAV_KEY, "", "Expected type at this point but there is no data", ""},
      {TAV_KEY, "foo", "Invalid type: foo", "foo"},
      {TAV_VALUE, "wb acc=rates", "Invalid accumulation mode: acc=rates", "acc=rates"},
      {TAV_VALUE, "wb xacc=rate", "Invalid accumulation mode: xacc=rate", "xacc=rate"},
      {TAV_VALUE, "wb acc=Rate", "Invalid accumulation mode: acc=Rate", "acc=Rate"},
      {TAV_VALUE, "wb sort=acc", "Invalid accumulation mode: sort=acc", "sort=acc"},
      {TAV_KEY, "src account", "Invalid accumulation mode: account", "account"},
      {TAV_VALUE, "wb ACC=rate", "Expected filter type", "ACC=rate"},
      {TAV_VALUE, "wb enc=maybe x", "Unexpected type of encryption mode", "enc=maybe x"},
      {TAV_VALUE, "wb comp=x", "Unexpected type of compresstion mode", "comp=x"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.tokens);
    strList tokens = tokensOf(c.tokens);
    strIter cur = tokens.begin();
    std::string sort;
    EXPECT_EQ(c.message, thrownMessage([&] { TavColumn column(c.role, tokens, cur, sort); }));
    EXPECT_EQ(c.left, rest(tokens, cur));
  }
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
  strList tokens = tokensOf(column.dump());
  EXPECT_EQ(strList({"-v", "wb", "acc=concurrent"}), tokens);
  strIter cur = ++tokens.begin();
  std::string sort;
  EXPECT_EQ(TAV_ACC_CONCURRENT, TavColumn(TAV_VALUE, tokens, cur, sort).getAccType());
}

TEST(TavColumnTest, RoleWordAndSetters) {
  TavColumn column(TAV_KEY, TAV_DST, TAV_ACC_REPLACE, TavColumnFilter());
  EXPECT_EQ("-k ", column.dumpkeyOrValue());
  column.setKeyOrValue(static_cast<KeyOrValue>(2));
  EXPECT_EQ("", column.dumpkeyOrValue());
  EXPECT_EQ("dst acc=replace ", column.dump());
  column.setKeyOrValue(TAV_VALUE);
  column.setValueType(TAV_SESSION);
  column.setAccType(TAV_ACC_MIN);
  column.setColumnFilter(TavColumnFilter(1, 2, 0, 2, 3));
  column.addEntity(TavEntity("e1"));
  column.addEntity(TavEntity("e2", "E2"));
  EXPECT_EQ("-v session acc=min dir=in enc=yes url_mod=scheme e1 e2<>E2 ", column.dump());
  column.setValueType(TAV_TELNUMBER);
  EXPECT_EQ("Not a valid argument for type", thrownMessage([&] { column.dump(); }));
}

TEST(TavColumnTest, CopiesAreDeep) {
  auto source = std::make_unique<TavColumn>(parsed(TAV_VALUE, "wb acc=sum dir=out a b"));
  const std::string expected = "-v wb acc=sum dir=out a b ";
  std::unique_ptr<TavColumn> cloned(source->clone());
  TavColumn copied(*source);
  TavColumn assigned = parsed(TAV_KEY, "svc");
  assigned = *source;
  source->addEntity(TavEntity("c"));
  source->setAccType(TAV_ACC_MAX);
  source.reset();
  EXPECT_EQ(expected, cloned->dump());
  EXPECT_EQ(expected, copied.dump());
  EXPECT_EQ(expected, assigned.dump());
}

TEST(TavColumnTest, EveryColumnTakesPartInModuleNames) {
  for (const char* type : {"svc", "src", "wb", "interface"}) {
    SCOPED_TRACE(type);
    TavColumn column = parsed(TAV_KEY, std::string(type) + " n1 n2");
    strList names{"before"};
    column.getModuleNames(names);
    EXPECT_EQ(strList({"before", "n1", "n2"}), names);
    strList oldNames{"n1", "n2", "extra"}, newNames{"N1", "N2"};
    strIter oldCur = oldNames.begin(), newCur = newNames.begin();
    EXPECT_TRUE(column.setModuleNames(oldCur, newCur));
    EXPECT_EQ("extra", *oldCur);
    EXPECT_TRUE(newCur == newNames.end());
    EXPECT_EQ("-k " + std::string(type) + " acc=replace n1<>N1 n2<>N2 ", column.dump());
  }
  TavColumn column = parsed(TAV_KEY, "src a");
  strList oldNames{"b"}, newNames{"B"};
  strIter oldCur = oldNames.begin(), newCur = newNames.begin();
  EXPECT_EQ("b", thrownMessage([&] { column.setModuleNames(oldCur, newCur); }));
}

TEST(TavColumnArrayTest, ConcatenatesAndWalksColumnsInOrder) {
  TavColumnArray empty;
  EXPECT_EQ("", empty.dump());
  strList none;
  strIter noneOld = none.begin(), noneNew = none.begin();
  EXPECT_TRUE(empty.setModuleNames(noneOld, noneNew));

  TavColumnArray columns;
  columns.push_back(parsed(TAV_KEY, "src a b"));
  columns.push_back(parsed(TAV_KEY, "svc"));
  columns.push_back(parsed(TAV_KEY, "dst c"));
  EXPECT_EQ("-k src acc=replace a b -k svc acc=replace -k dst acc=replace c ", columns.dump());
  strList names;
  columns.getModuleNames(names);
  EXPECT_EQ(strList({"a", "b", "c"}), names);
  strList newNames{"A", "B", "C"};
  strIter oldCur = names.begin(), newCur = newNames.begin();
  EXPECT_TRUE(columns.setModuleNames(oldCur, newCur));
  EXPECT_EQ("-k src acc=replace a<>A b<>B -k svc acc=replace -k dst acc=replace c<>C ", columns.dump());
}

}  // namespace
