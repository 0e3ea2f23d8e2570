// ShellLink: Windows shell link files (".lnk") as bytes, written and read by
// the program itself from the published layout, so that a link made on a
// machine folder opens in the machine's own shell (Wine's or Windows').
//
// A link the program writes holds the header, the link information with the
// target's local path (in the ANSI code page and in UTF-16), and the working
// folder, arguments and icon location as UTF-16 strings; no item ID list, so
// the shell finds the target by its path. The reader takes any link, made by
// the program or by a shell, and trusts no size or offset in it.
#pragma once

#include "foundation/Result.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace glyphmoor {

struct ShellLink {
    std::string target;      // a Windows path
    std::string workingDir;  // empty: none
    std::string arguments;   // empty: none
    std::string iconFile;    // empty: none
    int iconIndex = 0;

    friend bool operator==(const ShellLink&, const ShellLink&) = default;
};

// The link's bytes. A field that is empty is left out (its flag not set).
std::vector<std::byte> ShellLinkBytes(const ShellLink& link);

// The link's fields, or why the bytes are no shell link. A link without a
// local target path (one that names only a shell item or a network share)
// reads with an empty target.
Result<ShellLink> ReadShellLink(std::span<const std::byte> bytes);

}  // namespace glyphmoor
