#include "cli/discovery_commands.h"

#include <stdexcept>

namespace zorvik {

void printCurrentProject(const ProjectCurrentOptions&, std::ostream&) {
  throw std::runtime_error("project current is not available in this build yet.");
}

void runDoctor(const FlagOnlyOptions&, std::ostream&) {
  throw std::runtime_error("doctor is not available in this build yet.");
}

}  // namespace zorvik
