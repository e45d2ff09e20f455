#include "workspace_store/card_model/workspace_html_public_function.h"

#include "foundation/json/value_decoder.h"
#include "foundation/json/value_encoder.h"

namespace zorvik {

WorkspaceHTMLPublicFunctionParameter WorkspaceHTMLPublicFunctionParameter::decode(
    const ValueDecoder& decoder) {
  auto object = decoder.object();
  return WorkspaceHTMLPublicFunctionParameter{
      .name = object.required<std::string>("name"),
      .description = object.value<std::string>("description", ""),
      .type = object.required<WorkspaceHTMLPublicFunctionParameterType>("type"),
      .required = object.value<bool>("required", false),
      .aliases = object.value<std::vector<std::string>>("aliases", {}),
      .valueOptions = object.value<std::vector<std::string>>("value_options", {}),
      .format = object.value<WorkspaceHTMLPublicFunctionParameterFormat>(
          "format", WorkspaceHTMLPublicFunctionParameterFormat::plain),
  };
}

AnyCodableValue WorkspaceHTMLPublicFunctionParameter::encode() const {
  return ObjectEncoder()
      .add("name", name)
      .add("description", description)
      .add("type", type)
      .add("required", required)
      .add("aliases", aliases)
      .add("value_options", valueOptions)
      .add("format", format)
      .build();
}

WorkspaceHTMLPublicFunction WorkspaceHTMLPublicFunction::decode(const ValueDecoder& decoder) {
  auto object = decoder.object();
  return WorkspaceHTMLPublicFunction{
      .id = object.required<std::string>("id"),
      .name = object.required<std::string>("name"),
      .description = object.value<std::string>("description", ""),
      .jsFunction = object.required<std::string>("js_function"),
      .aliases = object.value<std::vector<std::string>>("aliases", {}),
      .parameters =
          object.value<std::vector<WorkspaceHTMLPublicFunctionParameter>>("parameters", {}),
  };
}

AnyCodableValue WorkspaceHTMLPublicFunction::encode() const {
  return ObjectEncoder()
      .add("id", id)
      .add("name", name)
      .add("description", description)
      .add("js_function", jsFunction)
      .add("aliases", aliases)
      .add("parameters", parameters)
      .build();
}

}  // namespace zorvik
