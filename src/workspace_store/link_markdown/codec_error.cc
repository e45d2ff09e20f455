#include "workspace_store/link_markdown/codec_error.h"

#include <utility>

namespace zorvik {

namespace {

const std::string kEmpty;

}  // namespace

CodecError::CodecError(Kind kind, std::optional<std::string> payload,
                       const std::string& description)
    : std::runtime_error(description), kind_(kind), payload_(std::move(payload)) {}

CodecError CodecError::invalidFrontMatterLine(std::string line) {
  const std::string description = "Invalid front-matter line '" + line + "'.";
  return CodecError(Kind::invalidFrontMatterLine, std::move(line), description);
}

CodecError CodecError::unsupportedKind(std::optional<std::string> kind) {
  const std::string description =
      kind ? "Unsupported markdown card kind '" + *kind + "'."
           : std::string("Markdown front matter is missing `zorvik-kind: link`.");
  return CodecError(Kind::unsupportedKind, std::move(kind), description);
}

CodecError CodecError::invalidStringArray(std::string key) {
  const std::string description = "Invalid array value for front-matter key '" + key + "'.";
  return CodecError(Kind::invalidStringArray, std::move(key), description);
}

CodecError CodecError::invalidRowItems(std::string key) {
  const std::string description = "Invalid row-item list for front-matter key '" + key + "'.";
  return CodecError(Kind::invalidRowItems, std::move(key), description);
}

CodecError CodecError::missingFrontMatter() {
  return CodecError(Kind::missingFrontMatter, std::nullopt,
                    "Link markdown is missing required front matter.");
}

const std::string& CodecError::line() const {
  return kind_ == Kind::invalidFrontMatterLine ? *payload_ : kEmpty;
}

const std::string& CodecError::key() const {
  const bool holdsKey = kind_ == Kind::invalidStringArray || kind_ == Kind::invalidRowItems;
  return holdsKey ? *payload_ : kEmpty;
}

std::optional<std::string> CodecError::cardKind() const {
  return kind_ == Kind::unsupportedKind ? payload_ : std::nullopt;
}

}  // namespace zorvik
