#include "arguments.h"

#include <algorithm>
#include <cctype>

#include "lytFilterParser/diagnostics/Characters.h"
#include "words.h"

namespace lytreq {

namespace {

const std::vector<ToolOption> kToolOptions = {
    {OptionId::Json, "--json", nullptr, OptionValue::None, Taker::Json, nullptr},
    {OptionId::LineNumber, "--line-number", "-n", OptionValue::None, Taker::Requests,
     "Put the input line number and a colon before each line of a result"},
    {OptionId::File, "--file", nullptr, OptionValue::File, Taker::Requests,
     "Read requests from FILE (\"-\": standard input), one per line"},
    {OptionId::Strict, "--strict", nullptr, OptionValue::None, Taker::Requests,
     "Exit with status 1 when the library warns about a request"},
    {OptionId::NoWarnings, "--no-warnings", nullptr, OptionValue::None, Taker::Requests,
     "Do not look for warnings and notes, nor report them"},
    {OptionId::Peer, "--peer", nullptr, OptionValue::Number, Taker::Peer, nullptr},
    {OptionId::Map, "--map", nullptr, OptionValue::File, Taker::Map, "Map file: lines \"name resolved\""},
    {OptionId::Help, "--help", "-h", OptionValue::None, Taker::Help, "Print this help message and exit"},
    {OptionId::Version, "--version", nullptr, OptionValue::None, Taker::Version,
     "Display program version information and exit"},
};

const ToolOption* findOption(const std::string& name) {
  for (const ToolOption& option : kToolOptions) {
    if (name == option.name || (option.shortName != nullptr && name == option.shortName)) return &option;
  }
  return nullptr;
}

// The option name of an argument, without its "=value".
std::string optionName(const std::string& arg) { return arg.substr(0, arg.find('=')); }

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

std::string withoutDashes(const std::string& word) {
  return word.substr(std::min(word.find_first_not_of('-'), word.size()));
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

// The option named in `arg`; an unknown one is an error that suggests the
// nearest option `command` takes (any option before the subcommand).
const ToolOption& knownOption(const std::string& arg, const CommandShape* command) {
  const std::string name = optionName(arg);
  if (const ToolOption* option = findOption(name)) return *option;
  ArgumentError error{"unknown option: " + name, command != nullptr ? command->name : "", {}};
  suggest(error, name, optionNames(command));
  throw error;
}

// An option that `command` does not take names the subcommands that do.
void checkTaken(const ToolOption& option, const CommandShape& command, const std::vector<CommandShape>& commands) {
  if (takes(command, option.taker)) return;
  std::vector<std::string> takers;
  for (const CommandShape& other : commands) {
    if (takes(other, option.taker)) takers.emplace_back(other.name);
  }
  throw ArgumentError{std::string(command.name) + " takes no " + option.name + " (" + joined(takers, ", ") +
                          (takers.size() == 1 ? " does)" : " do)"),
                      command.name,
                      {}};
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

// The help or version option among `taken`: the version first, as it wins
// over everything else of the call, then help.
const ToolOption* helpOrVersion(const std::vector<const ToolOption*>& taken) {
  for (Taker taker : {Taker::Version, Taker::Help}) {
    for (const ToolOption* option : taken) {
      if (option->taker == taker) return option;
    }
  }
  return nullptr;
}

// Moves the option at args[i], and its value when it stands apart, to
// `options`; `i` is left on its last argument.
void takeOption(const std::vector<std::string>& args, std::size_t& i, const ToolOption& option,
                std::vector<std::string>& options) {
  options.push_back(args[i]);
  if (option.value != OptionValue::None && args[i].find('=') == std::string::npos && i + 1 < args.size()) {
    options.push_back(args[++i]);
  }
}

}  // namespace

const std::vector<ToolOption>& toolOptionTable() { return kToolOptions; }

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
    const std::size_t distance = lytFilterParser::editDistance(key, lower(withoutDashes(candidate)), bestDistance);
    if (distance < bestDistance) {
      best = candidate;
      bestDistance = distance;
    }
  }
  return best;
}

std::vector<std::string> arrangeArguments(const std::vector<std::string>& args,
                                          const std::vector<CommandShape>& commands) {
  std::vector<std::string> options;
  std::vector<const ToolOption*> taken;
  std::size_t i = 1;
  for (; i < args.size() && isOptionLike(args[i]); ++i) {
    taken.push_back(&knownOption(args[i], nullptr));
    takeOption(args, i, *taken.back(), options);
  }
  if (i == args.size() && helpOrVersion(taken) != nullptr) return args;
  const CommandShape& command = findCommand(i < args.size() ? args[i] : std::string(), commands);
  std::vector<std::string> words;
  for (++i; i < args.size(); ++i) {
    if (args[i] == "--") {
      words.insert(words.end(), args.begin() + static_cast<std::ptrdiff_t>(i) + 1, args.end());
      break;
    }
    if (!isOptionLike(args[i])) {
      words.push_back(args[i]);
      continue;
    }
    taken.push_back(&knownOption(args[i], &command));
    takeOption(args, i, *taken.back(), options);
  }
  if (const ToolOption* asked = helpOrVersion(taken)) {
    if (asked->taker == Taker::Version) return {args[0], asked->name};
    return {args[0], command.name, asked->name};
  }
  for (const ToolOption* option : taken) checkTaken(*option, command, commands);
  if (std::count_if(taken.begin(), taken.end(), [](const ToolOption* o) { return o->id == OptionId::File; }) > 1) {
    throw ArgumentError{"--file is taken once: give one file (cat several into standard input)", command.name, {}};
  }
  std::vector<std::string> result = {args[0], command.name};
  result.insert(result.end(), options.begin(), options.end());
  addWords(result, words, command);
  return result;
}

}  // namespace lytreq
