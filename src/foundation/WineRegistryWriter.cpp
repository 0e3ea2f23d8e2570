#include "foundation/WineRegistryText.h"

#include "foundation/ByteReader.h"
#include "foundation/Hex.h"
#include "foundation/WineRegistryEscapes.h"

namespace glyphmoor {

namespace {

std::string FormatHeader(const HiveKey& key) {
    std::string out = "[";
    out += EscapeRegistryString(Utf8ToUtf16(key.Path()), "[]");
    // EscapeRegistryString doubles the separators, as Wine's file has them.
    out += "] ";
    const std::uint64_t seconds =
        key.modified > kUnixEpochAsFileTime ? (key.modified - kUnixEpochAsFileTime) / kTicksPerSecond : 0;
    out += std::to_string(static_cast<std::uint32_t>(seconds));
    out += "\n#time=";
    AppendHex(out, key.modified >> 32, 1);
    AppendHex(out, key.modified & 0xFFFFFFFFULL, 8);
    out += '\n';
    return out;
}

bool NeedsSection(const HiveKey& key) {
    // Wine saves a key when it has values, or no subkeys, or a class or link;
    // other keys come back by themselves from their subkeys' paths.
    if (!key.Values().empty() || key.subkeys.empty()) {
        return true;
    }
    return !key.metaLines.empty() || (key.hasSection && !key.otherLines.empty());
}

// Text kept from the file goes out as it came (borrowed from the loaded
// file), but for a line end that the file's last line may lack and that what
// follows needs.
void AppendLines(TextPieces& out, std::string_view lines) {
    out.Borrow(lines);
    if (!lines.empty() && lines.back() != '\n') {
        out.Copy("\n");
    }
}

void AppendLine(TextPieces& out, const std::string& line) {
    out.Copy(line);
    out.Copy("\n");
}

void WriteKey(const HiveKey& key, TextPieces& out) {
    if (key.hasSection && !key.changed) {
        AppendLines(out, key.rawSection);
    } else if ((key.hasSection || key.changed) && NeedsSection(key)) {
        if (key.hasSection) {
            out.Borrow(key.leading);
        } else {
            out.Copy("\n");
        }
        out.Copy(FormatHeader(key));
        for (const auto& meta : key.metaLines) {
            AppendLine(out, meta);
        }
        for (const auto& value : key.Values()) {
            if (!value.raw.empty()) {
                AppendLines(out, value.raw);
            } else {
                out.Copy(FormatRegistryValue(value.name, value.value));
            }
        }
        for (const auto& other : key.otherLines) {
            AppendLine(out, other);
        }
    }
    for (const auto& sub : key.subkeys) {
        WriteKey(*sub, out);
    }
}

// Only properly terminated strings are written as text.
bool IsTerminatedText(const std::vector<std::uint8_t>& data) {
    return data.size() >= 2 && data.size() % 2 == 0 && data[data.size() - 1] == 0 &&
           data[data.size() - 2] == 0;
}

// A string value: "str(TYPE):" unless it is REG_SZ, then the quoted text.
void AppendTextData(std::string& out, const RegValue& value) {
    if (value.type != kRegSz) {
        out += "str(";
        AppendHex(out, value.type, 1);
        out += "):";
    }
    const auto& data = value.data;
    std::u16string text;
    text.reserve(data.size() / 2 - 1);
    for (std::size_t i = 0; i + 2 < data.size(); i += 2) {
        text.push_back(static_cast<char16_t>(data[i] | (data[i + 1] << 8)));
    }
    out += '"';
    out += EscapeRegistryString(text, "\"\"");
    out += "\"\n";
}

// Any other value as "hex:" (binary) or "hex(TYPE):" and its bytes, a line
// going on after a backslash once it passes 76 characters, as Wine wraps it.
void AppendHexData(std::string& out, const RegValue& value) {
    std::size_t count = out.size();
    const std::size_t before = out.size();
    if (value.type == kRegBinary) {
        out += "hex:";
    } else {
        out += "hex(";
        AppendHex(out, value.type, 1);
        out += "):";
    }
    count += out.size() - before;
    const auto& data = value.data;
    for (std::size_t i = 0; i < data.size(); ++i) {
        AppendHexByte(out, data[i]);
        count += 2;
        if (i + 1 < data.size()) {
            out += ',';
            if (++count > 76) {
                out += "\\\n  ";
                count = 2;
            }
        }
    }
    out += '\n';
}

}  // namespace

std::string FormatRegistryValue(std::string_view name, const RegValue& value) {
    std::string out;
    if (name.empty()) {
        out = "@=";
    } else {
        out = "\"";
        out += EscapeRegistryString(Utf8ToUtf16(name), "\"\"");
        out += "\"=";
    }
    const bool text = value.type == kRegSz || value.type == kRegExpandSz || value.type == kRegMultiSz;
    if (text && IsTerminatedText(value.data)) {
        AppendTextData(out, value);
    } else if (value.type == kRegDword && value.data.size() == 4) {
        out += "dword:";
        AppendHex(out, ByteReader(std::as_bytes(std::span(value.data))).U32(0).value_or(0), 8);
        out += '\n';
    } else {
        AppendHexData(out, value);
    }
    return out;
}

std::string NewHivePreamble(std::string_view relativeRoot, std::string_view arch) {
    std::string out(kWineRegistryHeader);
    out += "\n;; All keys relative to ";
    out += relativeRoot;
    out += "\n";
    if (!arch.empty()) {
        out += "\n#arch=";
        out += arch;
        out += "\n";
    }
    return out;
}

TextPieces SerializeWineRegistryPieces(const Hive& hive) {
    TextPieces out;
    AppendLines(out, hive.preamble);
    WriteKey(*hive.root, out);
    out.Borrow(hive.trailer);
    return out;
}

std::string SerializeWineRegistry(const Hive& hive) {
    return SerializeWineRegistryPieces(hive).Join();
}

}  // namespace glyphmoor
