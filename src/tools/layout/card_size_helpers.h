// CardSizeHelpers: the size a new card gets from its image's aspect ratio (width over height).
//
// Landscape and square images (aspect 1 or more) get a card 600 points wide whose height is
// 600 / aspect, capped at 500 (so aspect 1.0 gives 600 x 500, 2.0 gives 600 x 300). Portrait
// images get a card 500 points high and 500 x aspect wide (0.5 gives 250 x 500). An absent or
// non-finite aspect means the default portrait aspect 0.8; aspects at or below 0.1 count as 0.1.
// An item card adds a fixed 168-point band below the image for its text. Every side is then
// rounded to the device pixel grid: round(v x scale) / scale.
//
// Pure functions; the scale comes from screenScale() unless given.
#pragma once

#include <optional>

namespace zorvik {

struct CardSize {
  double width = 0;
  double height = 0;

  bool operator==(const CardSize&) const = default;
};

struct CardSizeHelpers {
  static constexpr double kDefaultPortraitAspect = 0.8;
  static constexpr double kMinimumAspect = 0.1;
  static constexpr double kLandscapeWidth = 600;
  static constexpr double kMaximumHeight = 500;
  static constexpr double kLinkTextBandHeight = 168;
  // The backing scale when none is configured.
  static constexpr double kDefaultScreenScale = 1.0;

  static CardSize cardSize(std::optional<double> aspect);
  static CardSize cardSize(std::optional<double> aspect, double scale);
  // cardSize plus the text band of an item card.
  static CardSize linkCardSize(std::optional<double> aspect);
  static CardSize linkCardSize(std::optional<double> aspect, double scale);

  // The screen's backing scale factor: ZORVIK_SCREEN_SCALE when it is a positive finite number,
  // otherwise kDefaultScreenScale. Read at each call.
  static double screenScale();
};

}  // namespace zorvik
