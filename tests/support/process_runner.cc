#include "support/process_runner.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstring>
#include <stdexcept>

extern char** environ;

namespace zorvik::testing {
namespace {

std::vector<std::string> buildEnvironment(const ProcessOptions& options) {
  std::map<std::string, std::string> variables;
  for (char** entry = environ; *entry; ++entry) {
    std::string text(*entry);
    auto equals = text.find('=');
    if (equals != std::string::npos) variables[text.substr(0, equals)] = text.substr(equals + 1);
  }
  for (const auto& [name, value] : options.environment) {
    if (value) {
      variables[name] = *value;
    } else {
      variables.erase(name);
    }
  }
  std::vector<std::string> result;
  for (const auto& [name, value] : variables) result.push_back(name + "=" + value);
  return result;
}

}  // namespace

ProcessResult runProcess(const std::filesystem::path& program,
                         const std::vector<std::string>& arguments, const ProcessOptions& options) {
  int out[2], err[2];
  if (pipe2(out, O_CLOEXEC) != 0 || pipe2(err, O_CLOEXEC) != 0) {
    throw std::runtime_error("pipe failed");
  }
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addopen(&actions, 0, "/dev/null", O_RDONLY, 0);
  posix_spawn_file_actions_adddup2(&actions, out[1], 1);
  posix_spawn_file_actions_adddup2(&actions, err[1], 2);
  if (options.workingDirectory) {
    posix_spawn_file_actions_addchdir_np(&actions, options.workingDirectory->c_str());
  }

  std::vector<std::string> argv_storage{program.string()};
  argv_storage.insert(argv_storage.end(), arguments.begin(), arguments.end());
  std::vector<char*> argv;
  for (auto& argument : argv_storage) argv.push_back(argument.data());
  argv.push_back(nullptr);
  std::vector<std::string> env_storage = buildEnvironment(options);
  std::vector<char*> envp;
  for (auto& entry : env_storage) envp.push_back(entry.data());
  envp.push_back(nullptr);

  pid_t pid = 0;
  int spawned = posix_spawn(&pid, program.c_str(), &actions, nullptr, argv.data(), envp.data());
  posix_spawn_file_actions_destroy(&actions);
  close(out[1]);
  close(err[1]);
  if (spawned != 0) {
    close(out[0]);
    close(err[0]);
    throw std::runtime_error("cannot start " + program.string() + ": " + std::strerror(spawned));
  }

  ProcessResult result;
  pollfd fds[2] = {{out[0], POLLIN, 0}, {err[0], POLLIN, 0}};
  std::string* sinks[2] = {&result.standardOutput, &result.standardError};
  int open = 2;
  char buffer[65536];
  while (open > 0) {
    if (poll(fds, 2, -1) < 0) {
      if (errno == EINTR) continue;
      break;
    }
    for (int i = 0; i < 2; ++i) {
      if (fds[i].fd < 0 || !(fds[i].revents & (POLLIN | POLLHUP | POLLERR))) continue;
      ssize_t n = read(fds[i].fd, buffer, sizeof buffer);
      if (n > 0) {
        sinks[i]->append(buffer, static_cast<size_t>(n));
      } else if (n == 0 || errno != EINTR) {
        close(fds[i].fd);
        fds[i].fd = -1;
        --open;
      }
    }
  }
  int status = 0;
  while (waitpid(pid, &status, 0) < 0 && errno == EINTR) {
  }
  result.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
  return result;
}

std::filesystem::path zorvikExecutable() {
  return std::filesystem::path(ZORVIK_BINARY_DIR) / "bin" / "zorvik";
}

ProcessResult runZorvik(const std::vector<std::string>& arguments, const ProcessOptions& options) {
  return runProcess(zorvikExecutable(), arguments, options);
}

}  // namespace zorvik::testing
