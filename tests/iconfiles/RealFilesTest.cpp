// Wine's own libraries and programs, where this machine has Wine: every icon
// group loads, saves and loads back byte for byte, and every image decodes.
// Files that are known not to work sit in kKnownFailures; the test fails
// when one of them starts working, so the list stays true.
#include "iconfiles/cFileIcon.h"
#include "iconfiles/modResource.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <set>

namespace glyphmoor {
namespace {

const std::set<std::string> kKnownFailures = {};

std::vector<std::filesystem::path> WineFiles() {
    std::vector<std::filesystem::path> files;
    for (const char* dir :
         {"/usr/lib/x86_64-linux-gnu/wine/x86_64-windows", "/usr/lib/i386-linux-gnu/wine/i386-windows",
          "/usr/lib/x86_64-linux-gnu/wine/i386-windows", "/usr/lib/wine/i386-windows"}) {
        std::error_code ec;
        for (const auto& entry : std::filesystem::directory_iterator(dir, ec)) {
            const std::string ext = entry.path().extension().string();
            if (ext == ".dll" || ext == ".exe" || ext == ".exe16" || ext == ".dll16" || ext == ".drv16") {
                files.push_back(entry.path());
            }
        }
    }
    std::sort(files.begin(), files.end());
    return files;
}

TEST(WineFiles, EveryIconGroupLoadsSavesAndDecodes) {
    const auto files = WineFiles();
    if (files.empty()) {
        GTEST_SKIP() << "Wine's libraries are not installed here";
    }
    int groups = 0;
    for (const auto& file : files) {
        auto module = ExecutableModule::Open(file);
        if (!module) {
            continue;  // no resources: nothing to check
        }
        bool ok = true;
        for (std::size_t i = 0; i < module->IconGroups().size(); ++i) {
            cFileIcon icon;
            const Status s = LoadIconOfModule(*module, static_cast<int>(i), icon);
            ok = ok && s.ok();
            if (!s) {
                ADD_FAILURE() << file << " icon " << i << ": " << s.reason();
                continue;
            }
            ++groups;
            cFileIcon again;
            ASSERT_TRUE(again.LoadIconFromMemory(icon.ToBytes())) << again.Reason();
            EXPECT_EQ(again.ToBytes(), icon.ToBytes());
            for (int image = 0; image < icon.ImageCount(); ++image) {
                auto pixels = icon.DecodeImage(image);
                if (!pixels && !(IsPngImage(icon.ImageData(image)) && !PngSupported())) {
                    ok = false;
                    ADD_FAILURE() << file << " icon " << i << " image " << image << ": " << pixels.reason();
                    continue;
                }
                // An entry of 0 says 256 but some files (winecfg.exe) put a
                // smaller picture there; below 256 the entry and the image agree.
                if (pixels && icon.ImageWidth(image) < 256) {
                    EXPECT_EQ(pixels->width, icon.ImageWidth(image)) << file << " icon " << i;
                }
            }
        }
        const bool known = kKnownFailures.contains(file.filename().string());
        EXPECT_EQ(ok, !known) << file << (known ? " now works: take it off the list" : "");
    }
    EXPECT_GT(groups, 100);
}

}  // namespace
}  // namespace glyphmoor
