// WorkspaceCardType: the kind of a card, persisted as its raw string.
#pragma once

#include <array>
#include <string_view>
#include <utility>

#include "foundation/json/coding_traits.h"

namespace zorvik {

enum class WorkspaceCardType { link, image, chat, richText, html, browser, folder, table, video };

template <>
struct EnumRawValues<WorkspaceCardType> {
  static constexpr std::string_view typeName = "WorkspaceCardType";
  static constexpr std::array table{
      std::pair{WorkspaceCardType::link, std::string_view("link")},
      std::pair{WorkspaceCardType::image, std::string_view("image")},
      std::pair{WorkspaceCardType::chat, std::string_view("chat")},
      std::pair{WorkspaceCardType::richText, std::string_view("richText")},
      std::pair{WorkspaceCardType::html, std::string_view("html")},
      std::pair{WorkspaceCardType::browser, std::string_view("browser")},
      std::pair{WorkspaceCardType::folder, std::string_view("folder")},
      std::pair{WorkspaceCardType::table, std::string_view("table")},
      std::pair{WorkspaceCardType::video, std::string_view("video")},
  };
};

// "link", "image", "chat", "richText", "html", "browser", "folder", "table" or "video".
inline std::string_view rawValue(WorkspaceCardType type) {
  return rawValue<WorkspaceCardType>(type);
}

}  // namespace zorvik
