// Text that JSON can carry: UTF-8 with every byte that is not part of a
// valid sequence replaced by U+FFFD, and the places of the original text
// moved to the same characters of the replaced one.
#ifndef LYTREQ_UTF8_H
#define LYTREQ_UTF8_H

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace lytreq {

class Utf8Text {
 public:
  // Copies `text`, replacing each byte that starts no valid UTF-8 sequence
  // (overlong forms and surrogates included) by U+FFFD.
  explicit Utf8Text(std::string_view text);

  const std::string& text() const { return text_; }
  // The byte place in text() of byte place `place` of the original text
  // (past its end: past the end of text()).
  std::size_t place(std::size_t place) const;

 private:
  std::string text_;
  std::vector<std::size_t> places_;  // empty when nothing was replaced
};

// True when `text` is valid UTF-8 throughout.
bool isUtf8(std::string_view text);

}  // namespace lytreq

#endif
