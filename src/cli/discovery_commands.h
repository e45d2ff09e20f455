// `project current` and `doctor`: which project the desktop application has open, and the state
// of its write bridge.
#pragma once

#include <ostream>

#include "cli/option_parsers.h"

namespace zorvik {

// No project found: ZorvikCLIError::runtimeUnavailable.
void printCurrentProject(const ProjectCurrentOptions& options, std::ostream& out);
// Always succeeds; a missing project is reported, not an error.
void runDoctor(const FlagOnlyOptions& options, std::ostream& out);

}  // namespace zorvik
