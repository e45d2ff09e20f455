#include "workspace_store/workspace_project_snapshot_store.h"

#include <algorithm>
#include <future>
#include <limits>
#include <optional>

#include "foundation/file_url.h"
#include "foundation/json/value_decoder.h"
#include "foundation/parallel_for.h"
#include "foundation/sha256.h"
#include "foundation/standardized_path.h"
#include "foundation/text.h"
#include "workspace_store/filesystem_workspace_state.h"
#include "workspace_store/legacy_filesystem_link_card_document.h"
#include "workspace_store/link_markdown/filesystem_markdown_link_card_codec.h"
#include "workspace_store/project_file_access.h"
#include "workspace_store/stored_cards/csv_table.h"
#include "workspace_store/workspace_project_snapshot_error.h"

namespace zorvik {
namespace {

constexpr std::string_view kDocumentPath = ".zorvik/workspace.json";
constexpr size_t kHashAlongsideMinimum = 1 << 20;
constexpr std::string_view kCardHint =
    "Repair the referenced content file or `.zorvik/workspace.json`, then re-run validation.";

// What one entry resolved to.
struct ResolvedEntry {
  AnyCodableValue payload;
  int fileCount = 0;
  std::vector<std::string> fingerprintComponents;
  std::optional<TableRows> tableRows;  // a table's body rows, when they are kept apart
};

// The last component of a relative path.
std::string_view fileNameOf(std::string_view relativePath) {
  const size_t slash = relativePath.rfind('/');
  return slash == std::string_view::npos ? relativePath : relativePath.substr(slash + 1);
}

// The file name's extension with its dot, lower-cased: empty for names without a dot, names whose
// only dot leads, "." and "..".
std::string lowercaseExtension(std::string_view relativePath) {
  const std::string_view name = fileNameOf(relativePath);
  const size_t dot = name.rfind('.');
  if (dot == std::string_view::npos || dot == 0 || name == "..") return "";
  return lowercased(name.substr(dot));
}

bool isLegacyLinkJSON(std::string_view relativePath) {
  return lowercased(fileNameOf(relativePath)).ends_with(".link.json");
}

void requireUTF8(std::string_view bytes, const std::string& displayPath) {
  if (!isValidUTF8(bytes)) {
    throw WorkspaceProjectSnapshotError::decodeFailed(displayPath, "Expected UTF-8 text.");
  }
}

std::string fingerprintComponentOf(const std::string& path, std::string_view bytes) {
  return path + ":" + sha256Hex(bytes);
}

// The entry's payload with "type" set to `type` and its inner object `type` updated by `fields`.
// A payload that is no object, or an inner value that is no object, starts out empty.
AnyCodableValue overlay(AnyCodableValue entryPayload, std::string_view type,
                        std::vector<JSONObject::Entry> fields) {
  JSONObject* given = entryPayload.asObject();
  JSONObject base = given ? std::move(*given) : JSONObject{};
  AnyCodableValue* existing = base.find(type);
  JSONObject inner =
      existing && existing->asObject() ? std::move(*existing->asObject()) : JSONObject{};
  for (auto& [key, value] : fields) inner.set(std::move(key), std::move(value));
  base.set("type", type);
  base.set(std::string(type), std::move(inner));
  return base;
}

// Builds a table's "columns" and "rows" straight from the CSV reader: the first row is the header,
// and shorter rows are padded with empty cells to its width.
struct TableRowsSink {
  AnyCodableValue::Array columns;
  AnyCodableValue::Array rows;
  AnyCodableValue::Array row;
  bool readingHeader = true;

  void cell(std::string_view text) { row.emplace_back(text); }
  void endRow() {
    if (readingHeader) {
      columns = std::move(row);
      readingHeader = false;
    } else {
      if (row.size() < columns.size()) row.resize(columns.size(), AnyCodableValue(""));
      rows.emplace_back(std::move(row));
    }
    row = AnyCodableValue::Array();
    row.reserve(columns.size());
  }
};

// The same rows, kept apart from the payload in one TableRows buffer.
struct TableRowsApartSink {
  AnyCodableValue::Array columns;
  TableRows rows;
  size_t expectedRows = 0;
  bool readingHeader = true;

  void cell(std::string_view text) {
    if (readingHeader) {
      columns.emplace_back(text);
    } else {
      rows.appendCell(text);
    }
  }
  void endRow() {
    if (readingHeader) {
      readingHeader = false;
      return;
    }
    while (rows.openRowSize() < columns.size()) rows.appendCell("");
    rows.endRow();
  }
};

class EntryResolver {
 public:
  EntryResolver(const ProjectFileAccess& files, bool fingerprint, bool tableRowsApart)
      : files_(files), fingerprint_(fingerprint), tableRowsApart_(tableRowsApart) {}

  // Consumes the entry's payload.
  ResolvedEntry resolve(FilesystemWorkspaceEntry& entry) const {
    const std::string path = trimWhitespaceAndNewlines(entry.relativePath.value_or(""));
    if (path.empty()) return {std::move(entry.payload), 0, {}};
    const std::filesystem::path location = files_.entryLocation(path);

    // The entry's file or folder is opened once; a Markdown file is read and decoded once, and
    // its text decides between link and rich text. What cannot be opened is read again by path,
    // which reports why.
    const std::optional<ProjectFile> opened = files_.open(location);
    const auto readEntryFile = [&] {
      return opened ? opened->readAll(path) : files_.read(location, path);
    };
    EntryFile file;
    const std::string kind =
        entryKind(path, entry.kindRawValue, location, opened, readEntryFile, file);
    if (!file.bytes && (kind == "richText" || kind == "table" || kind == "link")) {
      file.bytes = readEntryFile();
    }
    if (kind == "richText") return richText(entry, path, location, std::move(file));
    if (kind == "table") return table(entry, path, *file.bytes);
    if (kind == "link") return link(path, std::move(file));
    if (kind == "html") return html(entry, path, location);
    return {std::move(entry.payload), 0, {}};
  }

 private:
  // What was learnt of the entry's file while deciding its kind.
  struct EntryFile {
    std::optional<std::string> bytes;
    bool checkedUTF8 = false;  // `bytes` are known to be UTF-8
    std::optional<FilesystemMarkdownLinkCardDocument> linkDocument;  // decoded from `bytes`
  };

  template <class ReadEntryFile>
  std::string entryKind(const std::string& path, const std::string& preferredKind,
                        const std::filesystem::path& location,
                        const std::optional<ProjectFile>& opened,
                        const ReadEntryFile& readEntryFile, EntryFile& file) const {
    if (opened && opened->isDirectory()) {
      std::error_code error;
      return preferredKind == "html" || std::filesystem::exists(location / "index.html", error)
                 ? "html"
                 : "folder";
    }
    if (isLegacyLinkJSON(path)) return "link";
    const std::string extension = lowercaseExtension(path);
    if (extension == ".md" || extension == ".markdown") {
      try {
        file.bytes = readEntryFile();
      } catch (const WorkspaceProjectSnapshotError&) {
        return "richText";  // fails again, with its reason, when read as rich text
      }
      file.checkedUTF8 = isValidUTF8(*file.bytes);
      if (file.checkedUTF8) {
        file.linkDocument = FilesystemMarkdownLinkCardCodec::decodeIfPresent(*file.bytes);
      }
      return file.linkDocument ? "link" : "richText";
    }
    if (extension == ".txt") return "richText";
    if (extension == ".csv") return "table";
    return preferredKind;
  }

  ResolvedEntry richText(FilesystemWorkspaceEntry& entry, const std::string& path,
                         const std::filesystem::path& location, EntryFile file) const {
    std::string component = fingerprintComponent(path, *file.bytes);
    if (!file.checkedUTF8) requireUTF8(*file.bytes, path);
    std::string text = std::move(*file.bytes);
    // Built by moves: an initializer list would copy the text.
    std::vector<JSONObject::Entry> fields;
    fields.emplace_back("markdown", std::move(text));
    fields.emplace_back("sourceURL", fileURLString(location));
    AnyCodableValue payload = overlay(std::move(entry.payload), "richText", std::move(fields));
    return {std::move(payload), 1, {std::move(component)}};
  }

  ResolvedEntry table(FilesystemWorkspaceEntry& entry, const std::string& path,
                      const std::string& bytes) const {
    if (!isValidUTF8(bytes)) {
      throw WorkspaceProjectSnapshotError::decodeFailed(path, "Expected valid UTF-8 CSV content.");
    }
    return tableRowsApart_ ? tableApart(entry, path, bytes) : tableInPayload(entry, path, bytes);
  }

  ResolvedEntry tableApart(FilesystemWorkspaceEntry& entry, const std::string& path,
                           const std::string& bytes) const {
    TableRowsApartSink sink;
    // The text of the cells is at most the file's; rows are counted from its lines.
    sink.rows.reserve(static_cast<size_t>(std::count(bytes.begin(), bytes.end(), '\n')) + 1, 0,
                      bytes.size());
    if (readCSV(bytes, sink)) {
      throw WorkspaceProjectSnapshotError::decodeFailed(path, "Expected valid UTF-8 CSV content.");
    }
    std::vector<JSONObject::Entry> fields;
    fields.emplace_back("columns", std::move(sink.columns));
    fields.emplace_back("rows", AnyCodableValue::Array());
    AnyCodableValue payload = overlay(std::move(entry.payload), "table", std::move(fields));
    return {std::move(payload), 1, {fingerprintComponent(path, bytes)}, std::move(sink.rows)};
  }

  ResolvedEntry tableInPayload(FilesystemWorkspaceEntry& entry, const std::string& path,
                               const std::string& bytes) const {
    TableRowsSink sink;
    // Tables are the bulk of a board: the row list is sized once from the line count after the
    // header (an upper bound), and the fields are built by moves (an initializer list would copy
    // every cell).
    const size_t lines = static_cast<size_t>(std::count(bytes.begin(), bytes.end(), '\n')) +
                         (bytes.empty() || bytes.back() == '\n' ? 0 : 1);
    sink.rows.reserve(lines > 0 ? lines - 1 : 0);
    if (readCSV(bytes, sink)) {
      throw WorkspaceProjectSnapshotError::decodeFailed(path, "Expected valid UTF-8 CSV content.");
    }
    sink.rows.shrink_to_fit();  // gives back what quoted line breaks over-counted
    std::vector<JSONObject::Entry> fields;
    fields.emplace_back("columns", std::move(sink.columns));
    fields.emplace_back("rows", std::move(sink.rows));
    AnyCodableValue payload = overlay(std::move(entry.payload), "table", std::move(fields));
    return {std::move(payload), 1, {fingerprintComponent(path, bytes)}};
  }

  ResolvedEntry link(const std::string& path, EntryFile file) const {
    const std::string& bytes = *file.bytes;
    std::string component = fingerprintComponent(path, bytes);
    LegacyFilesystemLinkCardDocument document;
    try {
      if (isLegacyLinkJSON(path)) {
        document = decodeValue<LegacyFilesystemLinkCardDocument>(AnyCodableValue::parse(bytes));
      } else if (file.linkDocument) {
        document = LegacyFilesystemLinkCardDocument::fromMarkdown(std::move(*file.linkDocument));
      } else {
        requireUTF8(bytes, path);
        document = LegacyFilesystemLinkCardDocument::fromMarkdown(
            FilesystemMarkdownLinkCardCodec::decode(bytes));
      }
    } catch (const WorkspaceProjectSnapshotError&) {
      throw;
    } catch (const std::exception& error) {
      throw WorkspaceProjectSnapshotError::decodeFailed(path, error.what());
    }
    return {document.linkRuntimePayload(), 1, {std::move(component)}};
  }

  ResolvedEntry html(FilesystemWorkspaceEntry& entry, const std::string& path,
                     const std::filesystem::path& location) const {
    ResolvedEntry resolved;
    std::vector<JSONObject::Entry> fields;
    const std::pair<const char*, const char*> sources[] = {
        {"index.html", "html"}, {"styles.css", "css"}, {"script.js", "js"}};
    for (const auto& [fileName, key] : sources) {
      const std::string displayPath = path + "/" + fileName;
      std::optional<std::string> bytes = files_.readIfPresent(location / fileName, displayPath);
      if (!bytes) {
        if (std::string_view(key) == "html") {
          throw WorkspaceProjectSnapshotError::decodeFailed(path,
                                                            "HTML folder is missing index.html.");
        }
        fields.emplace_back(key, "");
        continue;
      }
      resolved.fingerprintComponents.push_back(fingerprintComponent(displayPath, *bytes));
      ++resolved.fileCount;
      requireUTF8(*bytes, displayPath);
      fields.emplace_back(key, std::move(*bytes));
    }
    resolved.payload = overlay(std::move(entry.payload), "html", std::move(fields));
    return resolved;
  }

  // The file's part of the project fingerprint; empty when the load takes none.
  std::string fingerprintComponent(const std::string& path, std::string_view bytes) const {
    return fingerprint_ ? fingerprintComponentOf(path, bytes) : std::string();
  }

  const ProjectFileAccess& files_;
  bool fingerprint_;
  bool tableRowsApart_;
};

// The document of a folder without `.zorvik/workspace.json`: an empty board whose identity is the
// hash of its standardised path.
FilesystemWorkspaceState emptyProjectDocument(const std::filesystem::path& root) {
  FilesystemWorkspaceState document;
  document.version = 1;
  document.projectId = sha256Hex(root.string());
  document.createdAt = Date{};
  document.updatedAt = Date{};
  document.uiState.backgroundStyle = "Dots";
  return document;
}

WorkspaceCompileDiagnostic cardDiagnostic(const FilesystemWorkspaceEntry& entry,
                                          const std::string& message) {
  const std::string path = entry.relativePath && !entry.relativePath->empty()
                               ? *entry.relativePath
                               : CardRecord::inlinePath(entry.id);
  return WorkspaceCompileDiagnostic{
      .severity = WorkspaceCompileSeverity::error,
      .code = "parse.card",
      .message = message,
      .path = path,
      .cardID = entry.id,
      .hint = std::string(kCardHint),
      .owner = WorkspaceCompileDiagnosticOwner::user,
      .actionability = WorkspaceCompileDiagnosticActionability::fixable,
  };
}

// What resolving one entry left besides its card: the files read for it, or why it failed.
struct EntryOutcome {
  int fileCount = 0;
  std::vector<std::string> fingerprintComponents;
  std::optional<WorkspaceCompileDiagnostic> failure;
};

void resolveOne(FilesystemWorkspaceEntry& entry, const EntryResolver& resolver, CardRecord& card,
                EntryOutcome& outcome) {
  try {
    ResolvedEntry resolved = resolver.resolve(entry);
    card = CardRecord::fromEntry(entry, std::move(resolved.payload));
    card.tableRows = std::move(resolved.tableRows);
    outcome.fileCount = resolved.fileCount;
    outcome.fingerprintComponents = std::move(resolved.fingerprintComponents);
  } catch (const std::exception& error) {
    outcome.failure = cardDiagnostic(entry, error.what());
  }
  entry = FilesystemWorkspaceEntry();  // released here, on the resolving thread
}

// Resolves every entry into `cards[i]` and `outcomes[i]` (both sized to the entries), on several
// threads for large boards, and hands each card to `cardResolved` while it is fresh. Cards are
// built in place, in their final storage, so a large board is never held twice.
void resolveEntries(std::vector<FilesystemWorkspaceEntry>& entries, const EntryResolver& resolver,
                    const std::function<void(size_t, CardRecord&)>& cardResolved,
                    std::vector<CardRecord>& cards, std::vector<EntryOutcome>& outcomes) {
  parallelFor(entries.size(), [&](size_t i) {
    resolveOne(entries[i], resolver, cards[i], outcomes[i]);
    if (cardResolved && !outcomes[i].failure) cardResolved(i, cards[i]);
  });
}

}  // namespace

WorkspaceProjectSnapshot WorkspaceProjectSnapshotStore::load(
    const std::filesystem::path& projectURL, LoadOptions options) const {
  const ProjectFileAccess files(projectURL);
  const std::filesystem::path documentLocation = files.root() / kDocumentPath;

  WorkspaceProjectSnapshot snapshot;
  std::vector<std::string> fingerprint;
  FilesystemWorkspaceState document;
  std::error_code error;
  if (std::filesystem::exists(documentLocation, error)) {
    const std::string bytes = files.read(documentLocation, std::string(kDocumentPath));
    // A large document is hashed on a thread of its own while it is parsed.
    std::future<std::string> documentComponent = std::async(
        bytes.size() >= kHashAlongsideMinimum ? std::launch::async : std::launch::deferred, [&] {
          return options.fingerprint ? fingerprintComponentOf(std::string(kDocumentPath), bytes)
                                     : std::string();
        });
    try {
      document = FilesystemWorkspaceState::decodeDocument(AnyCodableValue::parse(bytes));
    } catch (const std::exception& decodeError) {
      throw WorkspaceProjectSnapshotError::decodeFailed(std::string(kDocumentPath),
                                                        decodeError.what());
    }
    snapshot.checkedFiles = 1;
    fingerprint.push_back(documentComponent.get());
  } else {
    document = emptyProjectDocument(files.root());
  }

  snapshot.metadata = ProjectMetadata::fromDocument(document);
  snapshot.folders = {FolderRecord::rootFromDocument(document)};

  std::vector<CardRecord> cards(document.entries.size());
  std::vector<EntryOutcome> outcomes(document.entries.size());
  if (options.entriesFound) options.entriesFound(document.entries.size());
  resolveEntries(document.entries,
                 EntryResolver(files, options.fingerprint, options.tableRowsApart),
                 options.cardResolved, cards, outcomes);
  document.entries = {};  // their payloads now live in the cards

  // Cards of failed entries are dropped by moving the later cards down, keeping entry order.
  size_t kept = 0;
  for (size_t i = 0; i < cards.size(); ++i) {
    EntryOutcome& outcome = outcomes[i];
    if (outcome.failure) {
      snapshot.loadDiagnostics.push_back(std::move(*outcome.failure));
      continue;
    }
    if (snapshot.checkedFiles > std::numeric_limits<int>::max() - outcome.fileCount) {
      std::abort();  // more files than a board can hold; the count must not wrap
    }
    snapshot.checkedFiles += outcome.fileCount;
    if (options.fingerprint) {
      for (auto& component : outcome.fingerprintComponents) {
        fingerprint.push_back(std::move(component));
      }
    }
    if (kept != i) cards[kept] = std::move(cards[i]);
    ++kept;
  }
  cards.erase(cards.begin() + static_cast<std::ptrdiff_t>(kept), cards.end());
  outcomes = {};
  snapshot.cards = std::move(cards);

  if (options.fingerprint) {
    std::sort(fingerprint.begin(), fingerprint.end());
    std::string joined;
    for (size_t i = 0; i < fingerprint.size(); ++i) {
      if (i) joined += '\n';
      joined += fingerprint[i];
    }
    snapshot.projectFingerprint = sha256Hex(joined);
  }
  snapshot.storageMode = WorkspaceProjectStorageMode::filesystem;
  snapshot.rootURL = projectURL;
  return snapshot;
}

}  // namespace zorvik
