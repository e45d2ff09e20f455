// The themes of the built-in slide catalogue, in catalogue order.
#pragma once

#include <vector>

#include "tools/slides/slide_theme_spec.h"

namespace zorvik {

// A fresh copy on each call; SlideTemplateCatalog::standard() keeps the one the program uses.
std::vector<SlideThemeSpec> builtInSlideThemes();

}  // namespace zorvik
