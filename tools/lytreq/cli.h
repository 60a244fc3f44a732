// The command line of lytreq: subcommands, their options, and exit statuses
// (0 all requests succeeded, 1 a request was rejected, 2 a usage error or a
// failure to read or write).
#ifndef LYTREQ_CLI_H
#define LYTREQ_CLI_H

#include <istream>
#include <ostream>
#include <string>
#include <vector>

namespace lytreq {

enum ExitStatus { EXIT_OK = 0, EXIT_REJECTED = 1, EXIT_USAGE = 2 };

// Runs lytreq with `args` (args[0] is the program name). `inputIsTerminal`:
// standard input is a terminal, where a subcommand waiting for requests
// says so.
int run(std::vector<std::string> args, std::istream& in, std::ostream& out, std::ostream& err,
        bool inputIsTerminal = false);

}  // namespace lytreq

#endif
