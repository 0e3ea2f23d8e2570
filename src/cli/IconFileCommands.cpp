#include "cli/IconFileCommands.h"

#include "foundation/FileIo.h"
#include "foundation/TextEncoding.h"
#include "iconfiles/cFileIcon.h"
#include "iconfiles/cResources.h"
#include "iconfiles/modResource.h"

#include <charconv>
#include <filesystem>
#include <optional>
#include <vector>

namespace glyphmoor {

namespace {

std::optional<int> ParseInt(const std::string& text) {
    int value = 0;
    const char* end = text.data() + text.size();
    auto [ptr, ec] = std::from_chars(text.data(), end, value);
    if (ec != std::errc() || ptr != end || text.empty()) {
        return std::nullopt;
    }
    return value;
}

// The icon's best image for `size` pixels as a PNG file; the exit status.
int WritePng(std::ostream& err, const cFileIcon& icon, int size, const std::string& imageLabel, int index,
             const std::filesystem::path& outFile) {
    const int best = icon.PickImage(size, 32);
    auto image = icon.DecodeImage(best);
    if (!image) {
        err << imageLabel << best << " of icon " << index << ": " << image.reason() << "\n";
        return 1;
    }
    auto png = EncodePng(*image);
    if (!png) {
        err << outFile.string() << ": " << png.reason() << "\n";
        return 1;
    }
    const std::string_view bytes(reinterpret_cast<const char*>(png->data()), png->size());
    if (!WriteFileAtomically(outFile, bytes)) {
        err << outFile.string() << ": cannot write the PNG file\n";
        return 1;
    }
    return 0;
}

}  // namespace

int CmdResources(CliContext& c, CommandArgs a) {
    const auto file = c.HostFile(a[0]);
    if (!file) {
        return kExitFailed;
    }
    std::ostream& out = c.out;
    cResources resources;
    if (!resources.GetResourceTypes(file->string())) {
        c.err << file->string() << ": " << resources.Reason() << "\n";
        return 1;
    }
    for (int i = 1; i <= resources.ResourceTypeCount(); ++i) {
        out << resources.ResourceType(i).ToString() << '\t' << resources.ResourceTypeName(i) << '\n';
    }
    for (int i = 1; i <= resources.ResourceTypeCount(); ++i) {
        const ResourceId type = resources.ResourceType(i);
        if (!resources.GetResourceNames(type)) {
            continue;  // a type whose every name lacks data lists nothing
        }
        for (int j = 1; j <= resources.ResourceNameCount(); ++j) {
            out << type.ToString() << '\t' << resources.ResourceName(j).ToString() << '\n';
        }
    }
    resources.UnloadModule();
    return 0;
}

int CmdIconCount(CliContext& c, CommandArgs a) {
    const auto file = c.HostFile(a[0]);
    if (!file) {
        return kExitFailed;
    }
    if (!std::filesystem::is_regular_file(*file)) {
        c.err << file->string() << ": no such file\n";
        return 1;
    }
    c.out << IconCountOfFile(file->string()) << '\n';
    return 0;
}

int CmdExtract(CliContext& c, CommandArgs args) {
    std::vector<std::string> positional;
    int size = 32;
    for (std::size_t i = 0; i < args.size(); ++i) {
        if (args[i] == "--size") {
            const auto n = i + 1 < args.size() ? ParseInt(args[i + 1]) : std::nullopt;
            if (!n || *n < 1 || *n > 256) {
                c.err << "--size needs a number of pixels from 1 to 256\n";
                return 2;
            }
            size = *n;
            ++i;
        } else {
            positional.push_back(args[i]);
        }
    }
    if (positional.size() != 3) {
        return UsageError(c, "extract");
    }
    for (std::size_t position : {0U, 2U}) {
        const auto file = c.HostFile(positional[position]);
        if (!file) {
            return kExitFailed;
        }
        positional[position] = file->string();
    }
    const auto index = ParseInt(positional[1]);
    if (!index) {
        c.err << "INDEX must be a whole number, not " << positional[1] << "\n";
        return 2;
    }
    const std::filesystem::path outFile = positional[2];
    const std::string extension = LowerAscii(outFile.extension().string());
    if (extension != ".ico" && extension != ".png") {
        c.err << outFile.string() << ": OUT must end in .ico or .png\n";
        return 2;
    }
    cFileIcon icon;
    if (Status s = LoadIconOfFile(positional[0], *index, icon); !s) {
        c.err << positional[0] << ": " << s.reason() << "\n";
        return 1;
    }
    if (extension == ".ico") {
        if (!icon.SaveIcon(outFile)) {
            c.err << outFile.string() << ": cannot write the icon file\n";
            return 1;
        }
        return 0;
    }
    return WritePng(c.err, icon, size, positional[0] + ": image ", *index, outFile);
}

int CmdExtractAll(CliContext& c, CommandArgs a) {
    std::ostream& err = c.err;
    const auto fileArgument = c.HostFile(a[0]);
    const auto dirArgument = fileArgument ? c.HostFile(a[1]) : std::nullopt;
    if (!dirArgument) {
        return kExitFailed;
    }
    const std::filesystem::path& file = *fileArgument;
    const std::filesystem::path& dir = *dirArgument;
    std::error_code ec;
    std::filesystem::create_directories(dir, ec);
    if (ec || !std::filesystem::is_directory(dir)) {
        err << dir.string() << ": cannot make the folder\n";
        return 1;
    }
    const std::string stem = file.filename().string();
    auto target = [&](int index) { return dir / (stem + "_" + std::to_string(index) + ".ico"); };
    // All or nothing: every icon is read before the first file is written,
    // and the files already written go again when a later one cannot be.
    std::vector<cFileIcon> icons;
    auto module = ExecutableModule::Open(file);
    if (!module) {
        // Not an executable: an icon file is its own only icon.
        cFileIcon icon;
        if (!icon.LoadIcon(file)) {
            err << file.string() << ": " << module.reason() << "; as an icon file: " << icon.Reason() << "\n";
            return 1;
        }
        icons.push_back(std::move(icon));
    } else {
        const int count = static_cast<int>(module->IconGroups().size());
        if (count == 0) {
            err << file.string() << ": the file has no icons\n";
            return 1;
        }
        icons.resize(static_cast<std::size_t>(count));
        for (int i = 0; i < count; ++i) {
            if (Status s = LoadIconOfModule(*module, i, icons[static_cast<std::size_t>(i)]); !s) {
                err << file.string() << ": icon " << i << ": " << s.reason() << "; no file was written\n";
                return 1;
            }
        }
    }
    std::vector<std::vector<std::byte>> bytes;
    std::vector<FileContents> files;
    bytes.reserve(icons.size());
    for (std::size_t i = 0; i < icons.size(); ++i) {
        const auto& data = bytes.emplace_back(icons[i].ToBytes());
        files.push_back(
            FileContents{target(static_cast<int>(i)),
                         std::string_view(reinterpret_cast<const char*>(data.data()), data.size())});
    }
    if (Status written = WriteFilesAtomically(files); !written) {
        err << dir.string() << ": " << written.reason() << "; no file was kept\n";
        return 1;
    }
    return 0;
}

}  // namespace glyphmoor
