#include "cli/IconFileCommands.h"

#include <array>
#include <initializer_list>

#include "iconfiles/cFileIcon.h"
#include "iconfiles/cResources.h"
#include "iconfiles/modResource.h"

#include <charconv>
#include <filesystem>
#include <fstream>
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

bool Usage(std::ostream& err, const char* usage) {
    err << "usage: glyphmoor-cli " << usage << "\n";
    return false;
}

std::string Lower(std::string text) {
    for (char& c : text) {
        if (c >= 'A' && c <= 'Z') {
            c = static_cast<char>(c - 'A' + 'a');
        }
    }
    return text;
}

}  // namespace

int CmdResources(const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
    if (args.size() != 1) {
        Usage(err, "resources FILE");
        return 2;
    }
    cResources resources;
    if (!resources.GetResourceTypes(args[0])) {
        err << args[0] << ": " << resources.Reason() << "\n";
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

int CmdIconCount(const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
    if (args.size() != 1) {
        Usage(err, "icon-count FILE");
        return 2;
    }
    if (!std::filesystem::is_regular_file(args[0])) {
        err << args[0] << ": no such file\n";
        return 1;
    }
    out << IconCountOfFile(args[0]) << '\n';
    return 0;
}

int CmdExtract(const std::vector<std::string>& args, std::ostream&, std::ostream& err) {
    const char* usage = "extract FILE INDEX OUT [--size N]";
    std::vector<std::string> positional;
    int size = 32;
    for (std::size_t i = 0; i < args.size(); ++i) {
        if (args[i] == "--size") {
            const auto n = i + 1 < args.size() ? ParseInt(args[i + 1]) : std::nullopt;
            if (!n || *n < 1 || *n > 256) {
                err << "--size needs a number of pixels from 1 to 256\n";
                return 2;
            }
            size = *n;
            ++i;
        } else {
            positional.push_back(args[i]);
        }
    }
    if (positional.size() != 3) {
        Usage(err, usage);
        return 2;
    }
    const auto index = ParseInt(positional[1]);
    if (!index) {
        err << "INDEX must be a whole number, not " << positional[1] << "\n";
        return 2;
    }
    const std::filesystem::path outFile = positional[2];
    const std::string extension = Lower(outFile.extension().string());
    if (extension != ".ico" && extension != ".png") {
        err << outFile.string() << ": OUT must end in .ico or .png\n";
        return 2;
    }
    cFileIcon icon;
    if (Status s = LoadIconOfFile(positional[0], *index, icon); !s) {
        err << positional[0] << ": " << s.reason() << "\n";
        return 1;
    }
    if (extension == ".ico") {
        if (!icon.SaveIcon(outFile)) {
            err << outFile.string() << ": cannot write the icon file\n";
            return 1;
        }
        return 0;
    }
    const int best = icon.PickImage(size, 32);
    auto image = icon.DecodeImage(best);
    if (!image) {
        err << positional[0] << ": image " << best << " of icon " << *index << ": " << image.reason() << "\n";
        return 1;
    }
    auto png = EncodePng(*image);
    if (!png) {
        err << outFile.string() << ": " << png.reason() << "\n";
        return 1;
    }
    std::ofstream file(outFile, std::ios::binary | std::ios::trunc);
    file.write(reinterpret_cast<const char*>(png->data()), static_cast<std::streamsize>(png->size()));
    file.close();
    if (!file) {
        err << outFile.string() << ": cannot write the PNG file\n";
        return 1;
    }
    return 0;
}

int CmdExtractAll(const std::vector<std::string>& args, std::ostream&, std::ostream& err) {
    if (args.size() != 2) {
        Usage(err, "extract-all FILE DIR");
        return 2;
    }
    const std::filesystem::path file = args[0];
    const std::filesystem::path dir = args[1];
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
    for (std::size_t i = 0; i < icons.size(); ++i) {
        const auto index = static_cast<int>(i);
        if (!icons[i].SaveIcon(target(index))) {
            err << target(index).string() << ": cannot write the icon file; no file was kept\n";
            for (int written = 0; written <= index; ++written) {
                std::filesystem::remove(target(written), ec);
            }
            return 1;
        }
    }
    return 0;
}

namespace {

// Runs a command with the arguments at the given positions mapped to host files.
int WithHostFiles(CliContext& context, CommandArgs args, std::initializer_list<std::size_t> paths,
                  int (*run)(const std::vector<std::string>&, std::ostream&, std::ostream&)) {
    std::vector<std::string> words(args.begin(), args.end());
    for (std::size_t position : paths) {
        if (position < words.size()) {
            const auto file = context.HostFile(words[position]);
            if (!file) {
                return kExitFailed;
            }
            words[position] = file->string();
        }
    }
    return run(words, context.out, context.err);
}

constexpr std::array<CliCommand, 4> kIconFileCommands = {{
    {"resources", "FILE", "the resource types of FILE with their names, then the names of each type",
     [](CliContext& c, CommandArgs a) { return WithHostFiles(c, a, {0}, CmdResources); }},
    {"icon-count", "FILE", "the number of icons in FILE",
     [](CliContext& c, CommandArgs a) { return WithHostFiles(c, a, {0}, CmdIconCount); }},
    {"extract", "FILE INDEX OUT [--size N]",
     "writes icon INDEX of FILE as an icon file (OUT.ico) or its best image as PNG (OUT.png)",
     [](CliContext& c, CommandArgs a) {
         return WithHostFiles(c, a, {0, 2}, CmdExtract);
     }},
    {"extract-all", "FILE DIR", "writes every icon of FILE as DIR/<file name>_<index>.ico",
     [](CliContext& c, CommandArgs a) {
         return WithHostFiles(c, a, {0, 1}, CmdExtractAll);
     }},
}};

}  // namespace

std::span<const CliCommand> IconFileCommands() {
    return kIconFileCommands;
}

}  // namespace glyphmoor
