// The create_cards contract.
#include "tools/framework/json_schema.h"
#include "tools/mutations/contract_examples.h"
#include "tools/mutations/workspace_mutation_contract_schemas.h"
#include "tools/mutations/workspace_runtime_tool_contracts.h"

namespace zorvik {
namespace {

using Schemas = WorkspaceMutationContractSchemas;

constexpr std::string_view kNotes =
    "Canonical create API. Send one cards[] entry per card; every field sits at the top level of "
    "its entry.\n"
    "Type choice: default to type=item for a URL, source, file, entity, product, article, "
    "profile, post, recipe, tool, competitor or option (item is the link-style card, stored with "
    "payload type link). Use rich_text only for prose-first text such as notes, summaries or "
    "drafts, never for a list of things that each deserve their own item. Use browser for a live "
    "web tab.\n"
    "Items: url is a top-level field of the entry, never under content.item. item_source is "
    "remote (default) or local. Items and browser cards do not need a url. A remote item url is "
    "validated only when given: a scheme other than http or https, a 404 or 410 from capture, or "
    "a capture that cannot be read fails that card's creation. Put structured facts in row_items "
    "(key_value, expandable_list, todo, rating, each with its nested payload) and representative "
    "image URLs in images.\n"
    "Images: type=image needs a url: http or https, a file URL, an absolute or project-relative "
    "local path, or a resources/... path. SVG is rasterised to a PNG resource.\n"
    "Browser: url accepts http or https, bare localhost or loopback addresses (localhost:3000, "
    "127.0.0.1:8080) and bare domains (example.com); other schemes are rejected. size is "
    "optional.\n"
    "Tables: table_columns holds the header texts and table_rows the rows, each an array of cell "
    "texts; shows_row_headers marks the first column as headers; table_font_size 9 to 28, default "
    "15.\n"
    "Html: size {width, height} is required, and the page's html/body size is locked to it. "
    "Board-local assets must use zorvik-resource://resources/<percent-encoded-relative-path>; "
    "every other form of a local reference is rejected. Remote assets need "
    "allow_remote_assets=true. The in-card script has no tool bridge: window.zorvik is undefined. "
    "Keep runtime memory with window.ZorvikState.get() and window.ZorvikState.set(nextState); "
    "persisted_state is its initial JSON. Each public_functions entry (id, name, js_function, "
    "parameters) is served by the handler window.ZorvikPublicFunctions[<js_function>], which "
    "receives one object argument keyed by parameter names. When the user asks for no particular "
    "style, use the default style: tokens --bg:#FFFFFF, --text:#1A1A1A, "
    "--text-secondary:#666666, --text-tertiary:#999999, --border:rgba(0,0,0,0.07), "
    "--accent:#5392F7; radius 5px (compact 3px, grouped 8px); spacing 12px (tight 6px); shadow "
    "0 2px 8px rgba(0,0,0,0.1); system sans-serif for body text and Roboto Serif for display "
    "headings. Run compile_html on the source before retrying a failed html create.\n"
    "Folders and groups: folder_layout freeform, horizontal, vertical or grid; grid_columns 2 to "
    "5, for grid only; folder_node_role folder or group. parent_id creates the card inside a "
    "folder or group; root, board or none mean the board root.\n"
    "Placement: placement.mode auto (default) or coordinates with placement.coordinates {x, y}. "
    "Several cards under auto placement form an implicit group laid out by auto_group_layout "
    "(horizontal, vertical or grid); the default is horizontal for 8 or fewer created cards and "
    "grid above; auto_group_columns (2 to 5) sets the grid's columns.\n"
    "focus controls selection and camera after creation; by default created content is focused, "
    "unless only empty group containers were created.\n"
    "Idempotency: idempotency_key replays an exact batch (replayed=true, nothing is created "
    "twice). Reuse a key only with the exact same payload. After a timeout (error_code "
    "runtime_timeout) completion is unknown: re-run the exact same request with the same "
    "idempotency_key before changing any argument.\n"
    "Answer: created_card_ids; results per request_index with card_id, deep_link_url, status, "
    "message and the placement facts requested_coordinates, applied_coordinates and "
    "in_bounds_after_create; persistence; mutation_outcome; project_checkpoint_ref.";

AnyCodableValue cardEntrySchema() {
  JSONObject properties{
      {"type", schema::stringEnum({"item", "image", "rich_text", "table", "html", "chat", "browser",
                                   "folder", "video"},
                                  "Card type; item is the link-style card.")},
      {"title", schema::string()},
      {"summary", schema::string("Short summary shown on the card.")},
      {"note", schema::string("Item note, Markdown.")},
      {"url", schema::string("Item, image, browser or video url; top level of the entry.")},
      {"item_source", Schemas::itemSourceSchema()},
      {"row_items", schema::array(Schemas::rowItemSchema(), "Typed rows of an item.")},
      {"images", Schemas::imagesSchema()},
      {"markdown", schema::string("Rich text body.")},
      {"public_functions", schema::array(Schemas::publicFunctionSchema())},
      {"size", Schemas::sizeSchema("Card size; required for html, optional for browser.")},
      {"messages", schema::array(schema::object({{"role", schema::string("user or assistant.")},
                                                 {"text", schema::string()}},
                                                {"role", "text"}),
                                 "Chat messages.")},
      {"table_columns", schema::array(schema::string(), "Column header texts.")},
      {"table_rows", schema::array(schema::array(schema::string()), "Rows of cell texts.")},
      {"shows_row_headers", schema::boolean()},
      {"table_font_size", Schemas::tableFontSizeSchema()},
      {"folder_layout", Schemas::folderLayoutSchema("Layout of a folder or group.")},
      {"grid_columns", Schemas::gridColumnsSchema("Columns of a grid folder.")},
      {"folder_node_role", schema::stringEnum({"folder", "group"})},
      {"parent_id", Schemas::parentIDSchema()},
      {"placement", Schemas::placementSchema()},
  };
  for (const auto& [key, value] : Schemas::htmlSourceProperties()) properties.set(key, value);
  return schema::object(std::move(properties), {"type"});
}

AnyCodableValue outputSchema() {
  auto optionalPoint = [](std::string_view description) {
    return schema::with(Schemas::pointSchema(description), "type",
                        AnyCodableValue::Array{"object", "null"});
  };
  AnyCodableValue result = schema::object(
      {
          {"request_index", schema::integer("0-based index into cards[].")},
          {"card_id", schema::string("Created card id; empty when creation failed.")},
          {"deep_link_url", Schemas::nullable("string")},
          {"status", schema::string()},
          {"message", Schemas::nullable("string")},
          {"requested_coordinates", optionalPoint("Coordinates asked for, if any.")},
          {"applied_coordinates", optionalPoint("Where the card was placed.")},
          {"in_bounds_after_create", Schemas::nullable("boolean")},
      },
      {"request_index", "card_id", "status"});
  JSONObject properties = Schemas::mutationAnswerTail();
  properties.set("created_card_ids", schema::array(schema::string()));
  properties.set("side_effect_card_ids",
                 schema::array(schema::string(), "Cards changed besides the created ones."));
  properties.set("results", schema::array(result));
  properties.set("persistence", Schemas::persistenceVerificationSchema());
  properties.set("idempotency_key", Schemas::nullable("string"));
  properties.set("replayed", schema::boolean());
  return schema::object(std::move(properties), {"created_card_ids", "results", "mutation_outcome",
                                                "project_checkpoint_ref"});
}

}  // namespace

AgentToolSpec WorkspaceRuntimeToolContracts::createCardsSpec() {
  return AgentToolSpec{
      .name = "create_cards",
      .summary =
          "Create one or more cards in the current board from explicit fields, with "
          "optional batch idempotency.",
      .inputSchema = schema::object(
          {
              {"cards",
               schema::with(schema::array(cardEntrySchema(), "Cards to create."), "minItems", 1)},
              {"idempotency_key",
               schema::string("Replays an exact batch; reuse only with the same payload.")},
              {"auto_group_layout",
               schema::stringEnum({"horizontal", "vertical", "grid"},
                                  "Layout of the implicit group of several auto-placed cards.")},
              {"auto_group_columns", Schemas::gridColumnsSchema("Columns of a grid auto group.")},
              {"focus", Schemas::focusSchema()},
          },
          {"cards"}),
      .outputSchema = outputSchema(),
      .examples = parseExamples({
          R"({"cards": [{"type": "item", "title": "Acme Robotics", "url": "https://example.com/acme",
              "summary": "Warehouse automation vendor.",
              "row_items": [
                {"label": "Founded", "type": "key_value", "key_value": {"value": "2019"}},
                {"label": "Products", "type": "expandable_list",
                 "expandable_list": {"items": ["Picking arm", "Gripper"], "is_expanded": false}},
                {"label": "Fit", "type": "rating", "rating": {"value": 4}},
                {"label": "Book a demo", "type": "todo", "todo": {"is_checked": false}}],
              "images": ["https://example.com/acme/hero.png"]}],
              "idempotency_key": "acme-research-1"})",
          R"({"cards": [{"type": "table", "title": "Plan comparison",
              "table_columns": ["Plan", "Price", "Seats"],
              "table_rows": [["Starter", "$9", "1"], ["Team", "$29", "10"]],
              "shows_row_headers": true, "table_font_size": 15}]})",
          R"({"cards": [{"type": "rich_text", "title": "Meeting notes",
              "markdown": "# Decisions\n- Launch in May\n- Keep the free tier"}]})",
          R"({"cards": [{"type": "image", "title": "Floor plan", "url": "resources/floor-plan.png"}]})",
          R"({"cards": [{"type": "html", "title": "Counter", "size": {"width": 360, "height": 240},
              "html": "<main><span id=\"n\">0</span><button id=\"inc\">+1</button></main>",
              "css": ":root{--bg:#FFFFFF;--text:#1A1A1A;--accent:#5392F7}body{margin:0;background:var(--bg);color:var(--text);font-family:system-ui,sans-serif}button{border-radius:5px;padding:6px 12px}",
              "js": "const s=window.ZorvikState.get()||{count:0};const show=()=>{document.getElementById('n').textContent=s.count};window.ZorvikPublicFunctions={increment:({by})=>{s.count+=by||1;window.ZorvikState.set(s);show()}};document.getElementById('inc').onclick=()=>window.ZorvikPublicFunctions.increment({by:1});show();",
              "persisted_state": "{\"count\":0}",
              "public_functions": [{"id": "increment", "name": "Increment", "js_function": "increment",
                "parameters": [{"name": "by", "type": "integer", "required": false}]}]}]})",
          R"({"cards": [{"type": "chat", "title": "Customer interview",
              "messages": [{"role": "user", "text": "What slows your team down?"},
                           {"role": "assistant", "text": "Manual reporting every Friday."}]}]})",
          R"({"cards": [{"type": "browser", "title": "Local preview", "url": "localhost:3000",
              "size": {"width": 1024, "height": 768}}]})",
          R"({"cards": [{"type": "folder", "title": "Competitors", "folder_node_role": "group",
              "folder_layout": "grid", "grid_columns": 3}], "focus": false})",
          R"({"cards": [{"type": "item", "title": "Notion", "url": "https://www.notion.so"},
              {"type": "item", "title": "Obsidian", "url": "https://obsidian.md"},
              {"type": "item", "title": "Logseq", "url": "https://logseq.com"}],
              "auto_group_layout": "grid", "auto_group_columns": 3})",
          R"({"cards": [{"type": "item", "title": "Linear", "url": "https://linear.app",
              "parent_id": "6A1F2C3B-0D4E-4E21-9B6C-3F2B8C1E5A7D"}]})",
          R"({"cards": [{"type": "item", "title": "Quarterly report", "item_source": "local",
              "url": "/Users/me/Documents/q3-report.pdf",
              "placement": {"mode": "coordinates", "coordinates": {"x": 1200, "y": 400}}}]})",
      }),
      .notes = std::string(kNotes),
      .execution = AgentToolExecutionMode::serial,
  };
}

}  // namespace zorvik
