// CodecError: why a link-card Markdown file could not be read.
//
// One error per case, each with its payload: the offending line, the kind that was found (absent
// when the file names none), or the front-matter key whose list is malformed. what() is the fixed
// description a user reads. Plain value; copying is cheap.
#pragma once

#include <optional>
#include <stdexcept>
#include <string>

namespace zorvik {

class CodecError : public std::runtime_error {
 public:
  enum class Kind {
    invalidFrontMatterLine,
    unsupportedKind,
    invalidStringArray,
    invalidRowItems,
    missingFrontMatter,
  };

  // "Invalid front-matter line '<line>'."
  static CodecError invalidFrontMatterLine(std::string line);
  // Absent: "Markdown front matter is missing `zorvik-kind: link`."
  // Present: "Unsupported markdown card kind '<kind>'."
  static CodecError unsupportedKind(std::optional<std::string> kind);
  // "Invalid array value for front-matter key '<key>'."
  static CodecError invalidStringArray(std::string key);
  // "Invalid row-item list for front-matter key '<key>'."
  static CodecError invalidRowItems(std::string key);
  // "Link markdown is missing required front matter."
  static CodecError missingFrontMatter();

  Kind kind() const { return kind_; }
  // The line of invalidFrontMatterLine; empty for the other cases.
  const std::string& line() const;
  // The key of invalidStringArray and invalidRowItems; empty for the other cases.
  const std::string& key() const;
  // The kind found by unsupportedKind; nullopt when the file names none, and for the other cases.
  std::optional<std::string> cardKind() const;

 private:
  CodecError(Kind kind, std::optional<std::string> payload, const std::string& description);

  Kind kind_;
  std::optional<std::string> payload_;
};

}  // namespace zorvik
