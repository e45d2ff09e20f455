// WorkspaceProjectSnapshotError: why a project or one of its entries could not be loaded.
#pragma once

#include <stdexcept>
#include <string>

namespace zorvik {

class WorkspaceProjectSnapshotError : public std::runtime_error {
 public:
  enum class Kind { missingProjectFile, decodeFailed };

  // "Missing project file at <path>."
  static WorkspaceProjectSnapshotError missingProjectFile(const std::string& path) {
    return WorkspaceProjectSnapshotError(Kind::missingProjectFile, path, "",
                                         "Missing project file at " + path + ".");
  }
  // "Failed to decode <path>: <reason>"
  static WorkspaceProjectSnapshotError decodeFailed(const std::string& path,
                                                    const std::string& reason) {
    return WorkspaceProjectSnapshotError(Kind::decodeFailed, path, reason,
                                         "Failed to decode " + path + ": " + reason);
  }

  Kind kind() const { return kind_; }
  const std::string& path() const { return path_; }
  const std::string& reason() const { return reason_; }

 private:
  WorkspaceProjectSnapshotError(Kind kind, std::string path, std::string reason,
                                const std::string& description)
      : std::runtime_error(description),
        kind_(kind),
        path_(std::move(path)),
        reason_(std::move(reason)) {}

  Kind kind_;
  std::string path_;
  std::string reason_;
};

}  // namespace zorvik
