// Points in time and their ISO 8601 text form.
#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>

namespace zorvik {

using Date = std::chrono::system_clock::time_point;

Date currentDate();

// "YYYY-MM-DDTHH:MM:SSZ" in UTC, truncated to the whole second at or before the date.
std::string formatISO8601(Date date);

// Accepts "YYYY-MM-DDTHH:MM:SS", optional fractional seconds ("." and one or more digits, kept to
// the microsecond), then "Z" or a "+HH:MM" / "-HH:MM" offset, and nothing more. Out-of-range fields
// (month 13, 30 February, hour 24, second 60, ...) and instants a Date cannot hold (before 1677 or
// after 2262) give nullopt.
std::optional<Date> parseISO8601(std::string_view text);

}  // namespace zorvik
