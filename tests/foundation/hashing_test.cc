#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "foundation/base64.h"
#include "foundation/fnv1a.h"
#include "foundation/sha256.h"
#include "support/temp_directory.h"

namespace zorvik {
namespace {

const std::string kEmptySha = "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855";
const std::string kAbcSha = "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad";
const std::string kMillionASha = "cdc76e5c9914fb9281a1c7e284d73e67f1809a48a497200e046d39ccc7112cd0";

TEST(Sha256Test, MatchesKnownVectors) {
  EXPECT_EQ(sha256Hex(""), kEmptySha);
  EXPECT_EQ(sha256Hex("abc"), kAbcSha);
  EXPECT_EQ(sha256Hex("abcdbcdecdefdefgefghfghighijhijkijkljklmklmnlmnomnopnopq"),
            "248d6a61d20638b8e5c026930c3e6039a33ce45964ff2167f6ecedd419db06c1");
  EXPECT_EQ(sha256Hex(std::string(1000000, 'a')), kMillionASha);
}

TEST(Sha256Test, HasherStreamsResetsAndMoves) {
  Sha256Hasher hasher;
  hasher.update("a");
  hasher.update("");
  hasher.update("bc");
  EXPECT_EQ(hasher.finishHex(), kAbcSha);
  EXPECT_EQ(hasher.finishHex(), kEmptySha);  // starts over after finishing

  hasher.update("ab");
  Sha256Hasher moved(std::move(hasher));
  moved.update("c");
  Sha256Hasher assigned;
  assigned = std::move(moved);
  EXPECT_EQ(assigned.finishHex(), kAbcSha);
}

TEST(Sha256FileTest, StreamsFilesOfAnySizeAndGivesNothingForUnreadableOnes) {
  testing::TempDirectory folder;
  EXPECT_EQ(sha256HexOfFile(folder.write("empty", "")), kEmptySha);
  EXPECT_EQ(sha256HexOfFile(folder.write("abc", "abc")), kAbcSha);
  // About fifteen and a quarter 64 KiB blocks.
  EXPECT_EQ(sha256HexOfFile(folder.write("million", std::string(1000000, 'a'))), kMillionASha);
  // Exactly two blocks, with bytes that differ per position.
  std::string twoBlocks(128 * 1024, '\0');
  for (size_t i = 0; i < twoBlocks.size(); ++i) twoBlocks[i] = static_cast<char>(i * 31 % 251);
  EXPECT_EQ(sha256HexOfFile(folder.write("two", twoBlocks)), sha256Hex(twoBlocks));
  EXPECT_EQ(sha256HexOfFile(folder.path() / "missing"), std::nullopt);
  EXPECT_EQ(sha256HexOfFile(folder.path()), std::nullopt);
}

TEST(Fnv1aTest, MatchesKnownVectors) {
  EXPECT_EQ(fnv1a64(""), 0xcbf29ce484222325ULL);
  EXPECT_EQ(fnv1a64("a"), 0xaf63dc4c8601ec8cULL);
  EXPECT_EQ(fnv1a64("foobar"), 0x85944171f73967e8ULL);
  EXPECT_EQ(fnv1a64Hex("foobar"), "85944171f73967e8");
  EXPECT_EQ(fnv1a64Hex(std::string("\xff\x00", 2)).size(), 16u);
  EXPECT_NE(fnv1a64(std::string("a\0", 2)), fnv1a64("a"));
}

TEST(Base64Test, EncodesAndDecodesRfcVectors) {
  // The RFC 4648 vectors: the prefixes of "foobar".
  const char* encoded[] = {"", "Zg==", "Zm8=", "Zm9v", "Zm9vYg==", "Zm9vYmE=", "Zm9vYmFy"};
  for (size_t length = 0; length < std::size(encoded); ++length) {
    const std::string bytes = std::string("foobar").substr(0, length);
    EXPECT_EQ(base64Encode(bytes), encoded[length]);
    EXPECT_EQ(base64Decode(encoded[length]), bytes) << encoded[length];
  }
  std::string binary;
  for (int i = 0; i < 256; ++i) binary.push_back(static_cast<char>(i));
  EXPECT_EQ(base64Decode(base64Encode(binary)), binary);
  EXPECT_EQ(base64Encode("\xfb\xff"), "+/8=");
}

TEST(Base64Test, RejectsMalformedText) {
  for (const char* text : {"Zg=", "Zg", "Z===", "====", "=Zg=", "Zg==Zg==", "Zm9v\n", " Zm9v",
                           "Zm 9", "Zm9-", "Zm9_"}) {
    EXPECT_EQ(base64Decode(text), std::nullopt) << text;
  }
}

}  // namespace
}  // namespace zorvik
