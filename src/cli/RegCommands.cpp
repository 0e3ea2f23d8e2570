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

// Runs a change on the machine and saves it.
template <typename Change>
int ChangeMachine(CliContext& c, Change change) {
    change(c.TheMachine().Registry());
    return c.SaveMachine() ? kExitOk : kExitFailed;
}

}  // namespace

int RegRead(CliContext& c, CommandArgs a) {
    c.out << GetRegString(c.TheMachine().Registry(), a[0], a[1]) << '\n';
    return kExitOk;
}

int RegReadDword(CliContext& c, CommandArgs a) {
    c.out << GetRegDword(c.TheMachine().Registry(), a[0], a[1]) << '\n';
    return kExitOk;
}

int RegReadBinary(CliContext& c, CommandArgs a) {
    const std::string text = GetRegBinary(c.TheMachine().Registry(), a[0], a[1]);
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
    return ChangeMachine(c, [&](RegistryStore& r) { SetRegString(r, a[0], a[1], a[2]); });
}

int RegWriteDword(CliContext& c, CommandArgs a) {
    const auto number = ParseDword(a[2]);
    if (!number) {
        c.err << "glyphmoor-cli: '" << a[2] << "' is not a 32-bit number\n";
        return kExitUsage;
    }
    return ChangeMachine(c, [&](RegistryStore& r) { SetRegDword(r, a[0], a[1], *number); });
}

int RegWriteBinary(CliContext& c, CommandArgs a) {
    const auto bytes = ParseHexPairs(a[2]);
    if (!bytes) {
        c.err << "glyphmoor-cli: '" << a[2] << "' is not hex bytes (two hex digits a byte, no separators)\n";
        return kExitUsage;
    }
    return ChangeMachine(c, [&](RegistryStore& r) { SetRegBinary(r, a[0], a[1], TextOfBytes(*bytes)); });
}

int RegDeleteValue(CliContext& c, CommandArgs a) {
    return ChangeMachine(c, [&](RegistryStore& r) { DeleteRegValue(r, a[0], a[1]); });
}

int RegDeleteKey(CliContext& c, CommandArgs a) {
    return ChangeMachine(c, [&](RegistryStore& r) { DeleteRegKey(r, a[0], a[1]); });
}

int RegCreateKey(CliContext& c, CommandArgs a) {
    return ChangeMachine(c, [&](RegistryStore& r) { CreateRegKey(r, a[0]); });
}

int RegExists(CliContext& c, CommandArgs a) {
    c.out << (RegKeyExists(c.TheMachine().Registry(), a[0]) ? "true" : "false") << '\n';
    return kExitOk;
}

int RegKeys(CliContext& c, CommandArgs a) {
    std::vector<std::string> names;
    EnumRegKeys(c.TheMachine().Registry(), a[0], names);
    for (const auto& name : names) {
        c.out << name << '\n';
    }
    return kExitOk;
}

int RegValues(CliContext& c, CommandArgs a) {
    std::vector<std::string> names;
    std::vector<std::string> datas;
    EnumRegValues(c.TheMachine().Registry(), a[0], names, datas);
    for (std::size_t i = 0; i < names.size(); ++i) {
        c.out << names[i] << '\t' << EscapeForDisplay(AnsiBytes(datas[i])) << '\n';
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
