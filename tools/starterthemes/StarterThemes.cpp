// Makes the three starter themes of the built-in default machine, so that
// the Themes page of a first start is never empty. Each theme is the default
// machine's own icons saved as a theme by the program's own saver (every
// entry of the six icon groups, each icon copied beside the theme file), then
// recoloured: the hues turned round the colour wheel by a multiple of 60
// degrees, so the sixteen standard colours of the small images stay standard
// colours, and the greys of the full-colour images tinted with the theme's
// colour. The pointers are the program's standard pointers drawn again with
// their white parts in a light shade of the theme's colour. Run by the build after the seed's icons are
// drawn:
//   glyphmoor-starter-themes SEED_DIR GENERATED_SEED_DIR
// writes GENERATED_SEED_DIR/drive_c/Program Files/Glyphmoor/Themes/<theme>/.
#include "Pictures.h"

#include "foundation/AppState.h"
#include "foundation/DefaultMachine.h"
#include "foundation/Machine.h"
#include "foundation/modProfile.h"
#include "iconfiles/IconImage.h"
#include "iconfiles/IconLibraryWriter.h"
#include "iconfiles/cFileIcon.h"
#include "icons/IconCatalogue.h"
#include "themes/ThemeFile.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <random>
#include <stdexcept>
#include <string>

namespace glyphmoor::starter {

namespace {

namespace fs = std::filesystem;

struct Rgb {
    float r, g, b;
};

struct StarterTheme {
    const char* name;
    int hueTurn;  // degrees, a multiple of 60
    Rgb tint;     // mixed into the greys of full-colour images
    const char* readMe;
};

const std::array<StarterTheme, 3> kThemes = {{
    {"Autumn",
     300,
     {0.85F, 0.45F, 0.15F},
     "Autumn\r\n\r\nThe standard icons in autumn colours: folders turn red and rust, screens turn "
     "green, and the greys are warmed with orange.\r\n"},
    {"Dusk",
     180,
     {0.45F, 0.30F, 0.70F},
     "Dusk\r\n\r\nThe standard icons at nightfall: folders turn deep blue, screens glow red, and "
     "the greys take a violet tint.\r\n"},
    {"Lagoon",
     60,
     {0.10F, 0.55F, 0.60F},
     "Lagoon\r\n\r\nThe standard icons by the water: screens turn blue, folders turn green, and "
     "the greys take a sea-green tint.\r\n"},
}};

constexpr std::string_view kCommonReadMe =
    "\r\nA starter theme of Glyphmoor, drawn from the default machine's own icons and pointers. Select it on "
    "the Themes page, choose Load Theme and then Apply; Tools, Restore all Icons brings the "
    "standard icons back.\r\n";

// Turns a colour's hue by `degrees` keeping its saturation and value.
Rgb TurnHue(Rgb c, int degrees) {
    const float maxC = std::max({c.r, c.g, c.b});
    const float minC = std::min({c.r, c.g, c.b});
    const float delta = maxC - minC;
    if (delta <= 0.0F) {
        return c;
    }
    float hue = 0.0F;
    if (maxC == c.r) {
        hue = 60.0F * std::fmod((c.g - c.b) / delta + 6.0F, 6.0F);
    } else if (maxC == c.g) {
        hue = 60.0F * ((c.b - c.r) / delta + 2.0F);
    } else {
        hue = 60.0F * ((c.r - c.g) / delta + 4.0F);
    }
    hue = std::fmod(hue + static_cast<float>(degrees), 360.0F);
    const float x = delta * (1.0F - std::fabs(std::fmod(hue / 60.0F, 2.0F) - 1.0F));
    const int sector = static_cast<int>(hue / 60.0F) % 6;
    const std::array<Rgb, 6> parts = {
        {{delta, x, 0}, {x, delta, 0}, {0, delta, x}, {0, x, delta}, {x, 0, delta}, {delta, 0, x}}};
    const Rgb p = parts.at(static_cast<std::size_t>(sector));
    return {p.r + minC, p.g + minC, p.b + minC};
}

void Recolour(RgbaImage& image, const StarterTheme& theme, bool tintGreys) {
    for (std::size_t i = 0; i + 3 < image.pixels.size(); i += 4) {
        std::uint8_t* p = image.pixels.data() + i;
        Rgb c = TurnHue({p[0] / 255.0F, p[1] / 255.0F, p[2] / 255.0F}, theme.hueTurn);
        const float maxC = std::max({c.r, c.g, c.b});
        const float saturation = maxC <= 0.0F ? 0.0F : (maxC - std::min({c.r, c.g, c.b})) / maxC;
        if (tintGreys && saturation < 0.15F) {
            // A grey keeps its lightness and takes some of the theme's colour.
            constexpr float kTint = 0.35F;
            c = {c.r * (1 - kTint) + theme.tint.r * maxC * kTint,
                 c.g * (1 - kTint) + theme.tint.g * maxC * kTint,
                 c.b * (1 - kTint) + theme.tint.b * maxC * kTint};
        }
        p[0] = static_cast<std::uint8_t>(std::lround(std::clamp(c.r, 0.0F, 1.0F) * 255.0F));
        p[1] = static_cast<std::uint8_t>(std::lround(std::clamp(c.g, 0.0F, 1.0F) * 255.0F));
        p[2] = static_cast<std::uint8_t>(std::lround(std::clamp(c.b, 0.0F, 1.0F) * 255.0F));
    }
}

// Rewrites an icon file with every image recoloured.
void RecolourIconFile(const fs::path& file, const StarterTheme& theme) {
    cFileIcon icon;
    if (!icon.LoadIcon(file)) {
        throw std::runtime_error("cannot read " + file.string());
    }
    cFileIcon out;
    for (int i = 0; i < icon.ImageCount(); ++i) {
        auto pixels = icon.DecodeImage(i);
        if (!pixels.ok()) {
            throw std::runtime_error(file.string() + ": " + pixels.reason());
        }
        const int bits = icon.ImageBitCount(i) == 4 ? 4 : 32;
        Recolour(*pixels, theme, bits == 32);
        auto data = EncodeIconImage(*pixels, bits);
        if (!data.ok()) {
            throw std::runtime_error(file.string() + ": " + data.reason());
        }
        IconDirEntry entry = icon.Entry(i);
        entry.bitCount = static_cast<std::uint16_t>(bits);
        entry.colourCount = bits == 4 ? 16 : 0;
        out.AddImage(entry, std::move(*data));
    }
    if (!out.SaveIcon(file)) {
        throw std::runtime_error("cannot write " + file.string());
    }
}

// The standard pointer of that number (1 to 15) drawn again, its white parts
// in a light shade of the theme's colour, as a full-colour pointer file.
std::vector<std::byte> ThemePointer(const StarterTheme& theme, int number) {
    const auto& pointers = seed::StandardPointers();
    const seed::PointerPicture& pointer = pointers.at(static_cast<std::size_t>(number - 1));
    seed::Canvas canvas(32);
    pointer.draw(canvas);
    RgbaImage pixels = canvas.Image();
    for (std::size_t i = 0; i + 3 < pixels.pixels.size(); i += 4) {
        std::uint8_t* p = pixels.pixels.data() + i;
        const float light = static_cast<float>(p[0] + p[1] + p[2]) / (3.0F * 255.0F);
        constexpr float kWhite = 0.45F;
        const std::array<float, 3> shade = {theme.tint.r, theme.tint.g, theme.tint.b};
        for (std::size_t c = 0; c < 3; ++c) {
            p[c] = static_cast<std::uint8_t>(
                std::lround(255.0F * light * (kWhite + (1 - kWhite) * shade.at(c))));
        }
    }
    auto dib = EncodeIconImage(pixels, 32);
    if (!dib.ok()) {
        throw std::runtime_error(dib.reason());
    }
    CursorImage image;
    image.hotspotX = static_cast<std::uint16_t>(pointer.hotX);
    image.hotspotY = static_cast<std::uint16_t>(pointer.hotY);
    image.width = image.height = 32;
    image.bitCount = 32;
    image.dib = std::move(*dib);
    return BuildCursorFile({image});
}

// Gives every pointer of the catalogue (the program's standard pointers by
// number) its theme pointer, written beside the theme and named in its
// "Cursors" section.
void WritePointers(IconCatalogue& catalogue, const StarterTheme& theme, const fs::path& hostFolder) {
    catalogue.BuildCursorCatalogue();
    const IconGroup& pointers = catalogue.Group(7);
    const fs::path file = hostFolder / (std::string(theme.name) + std::string(kThemeExtension));
    for (std::size_t i = 0; i < pointers.Count(); ++i) {
        const std::string name = std::string(theme.name) + " " + std::string(pointers.KeyAt(i)) + ".cur";
        const std::vector<std::byte> bytes = ThemePointer(theme, pointers.At(i).defaultIndex);
        std::ofstream(hostFolder / name, std::ios::binary)
            .write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
        if (!WriteProfileValue(file, ThemeSectionNames.at(6), pointers.KeyAt(i),
                               std::string(kThemeDirMacro) + name)
                 .ok()) {
            throw std::runtime_error("cannot write " + file.string());
        }
    }
}

void MakeTheme(Machine& machine, const StarterTheme& theme, const fs::path& outLibrary) {
    const AppEnvironment app = InitEnvironment(machine.Env());
    IconCatalogue catalogue(machine.Registry(), app);
    catalogue.DetectShellIcons();
    AppState state;
    const std::string folder = app.machine.ProgramDirectory() + "\\Themes\\" + theme.name;
    const auto saved = SaveThemeFile(catalogue, machine.Registry(), state, folder + "\\" + theme.name);
    if (!saved.ok()) {
        throw std::runtime_error(saved.reason());
    }
    const fs::path hostFolder = machine.Env().HostPath(folder);
    for (const auto& entry : fs::directory_iterator(hostFolder)) {
        if (entry.path().extension() == ".ico") {
            RecolourIconFile(entry.path(), theme);
        }
    }
    WritePointers(catalogue, theme, hostFolder);
    std::ofstream(hostFolder / "Read Me.txt", std::ios::binary) << theme.readMe << kCommonReadMe;
    const fs::path target = outLibrary / theme.name;
    fs::remove_all(target);
    fs::create_directories(target);
    fs::copy(hostFolder, target, fs::copy_options::recursive);
}

void Generate(const fs::path& seed, const fs::path& generated) {
    const fs::path scratch =
        fs::temp_directory_path() / ("glyphmoor-starter-" + std::to_string(std::random_device{}()));
    struct Remove {
        fs::path dir;
        ~Remove() {
            std::error_code ec;
            fs::remove_all(dir, ec);
        }
    } remove{scratch};
    const fs::path machineDir = scratch / "machine";
    if (Status made = EnsureSeededMachine(machineDir, {seed, generated}); !made.ok()) {
        throw std::runtime_error(made.reason());
    }
    auto machine = OpenMachineFolder(machineDir);
    if (!machine.ok()) {
        throw std::runtime_error(machine.reason());
    }
    // The generated seed's library holds the starter themes alone.
    const fs::path library = generated / "drive_c/Program Files/Glyphmoor/Themes";
    fs::remove_all(library);
    for (const StarterTheme& theme : kThemes) {
        MakeTheme(**machine, theme, library);
    }
}

}  // namespace

}  // namespace glyphmoor::starter

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fprintf(stderr, "usage: glyphmoor-starter-themes SEED_DIR GENERATED_SEED_DIR\n");
        return 2;
    }
    try {
        glyphmoor::starter::Generate(argv[1], argv[2]);
    } catch (const std::exception& e) {
        std::fprintf(stderr, "glyphmoor-starter-themes: %s\n", e.what());
        return 1;
    }
    return 0;
}
