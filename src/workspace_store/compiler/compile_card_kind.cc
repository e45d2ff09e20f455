#include "workspace_store/compiler/compile_card_kind.h"

#include <utility>

namespace zorvik {
namespace {

bool isInvisibleIn(const AnyCodableValue* object) {
  if (!object) return false;
  const AnyCodableValue* flag = object->member("isInvisible");
  return flag && flag->asBool() && *flag->asBool();
}

}  // namespace

std::string_view compileCardKind(const AnyCodableValue& payload) {
  const JSONObject* object = payload.asObject();
  if (!object) return "unknown";
  static constexpr std::pair<std::string_view, std::string_view> kKinds[] = {
      {"link", "link"}, {"image", "image"},   {"chat", "chat"},   {"richText", "rich_text"},
      {"html", "html"}, {"folder", "folder"}, {"table", "table"},
  };
  for (const auto& [key, kind] : kKinds) {
    if (object->contains(key)) return kind;
  }
  return "unknown";
}

bool isRuntimeManagedPayload(const AnyCodableValue& payload) {
  const JSONObject* object = payload.asObject();
  if (!object) return false;
  const bool invisible = isInvisibleIn(object->find("chat")) || isInvisibleIn(&payload);
  if (!object->contains("type")) return invisible;
  return invisible && compileCardKind(payload) == "chat";
}

}  // namespace zorvik
