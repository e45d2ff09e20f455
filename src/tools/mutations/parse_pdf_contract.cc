// The parse_pdf contract.
#include "tools/framework/json_schema.h"
#include "tools/mutations/contract_examples.h"
#include "tools/mutations/workspace_mutation_contract_schemas.h"
#include "tools/mutations/workspace_runtime_tool_contracts.h"

namespace zorvik {
namespace {

using Schemas = WorkspaceMutationContractSchemas;

constexpr std::string_view kNotes =
    "Operations: inspect reads the document (page count, metadata, and text snippets per page "
    "with include_text_snippets) and changes nothing; extract_embedded_images extracts the image "
    "assets embedded in the pages (page_numbers, else all pages; at most max_images) and lists "
    "them; render_page_image renders page_number to a png or jpeg image (image_format) whose "
    "longest side is longest_side_px; import_slider_group renders the pages (page_numbers, else "
    "the first max_pages) and adds them to the board as a group in slider display mode, titled "
    "group_title, at position, focused unless focus is false. Only import_slider_group changes "
    "the board; it answers mutation_outcome and project_checkpoint_ref.\n"
    "pdf_path is a file URL, an absolute path, a board-relative path or "
    "zorvik-resource://resources/<path>. Page numbers are 1-based.";

AnyCodableValue positiveInteger(std::string_view description) {
  return Schemas::boundedInteger(1, std::nullopt, description);
}

}  // namespace

AgentToolSpec WorkspaceRuntimeToolContracts::parsePDFSpec() {
  AnyCodableValue optionalObject = Schemas::nullable("object");
  JSONObject output = Schemas::mutationAnswerTail();
  output.set("operation", schema::string());
  output.set("status", schema::string());
  output.set("document", Schemas::nullable("object", "Page count and document metadata."));
  output.set("embedded_images", schema::array(schema::typed("object")));
  output.set("embedded_image_summary", optionalObject);
  output.set("rendered_page", optionalObject);
  output.set("imported_group", optionalObject);
  return AgentToolSpec{
      .name = "parse_pdf",
      .summary =
          "Inspect a local PDF, extract embedded PDF image assets, render a page image on "
          "demand, or import PDF pages as a slider group.",
      .inputSchema = schema::object(
          {
              {"operation", schema::stringEnum({"inspect", "extract_embedded_images",
                                                "render_page_image", "import_slider_group"})},
              {"pdf_path", schema::string("File URL, absolute path, board-relative path or "
                                          "zorvik-resource://resources/... path.")},
              {"page_number", positiveInteger("Page to render, 1-based.")},
              {"page_numbers", schema::array(positiveInteger(""), "Pages, 1-based.")},
              {"max_pages", positiveInteger("Most pages to import or inspect.")},
              {"max_images", positiveInteger("Most embedded images to extract.")},
              {"include_text_snippets", schema::boolean()},
              {"longest_side_px", positiveInteger("Longest side of a rendered page.")},
              {"image_format", schema::stringEnum({"png", "jpeg"})},
              {"group_title", schema::string("Title of the imported group.")},
              {"position", Schemas::pointSchema("Canvas point of the imported group.")},
              {"focus", Schemas::focusSchema()},
          },
          {"operation", "pdf_path"}),
      .outputSchema = schema::object(std::move(output), {"operation", "status"}),
      .examples = parseExamples({
          R"({"operation": "inspect", "pdf_path": "resources/annual-report.pdf",
              "include_text_snippets": true, "max_pages": 5})",
          R"({"operation": "extract_embedded_images", "pdf_path": "/Users/me/Documents/deck.pdf",
              "page_numbers": [2, 3], "max_images": 10})",
          R"({"operation": "render_page_image", "pdf_path": "resources/annual-report.pdf",
              "page_number": 4, "longest_side_px": 1600, "image_format": "png"})",
          R"({"operation": "import_slider_group", "pdf_path": "zorvik-resource://resources/deck.pdf",
              "page_numbers": [1, 2, 3], "group_title": "Pitch deck",
              "position": {"x": 400, "y": 300}, "focus": true})",
      }),
      .notes = std::string(kNotes),
      .execution = AgentToolExecutionMode::serial,
  };
}

}  // namespace zorvik
