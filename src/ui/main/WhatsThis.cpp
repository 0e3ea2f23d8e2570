#include "ui/main/WhatsThis.h"

#include <QWidget>

#include <array>

namespace glyphmoor {

namespace {

struct Text {
    std::string_view name;
    const char* text;
};

constexpr std::array<Text, 51> kTexts = {{
    // The commands of the menus and the toolbar.
    {"mnuFile(0)", "Opens a theme file and loads its icons and pointers for a preview."},
    {"mnuFile(2)", "Saves the icons shown now into the current theme file, with a copy of each icon."},
    {"mnuFile(3)", "Saves the icons shown now into a new theme file, with a copy of each icon."},
    {"mnuFile(5)", "Closes Glyphmoor. When changes are waiting, you are asked whether to apply them."},
    {"mnuTools(0)", "Puts every shell setting of the Tweak Shell page back to its default."},
    {"mnuTools(1)", "Gives every system icon its default back, after asking. Apply writes the change."},
    {"mnuTools(2)", "Gives every mouse pointer its default back, after asking. Apply writes the change."},
    {"mnuTools(4)",
     "Makes the shell reload its icons, so that changed icons show, and saves the machine's registry."},
    {"mnuTools(6)",
     "Shows every value and file Glyphmoor changed on this machine, then gives the machine back what it "
     "held before Glyphmoor first changed it."},
    {"mnuFav(0)",
     "Opens the favourites folder, where you arrange the themes of the Favorites menu in folders."},
    {"mnuFav(1)", "Places the selected theme, or else the theme you opened, on the Favorites menu."},
    {"mnuHelp(0)", "Opens the help's contents and index."},
    {"mnuHelp(1)", "Click this, then any control, to read what the control does."},
    {"mnuHelpsub(0)", "Opens Glyphmoor's web site in your web browser."},
    {"mnuHelpsub(1)", "Starts a new e-mail to Glyphmoor's makers in your mail program."},
    {"mnuHelpsub(3)", "Opens the web page of additional icon themes in your web browser."},
    {"mnuHelp(4)", "Shows Glyphmoor's version and the computer's physical memory."},
    {"Add to Favorites", "Places the theme selected on the Themes page on the Favorites menu."},
    {"tbMain", "The toolbar: the most used commands of the menus, one click away."},
    // The page bar and the pages.
    {"vMenu", "The page bar: click an entry to open its page, or a group of icons."},
    {"picContMain", "The Themes page: the icon themes of your themes folder."},
    {"tabThemes", "The Themes page: the icon themes of your themes folder."},
    {"lvThemes", "The themes of your themes folder. Right-click for the theme's commands."},
    {"cmdOpen", "Opens the selected theme and loads its icons for a preview."},
    {"cmdRefresh", "Reads the themes folder again."},
    {"picContSub1", "The Icons & Cursors page: the system icons and pointers, in seven groups."},
    {"tabIcons", "The groups of system icons and the mouse pointers."},
    {"lstbxIcons", "The system icons of this group with the icon in use now. Double-click one to change it."},
    {"lblPath", "The file and icon index of the selected entry's icon."},
    // The Themes page has a path label of its own, named by its page.
    {"picContMain/lblPath", "The theme file of the selected theme."},
    {"cmdChange", "Chooses another icon for the selected entry from an icon file, program or library."},
    {"cmdDefault", "Gives the selected entry its default icon back."},
    {"cmdRename", "Gives the selected desktop object a new name."},
    {"picContSub2", "The Folders page: icons of single folders and drives."},
    {"tabFolders", "The Folders page: icons of single folders and drives."},
    {"tvExplorer", "The folders and drives of the machine. Select one to give it an icon of its own."},
    {"imgFolder", "The icon of the selected folder or drive as the shell draws it."},
    {"lblFolder",
     "The selected folder or drive, and the file and index of its own icon (or Windows Default "
     "Icon)."},
    {"cmdChangeF",
     "Gives the selected folder or drive an icon of its own, chosen from an icon file, program or "
     "library. It is written at once."},
    {"cmdDefaultF",
     "Takes the selected folder's or drive's own icon away: the folder's desktop.ini file, or the "
     "drive's autorun.inf file, is removed."},
    {"picContSub3", "The Tweak Shell page: shell settings in three groups."},
    {"tabShell", "The groups of shell settings: General, Bootup and Miscellaneous."},
    {"tvTweak", "The shell settings. Click a box to switch a setting on or off."},
    {"txtTweak", "The value of the selected setting, to edit."},
    {"scrTweak", "Changes the number of the selected setting."},
    {"lblTweak", "What the selected setting does."},
    // The buttons at the bottom.
    {"cmdOK", "Applies the waiting changes and closes Glyphmoor."},
    {"cmdCancel", "Closes Glyphmoor. When changes are waiting, you are asked whether to apply them."},
    {"cmdApply", "Writes the waiting changes to the machine and makes the shell show them."},
    {"lblMachine", "The machine Glyphmoor works on: a Wine prefix, a machine folder or Windows itself."},
    {"cmdHelp", "Opens the help's contents and index. F1 opens the help of the page you are on."},
}};

}  // namespace

QString WhatsThisText(std::string_view name) {
    for (const Text& text : kTexts) {
        if (text.name == name) {
            return QString::fromUtf8(text.text);
        }
    }
    return {};
}

void SetWhatsThisTexts(QWidget& window) {
    for (QWidget* control : window.findChildren<QWidget*>()) {
        const QWidget* page = control->parentWidget();
        QString text;
        if (page != nullptr) {
            text =
                WhatsThisText((page->objectName() + QLatin1Char('/') + control->objectName()).toStdString());
        }
        if (text.isEmpty()) {
            text = WhatsThisText(control->objectName().toStdString());
        }
        if (!text.isEmpty()) {
            control->setWhatsThis(text);
        }
    }
}

}  // namespace glyphmoor
