// DomainError: an error identified by a domain and a code, with a fixed description text.
#pragma once

#include <stdexcept>
#include <string>

namespace zorvik {

class DomainError : public std::runtime_error {
 public:
  DomainError(std::string domain, int code, const std::string& description)
      : std::runtime_error(description), domain_(std::move(domain)), code_(code) {}

  const std::string& domain() const { return domain_; }
  int code() const { return code_; }

 private:
  std::string domain_;
  int code_;
};

}  // namespace zorvik
