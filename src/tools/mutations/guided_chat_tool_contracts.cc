#include "tools/mutations/guided_chat_tool_contracts.h"

#include "tools/framework/json_schema.h"
#include "tools/mutations/contract_examples.h"
#include "tools/mutations/workspace_mutation_contract_schemas.h"

namespace zorvik {
namespace {

// The keys both tools share: where the message goes and what it says.
JSONObject guidedMessageProperties() {
  return JSONObject{
      {"chat_id", schema::string("Target chat; the active chat when omitted.")},
      {"message", schema::string("The visible assistant message.")},
      {"prompt", schema::string("The question or instruction shown with the controls.")},
      {"requires_response", schema::boolean("Whether the user must answer before going on.")},
      {"submit_label", schema::string("Label of the submit button.")},
  };
}

AnyCodableValue closed(AnyCodableValue objectSchema) {
  return schema::with(std::move(objectSchema), "additionalProperties", false);
}

}  // namespace

AnyCodableValue GuidedChatToolContracts::guidedChatOutputSchema() {
  return closed(schema::object({{"status", schema::string()},
                                {"tool", schema::string()},
                                {"chat_id", schema::string()},
                                {"message_id", schema::string()}},
                               {"status", "tool", "chat_id", "message_id"}));
}

AgentToolSpec GuidedChatToolContracts::askUserSpec() {
  AnyCodableValue field = schema::object(
      {
          {"id", schema::string("Key of the answer.")},
          {"label", schema::string()},
          {"kind", schema::stringEnum({"text", "multiline", "number", "url"})},
          {"placeholder", schema::string()},
          {"required", schema::boolean()},
      },
      {"id", "label"});
  JSONObject properties = guidedMessageProperties();
  properties.set("response_type",
                 schema::stringEnum({"text", "form"}, "Free-form reply or structured form."));
  properties.set("fields", schema::array(field, "Form fields for response_type=form."));
  return AgentToolSpec{
      .name = "ask_user",
      .summary =
          "Append a guided assistant prompt to the active chat for free-form replies or "
          "structured form input.",
      .inputSchema = closed(schema::object(std::move(properties))),
      .outputSchema = guidedChatOutputSchema(),
      .examples = parseExamples({
          R"({"message": "Tell me the campaign basics.",
              "prompt": "I only need the launch date and landing page URL.",
              "response_type": "form",
              "fields": [{"id": "launch_date", "label": "Launch Date", "kind": "text", "required": true},
                         {"id": "landing_page", "label": "Landing Page URL", "kind": "url",
                          "required": true}]})",
          R"({"message": "What outcome do you want from this deck?", "response_type": "text",
              "requires_response": true})",
          R"({"message": "I need three launch details before I continue.", "response_type": "form",
              "submit_label": "Continue",
              "fields": [{"id": "audience", "label": "Audience", "kind": "text", "required": true},
                         {"id": "goal", "label": "Primary Goal", "kind": "text", "required": true},
                         {"id": "constraints", "label": "Constraints", "kind": "multiline",
                          "required": false}]})",
      }),
      .notes =
          "Uses Desktop runtime command bridge. This is a general Zorvik chat-scope tool: it "
          "appends a guided assistant message to the active chat (or an explicit chat_id) "
          "and renders it as structured UI in Zorvik. Prefer response_type=form for small "
          "structured questionnaires/checklists when the expected input shape is known.",
      .execution = AgentToolExecutionMode::serial,
  };
}

AgentToolSpec GuidedChatToolContracts::proposeOptionsSpec() {
  AnyCodableValue option = schema::object({{"id", schema::string()},
                                           {"label", schema::string()},
                                           {"value", schema::string("Value reported when picked.")},
                                           {"description", schema::string()}},
                                          {"id", "label"});
  JSONObject properties = guidedMessageProperties();
  properties.set("appearance", schema::stringEnum({"choice", "review", "run"},
                                                  "choice (pick), review (approve) or run (go)."));
  properties.set("selection_mode", schema::stringEnum({"single", "multiple"}));
  properties.set("minimum_selections", WorkspaceMutationContractSchemas::boundedInteger(
                                           0, std::nullopt, "Fewest picks for multiple."));
  properties.set("maximum_selections", WorkspaceMutationContractSchemas::boundedInteger(
                                           1, std::nullopt, "Most picks for multiple."));
  properties.set("options", schema::with(schema::array(option), "minItems", 1));
  return AgentToolSpec{
      .name = "propose_options",
      .summary = "Append an option-selection message with native chat buttons to the active chat.",
      .inputSchema = schema::object(std::move(properties), {"message", "options"}),
      .outputSchema = guidedChatOutputSchema(),
      .examples = parseExamples({
          R"({"message": "Which direction should the landing page take?", "appearance": "choice",
              "selection_mode": "single", "requires_response": true,
              "options": [{"id": "minimal", "label": "Minimal", "description": "Lots of white space."},
                          {"id": "bold", "label": "Bold", "description": "Big type, strong color."}]})",
          R"({"message": "Which sections should the report keep?", "appearance": "review",
              "selection_mode": "multiple", "minimum_selections": 1, "maximum_selections": 3,
              "submit_label": "Keep selected",
              "options": [{"id": "market", "label": "Market size"},
                          {"id": "pricing", "label": "Pricing"},
                          {"id": "risks", "label": "Risks"},
                          {"id": "team", "label": "Team"}]})",
          R"({"message": "Ready to import all 24 slides?", "appearance": "run",
              "selection_mode": "single",
              "options": [{"id": "run", "label": "Import now", "value": "run"},
                          {"id": "cancel", "label": "Not yet", "value": "cancel"}]})",
      }),
      .notes =
          "Uses Desktop runtime command bridge. This is a general Zorvik chat-scope tool: it "
          "appends structured option buttons to the active chat (or an explicit chat_id). Use "
          "this for multiple-choice selection, quiz-like prompts, approval/review gates, or "
          "any known branch pick instead of listing choices in prose and asking the user to "
          "type.",
      .execution = AgentToolExecutionMode::serial,
  };
}

}  // namespace zorvik
