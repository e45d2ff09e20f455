#include "foundation/iso8601_date.h"

#include <cstdio>

namespace zorvik {
namespace {

using namespace std::chrono;

// A cursor over the text that reads fixed-width decimal fields and literal characters.
class Scanner {
 public:
  explicit Scanner(std::string_view text) : text_(text) {}

  bool atEnd() const { return position_ == text_.size(); }

  bool isDigitAhead() const { return !atEnd() && isDigit(text_[position_]); }

  std::optional<int> digits(size_t width) {
    if (text_.size() - position_ < width) return std::nullopt;
    int value = 0;
    for (size_t i = 0; i < width; ++i) {
      char c = text_[position_ + i];
      if (!isDigit(c)) return std::nullopt;
      value = value * 10 + (c - '0');
    }
    position_ += width;
    return value;
  }

  bool literal(char expected) {
    if (atEnd() || text_[position_] != expected) return false;
    ++position_;
    return true;
  }

  char next() { return atEnd() ? '\0' : text_[position_++]; }

 private:
  static bool isDigit(char c) { return c >= '0' && c <= '9'; }

  std::string_view text_;
  size_t position_ = 0;
};

}  // namespace

Date currentDate() { return system_clock::now(); }

std::string formatISO8601(Date date) {
  const auto seconds = floor<std::chrono::seconds>(date);
  const auto day = floor<days>(seconds);
  const year_month_day ymd(day);
  const hh_mm_ss<std::chrono::seconds> time(seconds - day);
  char buffer[64];
  std::snprintf(buffer, sizeof buffer, "%04d-%02u-%02uT%02d:%02d:%02dZ",
                static_cast<int>(ymd.year()), static_cast<unsigned>(ymd.month()),
                static_cast<unsigned>(ymd.day()), static_cast<int>(time.hours().count()),
                static_cast<int>(time.minutes().count()), static_cast<int>(time.seconds().count()));
  return buffer;
}

std::optional<Date> parseISO8601(std::string_view text) {
  Scanner scan(text);
  const auto year = scan.digits(4);
  if (!year || !scan.literal('-')) return std::nullopt;
  const auto month = scan.digits(2);
  if (!month || !scan.literal('-')) return std::nullopt;
  const auto day = scan.digits(2);
  if (!day || !scan.literal('T')) return std::nullopt;
  const auto hour = scan.digits(2);
  if (!hour || !scan.literal(':')) return std::nullopt;
  const auto minute = scan.digits(2);
  if (!minute || !scan.literal(':')) return std::nullopt;
  const auto second = scan.digits(2);
  if (!second) return std::nullopt;

  microseconds fraction{0};
  if (scan.literal('.')) {
    if (!scan.isDigitAhead()) return std::nullopt;
    int64_t scale = 100000;
    while (scan.isDigitAhead()) {
      fraction += microseconds(*scan.digits(1) * scale);
      scale /= 10;
    }
  }

  minutes offset{0};
  const char zone = scan.next();
  if (zone == '+' || zone == '-') {
    const auto offsetHours = scan.digits(2);
    if (!offsetHours || !scan.literal(':')) return std::nullopt;
    const auto offsetMinutes = scan.digits(2);
    if (!offsetMinutes || *offsetHours > 23 || *offsetMinutes > 59) return std::nullopt;
    offset = hours(*offsetHours) + minutes(*offsetMinutes);
    if (zone == '-') offset = -offset;
  } else if (zone != 'Z') {
    return std::nullopt;
  }
  if (!scan.atEnd()) return std::nullopt;

  const year_month_day date{std::chrono::year(*year), std::chrono::month(*month),
                            std::chrono::day(*day)};
  if (!date.ok() || *hour > 23 || *minute > 59 || *second > 59) return std::nullopt;
  const sys_time<microseconds> instant =
      sys_days(date) + hours(*hour) + minutes(*minute) + seconds(*second) + fraction - offset;
  // Date counts nanoseconds in 64 bits, which spans the years 1677 to 2262 only.
  if (instant < time_point_cast<microseconds>(Date::min()) ||
      instant > time_point_cast<microseconds>(Date::max())) {
    return std::nullopt;
  }
  return time_point_cast<Date::duration>(instant);
}

}  // namespace zorvik
