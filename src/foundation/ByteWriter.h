// ByteWriter: the writers' counterpart of ByteReader. Little-endian integers,
// bytes and zeros appended to a buffer it owns, and fields patched at offsets
// already written (for sizes and offsets known only later). A patch outside
// what was written is a programming error and stops the program.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <span>
#include <string_view>
#include <vector>

namespace glyphmoor {

// Appends little-endian integers to any byte buffer.
template <typename Buffer>
void PutU16(Buffer& out, std::uint16_t v) {
    out.push_back(static_cast<std::byte>(v & 0xff));
    out.push_back(static_cast<std::byte>(v >> 8));
}

template <typename Buffer>
void PutU32(Buffer& out, std::uint32_t v) {
    for (int i = 0; i < 4; ++i) {
        out.push_back(static_cast<std::byte>((v >> (8 * i)) & 0xff));
    }
}

class ByteWriter {
public:
    ByteWriter() = default;
    explicit ByteWriter(std::size_t reserve) { m_bytes.reserve(reserve); }

    [[nodiscard]] std::size_t size() const { return m_bytes.size(); }
    [[nodiscard]] const std::vector<std::byte>& bytes() const { return m_bytes; }
    [[nodiscard]] std::vector<std::byte> Take() && { return std::move(m_bytes); }

    void U8(std::uint8_t v) { m_bytes.push_back(static_cast<std::byte>(v)); }
    void U16(std::uint16_t v) { PutU16(m_bytes, v); }
    void U32(std::uint32_t v) { PutU32(m_bytes, v); }
    void U64(std::uint64_t v) {
        U32(static_cast<std::uint32_t>(v));
        U32(static_cast<std::uint32_t>(v >> 32));
    }
    void Bytes(std::span<const std::byte> bytes) {
        m_bytes.insert(m_bytes.end(), bytes.begin(), bytes.end());
    }
    // The characters as bytes, and nothing else (no terminator).
    void Ascii(std::string_view text) {
        for (char c : text) {
            m_bytes.push_back(static_cast<std::byte>(c));
        }
    }
    void Zeros(std::size_t n) { m_bytes.insert(m_bytes.end(), n, std::byte{0}); }
    // Zeros up to `size` bytes in all; nothing when there are as many already.
    void PadTo(std::size_t size) {
        if (size > m_bytes.size()) {
            Zeros(size - m_bytes.size());
        }
    }
    // Zeros up to the next multiple of `alignment`.
    void Align(std::size_t alignment) { PadTo((m_bytes.size() + alignment - 1) / alignment * alignment); }

    void U16At(std::size_t at, std::uint16_t v) {
        Check(at, 2);
        m_bytes[at] = static_cast<std::byte>(v & 0xff);
        m_bytes[at + 1] = static_cast<std::byte>(v >> 8);
    }
    void U32At(std::size_t at, std::uint32_t v) {
        Check(at, 4);
        for (std::size_t i = 0; i < 4; ++i) {
            m_bytes[at + i] = static_cast<std::byte>((v >> (8 * i)) & 0xff);
        }
    }

private:
    void Check(std::size_t at, std::size_t n) const {
        if (at > m_bytes.size() || n > m_bytes.size() - at) {
            std::abort();
        }
    }

    std::vector<std::byte> m_bytes;
};

}  // namespace glyphmoor
