#include "arguments.h"

#include <algorithm>
#include <cctype>
#include <charconv>

#include "words.h"

namespace lytreq {

namespace {

// Which subcommands take an option: Help and Version are the tool's own,
// taken with any subcommand or none.
enum class Taker { Requests, Peer, Map, Json, Help, Version };

struct ToolOption {
  const char* name;
  const char* shortName;  // or nullptr
  OptionValue value;
  Taker taker;
};

const ToolOption kToolOptions[] = {
    {"--json", nullptr, OptionValue::None, Taker::Json},
    {"--line-number", "-n", OptionValue::None, Taker::Requests},
    {"--file", nullptr, OptionValue::File, Taker::Requests},
    {"--strict", nullptr, OptionValue::None, Taker::Requests},
    {"--no-warnings", nullptr, OptionValue::None, Taker::Requests},
    {"--peer", nullptr, OptionValue::Number, Taker::Peer},
    {"--map", nullptr, OptionValue::File, Taker::Map},
    {"--help", "-h", OptionValue::None, Taker::Help},
    {"--version", nullptr, OptionValue::None, Taker::Version},
};

bool takes(const CommandShape& command, Taker taker) {
  switch (taker) {
    case Taker::Requests: return command.takesRequests;
    case Taker::Peer: return command.takesPeer;
    case Taker::Map: return command.takesMap;
    case Taker::Json: return command.takesJson;
    case Taker::Help:
    case Taker::Version: return true;
  }
  return false;
}

const ToolOption* findOption(const std::string& name) {
  for (const ToolOption& option : kToolOptions) {
    if (name == option.name || (option.shortName != nullptr && name == option.shortName)) return &option;
  }
  return nullptr;
}

// An argument lytreq reads as one of its options: any "--word", and a short
// option of the tool that is no word of the request syntax.
bool isOptionLike(const std::string& arg) {
  if (arg.size() > 2 && arg.compare(0, 2, "--") == 0) return true;
  const ToolOption* option = findOption(arg);
  return option != nullptr && lytFilterParser::findWords(arg).empty();
}

std::string lower(std::string text) {
  for (char& c : text) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return text;
}

std::string withoutDashes(const std::string& word) { return word.substr(std::min(word.find_first_not_of('-'), word.size())); }

std::size_t editDistance(const std::string& a, const std::string& b) {
  std::vector<std::size_t> row(b.size() + 1);
  for (std::size_t j = 0; j <= b.size(); ++j) row[j] = j;
  for (std::size_t i = 1; i <= a.size(); ++i) {
    std::size_t diagonal = row[0];
    row[0] = i;
    for (std::size_t j = 1; j <= b.size(); ++j) {
      const std::size_t above = row[j];
      row[j] = std::min({row[j] + 1, row[j - 1] + 1, diagonal + (a[i - 1] == b[j - 1] ? 0 : 1)});
      diagonal = above;
    }
  }
  return row[b.size()];
}

std::string joined(const std::vector<std::string>& words, const char* separator) {
  std::string text;
  for (const std::string& word : words) text += (text.empty() ? "" : separator) + word;
  return text;
}

std::vector<std::string> commandNames(const std::vector<CommandShape>& commands) {
  std::vector<std::string> names;
  for (const CommandShape& command : commands) names.emplace_back(command.name);
  return names;
}

std::vector<std::string> optionNames(const CommandShape* command) {
  std::vector<std::string> names;
  for (const ToolOptionName& option : toolOptions(command)) names.push_back(option.name);
  return names;
}

void suggest(ArgumentError& error, const std::string& word, const std::vector<std::string>& candidates) {
  const std::string nearest = nearestWord(word, candidates);
  if (!nearest.empty()) error.hints.push_back("Did you mean: " + nearest);
}

[[noreturn]] void unknownOption(const std::string& name, const CommandShape* command) {
  ArgumentError error{"unknown option: " + name, command != nullptr ? command->name : "", {}};
  suggest(error, name, optionNames(command));
  throw error;
}

// The subcommands that take `option`, for the message that `command` does not.
[[noreturn]] void notTaken(const ToolOption& option, const CommandShape& command,
                           const std::vector<CommandShape>& commands) {
  std::vector<std::string> takers;
  for (const CommandShape& other : commands) {
    if (takes(other, option.taker)) takers.emplace_back(other.name);
  }
  throw ArgumentError{std::string(command.name) + " takes no " + option.name + " (" + joined(takers, ", ") +
                          (takers.size() == 1 ? " does)" : " do)"),
                      command.name,
                      {}};
}

bool isNumber(const std::string& text) {
  int number = 0;
  const char* end = text.data() + text.size();
  const auto result = std::from_chars(text.data(), end, number);
  return !text.empty() && result.ec == std::errc() && result.ptr == end;
}

// One option, checked against `command`, in its long form with its value as
// the next argument.
struct Taken {
  const ToolOption* option;
  std::vector<std::string> arguments;
};

// Reads the option at args[i] and its value; `i` is left on its last argument.
Taken readOption(const std::vector<std::string>& args, std::size_t& i) {
  const std::string& arg = args[i];
  const std::size_t equals = arg.find('=');
  const std::string name = arg.substr(0, equals);
  const ToolOption* option = findOption(name);
  if (option == nullptr) unknownOption(name, nullptr);
  Taken taken{option, {option->name}};
  if (option->value == OptionValue::None) {
    if (equals != std::string::npos) throw ArgumentError{name + " takes no value", "", {}};
    return taken;
  }
  if (equals != std::string::npos) {
    taken.arguments.push_back(arg.substr(equals + 1));
  } else if (i + 1 < args.size()) {
    taken.arguments.push_back(args[++i]);
  } else {
    throw ArgumentError{name + " needs a value", "", {}};
  }
  return taken;
}

void checkOption(const Taken& taken, const CommandShape& command, const std::vector<CommandShape>& commands) {
  if (!takes(command, taken.option->taker)) notTaken(*taken.option, command, commands);
  if (taken.option->taker == Taker::Peer && !isNumber(taken.arguments[1]) &&
      !(command.takesAllPeers && taken.arguments[1] == kAllPeers)) {
    throw ArgumentError{"--peer: " + taken.arguments[1] + " is not a number" +
                            (command.takesAllPeers ? std::string(" nor ") + kAllPeers : std::string()),
                        command.name,
                        {}};
  }
}

const CommandShape& findCommand(const std::string& word, const std::vector<CommandShape>& commands) {
  for (const CommandShape& command : commands) {
    if (word == command.name) return command;
  }
  ArgumentError error{word.empty() ? "a subcommand is required" : "unknown subcommand: " + word, "", {}};
  std::vector<std::string> candidates = commandNames(commands);
  for (const ToolOption& option : kToolOptions) {
    if (option.taker == Taker::Help || option.taker == Taker::Version) candidates.emplace_back(option.name);
  }
  if (!word.empty()) suggest(error, word, candidates);
  error.hints.push_back("Subcommands: " + joined(commandNames(commands), " "));
  throw error;
}

// The words after the options: the request words, or the one plain argument.
void addWords(std::vector<std::string>& result, const std::vector<std::string>& words, const CommandShape& command) {
  if (words.empty() && command.argument == nullptr) return;
  if (command.takesRequests) {
    result.emplace_back("--");
    result.insert(result.end(), words.begin(), words.end());
    return;
  }
  if (command.argument != nullptr && words.size() == 1) {
    result.push_back(words[0]);
    return;
  }
  if (command.argument != nullptr && words.empty()) {
    throw ArgumentError{std::string(command.name) + " needs its " + command.argument, command.name, {}};
  }
  throw ArgumentError{std::string(command.name) + " takes " +
                          (command.argument != nullptr ? "one " + std::string(command.argument) : "no request") +
                          ", not: " + joined(words, " "),
                      command.name,
                      {}};
}

bool asksHelpOrVersion(const std::vector<Taken>& options) {
  for (const Taken& taken : options) {
    if (taken.option->taker == Taker::Help || taken.option->taker == Taker::Version) return true;
  }
  return false;
}

}  // namespace

std::vector<ToolOptionName> toolOptions(const CommandShape* command) {
  std::vector<ToolOptionName> names;
  for (const ToolOption& option : kToolOptions) {
    if (command != nullptr && !takes(*command, option.taker)) continue;
    names.push_back(ToolOptionName{option.name, option.value});
    if (option.shortName != nullptr) names.push_back(ToolOptionName{option.shortName, option.value});
  }
  return names;
}

std::string nearestWord(const std::string& word, const std::vector<std::string>& candidates) {
  const std::string key = lower(withoutDashes(word));
  std::string best;
  std::size_t bestDistance = std::max<std::size_t>(1, key.size() / 3) + 1;
  for (const std::string& candidate : candidates) {
    const std::size_t distance = editDistance(key, lower(withoutDashes(candidate)));
    if (distance < bestDistance) {
      best = candidate;
      bestDistance = distance;
    }
  }
  return best;
}

std::vector<std::string> arrangeArguments(const std::vector<std::string>& args,
                                          const std::vector<CommandShape>& commands) {
  std::vector<Taken> options;
  std::size_t i = 1;
  for (; i < args.size() && isOptionLike(args[i]); ++i) options.push_back(readOption(args, i));
  if (i == args.size() && asksHelpOrVersion(options)) return args;
  const CommandShape& command = findCommand(i < args.size() ? args[i] : std::string(), commands);
  std::vector<std::string> words;
  for (++i; i < args.size(); ++i) {
    if (args[i] == "--") {
      words.insert(words.end(), args.begin() + static_cast<std::ptrdiff_t>(i) + 1, args.end());
      break;
    }
    if (isOptionLike(args[i])) {
      const std::string name = args[i].substr(0, args[i].find('='));
      if (findOption(name) == nullptr) unknownOption(name, &command);
      options.push_back(readOption(args, i));
    } else {
      words.push_back(args[i]);
    }
  }
  std::vector<std::string> result = {args[0], command.name};
  for (const Taken& taken : options) {
    // Help and the version win over everything else of the call.
    if (taken.option->taker == Taker::Version) return {args[0], taken.option->name};
    if (taken.option->taker == Taker::Help) return {args[0], command.name, taken.option->name};
  }
  std::size_t files = 0;
  for (const Taken& taken : options) {
    checkOption(taken, command, commands);
    if (taken.option->value == OptionValue::File && taken.option->taker == Taker::Requests && ++files > 1) {
      throw ArgumentError{std::string(taken.option->name) + " is taken once: give one file (cat several into " +
                              "standard input)",
                          command.name,
                          {}};
    }
    result.insert(result.end(), taken.arguments.begin(), taken.arguments.end());
  }
  addWords(result, words, command);
  return result;
}

}  // namespace lytreq
