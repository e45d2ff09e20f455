#include "foundation/json/json_writer.h"

#include <charconv>
#include <cmath>

namespace zorvik {
namespace {

constexpr std::string_view kReplacementCharacter = "\xEF\xBF\xBD";

// Length of the valid UTF-8 sequence starting at text[i], or 0 when it is not valid.
size_t validSequenceLength(std::string_view text, size_t i) {
  const auto byte = [&](size_t k) { return static_cast<unsigned char>(text[k]); };
  const unsigned char lead = byte(i);
  size_t length;
  unsigned char low = 0x80, high = 0xBF;  // bounds of the second byte
  if (lead >= 0xC2 && lead <= 0xDF) {
    length = 2;
  } else if (lead >= 0xE0 && lead <= 0xEF) {
    length = 3;
    if (lead == 0xE0) low = 0xA0;   // no overlong forms
    if (lead == 0xED) high = 0x9F;  // no surrogates
  } else if (lead >= 0xF0 && lead <= 0xF4) {
    length = 4;
    if (lead == 0xF0) low = 0x90;
    if (lead == 0xF4) high = 0x8F;  // nothing past U+10FFFF
  } else {
    return 0;
  }
  if (i + length > text.size()) return 0;
  if (byte(i + 1) < low || byte(i + 1) > high) return 0;
  for (size_t k = 2; k < length; ++k) {
    if ((byte(i + k) & 0xC0) != 0x80) return 0;
  }
  return length;
}

class Writer {
 public:
  explicit Writer(JSONStyle style) : pretty_(style == JSONStyle::pretty) {}

  bool write(const AnyCodableValue& value, int depth) {
    switch (value.kind()) {
      case AnyCodableValue::Kind::null:
        out_ += "null";
        return true;
      case AnyCodableValue::Kind::boolean:
        out_ += *value.asBool() ? "true" : "false";
        return true;
      case AnyCodableValue::Kind::integer:
        appendInteger(*value.asInt());
        return true;
      case AnyCodableValue::Kind::number:
        return appendDouble(*value.asDouble());
      case AnyCodableValue::Kind::string:
        appendJSONString(out_, *value.asString());
        return true;
      case AnyCodableValue::Kind::array:
        return writeArray(*value.asArray(), depth);
      case AnyCodableValue::Kind::object:
        return writeObject(*value.asObject(), depth);
    }
    return false;
  }

  std::string take() { return std::move(out_); }

 private:
  bool writeArray(const AnyCodableValue::Array& array, int depth) {
    if (array.empty()) {
      out_ += "[]";
      return true;
    }
    out_ += '[';
    bool first = true;
    for (const auto& element : array) {
      if (!first) out_ += ',';
      first = false;
      newline(depth + 1);
      if (!write(element, depth + 1)) return false;
    }
    newline(depth);
    out_ += ']';
    return true;
  }

  bool writeObject(const JSONObject& object, int depth) {
    if (object.empty()) {
      out_ += "{}";
      return true;
    }
    out_ += '{';
    bool first = true;
    for (const auto& [key, member] : object) {
      if (!first) out_ += ',';
      first = false;
      newline(depth + 1);
      appendJSONString(out_, key);
      out_ += pretty_ ? " : " : ":";
      if (!write(member, depth + 1)) return false;
    }
    newline(depth);
    out_ += '}';
    return true;
  }

  void newline(int depth) {
    if (!pretty_) return;
    out_ += '\n';
    out_.append(static_cast<size_t>(depth) * 2, ' ');
  }

  void appendInteger(int64_t value) {
    char buffer[24];
    auto result = std::to_chars(buffer, buffer + sizeof buffer, value);
    out_.append(buffer, result.ptr);
  }

  bool appendDouble(double value) {
    if (!std::isfinite(value)) return false;
    // Integral values of moderate size print as plain digits rather than in exponent form.
    if (std::trunc(value) == value && std::fabs(value) < 1e15) {
      if (value == 0 && std::signbit(value)) {
        out_ += "-0";
      } else {
        appendInteger(static_cast<int64_t>(value));
      }
      return true;
    }
    char buffer[32];
    auto result = std::to_chars(buffer, buffer + sizeof buffer, value);
    out_.append(buffer, result.ptr);
    return true;
  }

  bool pretty_;
  std::string out_;
};

}  // namespace

void appendJSONString(std::string& out, std::string_view text) {
  static constexpr char kHex[] = "0123456789abcdef";
  out += '"';
  size_t i = 0;
  while (i < text.size()) {
    // Copy the longest run of bytes that need no escaping and no validation in one append.
    size_t run = i;
    while (run < text.size()) {
      const unsigned char c = static_cast<unsigned char>(text[run]);
      if (c < 0x20 || c >= 0x80 || c == '"' || c == '\\' || c == '/') break;
      ++run;
    }
    out.append(text.data() + i, run - i);
    i = run;
    if (i >= text.size()) break;

    const unsigned char c = static_cast<unsigned char>(text[i]);
    if (c >= 0x80) {
      const size_t length = validSequenceLength(text, i);
      if (length == 0) {
        out += kReplacementCharacter;
        ++i;
      } else {
        out.append(text.data() + i, length);
        i += length;
      }
      continue;
    }
    switch (c) {
      case '"':
        out += "\\\"";
        break;
      case '\\':
        out += "\\\\";
        break;
      case '/':
        out += "\\/";
        break;
      case '\b':
        out += "\\b";
        break;
      case '\f':
        out += "\\f";
        break;
      case '\n':
        out += "\\n";
        break;
      case '\r':
        out += "\\r";
        break;
      case '\t':
        out += "\\t";
        break;
      default:
        out += "\\u00";
        out += kHex[c >> 4];
        out += kHex[c & 0xF];
    }
    ++i;
  }
  out += '"';
}

std::optional<std::string> writeJSON(const AnyCodableValue& value, JSONStyle style) {
  Writer writer(style);
  if (!writer.write(value, 0)) return std::nullopt;
  return writer.take();
}

}  // namespace zorvik
