// FilesystemMarkdownLinkCardCodec: a link card as a Markdown file, the document's fields as front
// matter between two `---` lines and `richText` as the body.
//
// The writer is exact and canonical: keys in a fixed order, optional and empty ones left out,
// values that would not read back plainly written as `|` blocks. The reader is forgiving: it also
// takes quoted JSON strings, JSON arrays for lists, CR LF line ends and unknown keys (ignored), and
// fills defaults for missing keys. What `encode` writes, `decode` reads back equal, except that a
// plain value that itself looks like a quoted JSON string is read as one, and the word `null` or
// an empty `source` read as absent. Stateless and thread-safe.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "workspace_store/link_markdown/codec_error.h"
#include "workspace_store/link_markdown/filesystem_markdown_link_card_document.h"

namespace zorvik {

class FilesystemMarkdownLinkCardCodec {
 public:
  // Every link card's front matter begins with `zorvik-kind: link`.
  static constexpr std::string_view kindKey = "zorvik-kind";
  static constexpr std::string_view kindValue = "link";

  static std::string encode(const FilesystemMarkdownLinkCardDocument& document);
  // Throws CodecError when the text is no link card or its front matter is malformed.
  static FilesystemMarkdownLinkCardDocument decode(std::string_view text);
  // The document, or nullopt where decode would throw.
  static std::optional<FilesystemMarkdownLinkCardDocument> decodeIfPresent(std::string_view text);
};

}  // namespace zorvik
