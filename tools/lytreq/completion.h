// `lytreq completion bash|zsh`: the shell completion script, made from the
// subcommands and options of lytreq and the words of the library's
// vocabulary, so that it completes exactly what the readers take.
#ifndef LYTREQ_COMPLETION_H
#define LYTREQ_COMPLETION_H

#include <ostream>
#include <string>
#include <vector>

#include "arguments.h"

namespace lytreq {

// Writes the script for `shell` ("bash" or "zsh"); throws UsageError for
// another shell. `commands` are the subcommands in the order they are offered.
void writeCompletion(const std::string& shell, const std::vector<CommandShape>& commands, std::ostream& out);

}  // namespace lytreq

#endif
