#include "utf8.h"

namespace lytreq {

namespace {

const char kReplacement[] = "\xEF\xBF\xBD";  // U+FFFD

// The length of the valid UTF-8 sequence at text[i], or 0.
std::size_t sequenceLength(std::string_view text, std::size_t i) {
  const auto byte = [&](std::size_t k) { return static_cast<unsigned char>(text[i + k]); };
  const unsigned char lead = byte(0);
  if (lead < 0x80) return 1;
  std::size_t length = 0;
  unsigned char low = 0x80, high = 0xBF;  // the range of the second byte
  if (lead >= 0xC2 && lead <= 0xDF) {
    length = 2;
  } else if (lead >= 0xE0 && lead <= 0xEF) {
    length = 3;
    if (lead == 0xE0) low = 0xA0;
    if (lead == 0xED) high = 0x9F;  // no surrogates
  } else if (lead >= 0xF0 && lead <= 0xF4) {
    length = 4;
    if (lead == 0xF0) low = 0x90;
    if (lead == 0xF4) high = 0x8F;
  } else {
    return 0;
  }
  if (i + length > text.size()) return 0;
  if (byte(1) < low || byte(1) > high) return 0;
  for (std::size_t k = 2; k < length; ++k) {
    if ((byte(k) & 0xC0u) != 0x80u) return 0;
  }
  return length;
}

}  // namespace

bool isUtf8(std::string_view text) {
  for (std::size_t i = 0; i < text.size();) {
    const std::size_t length = sequenceLength(text, i);
    if (length == 0) return false;
    i += length;
  }
  return true;
}

Utf8Text::Utf8Text(std::string_view text) {
  if (isUtf8(text)) {
    text_ = std::string(text);
    return;
  }
  places_.reserve(text.size() + 1);
  for (std::size_t i = 0; i < text.size();) {
    const std::size_t length = sequenceLength(text, i);
    if (length == 0) {
      places_.push_back(text_.size());
      text_ += kReplacement;
      ++i;
      continue;
    }
    for (std::size_t k = 0; k < length; ++k) places_.push_back(text_.size() + k);
    text_.append(text.substr(i, length));
    i += length;
  }
  places_.push_back(text_.size());
}

std::size_t Utf8Text::place(std::size_t place) const {
  if (places_.empty()) return place < text_.size() ? place : text_.size();
  return place < places_.size() ? places_[place] : text_.size();
}

}  // namespace lytreq
