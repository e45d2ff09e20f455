// Shared helpers of the stored card tests.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <string>

#include "foundation/uuid.h"
#include "workspace_store/stored_cards/stored_card_storage_error.h"

namespace zorvik {

inline const Uuid kCardID = *Uuid::parse("6FA459EA-EE8A-3CA4-894E-DB77E160355E");
inline const std::string kCardUpper = "6FA459EA-EE8A-3CA4-894E-DB77E160355E";
inline const std::string kCardLower = "6fa459ea-ee8a-3ca4-894e-db77e160355e";
inline const std::string kCardFolder = "resources/cards/" + kCardUpper;

// Fails the test unless `action` throws a StoredCardStorageError of `kind` saying `message`.
inline void expectStorageError(const std::function<void()>& action,
                               StoredCardStorageError::Kind kind, const std::string& message) {
  try {
    action();
    ADD_FAILURE() << "no error, expected: " << message;
  } catch (const StoredCardStorageError& error) {
    EXPECT_EQ(error.what(), message);
    EXPECT_EQ(error.kind(), kind) << message;
  }
}

}  // namespace zorvik
