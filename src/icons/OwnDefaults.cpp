#include "icons/OwnDefaults.h"

#include "foundation/Baseline.h"
#include "foundation/TextEncoding.h"
#include "foundation/modRegistry.h"
#include "iconfiles/StringResource.h"
#include "iconfiles/cFileIcon.h"
#include "iconfiles/modResource.h"

#include <array>

namespace glyphmoor {

namespace {

// The desktop objects Wine's shell draws from shell32.dll without a
// DefaultIcon value, by class identifier, with the resource id of the picture
// (as SHGetFileInfo reports them under Wine 8). Wine gives its shell icons the
// resource id of Windows' icon index plus one (My Computer: index 15, id 16);
// Control Panel and Printers it draws as a plain folder (index 3, id 4).
constexpr std::array<WineObjectPicture, 5> kWineObjectPictures = {{
    {"{20D04FE0-3AEA-1069-A2D8-08002B30309D}", 16},   // My Computer
    {"{450D8FBA-AD25-11D0-98A8-0800361B1103}", 235},  // My Documents
    {"{208D2C60-3AEA-1069-A2D7-08002B30309D}", 18},   // Network Neighborhood
    {"{21EC2020-3AEA-1069-A2DD-08002B30309D}", 4},    // Control Panel
    {"{2227A280-3AEA-1069-A2DE-08002B30309D}", 4},    // Printers
}};

// The system pointers of user32.dll by their value under Control Panel\Cursors
// (the OCR_ numbers).
struct SystemPointer {
    std::string_view value;
    std::int32_t resourceId;
};
constexpr std::array<SystemPointer, 15> kSystemPointers = {{
    {"Arrow", 32512},
    {"Help", 32651},
    {"AppStarting", 32650},
    {"Wait", 32514},
    {"Crosshair", 32515},
    {"IBeam", 32513},
    {"NWPEN", 32631},
    {"No", 32648},
    {"SizeNS", 32645},
    {"SizeWE", 32644},
    {"SizeNWSE", 32642},
    {"SizeNESW", 32643},
    {"SizeAll", 32646},
    {"UpArrow", 32516},
    {"Hand", 32649},
}};

constexpr std::string_view kSystemRoot = "%systemroot%";
constexpr std::size_t kModuleLimit = 64U << 20;

bool ContainsNoCase(std::string_view text, std::string_view part) {
    for (std::size_t i = 0; i + part.size() <= text.size(); ++i) {
        if (EqualsNoCase(text.substr(i, part.size()), part)) {
            return true;
        }
    }
    return false;
}

// The program a class opens its files with: the first word of its open
// command, without quotes.
std::string OpenCommandProgram(RegistryStore& registry, const std::string& fileClass) {
    std::string command =
        GetRegString(registry, "HKEY_CLASSES_ROOT\\" + fileClass + "\\shell\\open\\command", "");
    if (command == kRegError || command.empty()) {
        return {};
    }
    if (command.front() == '"') {
        const auto close = command.find('"', 1);
        return close == std::string::npos ? std::string() : command.substr(1, close - 1);
    }
    return command.substr(0, command.find(' '));
}

}  // namespace

std::span<const WineObjectPicture> WineObjectPictures() {
    return kWineObjectPictures;
}

std::string ShownNameValue(RegistryStore& registry, const std::string& classKey) {
    return GetRegString(registry, classKey, "LocalizedString") != kRegError ? "LocalizedString" : "";
}

std::optional<std::string> ResolveShownName(const AppEnvironment& app, std::string_view text) {
    if (text.empty() || text.front() != '@') {
        return std::string(text);
    }
    const auto comma = text.rfind(',');
    if (comma == std::string_view::npos) {
        return std::nullopt;
    }
    const auto location = SplitIconLocation(text.substr(1));
    if (!location || location->index >= 0) {
        return std::nullopt;
    }
    const std::string file = InSystemFolder(app, location->file);
    const std::filesystem::path host = app.machine.HostPath(file);
    auto module = ExecutableModule::Open(host);
    if (!module.ok()) {
        return std::nullopt;
    }
    return LoadStringResource(*module,
                              static_cast<std::uint32_t>(-static_cast<std::int64_t>(location->index)));
}

std::optional<std::string> ShownName(RegistryStore& registry, const AppEnvironment& app,
                                     const std::string& classKey) {
    if (classKey.empty()) {
        return std::nullopt;
    }
    const std::string text = GetRegString(registry, classKey, ShownNameValue(registry, classKey));
    if (text.empty() || text == kRegError) {
        return std::nullopt;
    }
    auto shown = ResolveShownName(app, text);
    return shown && !shown->empty() ? shown : std::nullopt;
}

std::string InSystemFolder(const AppEnvironment& app, std::string_view file) {
    if (file.find('\\') == std::string_view::npos && !file.empty()) {
        return app.sysDir + "\\" + std::string(file);
    }
    return std::string(file);
}

bool OwnDefaultFinder::Holds(const IconLocation& location, bool cursor) {
    const std::string key = (cursor ? "c|" : "i|") + location.Text();
    if (const auto found = m_holds.find(key); found != m_holds.end()) {
        return found->second;
    }
    const std::filesystem::path host = m_app.machine.HostPath(InSystemFolder(m_app, location.file));
    bool holds = false;
    std::error_code ec;
    if (std::filesystem::is_regular_file(host, ec)) {
        if (cursor && location.index > 0) {
            auto module = ExecutableModule::Open(host);
            holds =
                module.ok() && module->Directory().Find(
                                   ResourceId::Number(kRtGroupCursor),
                                   ResourceId::Number(static_cast<std::uint16_t>(location.index))) != nullptr;
        } else if (!cursor) {
            cFileIcon icon;
            holds = LoadIconOfFile(host, location.index, icon).ok();
        }
    }
    m_holds.emplace(key, holds);
    return holds;
}

std::optional<IconLocation> OwnDefaultFinder::BaselineLocation(const IconStore& store) {
    if (store.path.empty()) {
        return std::nullopt;
    }
    const auto value = BaselineValueOf(m_registry, store.path, store.valueName);
    if (!value) {
        return std::nullopt;
    }
    std::string text = RegValueText(*value);
    if (text.empty()) {
        return std::nullopt;
    }
    if (EqualsNoCase(std::string_view(text).substr(0, kSystemRoot.size()), kSystemRoot)) {
        text = m_app.winDir + text.substr(kSystemRoot.size());
    }
    return SplitIconLocation(text);
}

std::optional<OwnDefault> OwnDefaultFinder::Find(const OwnDefaultQuery& query) {
    if (auto own = BaselineLocation(query.store)) {
        return OwnDefault{*own, false};
    }
    if (m_app.kind == MachineKind::RealWindows) {
        return OwnDefault{query.described, true};
    }
    return WineDrawn(query);
}

std::optional<OwnDefault> OwnDefaultFinder::WineDrawn(const OwnDefaultQuery& query) {
    const std::string shell32 = m_app.sysDir + "\\shell32.dll";
    std::optional<IconLocation> drawn;
    if (!query.cursorValue.empty()) {
        for (const SystemPointer& pointer : kSystemPointers) {
            if (EqualsNoCase(pointer.value, query.cursorValue)) {
                const IconLocation location{m_app.sysDir + "\\user32.dll", pointer.resourceId};
                return Holds(location, true) ? std::optional<OwnDefault>(OwnDefault{location, true})
                                             : std::nullopt;
            }
        }
        return std::nullopt;
    }
    if (query.shellIndex) {
        drawn = IconLocation{shell32, -(*query.shellIndex + 1)};
    } else if (!query.fileClass.empty()) {
        const std::string program = OpenCommandProgram(m_registry, query.fileClass);
        if (!program.empty() && Holds({program, 0})) {
            drawn = IconLocation{program, 0};
        } else {
            drawn = IconLocation{shell32, -2};  // the shell's plain document
        }
    } else if (!query.store.valueName.empty()) {
        // The Recycle Bin's "Empty" and "Full": Wine draws the bin from the
        // key's unnamed value alone.
        if (auto unnamed = BaselineLocation({query.store.path, {}})) {
            drawn = *unnamed;
        }
    } else {
        for (const WineObjectPicture& object : kWineObjectPictures) {
            if (ContainsNoCase(query.store.path, object.clsid)) {
                drawn = IconLocation{shell32, -object.resourceId};
            }
        }
    }
    if (!drawn || !Holds(*drawn)) {
        return std::nullopt;
    }
    return OwnDefault{*drawn, true};
}

}  // namespace glyphmoor
