#include "foundation/modProfile.h"

#include "foundation/FileIo.h"
#include "foundation/HostFiles.h"
#include "foundation/TextEncoding.h"

#include <algorithm>
#include <cstring>
#include <system_error>

namespace glyphmoor {

namespace {

// Copies a value or default into the buffer as Windows does: quotes around it
// stripped, cut to fit, NUL-terminated. Only the result and its NUL are
// written. Returns the length of the result.
std::size_t CopyEntry(std::span<char> buffer, std::string_view value) {
    bool quoted = false;
    if (value.size() > 1 && (value.front() == '\'' || value.front() == '"') &&
        value.back() == value.front()) {
        quoted = true;
        value.remove_prefix(1);
    }
    std::size_t n = std::min(value.size(), buffer.size() - 1);
    // The closing quote is dropped by dropping the last character that fits,
    // even when the value is cut before that quote: Windows does the same.
    if (quoted && buffer.size() >= value.size() && n > 0) {
        --n;
    }
    std::copy_n(value.begin(), n, buffer.begin());
    buffer[n] = '\0';
    return n;
}

std::uint32_t SectionNames(const ProfileFile& file, std::span<char> buffer) {
    const std::size_t size = buffer.size();
    if (size == 1) {
        buffer[0] = '\0';
        return 0;
    }
    // Invariant: at + room == size - 1, so the final NUL always fits.
    std::size_t room = size - 1;
    std::size_t at = 0;
    for (const auto& section : file.Sections()) {
        if (section.name.empty()) {
            continue;
        }
        const std::size_t needed = section.name.size() + 1;
        if (needed >= room) {
            std::memcpy(buffer.data() + at, section.name.data(), room - 1);
            at += room - 1;
            buffer[at++] = '\0';
            buffer[at] = '\0';
            return static_cast<std::uint32_t>(size - 2);
        }
        std::memcpy(buffer.data() + at, section.name.data(), needed - 1);
        buffer[at + needed - 1] = '\0';
        at += needed;
        room -= needed;
    }
    buffer[at] = '\0';
    return static_cast<std::uint32_t>(at);
}

// Lists the key names of a section that exists. Returns the count Windows
// gives, which is size - 2 when the list had to be cut.
std::int64_t KeyNames(const ProfileFile& file, const ProfileFile::Section& section, std::span<char> buffer) {
    const std::size_t size = buffer.size();
    std::size_t room = size;
    std::size_t at = 0;
    for (std::size_t i = section.firstLine; i < section.endLine; ++i) {
        if (room <= 2) {
            break;
        }
        const auto& line = file.Lines()[i];
        if (line.kind != ProfileFile::LineKind::Entry || !line.value || line.name.starts_with(';')) {
            continue;
        }
        const std::size_t n = std::min(line.name.size(), room - 2);
        std::memcpy(buffer.data() + at, line.name.data(), n);
        buffer[at + n] = '\0';
        room -= n + 1;
        at += n + 1;
        if (room < 2) {
            break;
        }
    }
    buffer[at] = '\0';
    if (room <= 1) {
        if (at > 0) {
            buffer[at - 1] = '\0';
        }
        return static_cast<std::int64_t>(size) - 2;
    }
    return static_cast<std::int64_t>(size - room);
}

// How a profile file keeps its text: ANSI bytes, or UTF-16 after a
// byte-order mark, which the profile functions read and write in UTF-16.
enum class ProfileEncoding { Ansi, Utf16Le, Utf16Be };

ProfileEncoding EncodingOf(std::string_view bytes) {
    if (bytes.starts_with("\xFF\xFE")) {
        return ProfileEncoding::Utf16Le;
    }
    if (bytes.starts_with("\xFE\xFF")) {
        return ProfileEncoding::Utf16Be;
    }
    return ProfileEncoding::Ansi;
}

// The text of a UTF-16 file after its byte-order mark.
std::u16string DecodeUtf16(std::string_view bytes, ProfileEncoding encoding) {
    std::u16string units;
    units.reserve(bytes.size() / 2);
    for (std::size_t i = 2; i + 1 < bytes.size(); i += 2) {
        const auto first = static_cast<std::uint8_t>(bytes[i]);
        const auto second = static_cast<std::uint8_t>(bytes[i + 1]);
        units.push_back(encoding == ProfileEncoding::Utf16Le ? static_cast<char16_t>(first | (second << 8))
                                                             : static_cast<char16_t>((first << 8) | second));
    }
    return units;
}

// A UTF-16 file's bytes, byte-order mark first.
std::string EncodeUtf16(std::u16string_view units, ProfileEncoding encoding) {
    const bool little = encoding == ProfileEncoding::Utf16Le;
    std::string bytes = little ? "\xFF\xFE" : "\xFE\xFF";
    bytes.reserve(2 + units.size() * 2);
    for (const char16_t unit : units) {
        const auto low = static_cast<char>(unit & 0xFF);
        const auto high = static_cast<char>(unit >> 8);
        bytes.push_back(little ? low : high);
        bytes.push_back(little ? high : low);
    }
    return bytes;
}

// A file's bytes; a missing file reads as an empty one. Only regular files
// are read: a folder or a pipe is refused with the reason.
Result<std::string> ReadProfileBytes(const std::filesystem::path& file) {
    std::error_code error;
    if (std::filesystem::status(file, error).type() == std::filesystem::file_type::not_found) {
        return std::string();
    }
    return ReadWholeFile(file);
}

}  // namespace

Result<ProfileFile> LoadProfileFile(const std::filesystem::path& file) {
    const auto bytes = TRY(ReadProfileBytes(file));
    const ProfileEncoding encoding = EncodingOf(bytes);
    if (encoding == ProfileEncoding::Ansi) {
        return ProfileFile::Parse(bytes);
    }
    // The ANSI functions see a Unicode file through the code page.
    return ProfileFile::Parse(TextToProfileBytes(Utf16ToUtf8(DecodeUtf16(bytes, encoding))));
}

std::uint32_t ProfileGetString(const ProfileFile& file, OptionalText section, OptionalText key,
                               OptionalText defaultValue, std::span<char> buffer) {
    if (buffer.empty()) {
        return 0;
    }
    std::string_view fallback = ProfileArgument(defaultValue.value_or(std::string_view{}));
    if (!section) {
        return SectionNames(file, buffer);
    }
    if (!key) {
        const ProfileFile::Section* found = file.FindSectionExact(*section);
        if (found != nullptr) {
            const std::int64_t count = KeyNames(file, *found, buffer);
            if (buffer[0] != '\0') {
                return static_cast<std::uint32_t>(count);
            }
        }
        return static_cast<std::uint32_t>(CopyEntry(buffer, fallback));
    }
    // Trailing spaces of the default go, but never its first character.
    while (fallback.size() > 1 && fallback.back() == ' ') {
        fallback.remove_suffix(1);
    }
    const ProfileFile::Line* entry = file.FindEntry(*section, *key);
    const std::string_view value =
        (entry != nullptr && entry->value) ? std::string_view(*entry->value) : fallback;
    return static_cast<std::uint32_t>(CopyEntry(buffer, value));
}

std::uint32_t ProfileGetString(const std::filesystem::path& file, OptionalText section, OptionalText key,
                               OptionalText defaultValue, std::span<char> buffer) {
    Result<ProfileFile> contents = LoadProfileFile(file);
    const ProfileFile empty;
    return ProfileGetString(contents ? *contents : empty, section, key, defaultValue, buffer);
}

Status SaveProfileFile(const std::filesystem::path& file, const ProfileFile& contents) {
    return SaveFileTransactionally(file, contents.Bytes());
}

Status ProfileSetString(const std::filesystem::path& file, OptionalText section, OptionalText key,
                        OptionalText value) {
    if (file.empty()) {
        return Fail("No profile file was named");
    }
    if (!section) {
        return Fail("No section was named");
    }
    const auto attributes = ReadHostAttributes(file);
    if (attributes && (*attributes & kAttrReadOnly) != 0) {
        return Fail(file.string() + " is read-only");
    }
    // Read, change and save under one lock, so that two writers of a file
    // never save over each other's change.
    auto lock = TRY(FileLock::Acquire(ProfileLockFile()));
    auto bytes = TRY(ReadProfileBytes(file));
    // A Unicode file is edited as its text and saved in its own encoding; the
    // arguments are ANSI text, as the ANSI function converts them.
    const ProfileEncoding encoding = EncodingOf(bytes);
    const bool unicode = encoding != ProfileEncoding::Ansi;
    ProfileFile contents = ProfileFile::Parse(unicode ? Utf16ToUtf8(DecodeUtf16(bytes, encoding)) : bytes);
    auto text = [&](std::string_view argument) {
        return unicode ? ProfileBytesToText(ProfileArgument(argument)) : std::string(argument);
    };
    const std::string sectionText = text(*section);
    const std::string keyText = key ? text(*key) : std::string();
    const std::string valueText = value ? text(*value) : std::string();
    bool changed = false;
    if (!key) {
        changed = contents.DeleteSection(sectionText);
    } else if (!value) {
        changed = contents.DeleteKey(sectionText, keyText);
    } else {
        changed = contents.SetValue(sectionText, keyText, valueText);
    }
    if (changed || (!attributes && (!key || !value))) {
        if (unicode) {
            return SaveFileTransactionally(file, EncodeUtf16(Utf8ToUtf16(contents.Bytes()), encoding));
        }
        return SaveProfileFile(file, contents);
    }
    return {};
}

std::string ReadProfileValue(const std::filesystem::path& file, std::string_view section,
                             std::string_view key, std::string_view defaultValue, std::uint32_t size,
                             std::uint32_t* count) {
    std::vector<char> buffer(std::size_t{size} + 1, '\0');
    const std::string ansiSection = TextToProfileBytes(section);
    const std::string ansiKey = TextToProfileBytes(key);
    const std::string ansiDefault = TextToProfileBytes(defaultValue);
    const std::uint32_t n =
        ProfileGetString(file, ansiSection, ansiKey, ansiDefault, std::span<char>(buffer.data(), size));
    if (count != nullptr) {
        *count = n;
    }
    return ProfileBytesToText(std::string_view(buffer.data(), n));
}

std::vector<std::string> ReadProfileKeys(const std::filesystem::path& file, std::string_view section,
                                         std::uint32_t size) {
    std::vector<char> buffer(std::size_t{size} + 1, '\0');
    const std::string ansiSection = TextToProfileBytes(section);
    const std::uint32_t n =
        ProfileGetString(file, ansiSection, std::nullopt, "", std::span<char>(buffer.data(), size));
    std::vector<std::string> names;
    std::string_view list(buffer.data(), n);
    while (!list.empty()) {
        const auto nul = list.find('\0');
        names.push_back(ProfileBytesToText(list.substr(0, nul)));
        list.remove_prefix(nul == std::string_view::npos ? list.size() : nul + 1);
    }
    return names;
}

Status WriteProfileValue(const std::filesystem::path& file, std::string_view section, std::string_view key,
                         std::string_view value) {
    return ProfileSetString(file, TextToProfileBytes(section), TextToProfileBytes(key),
                            TextToProfileBytes(value));
}

std::string ProfileBytesToText(std::string_view bytes) {
    std::string text;
    text.reserve(bytes.size());
    for (const char c : bytes) {
        AppendUtf8(text, AnsiToCodePoint(static_cast<std::uint8_t>(c)));
    }
    return text;
}

std::string TextToProfileBytes(std::string_view text) {
    std::string bytes;
    for (const char32_t c : Utf8ToCodePoints(text)) {
        bytes.push_back(static_cast<char>(CodePointToAnsi(c)));
    }
    return bytes;
}

}  // namespace glyphmoor
