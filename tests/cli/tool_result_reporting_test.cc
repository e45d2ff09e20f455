#include "cli/tool_result_reporting.h"

#include <gtest/gtest.h>

#include <cmath>
#include <sstream>

#include "cli/zorvik_cli_error.h"
#include "foundation/json/decoding_error.h"

namespace zorvik {
namespace {

TEST(ToolResultReportingTest, StatusIsErrorReadsTheFourSignals) {
  const std::vector<std::pair<std::string, bool>> cases = {
      {R"({"status":"ERROR"})", true},
      {R"({"status":"error","ok":true})", true},
      {R"({"status":"ok","ok":false})", true},
      {R"({"ok":0})", false},
      {R"({"ok":"false"})", false},
      {R"({"mutation_outcome":{"status":"Partial"}})", true},
      {R"({"mutation_outcome":{"status":"failed"}})", true},
      {R"({"mutation_outcome":{"status":"applied"}})", false},
      {R"({"mutation_outcome":"failed"})", false},
      {R"({"persistence":{"status":"missing"}})", true},
      {R"({"persistence":{"status":"partial"}})", true},
      {R"({"persistence":{"status":"failed"}})", false},
      {R"([{"ok":false}])", false},
      {R"("error")", false},
      {R"({})", false},
  };
  for (const auto& [text, expected] : cases) {
    SCOPED_TRACE(text);
    EXPECT_EQ(statusIsError(AnyCodableValue::parse(text)), expected);
  }
}

TEST(ToolResultReportingTest, PrintsTheAnswerBeforeFailing) {
  std::ostringstream out;
  try {
    reportToolResult(out, AnyCodableValue::parse(R"({"ok":false})"), 8);
    FAIL() << "no failure";
  } catch (const ZorvikCLIError& error) {
    EXPECT_EQ(error.kind(), ZorvikCLIError::Kind::processFailed);
    EXPECT_EQ(error.status(), 8);
  }
  EXPECT_EQ(out.str(), "{\n  \"ok\" : false\n}\n");

  std::ostringstream unprintable;
  reportToolResult(unprintable, AnyCodableValue(JSONObject{{"x", std::nan("")}}), 6);
  EXPECT_EQ(unprintable.str(), "{}\n");
}

TEST(ToolResultReportingTest, InvocationErrorsNameTheToolAndTheCause) {
  const auto keyError = DecodingError::keyNotFound("query", {}, "debug");
  EXPECT_EQ(formatToolInvocationError("grep_cards", keyError),
            "Invalid arguments for tool 'grep_cards': Missing required key 'query'.. Run `zorvik "
            "agent tool-details grep_cards --json` for exact schema and examples.");
  const std::runtime_error plain("grep_cards query must be non-empty.");
  EXPECT_EQ(describeDecodingError(plain), "grep_cards query must be non-empty.");
  const auto corrupted =
      DecodingError::dataCorrupted({CodingKey::key("a"), CodingKey::index(2)}, "Bad");
  EXPECT_EQ(describeDecodingError(corrupted), "Bad at a.[2]");
}

}  // namespace
}  // namespace zorvik
