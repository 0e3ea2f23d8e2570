#include "themes/BundleCheck.h"

#include "foundation/ByteReader.h"
#include "foundation/TextEncoding.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <set>
#include <utility>

namespace glyphmoor {

namespace {

constexpr std::uint32_t kEndSignature = 0x06054b50;
constexpr std::uint32_t kZip64LocatorSignature = 0x07064b50;
constexpr std::uint32_t kCentralSignature = 0x02014b50;
constexpr std::uint32_t kLocalSignature = 0x04034b50;
constexpr std::size_t kEndSize = 22;
constexpr std::size_t kCentralSize = 46;
constexpr std::size_t kLocalSize = 30;
constexpr std::size_t kMaxComment = 0xffff;
constexpr std::size_t kMaxNameLength = 200;

constexpr std::uint16_t kFlagEncrypted = 1U << 0U;
constexpr std::uint16_t kFlagDataDescriptor = 1U << 3U;
constexpr std::uint16_t kFlagStrongEncryption = 1U << 6U;
constexpr std::uint16_t kFlagUtf8 = 1U << 11U;
constexpr std::uint16_t kFlagMaskedHeaders = 1U << 13U;

constexpr std::uint8_t kMadeOnUnix = 3;
constexpr std::uint32_t kUnixTypeMask = 0170000;
constexpr std::uint32_t kUnixRegular = 0100000;
constexpr std::uint32_t kDosFolder = 0x10;
constexpr std::uint32_t kDosVolumeLabel = 0x08;

// A name as a message shows it: printable ASCII as it is, anything else as \xHH.
std::string Shown(std::string_view name) {
    std::string shown;
    for (const char ch : name) {
        const auto byte = static_cast<unsigned char>(ch);
        if (byte >= 0x20 && byte < 0x7f) {
            shown += ch;
        } else {
            constexpr std::string_view kHex = "0123456789abcdef";
            shown += "\\x";
            shown += kHex[byte >> 4U];
            shown += kHex[byte & 0xfU];
        }
    }
    return shown;
}

Failure EntryFailure(std::string_view name, std::string_view why) {
    return Fail("the entry \"" + Shown(name) + "\" " + std::string(why));
}

bool IsValidUtf8(std::string_view text) {
    std::size_t i = 0;
    while (i < text.size()) {
        const auto lead = static_cast<unsigned char>(text[i]);
        std::size_t extra = 0;
        std::uint32_t min = 0;
        if (lead < 0x80) {
            ++i;
            continue;
        }
        if ((lead & 0xe0U) == 0xc0) {
            extra = 1;
            min = 0x80;
        } else if ((lead & 0xf0U) == 0xe0) {
            extra = 2;
            min = 0x800;
        } else if ((lead & 0xf8U) == 0xf0) {
            extra = 3;
            min = 0x10000;
        } else {
            return false;
        }
        if (extra >= text.size() - i) {
            return false;
        }
        std::uint32_t code = lead & (0x3fU >> extra);
        for (std::size_t k = 1; k <= extra; ++k) {
            const auto next = static_cast<unsigned char>(text[i + k]);
            if ((next & 0xc0U) != 0x80) {
                return false;
            }
            code = (code << 6U) | (next & 0x3fU);
        }
        if (code < min || code > 0x10ffff || (code >= 0xd800 && code <= 0xdfff)) {
            return false;
        }
        i += extra + 1;
    }
    return true;
}

bool IsDeviceName(std::string_view name) {
    const std::string_view stem = name.substr(0, name.find('.'));
    std::string upper;
    for (const char ch : stem) {
        upper += static_cast<char>(std::toupper(static_cast<unsigned char>(ch)));
    }
    while (!upper.empty() && upper.back() == ' ') {
        upper.pop_back();
    }
    static constexpr std::array<std::string_view, 4> kDevices = {"CON", "PRN", "AUX", "NUL"};
    if (std::find(kDevices.begin(), kDevices.end(), upper) != kDevices.end()) {
        return true;
    }
    return upper.size() == 4 && (upper.starts_with("COM") || upper.starts_with("LPT")) && upper[3] >= '1' &&
           upper[3] <= '9';
}

bool NamesParentFolder(std::string_view name) {
    std::size_t start = 0;
    while (start <= name.size()) {
        const std::size_t end = name.find_first_of("/\\", start);
        const std::string_view part = name.substr(start, end == std::string_view::npos ? end : end - start);
        if (part == "..") {
            return true;
        }
        if (end == std::string_view::npos) {
            break;
        }
        start = end + 1;
    }
    return false;
}

// One central-directory header and what the check needs of it.
struct CentralRecord {
    std::uint16_t madeBy = 0;
    std::uint16_t flags = 0;
    std::uint16_t method = 0;
    std::uint32_t crc = 0;
    std::uint32_t compressedSize = 0;
    std::uint32_t size = 0;
    std::uint16_t diskStart = 0;
    std::uint32_t externalAttributes = 0;
    std::uint32_t localOffset = 0;
    std::string name;
    std::size_t length = 0;  // the header with its name, extra field and comment
};

Result<CentralRecord> ReadCentralRecord(const ByteReader& cd, std::size_t at, std::size_t index) {
    const auto bad = [index](std::string_view why) {
        return Fail("central directory record " + std::to_string(index + 1) + " " + std::string(why));
    };
    if (!cd.Has(at, kCentralSize)) {
        return bad("runs past the central directory");
    }
    if (cd.U32(at) != kCentralSignature) {
        return bad("has no record signature");
    }
    CentralRecord r;
    r.madeBy = *cd.U16(at + 4);
    r.flags = *cd.U16(at + 8);
    r.method = *cd.U16(at + 10);
    r.crc = *cd.U32(at + 16);
    r.compressedSize = *cd.U32(at + 20);
    r.size = *cd.U32(at + 24);
    const std::size_t nameLength = *cd.U16(at + 28);
    const std::size_t extraLength = *cd.U16(at + 30);
    const std::size_t commentLength = *cd.U16(at + 32);
    r.diskStart = *cd.U16(at + 34);
    r.externalAttributes = *cd.U32(at + 38);
    r.localOffset = *cd.U32(at + 42);
    r.length = kCentralSize + nameLength + extraLength + commentLength;
    const auto name = cd.Bytes(at + kCentralSize, nameLength);
    if (!name || !cd.Has(at, r.length)) {
        return bad("runs past the central directory");
    }
    r.name.assign(reinterpret_cast<const char*>(name->data()), name->size());
    return r;
}

Status CheckEntryKind(const CentralRecord& r) {
    if ((r.flags & (kFlagEncrypted | kFlagStrongEncryption | kFlagMaskedHeaders)) != 0) {
        return EntryFailure(r.name, "is encrypted");
    }
    if ((r.flags & kFlagUtf8) != 0 ? !IsValidUtf8(r.name)
                                   : std::any_of(r.name.begin(), r.name.end(), [](char ch) {
                                         return static_cast<unsigned char>(ch) >= 0x80;
                                     })) {
        return EntryFailure(r.name, "has a name that is neither plain ASCII nor flagged and valid UTF-8");
    }
    if (Status named = CheckBundleEntryName(r.name); !named.ok()) {
        return EntryFailure(r.name, named.reason());
    }
    if ((r.externalAttributes & (kDosFolder | kDosVolumeLabel)) != 0) {
        return EntryFailure(r.name, "is a folder, not a file");
    }
    const std::uint32_t unixType = (r.externalAttributes >> 16U) & kUnixTypeMask;
    if ((r.madeBy >> 8U) == kMadeOnUnix && unixType != 0 && unixType != kUnixRegular) {
        return EntryFailure(r.name, unixType == 0120000 ? "is a link, not a file" : "is not a plain file");
    }
    if (r.method != 0 && r.method != 8) {
        return EntryFailure(r.name, "is compressed with method " + std::to_string(r.method) +
                                        "; bundles use stored or deflated entries");
    }
    if (r.diskStart != 0) {
        return EntryFailure(r.name, "starts on another disk of a split archive");
    }
    if (r.compressedSize == 0xffffffffU || r.size == 0xffffffffU || r.localOffset == 0xffffffffU) {
        return EntryFailure(r.name, "uses ZIP64 sizes, which no bundle needs");
    }
    if (r.size > kBundleMaxFileBytes) {
        return EntryFailure(r.name, "is larger than a bundle's limit of 16 MiB a file");
    }
    if (r.method == 0 && r.compressedSize != r.size) {
        return EntryFailure(r.name, "is stored, but its stored and declared sizes differ");
    }
    return {};
}

// The local header must say what the central directory says; gives where the
// entry's data starts.
Result<std::size_t> CheckLocalHeader(const ByteReader& archive, const CentralRecord& r,
                                     std::size_t centralStart) {
    const std::size_t at = r.localOffset;
    if (!archive.Has(at, kLocalSize) || archive.U32(at) != kLocalSignature) {
        return EntryFailure(r.name, "points at no local header");
    }
    const std::uint16_t flags = *archive.U16(at + 6);
    const std::size_t nameLength = *archive.U16(at + 26);
    const std::size_t extraLength = *archive.U16(at + 28);
    const auto name = archive.Bytes(at + kLocalSize, nameLength);
    const bool sameName =
        name && std::string_view(reinterpret_cast<const char*>(name->data()), name->size()) == r.name;
    if (!sameName || flags != r.flags || archive.U16(at + 8) != r.method) {
        return EntryFailure(r.name, "has a local header that disagrees with the central directory");
    }
    const std::uint32_t crc = *archive.U32(at + 14);
    const std::uint32_t compressed = *archive.U32(at + 18);
    const std::uint32_t size = *archive.U32(at + 22);
    const bool sameSizes = crc == r.crc && compressed == r.compressedSize && size == r.size;
    const bool deferred = (flags & kFlagDataDescriptor) != 0 && crc == 0 && compressed == 0 && size == 0;
    if (!sameSizes && !deferred) {
        return EntryFailure(r.name, "has a local header that disagrees with the central directory");
    }
    const std::size_t data = at + kLocalSize + nameLength + extraLength;
    if (data > centralStart || r.compressedSize > centralStart - data) {
        return EntryFailure(r.name, "has data that runs into the central directory or past the archive");
    }
    return data;
}

struct EndRecord {
    std::size_t at = 0;
    std::size_t entries = 0;
    std::size_t centralSize = 0;
    std::size_t centralOffset = 0;
};

Result<EndRecord> FindEndRecord(const ByteReader& archive) {
    if (archive.size() < kEndSize) {
        return Fail("it is too short to be a zip archive");
    }
    const std::size_t last = archive.size() - kEndSize;
    const std::size_t first = last > kMaxComment ? last - kMaxComment : 0;
    for (std::size_t at = last + 1; at-- > first;) {
        if (archive.U32(at) == kEndSignature && *archive.U16(at + 20) == archive.size() - at - kEndSize) {
            EndRecord end;
            end.at = at;
            const std::uint16_t disk = *archive.U16(at + 4);
            const std::uint16_t centralDisk = *archive.U16(at + 6);
            const std::uint16_t onDisk = *archive.U16(at + 8);
            const std::uint16_t total = *archive.U16(at + 10);
            end.centralSize = *archive.U32(at + 12);
            end.centralOffset = *archive.U32(at + 16);
            end.entries = total;
            if (disk != 0 || centralDisk != 0 || onDisk != total) {
                return Fail("it is a split archive; a bundle is one file");
            }
            if (total == 0xffff || end.centralSize == 0xffffffffU || end.centralOffset == 0xffffffffU ||
                (at >= 20 && archive.U32(at - 20) == kZip64LocatorSignature)) {
                return Fail("it is a ZIP64 archive, which no bundle needs");
            }
            if (end.centralOffset > at || end.centralSize != at - end.centralOffset) {
                return Fail("its end record gives a central directory that is not where it says");
            }
            return end;
        }
    }
    return Fail("it has no end record: it is no zip archive, or it was cut short");
}

// No two entries may share a byte: sorted by start, each must end before the next begins.
Status CheckNoOverlap(std::vector<std::pair<std::size_t, std::size_t>> spans,
                      const std::vector<BundleEntry>& entries, const std::vector<std::size_t>& owner) {
    std::vector<std::size_t> order(spans.size());
    for (std::size_t i = 0; i < order.size(); ++i) {
        order[i] = i;
    }
    std::sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) { return spans[a] < spans[b]; });
    for (std::size_t k = 1; k < order.size(); ++k) {
        if (spans[order[k]].first < spans[order[k - 1]].second) {
            return EntryFailure(
                entries[owner[order[k]]].name,
                "shares its bytes with the entry \"" + Shown(entries[owner[order[k - 1]]].name) + "\"");
        }
    }
    return {};
}

}  // namespace

Status CheckBundleEntryName(std::string_view name) {
    if (name.empty()) {
        return Fail("has an empty name");
    }
    if (name.find('\0') != std::string_view::npos) {
        return Fail("has a NUL in its name");
    }
    if (NamesParentFolder(name)) {
        return Fail("has \"..\" in its name, which would leave the theme's folder");
    }
    if (name.front() == '/' || name.front() == '\\') {
        return Fail("has an absolute path as its name");
    }
    if (name.size() >= 2 && std::isalpha(static_cast<unsigned char>(name[0])) != 0 && name[1] == ':') {
        return Fail("names a drive");
    }
    if (name.find('\\') != std::string_view::npos) {
        return Fail("has a backslash in its name");
    }
    if (name.find(':') != std::string_view::npos) {
        return Fail("has a colon in its name");
    }
    if (name.find('/') != std::string_view::npos) {
        return Fail("lies in a folder; a bundle holds files only, side by side");
    }
    if (std::any_of(name.begin(), name.end(), [](char ch) {
            return static_cast<unsigned char>(ch) < 0x20 ||
                   std::string_view("<>\"|?*").find(ch) != std::string_view::npos;
        })) {
        return Fail("has a character Windows does not allow in a file name");
    }
    if (name.back() == '.' || name.back() == ' ') {
        return Fail("ends in a dot or a space, which Windows drops from a file name");
    }
    if (IsDeviceName(name)) {
        return Fail("is the name of a Windows device");
    }
    if (name.size() > kMaxNameLength) {
        return Fail("has a name longer than 200 characters");
    }
    return {};
}

Result<std::vector<BundleEntry>> CheckBundle(std::span<const std::byte> bytes) {
    if (bytes.size() > kBundleMaxArchiveBytes) {
        return Fail("it is larger than a bundle's limit of 64 MiB");
    }
    const ByteReader archive(bytes);
    const EndRecord end = TRY(FindEndRecord(archive));
    if (end.entries == 0) {
        return Fail("it holds no files");
    }
    if (end.entries > kBundleMaxEntries) {
        return Fail("it holds " + std::to_string(end.entries) + " entries; a bundle holds at most 100");
    }
    const ByteReader cd = *archive.Sub(end.centralOffset, end.centralSize);
    std::vector<BundleEntry> entries;
    std::vector<std::pair<std::size_t, std::size_t>> spans;
    std::vector<std::size_t> owner;
    std::set<std::string> seen;
    std::uint64_t total = 0;
    std::size_t at = 0;
    for (std::size_t i = 0; i < end.entries; ++i) {
        const CentralRecord r = TRY(ReadCentralRecord(cd, at, i));
        at += r.length;
        TRY(CheckEntryKind(r));
        if (!seen.insert(LowerAscii(r.name)).second) {
            return EntryFailure(r.name, "repeats the name of another entry");
        }
        total += r.size;
        if (total > kBundleMaxTotalBytes) {
            return EntryFailure(r.name, "takes the bundle past its limit of 64 MiB in all");
        }
        const std::size_t data = TRY(CheckLocalHeader(archive, r, end.centralOffset));
        spans.emplace_back(r.localOffset, data + r.compressedSize);
        owner.push_back(entries.size());
        entries.push_back(
            {r.name, r.method, r.crc, r.compressedSize, r.size, static_cast<std::uint32_t>(data)});
    }
    if (at != cd.size()) {
        return Fail("its central directory holds more than its end record counts");
    }
    TRY(CheckNoOverlap(std::move(spans), entries, owner));
    return entries;
}

}  // namespace glyphmoor
