#include "tools/slides/builtin_slide_themes.h"

namespace zorvik {
namespace {

// An opaque color.
constexpr SlideThemeColor rgb(double red, double green, double blue) {
  return {red, green, blue, 1};
}

}  // namespace

std::vector<SlideThemeSpec> builtInSlideThemes() {
  return {
      {
          .id = "editorial_light",
          .name = "Editorial Light",
          .summary = "Crisp dark typography on bright editorial surfaces.",
          .textPrimary = rgb(0.10, 0.10, 0.12),
          .textSecondary = rgb(0.32, 0.34, 0.38),
          .textInverse = rgb(0.96, 0.96, 0.97),
          .surfacePrimary = rgb(1, 1, 1),
          .surfaceSecondary = rgb(0.97, 0.97, 0.98),
          .surfaceMuted = rgb(0.94, 0.95, 0.96),
          .accentPrimary = rgb(0.11, 0.34, 0.75),
          .borderSubtle = rgb(0.83, 0.85, 0.88),
          .groupColor = "white",
      },
      {
          .id = "ocean_mist",
          .name = "Ocean Mist",
          .summary = "Cool research look with muted blue surfaces.",
          .textPrimary = rgb(0.09, 0.17, 0.24),
          .textSecondary = rgb(0.23, 0.32, 0.40),
          .textInverse = rgb(0.94, 0.96, 0.98),
          .surfacePrimary = rgb(0.93, 0.97, 1),
          .surfaceSecondary = rgb(0.88, 0.93, 0.98),
          .surfaceMuted = rgb(0.82, 0.88, 0.94),
          .accentPrimary = rgb(0.10, 0.48, 0.66),
          .borderSubtle = rgb(0.67, 0.77, 0.86),
          .groupColor = "lightBlue",
      },
      {
          .id = "warm_studio",
          .name = "Warm Studio",
          .summary = "Neutral warm palette for styling decks.",
          .textPrimary = rgb(0.20, 0.14, 0.11),
          .textSecondary = rgb(0.38, 0.30, 0.24),
          .textInverse = rgb(0.96, 0.94, 0.90),
          .surfacePrimary = rgb(0.98, 0.95, 0.90),
          .surfaceSecondary = rgb(0.95, 0.90, 0.84),
          .surfaceMuted = rgb(0.91, 0.85, 0.78),
          .accentPrimary = rgb(0.64, 0.36, 0.20),
          .borderSubtle = rgb(0.79, 0.70, 0.61),
          .groupColor = "warmGray",
      },
      {
          .id = "noir_focus",
          .name = "Noir Focus",
          .summary = "High-contrast mode for dramatic presentations.",
          .textPrimary = rgb(0.96, 0.96, 0.96),
          .textSecondary = rgb(0.75, 0.76, 0.78),
          .textInverse = rgb(0.08, 0.08, 0.10),
          .surfacePrimary = rgb(0.14, 0.14, 0.16),
          .surfaceSecondary = rgb(0.20, 0.20, 0.22),
          .surfaceMuted = rgb(0.27, 0.27, 0.30),
          .accentPrimary = rgb(0.76, 0.36, 0.16),
          .borderSubtle = rgb(0.42, 0.42, 0.46),
          .groupColor = "gray",
      },
  };
}

}  // namespace zorvik
