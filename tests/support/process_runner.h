// runProcess: runs a program to completion with no standard input and captures what it writes, so
// that end-to-end tests can check standard output, standard error and the exit status apart.
#pragma once

#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace zorvik::testing {

struct ProcessResult {
  int exitCode = -1;  // the exit status, or 128 + signal number
  std::string standardOutput;
  std::string standardError;
};

struct ProcessOptions {
  std::optional<std::filesystem::path> workingDirectory;
  // Variables to set (or, with nullopt, to remove) on top of the current environment.
  std::map<std::string, std::optional<std::string>> environment;
};

ProcessResult runProcess(const std::filesystem::path& program,
                         const std::vector<std::string>& arguments,
                         const ProcessOptions& options = {});

// The built `zorvik` executable.
std::filesystem::path zorvikExecutable();

// Runs the built `zorvik` with `arguments`.
ProcessResult runZorvik(const std::vector<std::string>& arguments,
                        const ProcessOptions& options = {});

}  // namespace zorvik::testing
