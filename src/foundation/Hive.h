// Hive: one registry file held in memory as a tree of keys.
//
// Keys and values are kept in the order Wine keeps them (names compared without
// case, a shorter name before a longer one it begins), which is also the order
// in which they are enumerated and saved. Each key and value remembers the text
// it was read from, so that a file saved without changes to a key gives that
// key's lines back byte for byte.
//
// The values of most keys stay text until they are first asked for: the
// reader checks their lines and leaves them in the key (unreadValues), and
// Values() reads them then. A large hive so loads in little more than the
// time its lines take to check, and a save writes untouched keys back as the
// text they are.
#pragma once

#include "foundation/RegistryStore.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace glyphmoor {

// Windows' own limits on keys: a name is at most 255 characters, and a key
// lies at most 512 levels below its hive's root. Wine refuses a hive file
// whose key names are longer, so a longer name is never written; deeper keys
// are refused too, so that nothing walks or frees a tree without bound.
inline constexpr std::size_t kMaxKeyNameLength = 255;
inline constexpr std::size_t kMaxKeyDepth = 512;

// Whether a key name is within Windows' limit (counted in UTF-16 units).
bool KeyNameFits(std::string_view name);

struct HiveValue {
    std::string name;  // UTF-8; empty for the unnamed value
    RegValue value;
    std::string_view raw;  // its lines in the loaded file; empty once made or changed here
};

struct HiveKey {
    std::string name;
    HiveKey* parent = nullptr;
    std::vector<std::unique_ptr<HiveKey>> subkeys;
    // Lines of the key's section whose values are not read yet (each checked,
    // no name twice); Values() reads them.
    std::string_view unreadValues;

    // What the loaded file said of this key.
    bool hasSection = false;              // the file had a [section] for it
    bool changed = false;                 // its section must be written anew
    std::string_view rawSection;          // leading lines, header and body as read
    std::string_view leading;             // blank lines and comments before its header
    std::vector<std::string> metaLines;   // "#class=...", "#link" and other '#' lines but "#time="
    std::vector<std::string> otherLines;  // lines inside the section that are not understood
    std::uint64_t modified = 0;           // last change as a FILETIME (100 ns since 1601)

    // The key's values in Wine's order, read from unreadValues the first time.
    std::vector<HiveValue>& Values();
    [[nodiscard]] const std::vector<HiveValue>& Values() const;
    [[nodiscard]] bool IsLink() const;
    [[nodiscard]] HiveKey* FindSubkey(std::string_view subkeyName) const;
    [[nodiscard]] const HiveValue* FindValue(std::string_view valueName) const;
    // Adds a subkey in its place, or returns the one of that name.
    HiveKey& AddSubkey(std::string_view subkeyName, bool& created);
    // Adds or replaces a value; returns it, and tells whether it was new.
    HiveValue& SetValue(std::string_view valueName, RegValue value, bool* created = nullptr);
    bool DeleteValue(std::string_view valueName);
    bool DeleteSubkey(std::string_view subkeyName);
    // The path from the hive's root, components joined by a backslash.
    [[nodiscard]] std::string Path() const;

private:
    mutable std::vector<HiveValue> m_values;
};

// Wine's name order: compared without case over the common length, then the
// shorter first.
int CompareRegistryNames(std::string_view a, std::string_view b);

struct Hive {
    std::shared_ptr<const std::string> source;  // the text the views point into
    std::string preamble;  // header, relative-root comment, #arch: everything before the first key
    std::string trailer;   // blank lines and comments after the last key
    std::unique_ptr<HiveKey> root = std::make_unique<HiveKey>();

    // A key by its path from the root ("" is the root); nullptr when absent.
    [[nodiscard]] HiveKey* Find(std::string_view path) const;
    // Finds or creates every key on the path; marks what it creates as changed.
    HiveKey& Create(std::string_view path, std::uint64_t now);
};

// The current time as a FILETIME.
std::uint64_t FileTimeNow();

}  // namespace glyphmoor
