// SharedCards: a board's cards, loaded once and shared read-only by every tool built over them.
// Copies share the one list; it is never changed after construction, so any thread may read it.
#pragma once

#include <memory>
#include <vector>

#include "workspace_store/card_model/workspace_card.h"

namespace zorvik {

class SharedCards {
 public:
  SharedCards() : SharedCards(std::vector<WorkspaceCard>{}) {}
  // Takes over a card list; implicit, so that a plain list can stand where shared cards are asked.
  SharedCards(std::vector<WorkspaceCard> cards)
      : cards_(std::make_shared<const std::vector<WorkspaceCard>>(std::move(cards))) {}

  const std::vector<WorkspaceCard>& operator*() const { return *cards_; }
  const std::vector<WorkspaceCard>* operator->() const { return cards_.get(); }

 private:
  std::shared_ptr<const std::vector<WorkspaceCard>> cards_;
};

}  // namespace zorvik
