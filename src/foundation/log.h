// The system log.
//
// Every event goes to syslog (ident "zorvik", facility user) and, when the environment variable
// ZORVIK_LOG_FILE names a file, is appended to it as one line:
//   "<ISO 8601 time> <subsystem>/<category> <level> <message>"
// with line breaks inside the message turned into spaces. Each line is written with a single
// append, so lines from several threads or processes never interleave. Nothing is written to
// standard output or standard error, and logging never throws. A Log is immutable and may be used
// from any thread.
#pragma once

#include <string>
#include <string_view>

namespace zorvik {

class Log {
 public:
  enum class Level { debug, info, notice, error, fault };

  Log(std::string subsystem, std::string category);

  void debug(std::string_view message) const noexcept { write(Level::debug, message); }
  void info(std::string_view message) const noexcept { write(Level::info, message); }
  void notice(std::string_view message) const noexcept { write(Level::notice, message); }
  void error(std::string_view message) const noexcept { write(Level::error, message); }
  void fault(std::string_view message) const noexcept { write(Level::fault, message); }

  void write(Level level, std::string_view message) const noexcept;

  const std::string& subsystem() const { return subsystem_; }
  const std::string& category() const { return category_; }

 private:
  std::string subsystem_;
  std::string category_;
};

}  // namespace zorvik
