// Parses arbitrary bytes as JSON; whatever parses must write in both styles and read back equal.
// Independently, the bytes as a string value must write to JSON that reads back, with invalid UTF-8
// replaced and valid text unchanged.
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "foundation/domain_error.h"
#include "foundation/json/any_codable_value.h"
#include "foundation/json/decoding_error.h"
#include "foundation/json/json_writer.h"
#include "foundation/text.h"

namespace {

void checkRoundTrip(const zorvik::AnyCodableValue& value) {
  for (auto style : {zorvik::JSONStyle::compact, zorvik::JSONStyle::pretty}) {
    auto written = zorvik::writeJSON(value, style);
    if (!written) std::abort();  // parsed values never hold non-finite numbers
    if (!(zorvik::AnyCodableValue::parse(*written) == value)) std::abort();
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  try {
    checkRoundTrip(zorvik::AnyCodableValue::parse(text));
  } catch (const zorvik::DecodingError&) {
  } catch (const zorvik::DomainError&) {
  }

  const zorvik::AnyCodableValue asString{std::string(text)};
  auto written = zorvik::writeJSON(asString, zorvik::JSONStyle::compact);
  if (!written) std::abort();
  const zorvik::AnyCodableValue reread = zorvik::AnyCodableValue::parse(*written);
  if (zorvik::isValidUTF8(text) && !(reread == asString)) std::abort();
  return 0;
}
