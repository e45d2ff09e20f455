// The templates of the built-in slide catalogue, on a canvas of 1600 by 900, in catalogue order.
#pragma once

#include <vector>

#include "tools/slides/slide_template_spec.h"

namespace zorvik {

// A fresh copy on each call; SlideTemplateCatalog::standard() keeps the one the program uses.
std::vector<SlideTemplateSpec> builtInSlideTemplates();

}  // namespace zorvik
