// readSlideStates: the state of the slide groups of a loaded project, checked against a template
// catalogue. A pure function of its arguments; never throws.
//
// Which groups:
// - With no group ids, every folder card whose group kind is "slide" (see FolderPayload), in the
//   order of the project's cards.
// - With group ids, those groups in the order asked, each once. An id that is not a UUID, names no
//   card, names a card that is not a folder, or names a folder whose group kind is not "slide" is
//   reported in `missingGroupIds` as written (each text once).
//
// Per group:
// - The template is looked up by exact id. For a known template, `slots` lists its slots in
//   template order with role and required, `slotConstraints` their fitting rules, and
//   `unresolvedSlots` the required slots without a bound card. A binding whose card id is not a
//   UUID or names no card of the project counts as no bound card; the slot still shows the id.
// - Bindings to slot ids the template lacks follow, by slot id, without role and required, so
//   that stray bindings stay visible. For an unknown or absent template every binding is such a
//   slot, and template_family, constraints and unresolved slots stay empty.
// - `in_group` tells whether the bound card is a direct child of the group (false for a card that
//   does not exist). `childFrames` lists the group's direct children in card order, only when
//   asked for.
#pragma once

#include <string>
#include <vector>

#include "tools/slides/slide_state.h"
#include "tools/slides/slide_template_catalog.h"
#include "workspace_store/workspace_project_snapshot.h"

namespace zorvik {

struct SlideStateReport {
  std::vector<SlideState> slides;
  std::vector<std::string> missingGroupIds;
};

// An empty `groupIds` means every slide group.
SlideStateReport readSlideStates(const WorkspaceProjectSnapshot& snapshot,
                                 const SlideTemplateCatalog& catalog,
                                 const std::vector<std::string>& groupIds, bool includeChildFrames);

}  // namespace zorvik
