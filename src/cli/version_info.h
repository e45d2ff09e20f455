// What the program knows about itself: its version string and where its executable and its
// command-line documentation lie.
//
// The version comes from two values fixed at build time: the short version (the project version)
// and the build (the commit's short hash, or empty outside a checkout). The path hints are derived
// from the program's own path; a process-wide program path is set once from main (argv[0]) and
// read by the help documents. All functions are thread-safe.
#pragma once

#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace zorvik {

// The version string for a short version and a build, each trimmed of white space first:
//   both set        "zorvik <short> (<build>)"
//   only short      "zorvik <short>"
//   only build      "zorvik build <build>"
//   neither         "zorvik dev"
std::string versionString(std::string_view shortVersion, std::string_view build);

// versionString of the values this binary was built with.
std::string currentVersionString();

// `zorvik version`: prints currentVersionString() and a newline to `out`. Any argument at all
// throws ZorvikCLIError::invalidArguments("version does not accept positional arguments.").
void runVersion(const std::vector<std::string>& arguments, std::ostream& out);

// The program's own path as given to setProgramPath (argv[0] as typed); empty until set.
void setProgramPath(std::string programPath);
std::string programPath();

// Hints for where the command-line executable and its documentation lie, derived from
// `programPath`. The path is made absolute and lexically normal (symlinks are not resolved); an
// empty path, or a bare name without "/" (found through PATH, so its folder is unknown), stands
// for the running executable (/proc/self/exe).
//   - A path holding ".app/Contents/MacOS/" points into that bundle:
//     "<bundle>.app/Contents/MacOS/zorvik" and "<bundle>.app/Contents/Resources/CLI.md".
//   - Otherwise the executable's absolute path, and "<prefix>/share/zorvik/CLI.md" where the
//     prefix is the parent of the executable's folder (the install layout's bin/ and share/).
//   - When no path can be determined at all, the bundle defaults under /Applications/Zorvik.app.
std::string bundledCLIExecutablePathHint(std::string_view programPath);
std::string bundledCLIDocsPathHint(std::string_view programPath);

}  // namespace zorvik
