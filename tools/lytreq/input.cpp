#include "input.h"

#include <fstream>
#include <sstream>

namespace lytreq {

namespace {

void stripCarriageReturn(std::string& line) {
  if (!line.empty() && line.back() == '\r') line.pop_back();
}

void forEachLine(std::istream& stream, const std::function<void(const Request&)>& handle) {
  std::string line;
  int number = 0;
  while (std::getline(stream, line)) {
    ++number;
    stripCarriageReturn(line);
    if (isSkippedLine(line)) continue;
    handle(Request{line, number});
  }
}

}  // namespace

bool isSkippedLine(const std::string& line) {
  const std::size_t first = line.find_first_not_of(" \t");
  return first == std::string::npos || line[first] == '#';
}

void forEachRequest(const Source& source, std::istream& in, const std::function<void(const Request&)>& handle) {
  const bool stdinWords = source.words.empty() || (source.words.size() == 1 && source.words[0] == "-");
  if (source.file) {
    if (!source.words.empty()) throw UsageError("give either a request or --file, not both");
    if (*source.file == "-") {
      forEachLine(in, handle);
      return;
    }
    std::ifstream file(*source.file);
    if (!file) throw UsageError("cannot read " + *source.file);
    forEachLine(file, handle);
    return;
  }
  if (stdinWords) {
    forEachLine(in, handle);
    return;
  }
  std::string text;
  for (const std::string& word : source.words) {
    if (!text.empty()) text += ' ';
    text += word;
  }
  handle(Request{text, 0});
}

NameMap readNameMap(const std::string& path) {
  std::ifstream file(path);
  if (!file) throw UsageError("cannot read " + path);
  NameMap map;
  std::string line;
  int number = 0;
  while (std::getline(file, line)) {
    ++number;
    stripCarriageReturn(line);
    if (isSkippedLine(line)) continue;
    std::istringstream words(line);
    std::string name, resolved, extra;
    words >> name >> resolved;
    if (resolved.empty() || (words >> extra)) {
      throw UsageError(path + ":" + std::to_string(number) + ": expected \"name resolved\"");
    }
    if (!map.emplace(name, resolved).second) {
      throw UsageError(path + ":" + std::to_string(number) + ": " + name + " is mapped twice");
    }
  }
  return map;
}

}  // namespace lytreq
