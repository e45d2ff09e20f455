// ZorvikCLI: routes one command line to its command. Answers go to `out`; every failure is thrown
// (ZorvikCLIError for the mapped cases) and worded by the entry.
#pragma once

#include <ostream>

#include "cli/option_parsers.h"

namespace zorvik {

class ZorvikCLI {
 public:
  explicit ZorvikCLI(std::ostream& out) : out_(out) {}

  // `arguments` without the program name. Words at the first and second level match exactly and
  // case-sensitively.
  void run(const Arguments& arguments);

 private:
  void runProject(const Arguments& rest);
  void runRuntime(const Arguments& rest);
  void runAgent(const Arguments& rest);
  void runSchema(const Arguments& rest);
  // Runs `command` with the options that `parsed` holds, or prints the help it asks for.
  template <class Options, class Command>
  void dispatch(const ParseResult<Options>& parsed, Command command);

  std::ostream& out_;
};

}  // namespace zorvik
