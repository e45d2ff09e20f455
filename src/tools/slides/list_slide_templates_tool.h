// list_slide_templates: the slide template catalogue as an agent-facing tool.
//
// Holds its own copy of a catalogue (the built-in one unless told otherwise) and is immutable, so
// concurrent runs are safe (execution "parallel"). Ignores its input, which is an empty object.
// Never throws; a catalogue with validation issues answers status "warning" and lists them after
// the fixed notes.
#pragma once

#include "tools/framework/agent_tool.h"
#include "tools/slides/slide_template_catalog.h"

namespace zorvik {

class ListSlideTemplatesTool final : public AgentTool {
 public:
  explicit ListSlideTemplatesTool(SlideTemplateCatalog catalog = SlideTemplateCatalog::standard());

  const AgentToolSpec& spec() const override { return spec_; }
  // Answer: status ("ok" or "warning"), version, default_theme_id, templates, themes,
  // allowed_card_types (sorted), notes.
  AnyCodableValue run(const AnyCodableValue& input, const AgentToolContext& context) const override;

 private:
  SlideTemplateCatalog catalog_;
  AgentToolSpec spec_;
};

}  // namespace zorvik
