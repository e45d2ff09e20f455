// FilesystemWorkspaceState: the board metadata document `.zorvik/workspace.json` of a project
// folder, and the records it is made of.
//
// Decoding is tolerant: optional keys may be absent or null alike, UUIDs are accepted in any case.
// A missing required key or a value of the wrong type throws DecodingError naming the coding path
// ("entries.[1].layout"). Encoding writes the camelCase keys of the document, leaves absent
// optionals out, writes UUIDs upper-case and dates as "YYYY-MM-DDTHH:MM:SSZ"; keys a record does
// not know are not kept. Defaults for absent values (background style, empty maps) are applied by
// the derived snapshot records, not here, so a document encodes back to what was read.
// Plain values; concurrent reads are safe.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "foundation/iso8601_date.h"
#include "foundation/json/any_codable_value.h"
#include "foundation/uuid.h"
#include "workspace_store/point.h"
#include "workspace_store/snap_constraints.h"

namespace zorvik {

class ValueDecoder;

// Board view settings. Every key is optional.
struct FilesystemWorkspaceUIState {
  std::optional<std::string> backgroundStyle;  // absent means "Dots"
  std::optional<Point> viewportCenter;         // centre of the root viewport
  std::optional<Uuid> currentFolderId;         // folder card the view is inside; absent is the root
  std::optional<bool> leftSidebarOpen;
  std::optional<double> chatSidebarWidth;
  std::optional<bool> chatSidebarOpen;
  std::optional<Uuid> boardAgentGuideCardId;
  // Which agent chat card owns a scope; absent means the empty map.
  std::optional<std::map<std::string, Uuid>> agentAffinityByScope;
  // Zoom per folder; the root folder's key is the literal "root".
  std::optional<std::map<std::string, double>> zoomLevelsByFolder;

  static FilesystemWorkspaceUIState decode(const ValueDecoder& decoder);
  AnyCodableValue encode() const;
  bool operator==(const FilesystemWorkspaceUIState&) const = default;
};

struct FilesystemWorkspaceLayout {
  Point position;  // top-left of the card, board coordinates
  int64_t zIndex = 0;
  double actualWidth = 0;
  double actualHeight = 0;
  std::optional<SnapConstraints> snapConstraints;

  static FilesystemWorkspaceLayout decode(const ValueDecoder& decoder);
  AnyCodableValue encode() const;
  bool operator==(const FilesystemWorkspaceLayout&) const = default;
};

// One card of the board.
struct FilesystemWorkspaceEntry {
  Uuid id;
  // Content file or directory relative to the project root; see contentPath().
  std::optional<std::string> relativePath;
  std::string kindRawValue;  // preferred card kind, a card type raw value
  std::string title;
  bool shadowEnabled = false;
  std::optional<Uuid> parentID;  // parent folder card; absent is a root card
  Date createdAt;
  FilesystemWorkspaceLayout layout;
  // The runtime payload: {"type": kind, kind: {...}}; any JSON value is kept as is, null included.
  AnyCodableValue payload;

  // The content path, or nullopt when relativePath is absent or only Unicode white space, in which
  // case the whole card lives in `payload`. The path is returned as written, untrimmed.
  std::optional<std::string> contentPath() const;

  static FilesystemWorkspaceEntry decode(const ValueDecoder& decoder);
  AnyCodableValue encode() const;
  bool operator==(const FilesystemWorkspaceEntry&) const = default;
};

struct FilesystemWorkspaceState {
  // Where the document lives, relative to the project root.
  static constexpr std::string_view kDocumentRelativePath = ".zorvik/workspace.json";

  int64_t version = 1;    // structure version
  std::string projectId;  // a UUID string for projects this system creates, but any string
  Date createdAt;
  Date updatedAt;
  FilesystemWorkspaceUIState uiState;
  std::vector<FilesystemWorkspaceEntry> entries;  // one per card, in file order

  static FilesystemWorkspaceState decode(const ValueDecoder& decoder);
  // The same as decodeValue<FilesystemWorkspaceState>(document), errors included, for a parsed
  // document the caller gives up: the entries' payloads are moved out of it instead of copied,
  // and entries are decoded and released on all cores.
  static FilesystemWorkspaceState decodeDocument(AnyCodableValue document);
  AnyCodableValue encode() const;
  bool operator==(const FilesystemWorkspaceState&) const = default;
};

}  // namespace zorvik
