#include "iconfiles/StringResource.h"

#include "foundation/ByteReader.h"
#include "foundation/TextEncoding.h"

namespace glyphmoor {

namespace {

constexpr unsigned kStringsPerBlock = 16;
constexpr std::uint32_t kLargestStringId = 0xFFFF;

}  // namespace

std::optional<std::string> StringOfBlock(std::span<const std::byte> block, unsigned index) {
    const ByteReader reader(block);
    std::size_t offset = 0;
    for (unsigned i = 0; i < kStringsPerBlock; ++i) {
        const auto length = reader.U16(offset);
        if (!length || !reader.Has(offset + 2, std::size_t{*length} * 2)) {
            return std::nullopt;
        }
        if (i == index) {
            std::u16string text;
            text.reserve(*length);
            for (std::size_t unit = 0; unit < *length; ++unit) {
                text.push_back(static_cast<char16_t>(*reader.U16(offset + 2 + unit * 2)));
            }
            return Utf16ToUtf8(text);
        }
        offset += 2 + std::size_t{*length} * 2;
    }
    return std::nullopt;
}

std::optional<std::string> LoadStringResource(const ExecutableModule& module, std::uint32_t id) {
    if (id > kLargestStringId) {
        return std::nullopt;
    }
    const auto blockId = static_cast<std::uint16_t>(id / kStringsPerBlock + 1);
    const ResourceData* block =
        module.Directory().Find(ResourceId::Number(kRtString), ResourceId::Number(blockId));
    if (block == nullptr) {
        return std::nullopt;
    }
    auto text = StringOfBlock(module.Data(*block), id % kStringsPerBlock);
    if (!text || text->empty()) {
        return std::nullopt;
    }
    return text;
}

}  // namespace glyphmoor
