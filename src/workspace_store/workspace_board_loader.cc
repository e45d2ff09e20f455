#include "workspace_store/workspace_board_loader.h"

#include <algorithm>
#include <stdexcept>

#include "foundation/atomic_file.h"
#include "foundation/json/value_decoder.h"
#include "workspace_store/card_model/workspace_card.h"

namespace zorvik {

std::vector<WorkspaceCard> WorkspaceBoardLoader::loadCards(const std::filesystem::path& directory) {
  std::vector<std::filesystem::path> files;
  for (const auto& item : std::filesystem::directory_iterator(directory)) {
    const std::string name = item.path().filename().string();
    if (name.starts_with("card_") && item.path().extension() == ".json")
      files.push_back(item.path());
  }
  std::sort(files.begin(), files.end());

  std::vector<WorkspaceCard> cards;
  cards.reserve(files.size());
  for (const auto& file : files) {
    auto text = readFileContents(file);
    if (!text) throw std::runtime_error("Unable to read card file " + file.string() + ".");
    auto cardFile = decodeValue<WorkspaceCardFile>(AnyCodableValue::parse(*text));
    cards.push_back(WorkspaceCard{
        .id = cardFile.id,
        .parentID = cardFile.parentID,
        .title = std::move(cardFile.title),
        .type = cardFile.payload.type(),
        .summary = cardFile.payload.summary(),
        .isLoading = false,
        .payload = std::move(cardFile.payload),
    });
  }
  return cards;
}

}  // namespace zorvik
