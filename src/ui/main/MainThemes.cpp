// The window's theme commands: opening a theme into the catalogue, saving the
// catalogue as a theme, deleting a theme of the library, the current theme
// with the caption and the recent themes, and the Themes page's pop-up menu.
#include "foundation/DefaultMachine.h"
#include "foundation/ProgramFolder.h"
#include "foundation/RecentThemes.h"
#include "foundation/TextEncoding.h"
#include "themes/BundleZip.h"
#include "themes/ThemeApply.h"
#include "themes/ThemeBundle.h"
#include "themes/ThemeFile.h"
#include "themes/ThemeLibrary.h"
#include "ui/BusyPointer.h"
#include "ui/MachineFilePicker.h"
#include "ui/WorkProgress.h"
#include "ui/icons/IconsPage.h"
#include "ui/main/Main.h"
#include "ui/themes/ThemesPage.h"

#include <QCoreApplication>
#include <QFileDialog>
#include <QMenu>
#include <QStatusBar>

#include <array>

namespace glyphmoor {

namespace {

// The Open dialog's three file types, in this order. The second names its
// pattern in full: the dialog matches patterns exactly, so the short "*.gmt"
// would find no theme.
const QString kOpenFilter =
    QStringLiteral("Theme Files (*.gmtheme *.zip);;Icon Theme (*.gmtheme);;Glyphbundle (*.zip)");
const QString kSaveFilter = QStringLiteral("Icon Theme (*.gmtheme)");
const QString kBundleFilter = QStringLiteral("Glyphbundle (*.zip)");

// The extension of a path's file name, lower-cased; "" when it has none.
std::string ExtensionOf(std::string_view path) {
    const auto slash = path.find_last_of("\\/");
    const std::string_view name = slash == std::string_view::npos ? path : path.substr(slash + 1);
    const auto dot = name.rfind('.');
    return LowerAscii(dot == std::string_view::npos ? std::string_view{} : name.substr(dot + 1));
}

// A theme's base name: its file name without the extension.
std::string BaseNameOf(std::string_view path) {
    const auto slash = path.rfind('\\');
    std::string name(slash == std::string_view::npos ? path : path.substr(slash + 1));
    return name.substr(0, name.rfind('.'));
}

}  // namespace

void Main::ConnectThemesPage() {
    m_pickThemeFile = [this](ThemeDialog dialog, const std::string& proposed) {
        return PickThemeFileWithDialog(dialog, proposed);
    };
    connect(m_themes, &ThemesPage::openRequested, this,
            [this](const QString& path) { OpenTheme(path.toStdString()); });
    connect(m_themes, &ThemesPage::deleteRequested, this,
            [this](const QString& caption, const QString& path) {
                DeleteTheme(caption.toStdString(), path.toStdString());
            });
    connect(m_themes, &ThemesPage::popupRequested, this, [this](const QPoint& at) {
        QMenu menu(this);
        FillPopup(&menu, PopupContext::Themes);
        menu.exec(at);
    });
}

std::optional<std::string> Main::PickThemeFileWithDialog(ThemeDialog dialog, const std::string& proposed) {
    const std::filesystem::path library = m_app.machine.HostPath(ThemeLibraryFolder(m_app));
    if (dialog == ThemeDialog::Open) {
        return PickMachineFile(this, m_app.machine, QStringLiteral("Open Theme"), library, kOpenFilter);
    }
    const bool bundle = dialog == ThemeDialog::SaveBundle;
    const QString chosen = QFileDialog::getSaveFileName(
        this, bundle ? QStringLiteral("Save Glyphbundle") : QStringLiteral("Save Icon Theme"),
        QString::fromStdString((library / proposed).string()), bundle ? kBundleFilter : kSaveFilter);
    if (chosen.isEmpty()) {
        return std::nullopt;
    }
    std::string path = m_app.machine.WindowsPath(std::filesystem::path(chosen.toStdString()));
    if (path.empty()) {
        ShowThemeProblem(chosen.toStdString() +
                         " lies on no drive of the machine: a theme must be saved on one.");
        return std::nullopt;
    }
    return path;
}

void Main::OpenTheme(std::string path) {
    m_icons->EnsureLoaded();
    for (;;) {
        if (path.empty()) {
            auto picked = m_pickThemeFile(ThemeDialog::Open, "");
            if (!picked) {
                return;
            }
            path = std::move(*picked);
        }
        const std::string extension = ExtensionOf(path);
        if (extension == "gmtheme") {
            break;
        }
        if (extension == "zip") {
            OpenBundle(path);
            return;
        }
        MsgContext messages = Messages();
        MsgInvalidThemeFile(messages, path);
        path.clear();
    }
    if (Status there = CheckThemeFile(m_app.machine, path); !there.ok()) {
        ShowThemeProblem(there.reason());
        return;
    }
    {
        const BusyPointer busy;
        QCoreApplication::processEvents();
        LoadThemeFile(m_catalogue, m_state, path);
    }
    ThemeBecameCurrent(path);
    PendingChanged();
}

// A Glyphbundle: unpacked into its folder of the library (each file there
// already asked about), its Read Me opened, the list rebuilt and its theme
// loaded; the bundle itself becomes the current theme.
void Main::OpenBundle(const std::string& path) {
    const auto question = [this](std::string_view file) {
        m_prompt->SetPromptText(BundleOverwriteQuestion(file));
        switch (m_prompt->ShowPrompt("Yes", "No", "Cancel", static_cast<std::int16_t>(PromptIcon::Question),
                                     0, "")) {
            case 2:
                return OverwriteAnswer::Overwrite;
            case 1:
                return OverwriteAnswer::Keep;
            default:
                return OverwriteAnswer::Stop;
        }
    };
    // The unpack runs beside the window, which shows its progress; its questions come back here.
    const auto unpacked = RunWithProgress<Result<UnpackReport>>(
        this, QStringLiteral("Unpacking %1...").arg(QString::fromStdString(path)), [&] {
            return UnpackBundle(m_machine, m_app.machine.HostPath(path), [&](std::string_view file) {
                return AskOnWindowThread<OverwriteAnswer>([&] { return question(file); });
            });
        });
    if (!unpacked.ok()) {
        ShowThemeProblem("The Glyphbundle " + path + " was not opened: " + unpacked.reason());
        return;
    }
    const std::filesystem::path readMe = m_app.machine.HostPath(unpacked->folder + "\\Read Me.txt");
    std::error_code ec;
    if (std::filesystem::is_regular_file(readMe, ec)) {
        m_machine.Sys().OpenDocument(readMe.string());
    }
    m_themes->Refresh();
    {
        const BusyPointer busy;
        LoadThemeFile(m_catalogue, m_state, unpacked->themePath);
    }
    m_state.rebuildPending = true;
    ThemeBecameCurrent(path);
    PendingChanged();
    static_cast<void>(SaveMachine());  // what the unpack made is recorded; a failure has been shown
}

void Main::PackageTheme() {
    if (!m_state.currentTheme.ends_with(kThemeExtension) || !BundlesBuilt()) {
        ShowThemeProblem(BundlesBuilt() ? "Open or save a theme first: the current theme is what is packaged."
                                        : "This build of Glyphmoor cannot make Glyphbundles.");
        return;
    }
    auto picked = m_pickThemeFile(ThemeDialog::SaveBundle, BaseNameOf(m_state.currentTheme) + ".zip");
    if (!picked) {
        return;
    }
    if (!IsBundlePath(*picked)) {
        *picked += kBundleExtension;
    }
    const auto packed = RunWithProgress<Result<PackReport>>(
        this, QStringLiteral("Packaging %1...").arg(QString::fromStdString(*picked)),
        [&] { return PackTheme(m_app, m_state.currentTheme, m_app.machine.HostPath(*picked)); });
    if (!packed.ok()) {
        ShowThemeProblem("Glyphmoor could not package the theme: " + packed.reason());
        return;
    }
    std::string text = "The theme is packaged as " + *picked + ".";
    for (const std::string& missing : packed->missing) {
        text += "\n\nLeft out, as it is not there: " + missing;
    }
    ShowThemeProblem(text);
}

void Main::SaveTheme() {
    if (m_state.currentTheme.empty()) {
        SaveThemeAs("Untitled");
        return;
    }
    MsgContext messages = Messages();
    switch (MsgConfirmOverwriteTheme(messages, m_state.currentTheme)) {
        case 2:
            WriteTheme(m_state.currentTheme);
            break;
        case 1:
            SaveThemeAs("Untitled");
            break;
        default:
            // "&Cancel" (or Escape): nothing is saved, but a ticked box is kept.
            static_cast<void>(SaveMachine());
            break;
    }
}

void Main::SaveThemeAs(std::string proposed) {
    if (proposed == "Untitled" && !m_state.currentTheme.empty()) {
        proposed = BaseNameOf(m_state.currentTheme);
    }
    const auto picked = m_pickThemeFile(ThemeDialog::Save, proposed);
    if (picked) {
        WriteTheme(*picked);
    }
}

void Main::WriteTheme(const std::string& path) {
    m_icons->EnsureLoaded();
    const auto saved = [&]() -> Result<std::string> {
        const BusyPointer busy;
        // The theme goes into the program's folder: it is set up first, and
        // what it makes is recorded in the machine's baseline.
        TRY(m_machine.MakeProgramFolder());
        return SaveThemeFile(m_catalogue, m_machine.Registry(), m_state, path);
    }();
    RefreshRecentMenu();
    RefreshCaption();
    m_themes->Refresh();
    const bool stored = SaveMachine();
    if (!saved.ok()) {
        ShowThemeProblem("Glyphmoor could not save the theme " + path + ":\n\n" + saved.reason());
    } else if (stored) {
        statusBar()->showMessage(
            QStringLiteral("Saved the theme %1").arg(QString::fromStdString(saved.value())), 5000);
    }
}

void Main::DeleteTheme(const std::string& caption, const std::string& path) {
    MsgContext messages = Messages();
    constexpr std::int16_t kOk = 1;  // "Cancel" is the safe answer, Command(0)
    if (MsgConfirmDeleteTheme(messages, caption) != kOk) {
        return;
    }
    // Only the theme's own folder in the library goes; anything else is refused.
    if (Status deleted = glyphmoor::DeleteTheme(m_app, path); !deleted.ok()) {
        ShowThemeProblem("The theme '" + caption + "' was not deleted: " + deleted.reason() + ".");
        m_themes->Refresh();
        return;
    }
    // A theme loaded and not applied names icons that are gone now: Apply must
    // not write them, so the lists go back to what the machine holds.
    const bool loadedAndGone = m_state.themeLoaded && EqualsNoCase(m_state.currentTheme, path);
    ForgetTheme(m_machine.Registry(), m_state, path);
    if (loadedAndGone) {
        DropStagedChanges();
    }
    RefreshRecentMenu();
    RefreshCaption();
    m_themes->Refresh();
    static_cast<void>(SaveMachine());  // a failure has been shown
}

void Main::DropStagedChanges() {
    m_state.groupChanged.fill(false);
    m_names = {};
    m_state.themeLoaded = false;
    m_state.rebuildPending = false;
    m_state.applyEnabled = false;
    if (m_catalogue.Built()) {
        m_catalogue.DetectShellIcons();
        if (m_catalogue.CursorsBuilt()) {
            m_catalogue.BuildCursorCatalogue();
        }
        m_icons->RefreshAll();
    }
    PendingChanged();
}

void Main::ThemeBecameCurrent(const std::string& path) {
    SetCurrentTheme(m_machine.Registry(), m_state, path);
    RefreshRecentMenu();
    RefreshCaption();
}

void Main::ShowThemeProblem(const std::string& text) {
    m_prompt->SetPromptText(text);
    m_prompt->ShowPrompt("", "", "OK", static_cast<std::int16_t>(PromptIcon::Exclamation), 0, "");
}

// The keys of the Themes page's pop-up menu and of the recent themes; false
// for a key that is none of them.
bool Main::DispatchThemeCommand(std::string_view key) {
    const auto selected = m_themes->Selected();
    if (key.starts_with("RecentTheme ")) {
        for (const RecentMenuItem& item : RecentMenuItems(m_machine.Registry())) {
            if (item.key == key) {
                OpenTheme(item.path);
            }
        }
        return true;
    }
    if (key == "Theme_Open" || key == "Theme_Delete") {
        if (selected && key == "Theme_Open") {
            OpenTheme(selected->path);
        } else if (selected) {
            DeleteTheme(selected->caption, selected->path);
        }
        return true;
    }
    static const std::array<std::pair<std::string_view, ThemesPage::View>, 5> views = {{
        {"Theme_VLarge", ThemesPage::View::LargeIcons},
        {"Theme_VSmall", ThemesPage::View::SmallIcons},
        {"Theme_VList", ThemesPage::View::List},
        {"Theme_VReport", ThemesPage::View::Details},
        // The pop-up menu's "&Details" carries a key the table above has no
        // row for; unknown keys are the window's to answer, and this one asks
        // for the details view.
        {"Theme_VDetails", ThemesPage::View::Details},
    }};
    for (const auto& [viewKey, view] : views) {
        if (viewKey == key) {
            m_themes->SetView(view);
            return true;
        }
    }
    if (key == "Theme_Apply") {
        ApplyChanges();
        return true;
    }
    if (key == "Theme_Refresh") {
        m_themes->Refresh();
        return true;
    }
    return false;
}

}  // namespace glyphmoor
