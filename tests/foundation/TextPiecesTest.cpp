#include "foundation/TextPieces.h"
#include "foundation/WineRegistryText.h"

#include <gtest/gtest.h>

#include <vector>

namespace glyphmoor::test {
namespace {

std::vector<std::string> Chunks(const TextPieces& text, std::size_t size) {
    std::vector<std::string> chunks;
    WriteInChunks(text, size, [&](std::string_view chunk) {
        chunks.emplace_back(chunk);
        return true;
    });
    return chunks;
}

TEST(TextPieces, PiecesStayValidThroughCopiesAndMovesAndJoinInOrder) {
    const std::string file = "[a]\n[b]\n[c]\n";
    std::vector<TextPieces> kept;
    for (int i = 0; i < 20; ++i) {  // the vector grows: every piece is copied or moved
        TextPieces text;
        text.Borrow(std::string_view(file).substr(0, 4));
        text.Borrow(std::string_view(file).substr(4, 4));  // follows the first: joined to it
        text.Copy("x");
        text.Copy("y");  // owned after owned: one piece
        text.Borrow(std::string_view(file).substr(8));
        kept.push_back(text);
        kept.push_back(std::move(text));
    }
    for (const TextPieces& text : kept) {
        EXPECT_EQ(text.Join(), "[a]\n[b]\nxy[c]\n");
        EXPECT_EQ(text.size(), 14U);
        EXPECT_EQ(text.PieceCount(), 3U);
    }
    EXPECT_EQ(Chunks(kept.back(), 5), (std::vector<std::string>{"[a]\n[", "b]\n", "xy", "[c]\n"}));
}

TEST(TextPieces, AStopInTheMiddleStopsTheWriting) {
    const TextPieces text(std::string(10, 'a'));
    int calls = 0;
    EXPECT_FALSE(WriteInChunks(text, 3, [&](std::string_view) { return ++calls < 2; }));
    EXPECT_EQ(calls, 2);
}

// A hive of many keys saved with one change goes out as the stretches of the
// file before and after that key, borrowed, and the key written anew.
TEST(TextPieces, AHiveWithOneChangeIsWrittenFromItsFile) {
    std::string text = "WINE REGISTRY Version 2\n;; All keys relative to \\\\Machine\n";
    for (int k = 0; k < 1000; ++k) {
        text += "\n[Key" + std::to_string(1000 + k) + "] 1700000000\n\"v\"=\"" + std::to_string(k) + "\"\n";
    }
    auto hive = ParseWineRegistry(std::make_shared<const std::string>(text), "test.reg");
    ASSERT_TRUE(hive.ok()) << hive.reason();
    HiveKey* key = hive->Find("Key1500");
    ASSERT_NE(key, nullptr);
    key->SetValue("v", RegValue{kRegDword, {1, 0, 0, 0}});
    key->changed = true;
    const TextPieces pieces = SerializeWineRegistryPieces(*hive);
    EXPECT_LE(pieces.PieceCount(), 6U);
    EXPECT_EQ(pieces.Join(), SerializeWineRegistry(*hive));
    const std::string written = pieces.Join();
    const auto from = written.find("[Key1500]");
    const auto to = written.find("[Key1501]");
    ASSERT_LT(from, to);
    ASSERT_NE(to, std::string::npos);
    EXPECT_NE(written.substr(from, to - from).find("\"v\"=dword:00000001\n"), std::string::npos);
}

}  // namespace
}  // namespace glyphmoor::test
