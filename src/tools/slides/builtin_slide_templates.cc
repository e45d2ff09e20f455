#include "tools/slides/builtin_slide_templates.h"

#include <string>
#include <utility>

namespace zorvik {
namespace {

using Rect = SlideTemplateRect;
using Role = SlideSlotRole;

constexpr SlideTemplateSize kCanvas{1600, 900};
constexpr bool kRequired = true;
constexpr bool kOptional = false;

// Layout grid shared by the templates: 5% side margins, a title band at the top, and rows of two,
// three or four equal columns with gaps of 4%, 3% and 2% of the width.
constexpr double kMargin = 0.05;
constexpr double kFullWidth = 0.90;
constexpr Rect kTitleBand{kMargin, 0.06, kFullWidth, 0.14};
constexpr double kHalfWidth = 0.43;    // two columns: x 0.05 and 0.52
constexpr double kThirdWidth = 0.28;   // three columns: x 0.05, 0.36 and 0.67
constexpr double kFourthWidth = 0.21;  // four columns: x 0.05, 0.28, 0.51 and 0.74

constexpr double halfColumn(int index) { return kMargin + index * (kHalfWidth + 0.04); }
constexpr double thirdColumn(int index) { return kMargin + index * (kThirdWidth + 0.03); }
constexpr double fourthColumn(int index) { return kMargin + index * (kFourthWidth + 0.02); }

SlideTemplateSlotSpec baseSlot(std::string id, std::string title, Role role, Rect rect,
                               std::vector<std::string> types, bool required, int64_t priority) {
  SlideTemplateSlotSpec slot;
  slot.id = std::move(id);
  slot.title = std::move(title);
  slot.role = role;
  slot.rect = rect;
  slot.allowedCardTypes = std::move(types);
  slot.required = required;
  slot.priority = priority;
  return slot;
}

// A title or subtitle: one rich text card whose text shrinks to fit.
SlideTemplateSlotSpec heading(std::string id, std::string title, Role role, Rect rect,
                              bool required, int64_t priority) {
  auto slot =
      baseSlot(std::move(id), std::move(title), role, rect, {"rich_text"}, required, priority);
  slot.overflowPolicy = SlideOverflowPolicy::shrink;
  slot.minHeightFactor = 0.8;
  slot.maxHeightFactor = 1.25;
  return slot;
}

// Running text that may grow the slot downwards.
SlideTemplateSlotSpec text(std::string id, std::string title, Role role, Rect rect, bool required,
                           int64_t priority) {
  auto slot =
      baseSlot(std::move(id), std::move(title), role, rect, {"rich_text"}, required, priority);
  slot.overflowPolicy = SlideOverflowPolicy::expand;
  slot.minHeightFactor = 0.75;
  slot.maxHeightFactor = 1.5;
  return slot;
}

// A table, or another of `types`, scaled down to fit.
SlideTemplateSlotSpec table(std::string id, std::string title, Role role, Rect rect, bool required,
                            int64_t priority, std::vector<std::string> types = {"table"}) {
  auto slot =
      baseSlot(std::move(id), std::move(title), role, rect, std::move(types), required, priority);
  slot.overflowPolicy = SlideOverflowPolicy::shrink;
  slot.minHeightFactor = 0.8;
  slot.maxHeightFactor = 1.5;
  return slot;
}

// An image card; heroes and thumbnails fill their slot, icons are shown whole.
SlideTemplateSlotSpec image(std::string id, std::string title, Role role, Rect rect, bool required,
                            int64_t priority, SlideImageRole imageRole, SlideAspectPolicy aspect) {
  auto slot = baseSlot(std::move(id), std::move(title), role, rect, {"image"}, required, priority);
  slot.imageRole = imageRole;
  slot.aspectPolicy = aspect;
  slot.fitPolicy =
      imageRole == SlideImageRole::icon ? SlideFitPolicy::contain : SlideFitPolicy::cover;
  slot.overflowPolicy = SlideOverflowPolicy::clip;
  slot.minWidthFactor = 0.8;
  slot.maxWidthFactor = 1.0;
  slot.minHeightFactor = 0.8;
  slot.maxHeightFactor = 1.0;
  return slot;
}

const SlideAspectPolicy kHeroAspect = SlideAspectPolicy::range(0.6, 2.4);
const SlideAspectPolicy kThumbnailAspect = SlideAspectPolicy::range(0.5, 2.0);
const SlideAspectPolicy kIconAspect = SlideAspectPolicy::range(0.5, 2.0);

SlideTemplateSpec makeTemplate(std::string id, std::string name, std::string summary,
                               SlideTemplateFamily family,
                               std::vector<SlideTemplateSlotSpec> slots) {
  return {std::move(id), std::move(name), std::move(summary), family, kCanvas, std::move(slots)};
}

// The image in one column; title, body and facts stacked in the other.
SlideTemplateSpec heroTemplate(std::string id, std::string name, std::string summary,
                               bool imageOnLeft) {
  const double imageX = imageOnLeft ? 0.05 : 0.53;
  const double textX = imageOnLeft ? 0.51 : 0.05;
  return makeTemplate(
      std::move(id), std::move(name), std::move(summary), SlideTemplateFamily::narrative,
      {
          image("hero_image", "Hero Image", Role::image, {imageX, 0.14, 0.42, 0.74}, kRequired, 100,
                SlideImageRole::hero, kHeroAspect),
          heading("title", "Title", Role::title, {textX, 0.14, 0.44, 0.20}, kRequired, 90),
          text("body", "Body", Role::body, {textX, 0.37, 0.44, 0.26}, kRequired, 80),
          table("facts_table", "Facts Table", Role::table, {textX, 0.66, 0.44, 0.22}, kOptional,
                60),
      });
}

// A title band over a row of `count` equal text panels, with a table below.
std::vector<SlideTemplateSlotSpec> bandedPanels(std::string title, std::string panelPrefix,
                                                std::string panelTitlePrefix, Role panelRole,
                                                int count, std::string tableId,
                                                std::string tableTitle, Role tableRole) {
  std::vector<SlideTemplateSlotSpec> slots;
  slots.push_back(heading("title", std::move(title), Role::title, kTitleBand, kRequired, 90));
  for (int index = 0; index < count; ++index) {
    const std::string number = std::to_string(index + 1);
    const double x = count == 3 ? thirdColumn(index) : fourthColumn(index);
    const double width = count == 3 ? kThirdWidth : kFourthWidth;
    slots.push_back(text(panelPrefix + number, panelTitlePrefix + number, panelRole,
                         {x, 0.24, width, 0.32}, kRequired, 80 - index));
  }
  slots.push_back(table(std::move(tableId), std::move(tableTitle), tableRole,
                        {kMargin, 0.62, kFullWidth, 0.30}, kOptional, 60));
  return slots;
}

}  // namespace

std::vector<SlideTemplateSpec> builtInSlideTemplates() {
  std::vector<SlideTemplateSpec> templates;
  templates.push_back(
      heroTemplate("hero_left", "Hero Left", "Image on left, narrative and data on right.", true));
  templates.push_back(
      heroTemplate("hero_right", "Hero Right", "Image on right, narrative on left.", false));

  templates.push_back(makeTemplate(
      "compare_split", "Compare Split",
      "Two image comparison with shared title and evidence table.", SlideTemplateFamily::comparison,
      {
          heading("title", "Title", Role::title, kTitleBand, kRequired, 90),
          image("left_image", "Left Image", Role::image, {halfColumn(0), 0.24, kHalfWidth, 0.42},
                kRequired, 85, SlideImageRole::thumbnail, kThumbnailAspect),
          image("right_image", "Right Image", Role::image, {halfColumn(1), 0.24, kHalfWidth, 0.42},
                kRequired, 85, SlideImageRole::thumbnail, kThumbnailAspect),
          table("comparison_table", "Comparison Table", Role::evidence,
                {kMargin, 0.70, kFullWidth, 0.22}, kRequired, 60),
      }));

  templates.push_back(makeTemplate(
      "data_story", "Data Story", "Narrative + table + supporting image.",
      SlideTemplateFamily::dataStory,
      {
          heading("title", "Title", Role::title, kTitleBand, kRequired, 90),
          text("body", "Narrative", Role::body, {kMargin, 0.24, 0.40, 0.66}, kRequired, 80),
          table("data_table", "Data Table", Role::table, {0.49, 0.24, 0.46, 0.38}, kRequired, 75),
          image("supporting_image", "Supporting Image", Role::image, {0.49, 0.65, 0.46, 0.25},
                kOptional, 50, SlideImageRole::thumbnail, kThumbnailAspect),
      }));

  templates.push_back(makeTemplate(
      "title_focus", "Title Focus",
      "Large title statement with supporting body and optional key table.",
      SlideTemplateFamily::narrative,
      {
          heading("title", "Title", Role::title, {0.08, 0.10, 0.84, 0.34}, kRequired, 100),
          text("body", "Body", Role::body, {0.08, 0.48, 0.50, 0.40}, kRequired, 80),
          table("facts_table", "Facts Table", Role::table, {0.62, 0.48, 0.30, 0.40}, kOptional, 60),
      }));

  templates.push_back(makeTemplate("timeline_band", "Timeline Band",
                                   "Top title with three timeline panels and optional table.",
                                   SlideTemplateFamily::timeline,
                                   bandedPanels("Title", "phase_", "Phase ", Role::timelineStep, 3,
                                                "timeline_table", "Timeline Table", Role::table)));

  templates.push_back(makeTemplate(
      "quote_feature", "Quote Feature", "Hero quote with portrait image and evidence table.",
      SlideTemplateFamily::testimonial,
      {
          heading("quote", "Quote", Role::quote, {kMargin, 0.08, 0.55, 0.34}, kRequired, 100),
          image("portrait", "Portrait", Role::image, {0.65, 0.08, 0.30, 0.56}, kRequired, 85,
                SlideImageRole::thumbnail, SlideAspectPolicy::range(0.5, 1.2)),
          text("context", "Context", Role::body, {kMargin, 0.46, 0.55, 0.18}, kOptional, 70),
          table("evidence", "Evidence", Role::evidence, {kMargin, 0.68, kFullWidth, 0.24},
                kOptional, 60),
      }));

  templates.push_back(makeTemplate(
      "gallery_triptych", "Gallery Triptych", "Three-image gallery with caption and palette table.",
      SlideTemplateFamily::gallery,
      {
          heading("title", "Title", Role::title, {kMargin, 0.06, kFullWidth, 0.12}, kRequired, 90),
          image("image_1", "Image 1", Role::image, {thirdColumn(0), 0.22, kThirdWidth, 0.46},
                kRequired, 85, SlideImageRole::thumbnail, SlideAspectPolicy::any()),
          image("image_2", "Image 2", Role::image, {thirdColumn(1), 0.22, kThirdWidth, 0.46},
                kRequired, 84, SlideImageRole::thumbnail, SlideAspectPolicy::any()),
          image("image_3", "Image 3", Role::image, {thirdColumn(2), 0.22, kThirdWidth, 0.46},
                kRequired, 83, SlideImageRole::thumbnail, SlideAspectPolicy::any()),
          text("caption", "Caption", Role::caption, {kMargin, 0.72, 0.52, 0.20}, kOptional, 50),
          table("palette_table", "Palette Table", Role::table, {0.61, 0.72, 0.34, 0.20}, kOptional,
                40),
      }));

  templates.push_back(makeTemplate(
      "section_opener", "Section Opener",
      "Big title, subtitle and optional hero strip for chapter transitions.",
      SlideTemplateFamily::sectionOpener,
      {
          heading("title", "Section Title", Role::title, {0.08, 0.22, 0.84, 0.26}, kRequired, 100),
          heading("subtitle", "Subtitle", Role::subtitle, {0.08, 0.50, 0.84, 0.12}, kOptional, 85),
          image("hero_strip", "Hero Strip", Role::image, {0.08, 0.68, 0.84, 0.22}, kOptional, 60,
                SlideImageRole::hero, SlideAspectPolicy::range(2.0, 8.0)),
      }));

  templates.push_back(makeTemplate("kpi_dashboard", "KPI Dashboard",
                                   "Headline, four KPI slots, and optional metrics table.",
                                   SlideTemplateFamily::kpiDashboard,
                                   bandedPanels("Headline", "kpi_", "KPI ", Role::kpi, 4,
                                                "metrics_table", "Metrics Table", Role::metric)));

  templates.push_back(makeTemplate("roadmap_lane", "Roadmap Lane",
                                   "Roadmap timeline with 4 phase blocks and a milestone table.",
                                   SlideTemplateFamily::roadmap,
                                   bandedPanels("Roadmap Title", "phase_", "Phase ", Role::phase, 4,
                                                "milestones", "Milestones", Role::table)));

  templates.push_back(makeTemplate(
      "case_study_panel", "Case Study Panel",
      "Challenge/approach/outcome narrative with evidence media.", SlideTemplateFamily::caseStudy,
      {
          heading("title", "Case Title", Role::title, kTitleBand, kRequired, 90),
          text("challenge", "Challenge", Role::challenge, {thirdColumn(0), 0.24, kThirdWidth, 0.32},
               kRequired, 80),
          text("approach", "Approach", Role::approach, {thirdColumn(1), 0.24, kThirdWidth, 0.32},
               kRequired, 79),
          text("outcome", "Outcome", Role::outcome, {thirdColumn(2), 0.24, kThirdWidth, 0.32},
               kRequired, 78),
          image("evidence_image", "Evidence Image", Role::evidence,
                {halfColumn(0), 0.60, kHalfWidth, 0.32}, kOptional, 60, SlideImageRole::thumbnail,
                kThumbnailAspect),
          table("evidence_table", "Evidence Table", Role::evidence,
                {halfColumn(1), 0.60, kHalfWidth, 0.32}, kOptional, 55),
      }));

  templates.push_back(makeTemplate(
      "testimonial_spotlight", "Testimonial Spotlight",
      "Quote + attribution with portrait/icon and proof points.", SlideTemplateFamily::testimonial,
      {
          heading("quote", "Quote", Role::quote, {kMargin, 0.08, 0.60, 0.40}, kRequired, 100),
          text("attribution", "Attribution", Role::attribution, {kMargin, 0.50, 0.60, 0.10},
               kRequired, 90),
          image("portrait", "Portrait", Role::image, {0.70, 0.08, 0.25, 0.40}, kOptional, 70,
                SlideImageRole::thumbnail, SlideAspectPolicy::range(0.5, 1.2)),
          table("proof_points", "Proof Points", Role::evidence, {kMargin, 0.66, 0.72, 0.26},
                kOptional, 60, {"rich_text", "table"}),
          image("icon", "Icon", Role::image, {0.81, 0.66, 0.14, 0.26}, kOptional, 40,
                SlideImageRole::icon, kIconAspect),
      }));

  templates.push_back(makeTemplate(
      "problem_solution_split", "Problem Solution Split",
      "Clear left-right problem and solution storyline with impact metrics.",
      SlideTemplateFamily::problemSolution,
      {
          heading("title", "Title", Role::title, kTitleBand, kRequired, 90),
          text("problem", "Problem", Role::problem, {halfColumn(0), 0.24, kHalfWidth, 0.40},
               kRequired, 80),
          text("solution", "Solution", Role::solution, {halfColumn(1), 0.24, kHalfWidth, 0.40},
               kRequired, 80),
          table("impact_metrics", "Impact Metrics", Role::metric, {kMargin, 0.68, kFullWidth, 0.24},
                kOptional, 60, {"table", "rich_text"}),
      }));

  std::vector<SlideTemplateSlotSpec> processSlots{
      heading("title", "Process Title", Role::title, kTitleBand, kRequired, 90)};
  for (int index = 0; index < 3; ++index) {
    const std::string number = std::to_string(index + 1);
    const double x = thirdColumn(index);
    processSlots.push_back(image("step_" + number + "_icon", "Step " + number + " Icon",
                                 Role::image, {x, 0.24, kThirdWidth, 0.16}, kOptional, 40,
                                 SlideImageRole::icon, kIconAspect));
    processSlots.push_back(text("step_" + number, "Step " + number, Role::processStep,
                                {x, 0.42, kThirdWidth, 0.26}, kRequired, 80 - index));
  }
  processSlots.push_back(
      text("summary", "Summary", Role::summary, {kMargin, 0.72, kFullWidth, 0.20}, kOptional, 50));
  templates.push_back(makeTemplate("process_steps", "Process Steps",
                                   "Step-by-step process with icon/image tiles and summary panel.",
                                   SlideTemplateFamily::process, std::move(processSlots)));
  return templates;
}

}  // namespace zorvik
