#include "cli/project_commands.h"

#include <filesystem>
#include <stdexcept>

#include "cli/project_discovery.h"
#include "cli/zorvik_cli_error.h"
#include "foundation/standardized_path.h"

namespace zorvik {
namespace {

// Commands whose machinery is not part of this build yet end here, as an unexpected error (exit 1),
// never as a pretended success.
[[noreturn]] void throwNotAvailable(const std::string& command) {
  throw std::runtime_error(command + " is not available in this build yet.");
}

}  // namespace

void runProjectValidate(const ProjectValidateOptions& options, std::ostream&) {
  std::error_code error;
  if (!std::filesystem::is_directory(standardizedPath(options.projectPath), error)) {
    throw ZorvikCLIError::invalidArguments(
        "project validate expects an existing project directory path.");
  }
  throwNotAvailable("project validate");
}

void runProjectInspect(const InspectOptions&, std::ostream&) {
  throwNotAvailable("project inspect");
}

void runRuntimeInspect(const InspectOptions&, std::ostream&) {
  throwNotAvailable("runtime inspect");
}

}  // namespace zorvik
