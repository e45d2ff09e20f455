#include "workspace_store/link_markdown/front_matter_writer.h"

#include <utility>

namespace zorvik {

namespace {

bool isSpaceOrTab(char c) { return c == ' ' || c == '\t'; }

}  // namespace

bool FrontMatterWriter::shouldUseBlockScalar(std::string_view value) {
  if (value.empty()) return true;
  if (value.find('\n') != std::string_view::npos) return true;
  if (isSpaceOrTab(value.front()) || isSpaceOrTab(value.back())) return true;
  return value.front() == '-' || value.front() == '|';
}

void FrontMatterWriter::addScalar(std::string_view key, std::string_view value, size_t indent) {
  if (!shouldUseBlockScalar(value)) {
    addPlain(key, value, indent);
    return;
  }
  addPlain(key, "|", indent);
  const std::string lineIndent(indent + 2, ' ');
  size_t start = 0;
  while (true) {
    const size_t end = value.find('\n', start);
    const std::string_view line =
        value.substr(start, end == std::string_view::npos ? std::string_view::npos : end - start);
    lines_.push_back(lineIndent + std::string(line));
    if (end == std::string_view::npos) break;
    start = end + 1;
  }
}

void FrontMatterWriter::addPlain(std::string_view key, std::string_view text, size_t indent) {
  std::string line(indent, ' ');
  line.append(key).append(": ").append(text);
  lines_.push_back(std::move(line));
}

void FrontMatterWriter::addStringArray(std::string_view key,
                                       const std::vector<std::string>& elements, size_t indent) {
  std::string line(indent, ' ');
  line.append(key).append(":");
  lines_.push_back(std::move(line));
  const std::string elementPrefix = std::string(indent + 2, ' ') + "- ";
  for (const std::string& element : elements) lines_.push_back(elementPrefix + element);
}

void FrontMatterWriter::addLine(std::string line) { lines_.push_back(std::move(line)); }

std::string FrontMatterWriter::text(std::string_view body) const {
  std::string result = "---\n";
  for (const std::string& line : lines_) result.append(line).append("\n");
  result.append("---\n").append(body);
  return result;
}

}  // namespace zorvik
