#include "prompts/modMsgbox.h"

#include "foundation/Startup.h"
#include "foundation/modRegistry.h"

#include <string>

namespace glyphmoor {

namespace {

// Paragraphs of a message are separated by two line feeds.
constexpr std::string_view kParagraph = "\n\n";

constexpr std::int16_t Icon(PromptIcon icon) {
    return static_cast<std::int16_t>(icon);
}

std::string Paragraphs(std::initializer_list<std::string_view> paragraphs) {
    std::string text;
    for (std::string_view paragraph : paragraphs) {
        if (!text.empty()) {
            text += kParagraph;
        }
        text += paragraph;
    }
    return text;
}

// Shows a message: the buttons are given right to left, Command(0) first.
std::int16_t Show(MsgContext& c, std::string text, PromptIcon icon, std::string_view button0,
                  std::string_view button1 = {}, std::string_view button2 = {}, std::int16_t textWidth = 0,
                  std::string_view checkText = {}) {
    c.prompt.SetPromptText(std::move(text));
    return c.prompt.ShowPrompt(button2, button1, button0, Icon(icon), textWidth, checkText);
}

bool Silenced(MsgContext& c, std::string_view value) {
    return GetRegDword(c.registry, kSettingsPath, value) == 1;
}

void RememberSilencing(MsgContext& c, std::string_view value) {
    if (c.prompt.PromptDontShowAgain()) {
        SetRegDword(c.registry, kSettingsPath, value, 1);
    }
}

constexpr std::string_view kAreYouSureSetting = "Are you sure you want to change this setting?";
constexpr std::string_view kAreYouSureContinue = "Are you sure you want to continue?";

std::int16_t ConfirmRestoreAll(MsgContext& c, std::string_view what) {
    const std::string first = "Restoring all your " + c.app.windowsName + " " + std::string(what) +
                              " will return them to Microsoft setup defaults.";
    return Show(c, Paragraphs({first, kAreYouSureContinue}), PromptIcon::Question, "Cancel", "OK");
}

}  // namespace

void MsgEffectNextStart(MsgContext& c) {
    Show(c,
         "One or more of these changes you have made will only take effect the next time you start Windows.",
         PromptIcon::Information, "OK");
}

std::int16_t MsgLowColourDisplay(MsgContext& c, int bitsPerPixel) {
    if (bitsPerPixel != 8) {
        return 0;
    }
    return Show(
        c,
        Paragraphs({"Your display is currently configured for 256 colours or less.",
                    "To use high colour icons, your display's colour palette must be set to either High "
                    "Colour or True Colour.",
                    "You can change your colour palette settings by selecting the \"Settings...\" button "
                    "below."}),
        PromptIcon::Stop, "OK", kSettingsCaption);
}

std::int16_t MsgConfirmNotepadAllFiles(MsgContext& c) {
    return Show(
        c,
        Paragraphs({"Adding Notepad to all files causes conflicts with the Microsoft Office shortcut bar.",
                    kAreYouSureSetting}),
        PromptIcon::Question, "Cancel", "OK");
}

std::int16_t MsgConfirmHideNetwork(MsgContext& c) {
    return Show(
        c,
        Paragraphs({"Hiding Network Neighborhood disables shell support for Universal Naming Convention "
                    "(UNC) notation.",
                    kAreYouSureSetting}),
        PromptIcon::Exclamation, kHelpCaption, "Cancel", "OK");
}

std::int16_t MsgConfirmDisableDesktop(MsgContext& c) {
    return Show(
        c,
        Paragraphs({"Disabling the Desktop causes a conflict with Internet Explorer 4.0 which may make this "
                    "change irreversable.",
                    kAreYouSureSetting}),
        PromptIcon::Exclamation, "Cancel", "OK");
}

std::int16_t MsgConfirmRestorePointers(MsgContext& c) {
    return ConfirmRestoreAll(c, "pointers");
}

std::int16_t MsgConfirmRestoreIcons(MsgContext& c) {
    return ConfirmRestoreAll(c, "system icons");
}

std::int16_t MsgConfirmRestoreSettings(MsgContext& c) {
    return ConfirmRestoreAll(c, "system settings");
}

std::int16_t MsgSaveBeforeClosing(MsgContext& c) {
    return Show(c, std::string(kSaveChangesQuestion), PromptIcon::Question, kSaveChangesButtons[0],
                kSaveChangesButtons[1], kSaveChangesButtons[2]);
}

void MsgInvalidThemeFile(MsgContext& c, std::string_view file) {
    Show(c, "The file " + std::string(file) + " does not appear to be a valid theme file.", PromptIcon::Stop,
         "OK");
}

std::int16_t MsgConfirmOverwriteTheme(MsgContext& c, std::string_view theme) {
    if (Silenced(c, kDialogOverwrite)) {
        return 2;
    }
    const std::string text =
        "Are you sure you want to overwrite the Icon Theme:\n\n" + std::string(theme) +
        "\n\n\nIf you tick the box below, theme files will automatically be overwritten when "
        "you click save.";
    const std::int16_t result = Show(c, text, PromptIcon::Question, "&Cancel", "No", "Yes", 0,
                                     "Do not ask me this question next time");
    RememberSilencing(c, kDialogOverwrite);
    return result;
}

void MsgRestartNow(MsgContext& c) {
    const std::int16_t result = Show(
        c,
        Paragraphs({"You will need to restart your computer for one or more of these changes to take effect.",
                    "Would you like to restart your computer now?"}),
        PromptIcon::Question, "No", "Yes");
    if (result == 0) {
        c.state.restartPending = true;
        c.state.restartNeeded = false;
        return;
    }
    if (c.app.windowsFlavour == "WinNT") {
        c.system.EnableShutdownPrivilege();
    }
    c.system.ExitWindows(kEwxReboot, 0xFFFFFFFFU);
}

void MsgShellNotified(MsgContext& c) {
    if (Silenced(c, kDialogRebuild)) {
        return;
    }
    const std::string first = "Glyphmoor has notified " + c.app.windowsName + " of your changes.";
    Show(c,
         Paragraphs(
             {first,
              "Windows 95 and Windows NT contains flaws that can cause these changes to be ignored under "
              "certain conditions.",
              "If your changes are not applied you will need to select the \"Rebuild Icon Cache\" option "
              "from the File menu.",
              "For more information about this problem, please select the \"Help\" button below."}),
         PromptIcon::Exclamation, kHelpCaption, "OK", {}, 4600, "Do not show this dialog again");
    c.state.rebuildPending = false;
    RememberSilencing(c, kDialogRebuild);
}

void MsgNameRequired(MsgContext& c) {
    Show(c, "You must provide a name for your system icon.", PromptIcon::Exclamation, "OK");
}

std::int16_t MsgConfirmRemoveDesktopIni(MsgContext& c) {
    return Show(
        c,
        Paragraphs({"Restoring this icon will remove the 'desktop.ini' file from the selected folder.",
                    kAreYouSureContinue}),
        PromptIcon::Question, "Cancel", "OK");
}

std::int16_t MsgConfirmRemoveAutorun(MsgContext& c) {
    return Show(
        c,
        Paragraphs({"Restoring this icon will remove the 'autorun.inf' file from the selected hard drive.",
                    kAreYouSureContinue}),
        PromptIcon::Question, "Cancel", "OK");
}

void MsgSelectCustomisedItem(MsgContext& c) {
    Show(c,
         "You must select a customised folder or hard drive before it can be restored to the default icon.",
         PromptIcon::Information, "OK");
}

void MsgSelectThemeForFavorites(MsgContext& c) {
    Show(c, "You must open or select a theme before it can be added to your Favorites menu.",
         PromptIcon::Information, "OK");
}

std::int16_t MsgConfirmDeleteTheme(MsgContext& c, std::string_view theme) {
    const std::string first = "You are about to delete the theme '" + std::string(theme) +
                              "' and all the icons associated with it.";
    return Show(c, Paragraphs({first, kAreYouSureContinue}), PromptIcon::Question, "Cancel", "OK");
}

void MsgNt4Ie4Limited(MsgContext& c) {
    Show(c,
         Paragraphs(
             {"Glyphmoor has detected that you are using Windows NT 4.0 with Internet Explorer 4.0 Active "
              "Desktop installed.",
              "Due to an Internet Explorer bug, this shell will corrupt your icons after processing some "
              "updates on NT. We are working around this bug, but for the moment only a limited set of icon "
              "changes will be applied on NT4 + IE4 systems with this beta of Glyphmoor.",
              "We have tested this beta with the official Internet Explorer 5 release and have not "
              "experienced the problem there, so this beta will function fully on NT4 + IE5.",
              "Please note that this problem should not occur with Windows 95/98 or Windows 2000 betas."}),
         PromptIcon::Information, "OK", {}, {}, 5000);
}

std::int16_t MsgConfirmPermanentDelete(MsgContext& c, std::string_view item) {
    return Show(c, "Are you sure you want to permanently delete '" + std::string(item) + "'?",
                PromptIcon::Question, "No", "Yes");
}

void MsgNt4ActiveDesktopNote(MsgContext& c) {
    Show(c,
         Paragraphs(
             {"Please note that we are still working around an error on Windows NT4 systems that have "
              "Active Desktop installed. Not all of the icons will immediately change on these systems "
              "(though many will).",
              "A temporary workaround, should you wish to try it, is to kill EXPLORER.EXE and then use "
              "Glyphmoor to Rebuild Icon Cache. Restart Explorer and all your icons should now have the "
              "correct package applied."}),
         PromptIcon::Information, "OK", {}, {}, 5000);
}

}  // namespace glyphmoor
