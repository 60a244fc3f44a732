// Helpers shared by the unit tests (lytFilterParser/**/*_test.cpp), which
// include the whole public interface. Not installed.
#ifndef LFP_TESTS_SUPPORT_TESTSUPPORT_H
#define LFP_TESTS_SUPPORT_TESTSUPPORT_H

#include <gtest/gtest.h>

#include <pthread.h>

#include <cstdlib>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "lytFilterParser/lytFilterParser.h"

namespace lfptest {

inline strList tokensOf(const std::string& text) {
  strList tokens;
  LYTKovaRequest::fillFilterList(tokens, text);
  return tokens;
}

// The tokens from `cur` on, joined by one blank.
inline std::string rest(const strList& tokens, strList::const_iterator cur) {
  std::string out;
  for (; cur != tokens.end(); ++cur) out += (out.empty() ? "" : " ") + *cur;
  return out;
}

// The message `action` throws as a std::string; a test failure if it throws none.
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

// Reads `text` with T's (tokens, cursor) constructor: what the object writes,
// "|" and the tokens the reader left; or "<fault> " and the message.
template <class T>
std::string readWrite(const std::string& text) {
  strList tokens = tokensOf(text);
  strIter cur = tokens.begin();
  try {
    const T object(tokens, cur);
    return object.dump() + "|" + rest(tokens, cur);
  } catch (const std::string& message) {
    return "<fault> " + message;
  }
}

template <class T>
T parsed(const std::string& text) {
  strList tokens = tokensOf(text);
  strIter cur = tokens.begin();
  return T(tokens, cur);
}

inline std::unique_ptr<NetworkKovaRequest> readRequest(const std::string& text) {
  strList tokens = tokensOf(text);
  return std::make_unique<NetworkKovaRequest>(tokens);
}

// How deep the any-depth tests nest: LFP_TEST_DEPTH, or 1,000,000.
inline int testDepth() {
  const char* depth = std::getenv("LFP_TEST_DEPTH");
  return depth != nullptr ? std::atoi(depth) : 1000000;
}

// Runs `body` on a thread with a 256 KiB stack, where a walk that recursed
// per level would overflow long before the deepest level.
inline void onSmallStack(const std::function<void()>& body) {
  pthread_attr_t attributes;
  ASSERT_EQ(0, pthread_attr_init(&attributes));
  ASSERT_EQ(0, pthread_attr_setstacksize(&attributes, 256 * 1024));
  pthread_t thread;
  const auto run = [](void* argument) -> void* {
    (*static_cast<const std::function<void()>*>(argument))();
    return nullptr;
  };
  ASSERT_EQ(0, pthread_create(&thread, &attributes, run, const_cast<std::function<void()>*>(&body)));
  pthread_join(thread, nullptr);
  pthread_attr_destroy(&attributes);
}

// "code:WORD" for a diagnostic about the bytes WORD of `text`, "code:WORD#2"
// when they are its second occurrence, "code:$" for the end of the text.
// A chain of `levels` compound filters built with addChild, the innermost
// holding one source atom: deep trees that no text had to be read for.
inline std::unique_ptr<Filter> deepFilterTree(int levels) {
  auto root = std::make_unique<Filter>();
  Filter* bottom = root.get();
  for (int level = 1; level < levels; ++level) {
    auto inner = std::make_unique<Filter>();
    Filter* const next = inner.get();
    bottom->addChild(std::move(inner));
    bottom = next;
  }
  strList address{"10.0.0.1"};
  bottom->addChild(std::make_unique<ContentFilter>(TAV_SRC, false, TavEntityArray(address)));
  return root;
}

inline std::string spelled(const std::string& text, std::size_t start, std::size_t length, const std::string& code) {
  if (length == 0) return code + ":" + (start == text.size() ? "$" : "@" + std::to_string(start));
  const std::string word = text.substr(start, length);
  int occurrence = 1;
  for (std::size_t at = text.find(word); at != std::string::npos && at < start; at = text.find(word, at + 1))
    ++occurrence;
  return code + ":" + word + (occurrence > 1 ? "#" + std::to_string(occurrence) : "");
}

inline std::vector<std::string> spelled(const std::string& text,
                                        const std::vector<lytFilterParser::Diagnostic>& found) {
  std::vector<std::string> out;
  for (const lytFilterParser::Diagnostic& d : found) out.push_back(spelled(text, d.start, d.length, d.code));
  return out;
}

}  // namespace lfptest

#endif
