#include "input.h"

#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fstream>
#include <sstream>

#include "words.h"

namespace lytreq {

namespace {

// The byte order mark some editors put at the start of a UTF-8 file.
const char kByteOrderMark[] = "\xEF\xBB\xBF";

void stripCarriageReturn(std::string& line) {
  if (!line.empty() && line.back() == '\r') line.pop_back();
}

// Reads the lines of `stream`, each without its line end, the first without
// a byte order mark; throws UsageError naming `name` when reading fails.
void forEachLine(std::istream& stream, const std::string& name,
                 const std::function<void(std::string& line, int number)>& handle) {
  // Nothing read yet: the stream was unusable from the start (main() marks
  // a closed standard input so).
  if (stream.bad()) throw UsageError("cannot read " + name + ": " + std::strerror(EBADF));
  std::string line;
  int number = 0;
  while (std::getline(stream, line)) {
    ++number;
    if (number == 1 && line.compare(0, sizeof kByteOrderMark - 1, kByteOrderMark) == 0) {
      line.erase(0, sizeof kByteOrderMark - 1);
    }
    stripCarriageReturn(line);
    handle(line, number);
  }
  if (stream.bad()) throw UsageError("cannot read " + name);
}

// `label` names the input in the messages about its lines.
void forEachRequestLine(std::istream& stream, const std::string& name, std::string_view label,
                        const std::function<void(const Request&)>& handle) {
  forEachLine(stream, name, [&](std::string& line, int number) {
    if (!isSkippedLine(line)) handle(Request{std::move(line), number, label});
  });
}

bool holdsBlank(const std::string& word) { return word.find(' ') != std::string::npos; }

// Opens `path` for reading; a directory or a file that cannot be opened is
// a usage error that says why.
std::ifstream openFile(const std::string& path) {
  struct stat status {};
  if (stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode)) {
    throw UsageError("cannot read " + path + ": " + std::strerror(EISDIR));
  }
  errno = 0;
  std::ifstream file(path);
  if (!file) throw UsageError("cannot read " + path + (errno != 0 ? ": " + std::string(std::strerror(errno)) : ""));
  return file;
}

// The first character of `resolved` that a request cannot carry in a word.
std::optional<char> uncarried(const std::string& resolved) {
  for (const char c : resolved) {
    if (isBracket(c)) return c;
  }
  return std::nullopt;
}

}  // namespace

bool isSkippedLine(const std::string& line) {
  const std::size_t first = line.find_first_not_of(" \t");
  return first == std::string::npos || line[first] == '#';
}

bool readsStandardInput(const Source& source) {
  if (source.file) return *source.file == "-";
  return source.words.empty() || (source.words.size() == 1 && source.words[0] == "-");
}

void forEachRequest(const Source& source, std::istream& in, const std::function<void(const Request&)>& handle) {
  const bool stdinWords = source.words.empty() || (source.words.size() == 1 && source.words[0] == "-");
  if (source.file) {
    if (!source.words.empty()) throw UsageError("give either a request or --file, not both");
    if (*source.file == "-") {
      forEachRequestLine(in, "standard input", kStandardInputName, handle);
      return;
    }
    std::ifstream file = openFile(*source.file);
    forEachRequestLine(file, *source.file, *source.file, handle);
    return;
  }
  if (stdinWords) {
    forEachRequestLine(in, "standard input", kStandardInputName, handle);
    return;
  }
  // Unquoted words are joined into one request; an argument with a blank in
  // it is a whole request, and it does not stand beside others.
  if (source.words.size() > 1 && std::any_of(source.words.begin(), source.words.end(), holdsBlank)) {
    throw UsageError(
        "several requests given: quote one request as one argument, or give them one per line with --file");
  }
  std::string text;
  for (const std::string& word : source.words) {
    if (!text.empty()) text += ' ';
    text += word;
  }
  handle(Request{text, 0, {}});
}

NameMap readNameMap(const std::string& path) {
  std::ifstream file = openFile(path);
  NameMap map;
  forEachLine(file, path, [&](const std::string& line, int number) {
    if (isSkippedLine(line)) return;
    const std::string where = path + ":" + std::to_string(number) + ": ";
    std::istringstream words(line);
    std::string name, resolved, extra;
    words >> name >> resolved;
    if (resolved.empty() || (words >> extra)) throw UsageError(where + "expected \"name resolved\"");
    if (const std::optional<char> c = uncarried(resolved)) {
      throw UsageError(where + "the resolved name " + resolved + " holds \"" + *c + "\", which a request cannot carry");
    }
    if (!map.emplace(name, resolved).second) throw UsageError(where + name + " is mapped twice");
  });
  return map;
}

}  // namespace lytreq
