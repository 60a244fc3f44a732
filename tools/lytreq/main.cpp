// lytreq: the operator's command-line tool over lytFilterParser.
#include <fcntl.h>
#include <unistd.h>

#include <iostream>
#include <string>
#include <vector>

#include "cli.h"

int main(int argc, char** argv) {
  // The streams need not stay in step with C stdio, which nothing here
  // uses: unsynchronised, a batch of a million lines reads and writes
  // through buffers instead of a call per character.
  std::ios::sync_with_stdio(false);
  std::vector<std::string> args(argv, argv + argc);
  // A closed standard input reads as empty through iostreams: mark it, so
  // that a subcommand reading it says so instead of succeeding on nothing.
  if (fcntl(STDIN_FILENO, F_GETFD) == -1) std::cin.setstate(std::ios::badbit);
  return lytreq::run(args, std::cin, std::cout, std::cerr, isatty(STDIN_FILENO) != 0);
}
