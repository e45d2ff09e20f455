#include "tools/layout/card_size_helpers.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <string>

namespace zorvik {
namespace {

// The size before rounding, with `extraHeight` below the image.
CardSize unroundedSize(std::optional<double> aspect, double extraHeight) {
  double ratio =
      aspect && std::isfinite(*aspect) ? *aspect : CardSizeHelpers::kDefaultPortraitAspect;
  if (ratio <= CardSizeHelpers::kMinimumAspect) ratio = CardSizeHelpers::kMinimumAspect;
  CardSize size;
  if (ratio >= 1) {
    size.width = CardSizeHelpers::kLandscapeWidth;
    size.height =
        std::min(CardSizeHelpers::kLandscapeWidth / ratio, CardSizeHelpers::kMaximumHeight);
  } else {
    size.height = CardSizeHelpers::kMaximumHeight;
    size.width = CardSizeHelpers::kMaximumHeight * ratio;
  }
  size.height += extraHeight;
  return size;
}

CardSize roundedToPixels(CardSize size, double scale) {
  if (!(scale > 0) || !std::isfinite(scale)) scale = CardSizeHelpers::kDefaultScreenScale;
  return {std::round(size.width * scale) / scale, std::round(size.height * scale) / scale};
}

}  // namespace

CardSize CardSizeHelpers::cardSize(std::optional<double> aspect) {
  return cardSize(aspect, screenScale());
}

CardSize CardSizeHelpers::cardSize(std::optional<double> aspect, double scale) {
  return roundedToPixels(unroundedSize(aspect, 0), scale);
}

CardSize CardSizeHelpers::linkCardSize(std::optional<double> aspect) {
  return linkCardSize(aspect, screenScale());
}

CardSize CardSizeHelpers::linkCardSize(std::optional<double> aspect, double scale) {
  return roundedToPixels(unroundedSize(aspect, kLinkTextBandHeight), scale);
}

double CardSizeHelpers::screenScale() {
  const char* text = std::getenv("ZORVIK_SCREEN_SCALE");
  if (text == nullptr || *text == '\0') return kDefaultScreenScale;
  char* end = nullptr;
  const double scale = std::strtod(text, &end);
  if (end == text || *end != '\0' || !std::isfinite(scale) || scale <= 0) {
    return kDefaultScreenScale;
  }
  return scale;
}

}  // namespace zorvik
