// StoredCardStorageError: why a stored card payload could not be read, resolved or planned.
//
// Every failure of the stored card conversions carries one of these kinds and a fixed message that
// what() returns as the user-facing description. A plain copyable exception value.
#pragma once

#include <exception>
#include <string>

namespace zorvik {

class StoredCardStorageError : public std::exception {
 public:
  enum class Kind {
    invalidPayload,       // the stored or runtime payload lacks a required part
    invalidDescriptor,    // a text or table source contradicts its mode
    invalidPath,          // a sidecar path breaks the path rules
    missingSidecar,       // a referenced file cannot be read
    unsupportedEncoding,  // an encoding other than UTF-8, or bytes that are not UTF-8
    invalidCSV,           // CSV text that cannot be parsed or rendered
  };

  StoredCardStorageError(Kind kind, std::string message)
      : kind_(kind), message_(std::move(message)) {}

  Kind kind() const { return kind_; }
  const std::string& message() const { return message_; }
  const char* what() const noexcept override { return message_.c_str(); }

 private:
  Kind kind_;
  std::string message_;
};

}  // namespace zorvik
