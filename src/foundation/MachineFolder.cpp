#include "foundation/MachineFolder.h"

#include "foundation/Environment.h"
#include "foundation/TextEncoding.h"

#include <cctype>

namespace glyphmoor {

namespace fs = std::filesystem;

fs::path ResolveNoCase(const fs::path& base, std::string_view relative) {
    fs::path current = base;
    bool exists = true;
    while (!relative.empty()) {
        const auto pos = relative.find_first_of("\\/");
        const std::string_view part = relative.substr(0, pos);
        relative.remove_prefix(pos == std::string_view::npos ? relative.size() : pos + 1);
        if (part.empty() || part == ".") {
            continue;
        }
        if (part == "..") {
            current = current.parent_path();
            continue;
        }
        if (exists) {
            std::error_code ec;
            if (fs::exists(current / part, ec)) {
                current /= part;
                continue;
            }
            bool found = false;
            for (const auto& entry : fs::directory_iterator(current, ec)) {
                if (EqualsNoCase(entry.path().filename().string(), part)) {
                    current = entry.path();
                    found = true;
                    break;
                }
            }
            if (found) {
                continue;
            }
            exists = false;
        }
        current /= part;
    }
    return current;
}

Result<MachineFolder> MachineFolder::Open(const fs::path& dir) {
    std::error_code ec;
    if (!fs::is_directory(dir, ec)) {
        return Fail("the machine folder " + dir.string() + " does not exist");
    }
    if (!fs::exists(dir / "system.reg", ec) && !fs::is_directory(dir / "drive_c", ec)) {
        return Fail(dir.string() + " is not a machine folder: it holds neither system.reg nor drive_c");
    }
    return MachineFolder(fs::absolute(dir, ec));
}

fs::path MachineFolder::HiveFile(HiveId hive) const {
    switch (hive) {
        case HiveId::Machine:
            return m_dir / "system.reg";
        case HiveId::User:
            return m_dir / "user.reg";
        case HiveId::DefaultUser:
            return m_dir / "userdef.reg";
    }
    return {};
}

fs::path MachineFolder::LockFile() const {
    return m_dir;
}

fs::path MachineFolder::JournalFile() const {
    return m_dir / ".glyphmoor-journal";
}

fs::path MachineFolder::DriveRoot(char letter) const {
    const char lower = static_cast<char>(std::tolower(static_cast<unsigned char>(letter)));
    fs::path mapped = m_dir / "dosdevices" / (std::string(1, lower) + ":");
    std::error_code ec;
    if (fs::exists(mapped, ec)) {
        return mapped;
    }
    if (lower == 'c') {
        return m_dir / "drive_c";
    }
    return mapped;
}

fs::path MachineFolder::HostPath(std::string_view windowsPath) const {
    if (!IsDriveLetterPath(windowsPath)) {
        return fs::path(std::string(windowsPath));
    }
    return ResolveNoCase(DriveRoot(windowsPath[0]), windowsPath.substr(2));
}

std::string MachineFolder::WindowsPath(const fs::path& hostPath) const {
    std::error_code ec;
    const fs::path target = fs::weakly_canonical(fs::absolute(hostPath, ec), ec);
    // C: first, then the other letters; Z: (the whole host) last.
    std::string letters = "cdefghijklmnopqrstuvwxyab";
    letters += 'z';
    for (char letter : letters) {
        const fs::path root = DriveRoot(letter);
        if (!fs::exists(root, ec)) {
            continue;
        }
        const fs::path canonicalRoot = fs::canonical(root, ec);
        if (ec) {
            continue;
        }
        const fs::path relative = target.lexically_relative(canonicalRoot);
        if (relative.empty() || *relative.begin() == "..") {
            continue;
        }
        std::string out(1, static_cast<char>(std::toupper(static_cast<unsigned char>(letter))));
        out += ":";
        for (const auto& part : relative) {
            if (part == ".") {
                continue;
            }
            out += "\\";
            out += part.string();
        }
        if (out.size() == 2) {
            out += "\\";
        }
        return out;
    }
    return {};
}

std::vector<std::string> MachineFolder::Drives() const {
    std::vector<std::string> drives;
    std::error_code ec;
    for (char letter = 'a'; letter <= 'z'; ++letter) {
        if (fs::is_directory(DriveRoot(letter), ec)) {
            drives.push_back({static_cast<char>(std::toupper(static_cast<unsigned char>(letter))), ':'});
        } else if (letter == 'c') {
            drives.emplace_back("C:");
        }
    }
    return drives;
}

}  // namespace glyphmoor
