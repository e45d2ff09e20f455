// The `zorvik` entry: runs one command line and maps what it throws to standard error and an exit
// code. Standard output carries answers only; standard error carries the mapped message only.
#include <cstdio>
#include <iostream>
#include <string>
#include <vector>

#ifdef ZORVIK_USE_MIMALLOC
#include <mimalloc.h>
#endif

#include "cli/help_documents.h"
#include "cli/version_info.h"
#include "cli/zorvik_cli.h"
#include "cli/zorvik_cli_error.h"

namespace {

int fail(const std::string& message, int status) {
  std::cout.flush();
  std::cerr << message << '\n';
  std::cerr.flush();
  return status;
}

// A command loads a whole board at once and then exits. Its heap takes 2 MiB pages where the
// system offers transparent huge pages, so a large board faults in a few hundred times rather
// than tens of thousands of times. Builds on the C library's allocator keep its defaults.
void useLargePagesForTheHeap() {
#ifdef ZORVIK_USE_MIMALLOC
  mi_option_enable(mi_option_large_os_pages);
#endif
}

}  // namespace

int main(int argc, char** argv) {
  useLargePagesForTheHeap();
  std::ios::sync_with_stdio(false);
  zorvik::setProgramPath(argc > 0 ? argv[0] : "");
  const std::vector<std::string> arguments(argv + std::min(argc, 1), argv + argc);
  try {
    zorvik::ZorvikCLI(std::cout).run(arguments);
  } catch (const zorvik::ZorvikCLIError& error) {
    switch (error.kind()) {
      case zorvik::ZorvikCLIError::Kind::invalidArguments:
        return fail("Error: " + error.message(), 2);
      case zorvik::ZorvikCLIError::Kind::processFailed:
        std::cout.flush();
        return error.status();
      case zorvik::ZorvikCLIError::Kind::invalidJSON:
        return fail("JSON error: " + error.message(), 4);
      case zorvik::ZorvikCLIError::Kind::runtimeUnavailable:
        return fail(zorvik::ZorvikCLIError::kRuntimeUnavailableMessage, 3);
    }
  } catch (const std::exception& error) {
    return fail(std::string("Unexpected error: ") + error.what(), 1);
  }
  std::cout.flush();
  return std::cout.good() ? 0 : 1;
}
