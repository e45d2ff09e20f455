#include "tools/mutations/contract_examples.h"

namespace zorvik {

std::vector<AnyCodableValue> parseExamples(std::initializer_list<std::string_view> texts) {
  std::vector<AnyCodableValue> examples;
  examples.reserve(texts.size());
  for (std::string_view text : texts) examples.push_back(AnyCodableValue::parse(text));
  return examples;
}

}  // namespace zorvik
