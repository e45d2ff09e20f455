// `project current` and `doctor`: which project the desktop application has open, and the state
// of its write bridge. Both print to `out` only.
#pragma once

#include <ostream>

#include "cli/option_parsers.h"

namespace zorvik {

// The discovered project's path on one line, or with `asJSON` the DiscoveredProject record,
// pretty-printed with sorted keys. No project found: ZorvikCLIError::runtimeUnavailable.
void printCurrentProject(const ProjectCurrentOptions& options, std::ostream& out);

// The doctor report (no app filter); always succeeds, a missing project is reported, not an error.
void runDoctor(const FlagOnlyOptions& options, std::ostream& out);
void printDoctorReport(bool asJSON, std::ostream& out);

}  // namespace zorvik
