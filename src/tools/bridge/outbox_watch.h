// OutboxWatch: lets a waiting bridge call wake as soon as a file lands in the outbox, so a ready
// answer is read at once rather than at the next poll. It only shortens waits: callers still look
// for their file after every wake, and a wait never lasts longer than asked.
//
// Uses inotify; when a watch cannot be set up, wait() is a plain sleep. One owner, one thread.
#pragma once

#include <filesystem>

namespace zorvik {

class OutboxWatch {
 public:
  // Watches `folder` for files created, written or renamed into it. The folder must exist.
  explicit OutboxWatch(const std::filesystem::path& folder);
  ~OutboxWatch();
  OutboxWatch(const OutboxWatch&) = delete;
  OutboxWatch& operator=(const OutboxWatch&) = delete;

  // Blocks the calling thread until the folder changes or `seconds` have passed.
  void wait(double seconds);

 private:
  int descriptor_ = -1;
};

}  // namespace zorvik
