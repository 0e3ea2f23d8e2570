// modProfile: the profile functions of the program, GetPrivateProfileStringA
// and WritePrivateProfileStringA, in one portable implementation.
//
// Every INI-layout file of the program goes through here: theme files,
// desktop.ini, autorun.inf, Msdos.sys. The functions take host paths; the
// caller maps a Windows path of a machine to its host file first
// (Environment::HostPath). A bare file name is not looked up in the Windows
// folder as Windows would: it is a host path like any other.
//
// The byte-level functions (ProfileGetString, ProfileSetString) speak the
// file's own bytes, Windows-1252 text or anything else, one character a byte,
// and fill a caller's buffer exactly as the Windows function fills it. The
// text-level ones (ReadProfileValue, ReadProfileKeys, WriteProfileValue) speak
// the program's UTF-8 and convert at the boundary, as the ANSI functions
// convert to the system code page.
#pragma once

#include "foundation/ProfileFile.h"
#include "foundation/Result.h"

#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace glyphmoor {

// The program reads a value into a buffer of declared size 127 and a key list
// into one of declared size 299.
inline constexpr std::uint32_t kProfileValueSize = 127;
inline constexpr std::uint32_t kProfileKeyListSize = 299;

using OptionalText = std::optional<std::string_view>;

// Reads a profile file: a missing file reads as an empty one. A file that is
// there but cannot be read (a folder, no permission) fails with the reason.
Result<ProfileFile> LoadProfileFile(const std::filesystem::path& file);

// GetPrivateProfileStringA on a file's contents. `buffer.size()` is the
// declared size. What it writes:
//   - section null: the names of the sections, each followed by NUL, then one
//     more NUL. When they do not fit, the last one is cut so that two NULs
//     end the buffer, and the result is size - 2.
//   - key null: the key names of the section (entries with "=", comments left
//     out) in the same form; when the section has none or is missing, the
//     default (with its quotes stripped).
//   - otherwise: the value, or the default (null reads as "", trailing spaces
//     removed), cut to size - 1 characters and ended with NUL. A value
//     enclosed in matching single or double quotes loses them; when it is cut,
//     its last character goes with the closing quote.
// Returns the number of characters written before the final NUL. A buffer of
// size 0 is left alone and gives 0. Nothing beyond what the function returns
// and its terminating NULs is written, so a buffer keeps its other contents.
std::uint32_t ProfileGetString(const ProfileFile& file, OptionalText section, OptionalText key,
                               OptionalText defaultValue, std::span<char> buffer);
// The same on a file; a missing or unreadable file reads as an empty one.
std::uint32_t ProfileGetString(const std::filesystem::path& file, OptionalText section, OptionalText key,
                               OptionalText defaultValue, std::span<char> buffer);

// WritePrivateProfileStringA. Key null removes the section, value null removes
// the key; otherwise the value is set (ProfileFile::SetValue). A missing file
// is created. A file that does not change is not written, except that a
// removal asked of a missing file leaves an empty file, as Windows does.
// Fails, changing nothing, when the section is null, the path is empty, the
// file is read-only or cannot be read or saved.
Status ProfileSetString(const std::filesystem::path& file, OptionalText section, OptionalText key,
                        OptionalText value);
// Saves a file's bytes transactionally.
Status SaveProfileFile(const std::filesystem::path& file, const ProfileFile& contents);

// The value the program reads: a buffer of `size + 1` characters whose
// declared size is `size`, the result cut to the returned count.
std::string ReadProfileValue(const std::filesystem::path& file, std::string_view section,
                             std::string_view key, std::string_view defaultValue = {},
                             std::uint32_t size = kProfileValueSize, std::uint32_t* count = nullptr);
// The key names of a section as the program reads them for a null key, with
// default "": a buffer of `size + 1` characters of declared size `size`.
std::vector<std::string> ReadProfileKeys(const std::filesystem::path& file, std::string_view section,
                                         std::uint32_t size = kProfileKeyListSize);
Status WriteProfileValue(const std::filesystem::path& file, std::string_view section, std::string_view key,
                         std::string_view value);

// The conversions at the boundary: a profile file's Windows-1252 bytes to
// UTF-8 and back (characters the code page lacks become "?").
std::string ProfileBytesToText(std::string_view bytes);
std::string TextToProfileBytes(std::string_view text);

}  // namespace glyphmoor
