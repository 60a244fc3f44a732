// lytreq: the operator's command-line tool over lytFilterParser.
#include <unistd.h>

#include <iostream>
#include <string>
#include <vector>

#include "cli.h"

int main(int argc, char** argv) {
  std::vector<std::string> args(argv, argv + argc);
  return lytreq::run(args, std::cin, std::cout, std::cerr, isatty(STDIN_FILENO) != 0);
}
