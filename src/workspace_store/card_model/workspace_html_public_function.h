// WorkspaceHTMLPublicFunction: an operation that an html card's page publishes, and that an agent
// calls through the bridge by `id`, with its typed parameters.
//
// JSON keys are snake case (`js_function`, `value_options`); optional keys default as documented
// per field, and encoding writes every field. Plain values; decoding failures throw DecodingError.
#pragma once

#include <array>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "foundation/json/any_codable_value.h"
#include "foundation/json/coding_traits.h"

namespace zorvik {

class ValueDecoder;

enum class WorkspaceHTMLPublicFunctionParameterType { string, number, integer, boolean };

template <>
struct EnumRawValues<WorkspaceHTMLPublicFunctionParameterType> {
  static constexpr std::string_view typeName = "WorkspaceHTMLPublicFunctionParameterType";
  static constexpr std::array table{
      std::pair{WorkspaceHTMLPublicFunctionParameterType::string, std::string_view("string")},
      std::pair{WorkspaceHTMLPublicFunctionParameterType::number, std::string_view("number")},
      std::pair{WorkspaceHTMLPublicFunctionParameterType::integer, std::string_view("integer")},
      std::pair{WorkspaceHTMLPublicFunctionParameterType::boolean, std::string_view("boolean")},
  };
};

enum class WorkspaceHTMLPublicFunctionParameterFormat {
  plain,
  multiplier,
  percentage,
  ordinalIndex
};

template <>
struct EnumRawValues<WorkspaceHTMLPublicFunctionParameterFormat> {
  static constexpr std::string_view typeName = "WorkspaceHTMLPublicFunctionParameterFormat";
  static constexpr std::array table{
      std::pair{WorkspaceHTMLPublicFunctionParameterFormat::plain, std::string_view("plain")},
      std::pair{WorkspaceHTMLPublicFunctionParameterFormat::multiplier,
                std::string_view("multiplier")},
      std::pair{WorkspaceHTMLPublicFunctionParameterFormat::percentage,
                std::string_view("percentage")},
      std::pair{WorkspaceHTMLPublicFunctionParameterFormat::ordinalIndex,
                std::string_view("ordinal_index")},
  };
};

// `name` and `type` are required; description "", required false, aliases and value_options
// empty, format plain by default.
struct WorkspaceHTMLPublicFunctionParameter {
  std::string name;
  std::string description;
  WorkspaceHTMLPublicFunctionParameterType type = WorkspaceHTMLPublicFunctionParameterType::string;
  bool required = false;
  std::vector<std::string> aliases;
  std::vector<std::string> valueOptions;  // "value_options"
  WorkspaceHTMLPublicFunctionParameterFormat format =
      WorkspaceHTMLPublicFunctionParameterFormat::plain;

  static WorkspaceHTMLPublicFunctionParameter decode(const ValueDecoder& decoder);
  AnyCodableValue encode() const;
  bool operator==(const WorkspaceHTMLPublicFunctionParameter&) const = default;
};

// `id`, `name` and `js_function` are required; description "", aliases and parameters empty by
// default.
struct WorkspaceHTMLPublicFunction {
  std::string id;
  std::string name;
  std::string description;
  std::string jsFunction;  // "js_function"
  std::vector<std::string> aliases;
  std::vector<WorkspaceHTMLPublicFunctionParameter> parameters;

  static WorkspaceHTMLPublicFunction decode(const ValueDecoder& decoder);
  AnyCodableValue encode() const;
  bool operator==(const WorkspaceHTMLPublicFunction&) const = default;
};

}  // namespace zorvik
