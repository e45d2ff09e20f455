#include "foundation/log.h"

#include <fcntl.h>
#include <syslog.h>
#include <unistd.h>

#include <cstdlib>
#include <mutex>
#include <utility>

#include "foundation/iso8601_date.h"

namespace zorvik {
namespace {

struct LevelInfo {
  const char* word;
  int priority;
};

LevelInfo infoFor(Log::Level level) {
  switch (level) {
    case Log::Level::debug:
      return {"debug", LOG_DEBUG};
    case Log::Level::info:
      return {"info", LOG_INFO};
    case Log::Level::notice:
      return {"notice", LOG_NOTICE};
    case Log::Level::error:
      return {"error", LOG_ERR};
    case Log::Level::fault:
      return {"fault", LOG_CRIT};
  }
  return {"info", LOG_INFO};
}

std::string singleLine(std::string_view message) {
  std::string line(message);
  for (char& c : line) {
    if (c == '\n' || c == '\r') c = ' ';
  }
  return line;
}

void appendToLogFile(const char* file, const std::string& line) {
  const int fd = ::open(file, O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, 0644);
  if (fd < 0) return;
  // One write per line: O_APPEND places it whole at the end, whoever else is appending.
  [[maybe_unused]] const ssize_t written = ::write(fd, line.data(), line.size());
  ::close(fd);
}

}  // namespace

Log::Log(std::string subsystem, std::string category)
    : subsystem_(std::move(subsystem)), category_(std::move(category)) {}

void Log::write(Level level, std::string_view message) const noexcept {
  try {
    static std::once_flag opened;
    std::call_once(opened, [] { ::openlog("zorvik", LOG_PID, LOG_USER); });
    const LevelInfo info = infoFor(level);
    const std::string text = singleLine(message);
    ::syslog(info.priority, "%s/%s %s", subsystem_.c_str(), category_.c_str(), text.c_str());

    if (const char* file = std::getenv("ZORVIK_LOG_FILE"); file != nullptr && *file != '\0') {
      const std::string line = formatISO8601(currentDate()) + " " + subsystem_ + "/" + category_ +
                               " " + info.word + " " + text + "\n";
      appendToLogFile(file, line);
    }
  } catch (...) {
    // Logging must never disturb the caller; an event that cannot be built is dropped.
  }
}

}  // namespace zorvik
