// The window's bundle commands: "&Package Theme..." packs a theme into a
// Glyphbundle, and opening a ".zip" unpacks it into the theme library and
// loads its theme, both with a progress dialog while they run.
#include "foundation/TextEncoding.h"
#include "themes/BundleZip.h"
#include "themes/ThemeBundle.h"
#include "themes/ThemeFile.h"
#include "themes/ThemeLibrary.h"
#include "ui/WorkProgress.h"
#include "ui/icons/IconsPage.h"
#include "ui/main/Main.h"
#include "ui/themes/ThemesPage.h"

#include <QFileDialog>
#include <QMessageBox>
#include <QStatusBar>

#include <filesystem>

namespace glyphmoor {

namespace {

const QString kBundleFilter = QStringLiteral("Glyphbundle (*.zip)");

}  // namespace

std::optional<std::string> Main::PickBundleWithDialog(const std::string& proposed) {
    const std::filesystem::path library = m_app.machine.HostPath(ThemeLibraryFolder(m_app));
    const QString chosen =
        QFileDialog::getSaveFileName(this, QStringLiteral("Save Glyphbundle"),
                                     QString::fromStdString((library / proposed).string()), kBundleFilter);
    if (chosen.isEmpty()) {
        return std::nullopt;
    }
    return chosen.toStdString();
}

OverwriteAnswer Main::AskOverwrite(std::string_view file) {
    if (m_overwriteAnswer) {
        return m_overwriteAnswer(file);
    }
    const auto pressed = QMessageBox::question(this, QString::fromUtf8(kBundleOverwriteTitle.data()),
                                               QString::fromStdString(BundleOverwriteQuestion(file)),
                                               QMessageBox::Yes | QMessageBox::No, QMessageBox::No);
    return pressed == QMessageBox::Yes ? OverwriteAnswer::Overwrite : OverwriteAnswer::Keep;
}

void Main::OpenBundle(const std::string& path) {
    const std::filesystem::path zip =
        IsDriveLetterPath(path) ? m_app.machine.HostPath(path) : std::filesystem::path(path);
    const auto unpacked = RunWithProgress<Result<UnpackReport>>(
        this, QStringLiteral("Unpacking %1...").arg(QString::fromStdString(zip.filename().string())), [&] {
            return UnpackBundle(m_machine, zip, [this](std::string_view file) {
                return AskOnWindowThread<OverwriteAnswer>([&] { return AskOverwrite(file); });
            });
        });
    if (!unpacked.ok()) {
        static_cast<void>(SaveMachine());  // what setting up the program's folder recorded
        ShowThemeProblem("Glyphmoor could not open the Glyphbundle " + path + ":\n\n" + unpacked.reason());
        return;
    }
    const std::string readMe = unpacked->folder + "\\Read Me.txt";
    std::error_code ec;
    if (std::filesystem::is_regular_file(m_app.machine.HostPath(readMe), ec)) {
        m_machine.Sys().OpenDocument(m_app.machine.HostPath(readMe).string());
    }
    m_themes->Refresh();
    m_icons->EnsureLoaded();
    LoadThemeFile(m_catalogue, m_state, unpacked->themePath);
    ThemeBecameCurrent(path);
    m_state.rebuildPending = true;
    PendingChanged();
    static_cast<void>(SaveMachine());
}

void Main::PackageTheme() {
    const auto selected = m_themes->Selected();
    const std::string theme = selected ? selected->path : m_state.currentTheme;
    if (theme.empty() || IsBundlePath(theme)) {
        ShowThemeProblem(
            "Select a theme on the Themes page, or open one, before packaging it as a Glyphbundle.");
        return;
    }
    if (!BundlesBuilt()) {
        ShowThemeProblem(
            "Glyphbundles are not part of this build of Glyphmoor (it was made without libzip).");
        return;
    }
    const std::string base = theme.substr(theme.rfind('\\') + 1);
    auto zip = m_pickBundle(base.substr(0, base.rfind('.')) + std::string(kBundleExtension));
    if (!zip) {
        return;
    }
    if (!IsBundlePath(*zip)) {
        *zip += kBundleExtension;
    }
    const auto packed = RunWithProgress<Result<PackReport>>(
        this, QStringLiteral("Packaging %1...").arg(QString::fromStdString(base)),
        [&] { return PackTheme(m_app, theme, std::filesystem::path(*zip)); });
    if (!packed.ok()) {
        ShowThemeProblem("Glyphmoor could not package " + theme + ":\n\n" + packed.reason());
        return;
    }
    if (!packed->missing.empty()) {
        std::string text = "The Glyphbundle " + *zip +
                           " was saved without these files of the theme, which are "
                           "not there:\n";
        for (const std::string& missing : packed->missing) {
            text += "\n" + missing;
        }
        ShowThemeProblem(text);
    }
    statusBar()->showMessage(QStringLiteral("Saved the Glyphbundle %1").arg(QString::fromStdString(*zip)),
                             5000);
}

}  // namespace glyphmoor
