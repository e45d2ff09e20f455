// `project validate`, `project inspect` and `runtime inspect`.
#pragma once

#include <ostream>

#include "cli/option_parsers.h"

namespace zorvik {

// Exit status 5 (processFailed) when the project fails validation, after the report is printed.
void runProjectValidate(const ProjectValidateOptions& options, std::ostream& out);
// Exit status 6 when the answer reports an error.
void runProjectInspect(const InspectOptions& options, std::ostream& out);
// Exit status 7 when the answer reports an error.
void runRuntimeInspect(const InspectOptions& options, std::ostream& out);

}  // namespace zorvik
