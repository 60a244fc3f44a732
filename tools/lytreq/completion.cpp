#include "completion.h"

#include <functional>

#include "input.h"
#include "words.h"

namespace lytreq {

namespace {

using lytFilterParser::vocabulary;
using lytFilterParser::WordPlace;

// A list of words for the script, each single-quoted.
struct Words {
  std::vector<std::string> quoted;

  void add(std::string_view word) {
    std::string text = "'";
    for (const char c : word) text += c == '\'' ? std::string("'\\''") : std::string(1, c);
    quoted.push_back(text + "'");
  }
  void add(const Words& other) { quoted.insert(quoted.end(), other.quoted.begin(), other.quoted.end()); }
  // The words as arguments of printf, one per line.
  std::string print() const {
    std::string text = "printf '%s\\n'";
    for (const std::string& word : quoted) text += ' ' + word;
    return text;
  }
  // The words as a case pattern.
  std::string pattern() const {
    std::string text;
    for (const std::string& word : quoted) text += (text.empty() ? "" : "|") + word;
    return text.empty() ? "''" : text;
  }
};

// `text` with every line moved right by `columns` blanks.
std::string indented(const std::string& text, std::size_t columns) {
  std::string result;
  std::size_t start = 0;
  while (start < text.size()) {
    const std::size_t end = text.find('\n', start);
    const std::size_t stop = end == std::string::npos ? text.size() : end + 1;
    result += std::string(columns, ' ') + text.substr(start, stop - start);
    start = stop;
  }
  return result;
}

// The words the readers take that `pick` chooses.
Words readable(const std::function<bool(const Word&)>& pick) {
  Words words;
  for (const Word& word : vocabulary()) {
    if (word.readable && pick(word)) words.add(word.text);
  }
  return words;
}

Words ofKind(WordKind kind) {
  return readable([kind](const Word& word) { return word.kind == kind; });
}

// The value types that may stand at `place`.
Words typesAt(unsigned place) {
  return readable([place](const Word& word) { return word.kind == WordKind::ValueType && (word.places & place) != 0; });
}

Words requestOptions() { return ofKind(WordKind::Option); }

// The words after the type of a column at `place`.
Words columnItems(unsigned place) {
  Words words = ofKind(WordKind::AccumulationMode);
  words.add(ofKind(WordKind::ColumnOption));
  if (place == lytFilterParser::PLACE_VALUE) words.add(ofKind(WordKind::SortInColumn));
  words.add(requestOptions());
  return words;
}

// The branch of the current syntax for one request option: what follows it.
std::string optionBranch(const Word& option) {
  const Words options = requestOptions();
  Words self;
  self.add(option.text);
  std::string text = "        " + self.pattern() + ")\n            if [ \"$count\" = 0 ]; then\n";
  if (option.places == lytFilterParser::PLACE_FILTER) {
    Words first = typesAt(option.places);
    first.add(ofKind(WordKind::FilterOperator));
    Words open;  // the opening bracket comes first
    open.quoted.push_back(ofKind(WordKind::Bracket).quoted.front());
    text += "                " + first.print() + "\n            elif [ \"$count\" = 1 ]; then\n";
    text += "                case $prev in\n";
    text += "                    " + ofKind(WordKind::FilterOperator).pattern() + ") " + open.print() + " ;;\n";
    text += "                    " + typesAt(option.places).pattern() + ") " + ofKind(WordKind::Negation).print() +
            " ;;\n                esac\n            fi\n            " + options.print() + " ;;\n";
    return text;
  }
  if (option.places == 0) {
    text += "                " + ofKind(WordKind::SortType).print() + "\n            else\n";
    Words after = ofKind(WordKind::SortOption);
    after.add(options);
    return text + "                " + after.print() + "\n            fi ;;\n";
  }
  text += "                " + typesAt(option.places).print() + "\n            else\n";
  return text + "                " + columnItems(option.places).print() + "\n            fi ;;\n";
}

// The vl words: the word that opens the request, the option before the
// data type, the data types.
struct VirtualLinkWords {
  Words opener;
  Words typeOption;
  Words dataTypes;
};

VirtualLinkWords virtualLinkWords() {
  VirtualLinkWords words;
  words.opener.add(virtualLinkWord());
  for (const Word& word : vocabulary()) {
    if (word.kind != WordKind::VirtualLink || word.text == virtualLinkWord()) continue;
    (word.code < 0 ? words.typeOption : words.dataTypes).add(word.text);
  }
  return words;
}

std::string currentSyntax() {
  const VirtualLinkWords link = virtualLinkWords();
  Words start = requestOptions();
  start.add(link.opener);
  std::string text = "    if [ \"$first\" = " + link.opener.quoted[0] + " ]; then\n";
  text += "        case $prev in\n            " + link.typeOption.pattern() + ") " + link.dataTypes.print() +
          " ;;\n            *) " + link.typeOption.print() + " ;;\n        esac\n        return\n    fi\n";
  text += "    case $option in\n        '') " + start.print() + " ;;\n";
  for (const Word& word : vocabulary()) {
    if (word.kind == WordKind::Option) text += optionBranch(word);
  }
  return text + "    esac\n";
}

std::string legacySyntax() {
  std::string text = "    case $prev in\n";
  for (const Word& word : vocabulary()) {
    if (word.kind != WordKind::LegacyOption || !word.readable || word.code < 0) continue;
    Words self;
    self.add(word.text);
    text += "        " + self.pattern() + ") " + ofKind(static_cast<WordKind>(word.code)).print() + " ;;\n";
  }
  return text + "        *) " + ofKind(WordKind::LegacyOption).print() + " ;;\n    esac\n";
}

Words optionsOf(const CommandShape* command, std::function<bool(const ToolOptionName&)> pick) {
  Words words;
  for (const ToolOptionName& option : toolOptions(command)) {
    if (pick(option)) words.add(option.name);
  }
  return words;
}

Words commandNames(
    const std::vector<CommandShape>& commands,
    const std::function<bool(const CommandShape&)>& pick = [](const CommandShape&) { return true; }) {
  Words words;
  for (const CommandShape& command : commands) {
    if (pick(command)) words.add(command.name);
  }
  return words;
}

// The part of the words function that walks the words before the cursor.
std::string walk(const std::vector<CommandShape>& commands) {
  const auto withValue = [](const ToolOptionName& option) { return option.value != OptionValue::None; };
  const auto all = [](const ToolOptionName&) { return true; };
  const Words options = optionsOf(nullptr, all);
  std::string text =
      "    local cur=$1 sub= first= option= count=0 prev= skip= w\n"
      "    shift\n"
      "    for w in \"$@\"; do\n"
      "        if [ -n \"$skip\" ]; then skip=; prev=$w; continue; fi\n"
      "        case $w in\n"
      "            " +
      optionsOf(nullptr, withValue).pattern() +
      ") skip=1; prev=$w; continue ;;\n"
      "            " +
      options.pattern() +
      "|'--') prev=$w; continue ;;\n"
      "        esac\n"
      "        if [ -z \"$sub\" ]; then sub=$w; prev=$w; continue; fi\n"
      "        [ -z \"$first\" ] && first=$w\n"
      "        case $w in\n"
      "            " +
      requestOptions().pattern() +
      ") option=$w; count=0 ;;\n"
      "            *) count=$((count + 1)) ;;\n"
      "        esac\n"
      "        prev=$w\n"
      "    done\n";
  text += "    case $prev in\n        " +
          optionsOf(nullptr, [](const ToolOptionName& o) { return o.value == OptionValue::File; }).pattern() +
          ") echo @files; return ;;\n        " +
          optionsOf(nullptr, [](const ToolOptionName& o) { return o.value == OptionValue::Number; }).pattern() +
          ") return ;;\n    esac\n";
  text += "    if [ -z \"$sub\" ]; then\n        case $cur in\n            -*) " + options.print() +
          " ;;\n            *) " + commandNames(commands).print() + " ;;\n        esac\n        return\n    fi\n";
  text += "    case $cur in\n        --*)\n            case $sub in\n";
  for (const CommandShape& command : commands) {
    text += "                '" + std::string(command.name) + "') " + optionsOf(&command, all).print() + " ;;\n";
  }
  return text + "            esac\n            return ;;\n    esac\n";
}

// The shell function both scripts share: it prints the words that may
// stand where the cursor is; "@files" asks for file names.
std::string wordsFunction(const std::vector<CommandShape>& commands) {
  std::string text =
      "# The words that may stand at the cursor, one per line (\"@files\": a file name).\n"
      "# $1 is the word being completed, the rest the words before it, after lytreq.\n"
      "_lytreq_words() {\n" +
      walk(commands);
  text += "    case $sub in\n";
  for (const CommandShape& command : commands) {
    Words self;
    self.add(command.name);
    if (command.argument != nullptr) {
      Words shells;
      for (const char* shell : {"bash", "zsh"}) shells.add(shell);
      text += "        " + self.pattern() + ") [ -z \"$first\" ] && " + shells.print() + " ;;\n";
    }
  }
  const auto legacy = [](const CommandShape& command) { return command.legacyRequests; };
  const auto current = [](const CommandShape& command) { return command.takesRequests && !command.legacyRequests; };
  text +=
      "        " + commandNames(commands, legacy).pattern() + ")\n" + indented(legacySyntax(), 8) + "            ;;\n";
  text += "        " + commandNames(commands, current).pattern() + ")\n" + indented(currentSyntax(), 8) +
          "            ;;\n";
  return text + "    esac\n}\n";
}

const char* const kBashEnd =
    "_lytreq() {\n"
    "    local cur prev words cword\n"
    "    if declare -F _init_completion >/dev/null; then\n"
    "        _init_completion -n =: || return\n"
    "    else\n"
    "        words=(\"${COMP_WORDS[@]}\") cword=$COMP_CWORD cur=${COMP_WORDS[COMP_CWORD]}\n"
    "    fi\n"
    "    local found\n"
    "    found=$(_lytreq_words \"$cur\" \"${words[@]:1:cword-1}\")\n"
    "    if [[ $found == @files ]]; then\n"
    "        if declare -F _filedir >/dev/null; then _filedir; else mapfile -t COMPREPLY < <(compgen -f -- \"$cur\"); "
    "fi\n"
    "        return\n"
    "    fi\n"
    "    mapfile -t COMPREPLY < <(compgen -W \"$found\" -- \"$cur\")\n"
    "    # \"index=\" and the like take their number right after the \"=\".\n"
    "    [[ ${#COMPREPLY[@]} -eq 1 && ${COMPREPLY[0]} == *= ]] && compopt -o nospace 2>/dev/null\n"
    "    # Readline replaces only what follows the last \"=\" of the word being completed.\n"
    "    if [[ $cur == *=* && $COMP_WORDBREAKS == *=* ]]; then\n"
    "        local prefix=${cur%=*}=\n"
    "        COMPREPLY=(\"${COMPREPLY[@]#\"$prefix\"}\")\n"
    "    fi\n"
    "}\n"
    "complete -F _lytreq lytreq\n";

const char* const kZshEnd =
    "_lytreq() {\n"
    "    local found\n"
    "    found=$(_lytreq_words \"$PREFIX\" \"${(@)words[2,CURRENT-1]}\")\n"
    "    if [[ $found == @files ]]; then _files; return; fi\n"
    "    local -a all open\n"
    "    all=(${(f)found})\n"
    "    open=(${(M)all:#*=})\n"
    "    all=(${all:#*=})\n"
    "    # \"index=\" and the like take their number right after the \"=\".\n"
    "    (( ${#open} )) && compadd -S '' -a open\n"
    "    (( ${#all} )) && compadd -a all\n"
    "}\n"
    "if [[ ${funcstack[1]} == _lytreq ]]; then\n"
    "    _lytreq \"$@\"\n"
    "else\n"
    "    compdef _lytreq lytreq\n"
    "fi\n";

}  // namespace

void writeCompletion(const std::string& shell, const std::vector<CommandShape>& commands, std::ostream& out) {
  const bool bash = shell == "bash";
  if (!bash && shell != "zsh") throw UsageError("completion: no script for the shell " + shell + " (bash, zsh)");
  if (!bash) out << "#compdef lytreq\n";
  out << "# " << shell << " completion for lytreq, written by `lytreq completion " << shell
      << "` from the words of\n# the request syntax that the lytFilterParser library reads.\n\n"
      << wordsFunction(commands) << '\n'
      << (bash ? kBashEnd : kZshEnd);
}

}  // namespace lytreq
