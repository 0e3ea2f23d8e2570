#include "IconFixtures.h"

#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace glyphmoor::test {

Bytes ReadAll(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    std::vector<char> chars((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    Bytes out(chars.size());
    std::memcpy(out.data(), chars.data(), chars.size());
    return out;
}

void WriteAll(const std::string& path, const Bytes& bytes) {
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
}

std::string TestFolder() {
    const auto* info = ::testing::UnitTest::GetInstance()->current_test_info();
    std::string name = std::string(info->test_suite_name()) + "_" + info->name();
    for (char& c : name) {
        if (c == '/') {
            c = '_';
        }
    }
    const auto dir = std::filesystem::temp_directory_path() / "glyphmoor-tests" / name;
    std::filesystem::remove_all(dir);
    std::filesystem::create_directories(dir);
    return dir.string();
}

}  // namespace glyphmoor::test
