// The project a project-bound tool works on.
#pragma once

#include <filesystem>
#include <optional>
#include <string_view>

#include "foundation/json/any_codable_value.h"

namespace zorvik {

// The input's `project_path` when it is a string that is not blank (standardised), else the
// tool's default project. With neither, throws std::invalid_argument with
// "<toolName> requires project_path when session is not bound.". A `project_path` of another
// type counts as absent.
std::filesystem::path resolveToolProjectURL(const AnyCodableValue& input,
                                            const std::optional<std::filesystem::path>& defaultURL,
                                            std::string_view toolName);

}  // namespace zorvik
