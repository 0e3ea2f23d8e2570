#include "themes/ShellLink.h"

#include "foundation/ByteReader.h"
#include "foundation/ByteWriter.h"
#include "foundation/TextEncoding.h"

#include <algorithm>
#include <array>
#include <optional>

namespace glyphmoor {

namespace {

constexpr std::uint32_t kHeaderSize = 0x4c;
// {00021401-0000-0000-C000-000000000046} as stored.
constexpr std::array<std::uint8_t, 16> kLinkClsid = {0x01, 0x14, 0x02, 0x00, 0x00, 0x00, 0x00, 0x00,
                                                     0xc0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46};

constexpr std::uint32_t kHasIdList = 0x1;
constexpr std::uint32_t kHasLinkInfo = 0x2;
constexpr std::uint32_t kHasName = 0x4;
constexpr std::uint32_t kHasRelativePath = 0x8;
constexpr std::uint32_t kHasWorkingDir = 0x10;
constexpr std::uint32_t kHasArguments = 0x20;
constexpr std::uint32_t kHasIconLocation = 0x40;
constexpr std::uint32_t kIsUnicode = 0x80;

constexpr std::uint32_t kVolumeIdAndLocalBasePath = 0x1;
constexpr std::uint32_t kLinkInfoHeaderWithUnicode = 0x24;
constexpr std::uint32_t kLinkInfoHeaderPlain = 0x1c;
constexpr std::uint32_t kDriveFixed = 3;
constexpr std::uint32_t kFileAttributeArchive = 0x20;
constexpr std::uint32_t kShowNormal = 1;

std::string AnsiBytes(std::string_view utf8) {
    std::string out;
    for (const char32_t c : Utf8ToCodePoints(utf8)) {
        out += static_cast<char>(CodePointToAnsi(c));
    }
    return out;
}

void PutUtf16(ByteWriter& w, std::u16string_view text) {
    for (const char16_t c : text) {
        w.U16(c);
    }
}

void PutLinkInfo(ByteWriter& w, std::string_view target) {
    const std::string ansi = AnsiBytes(target);
    const std::u16string wide = Utf8ToUtf16(target);
    const std::size_t start = w.size();
    constexpr std::uint32_t kVolumeIdSize = 0x11;  // the fields and an empty label
    const std::uint32_t volumeAt = kLinkInfoHeaderWithUnicode;
    const std::uint32_t pathAt = volumeAt + kVolumeIdSize;
    const auto suffixAt = static_cast<std::uint32_t>(pathAt + ansi.size() + 1);
    const std::uint32_t widePathAt = suffixAt + 1;
    const auto wideSuffixAt = static_cast<std::uint32_t>(widePathAt + 2 * (wide.size() + 1));
    const std::uint32_t size = wideSuffixAt + 2;

    w.U32(size);
    w.U32(kLinkInfoHeaderWithUnicode);
    w.U32(kVolumeIdAndLocalBasePath);
    w.U32(volumeAt);
    w.U32(pathAt);
    w.U32(0);  // no network share
    w.U32(suffixAt);
    w.U32(widePathAt);
    w.U32(wideSuffixAt);
    w.U32(kVolumeIdSize);
    w.U32(kDriveFixed);
    w.U32(0);     // serial number
    w.U32(0x10);  // the label follows the fields
    w.U8(0);      // an empty label
    w.Ascii(ansi);
    w.U8(0);
    w.U8(0);  // an empty common path suffix
    PutUtf16(w, wide);
    w.U16(0);
    w.U16(0);
    if (w.size() - start != size) {
        std::abort();
    }
}

void PutString(ByteWriter& w, std::string_view text) {
    const std::u16string wide = Utf8ToUtf16(text);
    w.U16(static_cast<std::uint16_t>(std::min<std::size_t>(wide.size(), 0xffff)));
    PutUtf16(w, std::u16string_view(wide).substr(0, 0xffff));
}

// A NUL-terminated string of the link information: ANSI bytes or UTF-16.
std::optional<std::string> InfoString(const ByteReader& info, std::size_t at, bool wide) {
    std::string text;
    if (!wide) {
        for (std::size_t i = at;; ++i) {
            const auto b = info.U8(i);
            if (!b) {
                return std::nullopt;
            }
            if (*b == 0) {
                return text;
            }
            AppendUtf8(text, AnsiToCodePoint(*b));
        }
    }
    std::u16string units;
    for (std::size_t i = at;; i += 2) {
        const auto u = info.U16(i);
        if (!u) {
            return std::nullopt;
        }
        if (*u == 0) {
            return Utf16ToUtf8(units);
        }
        units += static_cast<char16_t>(*u);
    }
}

// A counted string of the string data, up to its first NUL: Wine counts the
// terminator in and writes it.
std::string CountedString(std::span<const std::byte> bytes, bool wide) {
    const std::string_view raw(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    std::string text;
    if (wide) {
        std::u16string units = BytesToUtf16(raw);
        units.resize(std::min(units.size(), units.find(u'\0')));
        return Utf16ToUtf8(units);
    }
    for (const char c : raw.substr(0, raw.find('\0'))) {
        AppendUtf8(text, AnsiToCodePoint(static_cast<std::uint8_t>(c)));
    }
    return text;
}

Result<std::string> ReadLinkInfoTarget(const ByteReader& info) {
    const auto header = info.U32(4);
    const auto flags = info.U32(8);
    if (!header || *header < kLinkInfoHeaderPlain || *header > info.size() || !flags) {
        return Fail("its link information is damaged");
    }
    if ((*flags & kVolumeIdAndLocalBasePath) == 0) {
        return std::string();
    }
    const bool wide = *header >= kLinkInfoHeaderWithUnicode && info.U32(28).value_or(0) != 0;
    const std::size_t pathAt = wide ? *info.U32(28) : *info.U32(16);
    const std::size_t suffixAt = wide ? info.U32(32).value_or(0) : *info.U32(24);
    const auto path = InfoString(info, pathAt, wide);
    const auto suffix = suffixAt == 0 ? std::optional<std::string>("") : InfoString(info, suffixAt, wide);
    if (!path || !suffix) {
        return Fail("its link information names a path past its end");
    }
    return *path + *suffix;
}

}  // namespace

std::vector<std::byte> ShellLinkBytes(const ShellLink& link) {
    std::uint32_t flags = kIsUnicode;
    flags |= link.target.empty() ? 0 : kHasLinkInfo;
    flags |= link.workingDir.empty() ? 0 : kHasWorkingDir;
    flags |= link.arguments.empty() ? 0 : kHasArguments;
    flags |= link.iconFile.empty() ? 0 : kHasIconLocation;

    ByteWriter w;
    w.U32(kHeaderSize);
    for (const std::uint8_t b : kLinkClsid) {
        w.U8(b);
    }
    w.U32(flags);
    w.U32(kFileAttributeArchive);
    w.Zeros(3 * 8);  // creation, access and write times: unknown
    w.U32(0);        // the target's size: unknown
    w.U32(static_cast<std::uint32_t>(link.iconIndex));
    w.U32(kShowNormal);
    w.Zeros(2 + 2 + 4 + 4);  // no hot key; reserved
    if (!link.target.empty()) {
        PutLinkInfo(w, link.target);
    }
    for (const std::string* text : {&link.workingDir, &link.arguments, &link.iconFile}) {
        if (!text->empty()) {
            PutString(w, *text);
        }
    }
    w.U32(0);  // the terminal block: no extra data
    return std::move(w).Take();
}

Result<ShellLink> ReadShellLink(std::span<const std::byte> bytes) {
    const ByteReader r(bytes);
    if (r.U32(0) != kHeaderSize || !r.Has(0, kHeaderSize)) {
        return Fail("it is no shell link: the header is missing");
    }
    for (std::size_t i = 0; i < kLinkClsid.size(); ++i) {
        if (r.U8(4 + i) != kLinkClsid[i]) {
            return Fail("it is no shell link: the class id is another");
        }
    }
    const std::uint32_t flags = *r.U32(20);
    ShellLink link;
    link.iconIndex = *r.I32(56);
    std::size_t at = kHeaderSize;
    if ((flags & kHasIdList) != 0) {
        const auto size = r.U16(at);
        if (!size || !r.Has(at + 2, *size)) {
            return Fail("its item ID list runs past its end");
        }
        at += 2 + *size;
    }
    if ((flags & kHasLinkInfo) != 0) {
        const auto size = r.U32(at);
        const auto info = size ? r.Sub(at, *size) : std::nullopt;
        if (!info) {
            return Fail("its link information runs past its end");
        }
        link.target = TRY(ReadLinkInfoTarget(*info));
        at += *size;
    }
    const bool wide = (flags & kIsUnicode) != 0;
    std::string* const fields[] = {nullptr, nullptr, &link.workingDir, &link.arguments, &link.iconFile};
    const std::uint32_t present[] = {kHasName, kHasRelativePath, kHasWorkingDir, kHasArguments,
                                     kHasIconLocation};
    for (std::size_t i = 0; i < std::size(present); ++i) {
        if ((flags & present[i]) == 0) {
            continue;
        }
        const auto count = r.U16(at);
        const std::size_t length = count ? *count * (wide ? 2U : 1U) : 0;
        const auto text = count ? r.Bytes(at + 2, length) : std::nullopt;
        if (!text) {
            return Fail("its strings run past its end");
        }
        if (fields[i] != nullptr) {
            *fields[i] = CountedString(*text, wide);
        }
        at += 2 + length;
    }
    return link;
}

}  // namespace glyphmoor
