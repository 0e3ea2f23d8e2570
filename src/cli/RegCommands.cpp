#include "cli/RegCommands.h"

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

std::optional<std::string> ParseHex(std::string_view hex) {
    if (hex.size() % 2 != 0) {
        return std::nullopt;
    }
    std::string bytes;
    for (std::size_t i = 0; i < hex.size(); i += 2) {
        unsigned value = 0;
        auto [ptr, ec] = std::from_chars(hex.data() + i, hex.data() + i + 2, value, 16);
        if (ec != std::errc() || ptr != hex.data() + i + 2) {
            return std::nullopt;
        }
        bytes.push_back(static_cast<char>(value));
    }
    return bytes;
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

int Read(CliContext& c, CommandArgs a);
int ReadDword(CliContext& c, CommandArgs a);
int ReadBinary(CliContext& c, CommandArgs a);
int Write(CliContext& c, CommandArgs a);
int WriteDword(CliContext& c, CommandArgs a);
int WriteBinary(CliContext& c, CommandArgs a);
int DeleteValue(CliContext& c, CommandArgs a);
int DeleteKey(CliContext& c, CommandArgs a);
int CreateKey(CliContext& c, CommandArgs a);
int Exists(CliContext& c, CommandArgs a);
int Keys(CliContext& c, CommandArgs a);
int Values(CliContext& c, CommandArgs a);

constexpr std::array<CliCommand, 12> kCommands = {{
    {"reg read", "PATH NAME", "prints the value's text, or Error", Read},
    {"reg read-dword", "PATH NAME", "prints the value as a number (10 when it cannot be read)", ReadDword},
    {"reg read-binary", "PATH NAME", "prints the value's bytes in hex, or Error", ReadBinary},
    {"reg write", "PATH NAME TEXT", "stores a text value, making the key when needed", Write},
    {"reg write-dword", "PATH NAME N", "stores a number value", WriteDword},
    {"reg write-binary", "PATH NAME HEX", "stores a binary value given in hex", WriteBinary},
    {"reg delete-value", "PATH NAME", "removes a value", DeleteValue},
    {"reg delete-key", "PARENTPATH SUBKEY", "removes a key", DeleteKey},
    {"reg create-key", "PATH", "makes a key and every key above it", CreateKey},
    {"reg exists", "PATH", "prints true when the key can be opened, else false", Exists},
    {"reg keys", "PATH", "prints the key's subkeys, one a line", Keys},
    {"reg values", "PATH", "prints NAME, TAB, DATA for each value", Values},
}};

const CliCommand& Command(int (*run)(CliContext&, CommandArgs)) {
    for (const auto& command : kCommands) {
        if (command.run == run) {
            return command;
        }
    }
    return kCommands.front();
}

int Read(CliContext& c, CommandArgs a) {
    if (a.size() != 2) {
        return UsageError(c, Command(Read));
    }
    Machine* machine = c.OpenMachine();
    if (machine == nullptr) {
        return kExitFailed;
    }
    c.out << GetRegString(machine->Registry(), a[0], a[1]) << '\n';
    return kExitOk;
}

int ReadDword(CliContext& c, CommandArgs a) {
    if (a.size() != 2) {
        return UsageError(c, Command(ReadDword));
    }
    Machine* machine = c.OpenMachine();
    if (machine == nullptr) {
        return kExitFailed;
    }
    c.out << GetRegDword(machine->Registry(), a[0], a[1]) << '\n';
    return kExitOk;
}

int ReadBinary(CliContext& c, CommandArgs a) {
    if (a.size() != 2) {
        return UsageError(c, Command(ReadBinary));
    }
    Machine* machine = c.OpenMachine();
    if (machine == nullptr) {
        return kExitFailed;
    }
    const std::string text = GetRegBinary(machine->Registry(), a[0], a[1]);
    if (text == kRegError) {
        c.out << text << '\n';
        return kExitOk;
    }
    static constexpr char kDigits[] = "0123456789abcdef";
    for (char b : AnsiBytes(text)) {
        const auto u = static_cast<unsigned char>(b);
        c.out << kDigits[u >> 4] << kDigits[u & 0xF];
    }
    c.out << '\n';
    return kExitOk;
}

// Runs a change on the machine and saves it.
template <typename Change>
int ChangeMachine(CliContext& c, Change change) {
    Machine* machine = c.OpenMachine();
    if (machine == nullptr) {
        return kExitFailed;
    }
    change(machine->Registry());
    return c.SaveMachine() ? kExitOk : kExitFailed;
}

int Write(CliContext& c, CommandArgs a) {
    if (a.size() != 3) {
        return UsageError(c, Command(Write));
    }
    return ChangeMachine(c, [&](RegistryStore& r) { SetRegString(r, a[0], a[1], a[2]); });
}

int WriteDword(CliContext& c, CommandArgs a) {
    if (a.size() != 3) {
        return UsageError(c, Command(WriteDword));
    }
    const auto number = ParseDword(a[2]);
    if (!number) {
        c.err << "glyphmoor-cli: '" << a[2] << "' is not a 32-bit number\n";
        return kExitUsage;
    }
    return ChangeMachine(c, [&](RegistryStore& r) { SetRegDword(r, a[0], a[1], *number); });
}

int WriteBinary(CliContext& c, CommandArgs a) {
    if (a.size() != 3) {
        return UsageError(c, Command(WriteBinary));
    }
    const auto bytes = ParseHex(a[2]);
    if (!bytes) {
        c.err << "glyphmoor-cli: '" << a[2] << "' is not hex bytes (two hex digits a byte, no separators)\n";
        return kExitUsage;
    }
    return ChangeMachine(c, [&](RegistryStore& r) { SetRegBinary(r, a[0], a[1], TextOfBytes(*bytes)); });
}

int DeleteValue(CliContext& c, CommandArgs a) {
    if (a.size() != 2) {
        return UsageError(c, Command(DeleteValue));
    }
    return ChangeMachine(c, [&](RegistryStore& r) { DeleteRegValue(r, a[0], a[1]); });
}

int DeleteKey(CliContext& c, CommandArgs a) {
    if (a.size() != 2) {
        return UsageError(c, Command(DeleteKey));
    }
    return ChangeMachine(c, [&](RegistryStore& r) { DeleteRegKey(r, a[0], a[1]); });
}

int CreateKey(CliContext& c, CommandArgs a) {
    if (a.size() != 1) {
        return UsageError(c, Command(CreateKey));
    }
    return ChangeMachine(c, [&](RegistryStore& r) { CreateRegKey(r, a[0]); });
}

int Exists(CliContext& c, CommandArgs a) {
    if (a.size() != 1) {
        return UsageError(c, Command(Exists));
    }
    Machine* machine = c.OpenMachine();
    if (machine == nullptr) {
        return kExitFailed;
    }
    c.out << (RegKeyExists(machine->Registry(), a[0]) ? "true" : "false") << '\n';
    return kExitOk;
}

int Keys(CliContext& c, CommandArgs a) {
    if (a.size() != 1) {
        return UsageError(c, Command(Keys));
    }
    Machine* machine = c.OpenMachine();
    if (machine == nullptr) {
        return kExitFailed;
    }
    std::vector<std::string> names;
    EnumRegKeys(machine->Registry(), a[0], names);
    for (const auto& name : names) {
        c.out << name << '\n';
    }
    return kExitOk;
}

int Values(CliContext& c, CommandArgs a) {
    if (a.size() != 1) {
        return UsageError(c, Command(Values));
    }
    Machine* machine = c.OpenMachine();
    if (machine == nullptr) {
        return kExitFailed;
    }
    std::vector<std::string> names;
    std::vector<std::string> datas;
    EnumRegValues(machine->Registry(), a[0], names, datas);
    for (std::size_t i = 0; i < names.size(); ++i) {
        c.out << names[i] << '\t' << EscapeForDisplay(AnsiBytes(datas[i])) << '\n';
    }
    return kExitOk;
}

}  // namespace

std::span<const CliCommand> RegCommands() {
    return kCommands;
}

std::string EscapeForDisplay(std::string_view bytes) {
    static constexpr char kDigits[] = "0123456789abcdef";
    std::string out;
    for (char b : bytes) {
        const auto u = static_cast<unsigned char>(b);
        if (u < 0x20 || u > 0x7e) {
            out += "\\x";
            out += kDigits[u >> 4];
            out += kDigits[u & 0xF];
        } else {
            out += b;
        }
    }
    return out;
}

}  // namespace glyphmoor
