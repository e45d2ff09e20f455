#include "tools/cards/card_selection.h"

#include <gtest/gtest.h>

#include "tools/cards/toolkit_test_cards.h"

namespace zorvik {
namespace {

using testing::cardID;
using testing::makeCard;

std::vector<std::string> titles(const CardSelection& selection) {
  std::vector<std::string> result;
  for (const auto* card : selection.cards) result.push_back(card->title);
  return result;
}

TEST(CardSelection, SelectsByLowerCasedIdsInRequestedOrder) {
  const std::vector<WorkspaceCard> cards = {
      makeCard(1, "one", R"({"image": {"url": "a"}})"),
      makeCard(2, "two", R"({"image": {"url": "b"}})"),
      makeCard(3, "three", R"({"image": {"url": "c"}})"),
  };
  EXPECT_EQ(titles(filterCards(cards, std::nullopt)),
            (std::vector<std::string>{"one", "two", "three"}));
  EXPECT_EQ(titles(filterCards(cards, std::vector<std::string>{})),
            (std::vector<std::string>{"one", "two", "three"}));

  const std::string third = cardID(3).uppercaseString();
  const std::string first = " " + cardID(1).lowercaseString() + "\n";
  const auto selection = filterCards(
      cards, std::vector<std::string>{third, "Not-A-Card", first, third, "Not-A-Card", "x"});
  EXPECT_EQ(titles(selection), (std::vector<std::string>{"three", "one"}));
  EXPECT_EQ(selection.notFound, (std::vector<std::string>{"Not-A-Card", "x"}));
}

TEST(CardSelection, NamesLinkCardsItem) {
  EXPECT_EQ(toolTypeWord(WorkspaceCardType::link), "item");
  EXPECT_EQ(toolTypeWord(WorkspaceCardType::richText), "richText");
  EXPECT_EQ(toolTypeWord(WorkspaceCardType::video), "video");
}

}  // namespace
}  // namespace zorvik
