// A folder of its own for one test, removed with everything in it afterwards.
#pragma once

#include <filesystem>
#include <random>
#include <string>
#include <system_error>

namespace glyphmoor {

class ScratchFolder {
public:
    ScratchFolder() {
        std::random_device random;
        const auto base = std::filesystem::temp_directory_path();
        do {
            m_path = base / ("glyphmoor-test-" + std::to_string(random()));
        } while (!std::filesystem::create_directory(m_path));
    }
    ~ScratchFolder() {
        std::error_code ignored;
        // Read-only files must not keep their folder alive.
        for (const auto& entry : std::filesystem::recursive_directory_iterator(m_path, ignored)) {
            std::filesystem::permissions(entry.path(), std::filesystem::perms::owner_all,
                                         std::filesystem::perm_options::add, ignored);
        }
        std::filesystem::remove_all(m_path, ignored);
    }
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;

    [[nodiscard]] const std::filesystem::path& path() const { return m_path; }

private:
    std::filesystem::path m_path;
};

}  // namespace glyphmoor
