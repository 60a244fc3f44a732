// The command line of lytreq: subcommands, their options, and exit statuses
// (0 all requests succeeded, 1 a request was rejected, 2 a usage error).
#ifndef LYTREQ_CLI_H
#define LYTREQ_CLI_H

#include <istream>
#include <ostream>
#include <string>
#include <vector>

namespace lytreq {

enum ExitStatus { EXIT_OK = 0, EXIT_REJECTED = 1, EXIT_USAGE = 2 };

// Runs lytreq with `args` (args[0] is the program name).
int run(std::vector<std::string> args, std::istream& in, std::ostream& out, std::ostream& err);

// A request such as "-f src 10.0.0.1 -k svc" starts with "-" but is no
// option of lytreq: after the subcommand, moves every argument that is not
// an option of lytreq (or its value) behind a "--", in order, so that the
// request is read as the REQUEST argument whether it is quoted as one word
// or given as several.
std::vector<std::string> separateRequestArguments(const std::vector<std::string>& args);

}  // namespace lytreq

#endif
