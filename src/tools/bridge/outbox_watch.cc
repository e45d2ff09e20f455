#include "tools/bridge/outbox_watch.h"

#include <poll.h>
#include <sys/inotify.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cmath>
#include <thread>

namespace zorvik {

OutboxWatch::OutboxWatch(const std::filesystem::path& folder) {
  descriptor_ = ::inotify_init1(IN_NONBLOCK | IN_CLOEXEC);
  if (descriptor_ < 0) return;
  if (::inotify_add_watch(descriptor_, folder.c_str(), IN_CREATE | IN_CLOSE_WRITE | IN_MOVED_TO) <
      0) {
    ::close(descriptor_);
    descriptor_ = -1;
  }
}

OutboxWatch::~OutboxWatch() {
  if (descriptor_ >= 0) ::close(descriptor_);
}

void OutboxWatch::wait(double seconds) {
  if (!(seconds > 0)) return;
  if (descriptor_ < 0) {
    std::this_thread::sleep_for(std::chrono::duration<double>(seconds));
    return;
  }
  // Rounded up, so that a short wait still blocks rather than spinning.
  const int milliseconds = static_cast<int>(std::min(std::ceil(seconds * 1000.0), 60'000.0));
  pollfd watched{.fd = descriptor_, .events = POLLIN, .revents = 0};
  if (::poll(&watched, 1, milliseconds) <= 0) return;
  // Drain the events; the caller checks for its own file.
  alignas(inotify_event) char buffer[4096];
  while (::read(descriptor_, buffer, sizeof(buffer)) > 0) {
  }
}

}  // namespace zorvik
