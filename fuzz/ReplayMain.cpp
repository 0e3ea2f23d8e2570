// Runs a fuzz target over every file of the folders (or files) named on the
// command line, so that a corpus is replayed where libFuzzer is absent.
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

int Replay(const std::filesystem::path& file) {
    std::ifstream in(file, std::ios::binary);
    std::vector<char> bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    // An empty vector has no storage; hand the target a valid pointer anyway.
    static const std::uint8_t kEmpty = 0;
    const auto* data = bytes.empty() ? &kEmpty : reinterpret_cast<const std::uint8_t*>(bytes.data());
    return LLVMFuzzerTestOneInput(data, bytes.size());
}

}  // namespace

int main(int argc, char** argv) {
    int count = 0;
    for (int i = 1; i < argc; ++i) {
        const std::filesystem::path arg(argv[i]);
        if (std::filesystem::is_directory(arg)) {
            for (const auto& entry : std::filesystem::recursive_directory_iterator(arg)) {
                if (entry.is_regular_file()) {
                    Replay(entry.path());
                    ++count;
                }
            }
        } else {
            Replay(arg);
            ++count;
        }
    }
    std::printf("replayed %d inputs\n", count);
    return count > 0 ? 0 : 1;
}
