// ByteReader: the one place that reads integers out of untrusted bytes.
//
// Every read checks `offset + n` against the length without overflowing, and
// a read that does not fit gives std::nullopt instead of touching memory past
// the data. Sub-ranges are views into the same bytes, never copies. All
// integers are little-endian, as in every Windows file format the program
// reads.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

namespace glyphmoor {

class ByteReader {
public:
    ByteReader() = default;
    explicit ByteReader(std::span<const std::byte> data) : m_data(data) {}

    [[nodiscard]] std::size_t size() const { return m_data.size(); }
    [[nodiscard]] std::span<const std::byte> data() const { return m_data; }

    // True when n bytes starting at offset lie inside the data.
    [[nodiscard]] bool Has(std::size_t offset, std::size_t n) const {
        return offset <= m_data.size() && n <= m_data.size() - offset;
    }

    [[nodiscard]] std::optional<std::uint8_t> U8(std::size_t offset) const {
        if (!Has(offset, 1)) {
            return std::nullopt;
        }
        return static_cast<std::uint8_t>(m_data[offset]);
    }

    [[nodiscard]] std::optional<std::uint16_t> U16(std::size_t offset) const {
        if (!Has(offset, 2)) {
            return std::nullopt;
        }
        return static_cast<std::uint16_t>(Byte(offset) | (Byte(offset + 1) << 8));
    }

    [[nodiscard]] std::optional<std::uint32_t> U32(std::size_t offset) const {
        if (!Has(offset, 4)) {
            return std::nullopt;
        }
        return static_cast<std::uint32_t>(Byte(offset)) |
               (static_cast<std::uint32_t>(Byte(offset + 1)) << 8) |
               (static_cast<std::uint32_t>(Byte(offset + 2)) << 16) |
               (static_cast<std::uint32_t>(Byte(offset + 3)) << 24);
    }

    [[nodiscard]] std::optional<std::int32_t> I32(std::size_t offset) const {
        auto v = U32(offset);
        if (!v) {
            return std::nullopt;
        }
        return static_cast<std::int32_t>(*v);
    }

    // The n bytes at offset, as a view.
    [[nodiscard]] std::optional<std::span<const std::byte>> Bytes(std::size_t offset, std::size_t n) const {
        if (!Has(offset, n)) {
            return std::nullopt;
        }
        return m_data.subspan(offset, n);
    }

    // A reader over the n bytes at offset; offsets inside it start at 0.
    [[nodiscard]] std::optional<ByteReader> Sub(std::size_t offset, std::size_t n) const {
        auto bytes = Bytes(offset, n);
        if (!bytes) {
            return std::nullopt;
        }
        return ByteReader(*bytes);
    }

    // A reader from offset to the end (empty when offset lies past the end).
    [[nodiscard]] ByteReader From(std::size_t offset) const {
        if (offset >= m_data.size()) {
            return ByteReader();
        }
        return ByteReader(m_data.subspan(offset));
    }

private:
    [[nodiscard]] unsigned Byte(std::size_t offset) const { return static_cast<unsigned>(m_data[offset]); }

    std::span<const std::byte> m_data;
};

}  // namespace glyphmoor
