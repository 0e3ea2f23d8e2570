#include "cli/RegCommands.h"

#include "foundation/Hex.h"
#include "foundation/TextEncoding.h"
#include "foundation/modRegistry.h"

#include <array>
#include <charconv>
#include <limits>
#include <optional>
#include <ostream>

namespace glyphmoor {

namespace {

// The program's text of one character a byte, as the bytes it stands for.
std::string AnsiBytes(std::string_view text) {
    std::string bytes;
    for (char32_t c : Utf8ToCodePoints(text)) {
        bytes.push_back(static_cast<char>(CodePointToAnsi(c)));
    }
    return bytes;
}

std::string TextOfBytes(std::string_view bytes) {
    std::string text;
    for (char b : bytes) {
        AppendUtf8(text, AnsiToCodePoint(static_cast<std::uint8_t>(b)));
    }
    return text;
}

// A decimal number from -2147483648 to 4294967295, or 0x followed by hex digits.
std::optional<std::int32_t> ParseDword(std::string_view text) {
    std::int64_t value = 0;
    const bool hex = text.starts_with("0x") || text.starts_with("0X");
    if (hex) {
        text.remove_prefix(2);
    }
    auto [ptr, ec] = std::from_chars(text.data(), text.data() + text.size(), value, hex ? 16 : 10);
    if (text.empty() || ec != std::errc() || ptr != text.data() + text.size() ||
        value < std::numeric_limits<std::int32_t>::min() ||
        value > std::numeric_limits<std::uint32_t>::max()) {
        return std::nullopt;
    }
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(value));
}

// A path whose root is one of the short names Windows' own reg tool takes
// (HKCU, HKLM, HKCR, HKU, HKCC, in any case), with the root's full name.
std::string FullPath(const std::string& path) {
    struct Short {
        std::string_view name;
        std::string_view full;
    };
    static constexpr std::array<Short, 5> kShort = {{
        {"HKCU", "HKEY_CURRENT_USER"},
        {"HKLM", "HKEY_LOCAL_MACHINE"},
        {"HKCR", "HKEY_CLASSES_ROOT"},
        {"HKU", "HKEY_USERS"},
        {"HKCC", "HKEY_CURRENT_CONFIG"},
    }};
    const auto split = path.find('\\');
    const std::string_view root = std::string_view(path).substr(0, split);
    for (const auto& entry : kShort) {
        if (EqualsNoCase(root, entry.name)) {
            return std::string(entry.full) + (split == std::string::npos ? "" : path.substr(split));
        }
    }
    return path;
}

// A value's data as `reg values` shows it: texts as text (without their
// stored NUL), a number as dword: in hex and decimal, anything else as hex.
std::string ShowValue(const RegValue& value) {
    const auto& d = value.data;
    if ((value.type == kRegSz || value.type == kRegExpandSz || value.type == kRegMultiSz) &&
        d.size() % 2 == 0) {
        std::u16string units =
            BytesToUtf16(std::string_view(reinterpret_cast<const char*>(d.data()), d.size()));
        while (!units.empty() && units.back() == u'\0') {
            units.pop_back();
        }
        return EscapeForDisplay(AnsiBytes(Utf16ToUtf8(units)));
    }
    if (value.type == kRegDword && d.size() == 4) {
        const std::uint32_t n = d[0] | (d[1] << 8) | (d[2] << 16) | (static_cast<std::uint32_t>(d[3]) << 24);
        std::string hex;
        AppendHex(hex, n, 8);
        return "dword:" + hex + " (" + std::to_string(n) + ")";
    }
    std::string out = value.type == kRegBinary ? "hex:" : "hex(" + std::to_string(value.type) + "):";
    for (std::size_t i = 0; i < d.size(); ++i) {
        if (i > 0) {
            out += ',';
        }
        AppendHexByte(out, d[i]);
    }
    return out;
}

// Runs a change on the machine and saves it. A change the store refuses
// changes nothing: it fails with the store's reason.
template <typename Change>
int ChangeMachine(CliContext& c, std::string_view command, const std::string& path, Change change) {
    const long rc = change(c.TheMachine().Registry());
    if (rc != kErrorSuccess) {
        const std::string root = path.substr(0, path.find('\\'));
        c.err << "glyphmoor-cli: " << command << ": " << (path.empty() ? "an empty path" : path) << ": ";
        if (RootFromName(root) == RootKey::None) {
            c.err << "'" << root << "' is not a root key";
        } else {
            c.err << RegErrorText(rc);
        }
        c.err << "\n";
        return kExitFailed;
    }
    return c.SaveMachine() ? kExitOk : kExitFailed;
}

}  // namespace

int RegRead(CliContext& c, CommandArgs a) {
    c.out << GetRegString(c.TheMachine().Registry(), FullPath(a[0]), a[1]) << '\n';
    return kExitOk;
}

int RegReadDword(CliContext& c, CommandArgs a) {
    c.out << GetRegDword(c.TheMachine().Registry(), FullPath(a[0]), a[1]) << '\n';
    return kExitOk;
}

int RegReadBinary(CliContext& c, CommandArgs a) {
    const std::string text = GetRegBinary(c.TheMachine().Registry(), FullPath(a[0]), a[1]);
    if (text == kRegError) {
        c.out << text << '\n';
        return kExitOk;
    }
    std::string hex;
    for (char b : AnsiBytes(text)) {
        AppendHexByte(hex, static_cast<std::uint8_t>(b));
    }
    c.out << hex << '\n';
    return kExitOk;
}

int RegWrite(CliContext& c, CommandArgs a) {
    const std::string path = FullPath(a[0]);
    return ChangeMachine(c, "reg write", path,
                         [&](RegistryStore& r) { return SetRegString(r, path, a[1], a[2]); });
}

int RegWriteDword(CliContext& c, CommandArgs a) {
    const auto number = ParseDword(a[2]);
    if (!number) {
        c.err << "glyphmoor-cli: '" << a[2] << "' is not a 32-bit number\n";
        return kExitUsage;
    }
    const std::string path = FullPath(a[0]);
    return ChangeMachine(c, "reg write-dword", path,
                         [&](RegistryStore& r) { return SetRegDword(r, path, a[1], *number); });
}

int RegWriteBinary(CliContext& c, CommandArgs a) {
    const auto bytes = ParseHexPairs(a[2]);
    if (!bytes) {
        c.err << "glyphmoor-cli: '" << a[2] << "' is not hex bytes (two hex digits a byte, no separators)\n";
        return kExitUsage;
    }
    const std::string path = FullPath(a[0]);
    return ChangeMachine(c, "reg write-binary", path,
                         [&](RegistryStore& r) { return SetRegBinary(r, path, a[1], TextOfBytes(*bytes)); });
}

int RegDeleteValue(CliContext& c, CommandArgs a) {
    const std::string path = FullPath(a[0]);
    return ChangeMachine(c, "reg delete-value", path,
                         [&](RegistryStore& r) { return DeleteRegValue(r, path, a[1]); });
}

int RegDeleteKey(CliContext& c, CommandArgs a) {
    const std::string path = FullPath(a[0]);
    return ChangeMachine(c, "reg delete-key", path,
                         [&](RegistryStore& r) { return DeleteRegKey(r, path, a[1]); });
}

int RegCreateKey(CliContext& c, CommandArgs a) {
    const std::string path = FullPath(a[0]);
    return ChangeMachine(c, "reg create-key", path, [&](RegistryStore& r) { return CreateRegKey(r, path); });
}

int RegExists(CliContext& c, CommandArgs a) {
    c.out << (RegKeyExists(c.TheMachine().Registry(), FullPath(a[0])) ? "true" : "false") << '\n';
    return kExitOk;
}

int RegKeys(CliContext& c, CommandArgs a) {
    std::vector<std::string> names;
    EnumRegKeys(c.TheMachine().Registry(), FullPath(a[0]), names);
    for (const auto& name : names) {
        c.out << name << '\n';
    }
    return kExitOk;
}

int RegValues(CliContext& c, CommandArgs a) {
    std::vector<std::pair<std::string, RegValue>> values;
    EnumRegRawValues(c.TheMachine().Registry(), FullPath(a[0]), values);
    for (const auto& [name, value] : values) {
        c.out << (name.empty() ? std::string("(Default)") : name) << '\t' << ShowValue(value) << '\n';
    }
    return kExitOk;
}

std::string EscapeForDisplay(std::string_view bytes) {
    std::string out;
    for (char b : bytes) {
        const auto u = static_cast<unsigned char>(b);
        if (u < 0x20 || u > 0x7e) {
            out += "\\x";
            AppendHexByte(out, u);
        } else {
            out += b;
        }
    }
    return out;
}

}  // namespace glyphmoor
