// Card sizes from image aspect ratios, and the screen scale that rounds them.
#include "tools/layout/card_size_helpers.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <limits>
#include <optional>
#include <string>

namespace zorvik {
namespace {

// Sets ZORVIK_SCREEN_SCALE for one scope and puts the former value back.
class ScopedScreenScale {
 public:
  explicit ScopedScreenScale(const char* value) {
    if (const char* old = std::getenv(kName)) previous_ = old;
    set(value);
  }
  ~ScopedScreenScale() { set(previous_ ? previous_->c_str() : nullptr); }

 private:
  static void set(const char* value) { value ? ::setenv(kName, value, 1) : ::unsetenv(kName); }
  static constexpr const char* kName = "ZORVIK_SCREEN_SCALE";
  std::optional<std::string> previous_;
};

TEST(CardSizeHelpersTest, LandscapeIsSixHundredWideWithHeightCappedAtFiveHundred) {
  EXPECT_EQ(CardSizeHelpers::cardSize(1.0, 1), (CardSize{600, 500}));
  EXPECT_EQ(CardSizeHelpers::cardSize(1.1, 1), (CardSize{600, 500}));
  EXPECT_EQ(CardSizeHelpers::cardSize(1.5, 1), (CardSize{600, 400}));
  EXPECT_EQ(CardSizeHelpers::cardSize(2.0, 1), (CardSize{600, 300}));
  EXPECT_EQ(CardSizeHelpers::cardSize(3.0, 2), (CardSize{600, 200}));
}

TEST(CardSizeHelpersTest, PortraitIsFiveHundredHighAndDefaultsApply) {
  EXPECT_EQ(CardSizeHelpers::cardSize(0.5, 1), (CardSize{250, 500}));
  EXPECT_EQ(CardSizeHelpers::cardSize(0.99, 1), (CardSize{495, 500}));
  // Absent and non-finite aspects use the default portrait aspect 0.8.
  EXPECT_EQ(CardSizeHelpers::cardSize(std::nullopt, 1), (CardSize{400, 500}));
  EXPECT_EQ(CardSizeHelpers::cardSize(std::numeric_limits<double>::quiet_NaN(), 1),
            (CardSize{400, 500}));
  // Aspects at or below 0.1 count as 0.1; zero and negative ones too.
  EXPECT_EQ(CardSizeHelpers::cardSize(0.1, 1), (CardSize{50, 500}));
  EXPECT_EQ(CardSizeHelpers::cardSize(0.01, 1), (CardSize{50, 500}));
  EXPECT_EQ(CardSizeHelpers::cardSize(0.0, 1), (CardSize{50, 500}));
  EXPECT_EQ(CardSizeHelpers::cardSize(-3.0, 1), (CardSize{50, 500}));
}

TEST(CardSizeHelpersTest, SidesAreRoundedToThePixelGridOfTheScale) {
  // 600 / 1.9 = 315.789...; 500 * 0.375 = 187.5.
  EXPECT_EQ(CardSizeHelpers::cardSize(1.9, 1), (CardSize{600, 316}));
  EXPECT_EQ(CardSizeHelpers::cardSize(1.9, 4), (CardSize{600, 315.75}));
  EXPECT_EQ(CardSizeHelpers::cardSize(0.375, 1), (CardSize{188, 500}));
  EXPECT_EQ(CardSizeHelpers::cardSize(0.375, 2), (CardSize{187.5, 500}));
  // A scale that is no positive number rounds to whole points.
  EXPECT_EQ(CardSizeHelpers::cardSize(0.375, 0), (CardSize{188, 500}));
}

TEST(CardSizeHelpersTest, ItemCardsAddTheTextBand) {
  EXPECT_EQ(CardSizeHelpers::linkCardSize(2.0, 1), (CardSize{600, 468}));
  EXPECT_EQ(CardSizeHelpers::linkCardSize(1.0, 1), (CardSize{600, 668}));
  EXPECT_EQ(CardSizeHelpers::linkCardSize(0.5, 1), (CardSize{250, 668}));
  EXPECT_EQ(CardSizeHelpers::linkCardSize(std::nullopt, 1), (CardSize{400, 668}));
  EXPECT_EQ(CardSizeHelpers::linkCardSize(1.9, 4), (CardSize{600, 483.75}));
}

TEST(CardSizeHelpersTest, ScreenScaleComesFromTheEnvironment) {
  {
    ScopedScreenScale unset(nullptr);
    EXPECT_EQ(CardSizeHelpers::screenScale(), 1.0);
    EXPECT_EQ(CardSizeHelpers::cardSize(1.9), (CardSize{600, 316}));
  }
  {
    ScopedScreenScale four("4");
    EXPECT_EQ(CardSizeHelpers::screenScale(), 4.0);
    EXPECT_EQ(CardSizeHelpers::cardSize(1.9), (CardSize{600, 315.75}));
    EXPECT_EQ(CardSizeHelpers::linkCardSize(1.9), (CardSize{600, 483.75}));
  }
  for (const char* unusable : {"", "abc", "2x", "0", "-2", "inf", "nan"}) {
    ScopedScreenScale scale(unusable);
    EXPECT_EQ(CardSizeHelpers::screenScale(), 1.0) << '"' << unusable << '"';
  }
  ScopedScreenScale fractional("1.5");
  EXPECT_EQ(CardSizeHelpers::screenScale(), 1.5);
}

}  // namespace
}  // namespace zorvik
