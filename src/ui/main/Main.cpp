#include "ui/main/Main.h"

#include "ui/BusyPointer.h"

#include "foundation/RecentThemes.h"
#include "icons/IconCacheRebuild.h"
#include "ui/prompt/frmPrompt.h"

#include "ui/folders/FoldersPage.h"
#include "ui/help/HelpTopics.h"
#include "ui/help/HelpWindow.h"
#include "ui/icons/IconsPage.h"
#include "ui/main/WhatsThis.h"
#include "ui/main/WindowPictures.h"
#include "ui/tweaks/TweaksPage.h"

#include "tweaks/TweakApply.h"
#include "ui/themes/ThemesPage.h"

#include <QCloseEvent>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QStackedWidget>
#include <QStatusBar>
#include <QTabBar>
#include <QToolBar>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace glyphmoor {

namespace {

constexpr int kWindowWidth = 900;
constexpr int kWindowHeight = 580;

struct PageGroup {
    const char* key;
    const char* caption;
    Page page;
    Picture picture;
    QStringList items;
};

const std::array<PageGroup, 4>& PageGroups() {
    static const std::array<PageGroup, 4> groups = {{
        {"Themes", "Themes", Page::Themes, Picture::Themes, {QStringLiteral("Themes")}},
        {"Icons",
         "Icons & Cursors",
         Page::IconsAndCursors,
         Picture::Desktop,
         {QStringLiteral("Desktop"), QStringLiteral("Start"), QStringLiteral("Folder"),
          QStringLiteral("Drives"), QStringLiteral("Others"), QStringLiteral("Files"),
          QStringLiteral("Cursors")}},
        {"Folders", "Folders", Page::Folders, Picture::Folder, {QStringLiteral("Folders")}},
        {"Tweak Shell",
         "Tweak Shell",
         Page::TweakShell,
         Picture::Tweak,
         {QStringLiteral("General"), QStringLiteral("Bootup"), QStringLiteral("Miscellaneous")}},
    }};
    return groups;
}

}  // namespace

Main::Main(Machine& machine, const StartRequest& request, Prompt* prompt)
    : m_machine(machine),
      m_app(InitEnvironment(machine.Env())),
      m_catalogue(machine.Registry(), m_app),
      m_tweaks(machine.Registry(), m_app),
      m_ownPrompt(prompt == nullptr ? std::make_unique<WindowPrompt>(machine.Sys(), m_app.helpFile, this)
                                    : nullptr),
      m_prompt(prompt == nullptr ? m_ownPrompt.get() : prompt) {
    setObjectName(QStringLiteral("Main"));
    setWindowIcon(WindowPicture(Picture::Desktop, 32));
    BuildPages();
    auto* body = new QHBoxLayout;
    body->addWidget(BuildPageBar());
    body->addWidget(m_pages, 1);
    auto* central = new QWidget(this);
    auto* layout = new QVBoxLayout(central);
    layout->addLayout(body, 1);
    layout->addLayout(BuildButtons());
    setCentralWidget(central);

    BuildMenus();
    BuildToolbar();
    BuildStatusLine();
    SetWhatsThisTexts(*this);
    InstallHelpKey(*this, [this] { return PageTopicKey(CurrentPage()); });
    StartUp(request);
}

// Which machine is open, always in sight.
void Main::BuildStatusLine() {
    auto* machineLabel =
        new QLabel(QStringLiteral("Machine: ") + QString::fromStdString(m_machine.Description()));
    machineLabel->setObjectName(QStringLiteral("lblMachine"));
    statusBar()->addPermanentWidget(machineLabel, 1);
    if (auto warning = m_machine.StaleWarning()) {
        machineLabel->setToolTip(QString::fromStdString(*warning));
        machineLabel->setText(machineLabel->text() + QStringLiteral(" (a wineserver is running: read only)"));
    }
}

void Main::BuildPages() {
    m_pages = new QStackedWidget(this);
    m_themes = new ThemesPage(m_app, m_pages);
    m_pages->addWidget(m_themes);
    m_icons = new IconsPage(Messages(), m_app.machine, m_catalogue, m_names, m_pages);
    m_pages->addWidget(m_icons);
    m_folders = new FoldersPage(Messages(), m_machine, m_catalogue, m_pages);
    m_pages->addWidget(m_folders);
    m_tweakPage = new TweaksPage(Messages(), m_tweaks, m_pages);
    m_pages->addWidget(m_tweakPage);
    connect(m_icons, &IconsPage::changed, this, &Main::PendingChanged);
    connect(m_tweakPage, &TweaksPage::changed, this, &Main::PendingChanged);
    connect(m_tweakPage, &TweaksPage::popupRequested, this, &Main::ShowShellPopup);
    ConnectThemesPage();
    connect(m_folders, &FoldersPage::notice, this,
            [this](const QString& text) { statusBar()->showMessage(text); });
}

QHBoxLayout* Main::BuildButtons() {
    auto* cmdOK = new QPushButton(QStringLiteral("OK"), this);
    cmdOK->setObjectName(QStringLiteral("cmdOK"));
    auto* cmdCancel = new QPushButton(QStringLiteral("Cancel"), this);
    cmdCancel->setObjectName(QStringLiteral("cmdCancel"));
    m_cmdApply = new QPushButton(QStringLiteral("&Apply"), this);
    m_cmdApply->setObjectName(QStringLiteral("cmdApply"));
    m_cmdApply->setEnabled(false);
    auto* cmdHelp = new QPushButton(QStringLiteral("Help"), this);
    cmdHelp->setObjectName(QStringLiteral("cmdHelp"));
    connect(cmdOK, &QPushButton::clicked, this, [this] {
        if (m_cmdApply->isEnabled()) {
            ApplyChanges();
        }
        close();
    });
    connect(cmdCancel, &QPushButton::clicked, this, &Main::close);
    connect(m_cmdApply, &QPushButton::clicked, this, &Main::ApplyChanges);
    connect(cmdHelp, &QPushButton::clicked, this, [this] { Dispatch("cmdHelp"); });

    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    for (QPushButton* button : {cmdOK, cmdCancel, m_cmdApply, cmdHelp}) {
        buttons->addWidget(button);
    }
    return buttons;
}

// Start-up: caption and current theme, position, first page.
void Main::StartUp(const StartRequest& request) {
    SetCurrentTheme(m_machine.Registry(), m_state, "load");
    RefreshRecentMenu();
    RefreshCaption();
    resize(kWindowWidth, kWindowHeight);
    const QScreen* screen = QGuiApplication::primaryScreen();
    const QRect area =
        screen != nullptr ? screen->availableGeometry() : QRect(0, 0, kWindowWidth, kWindowHeight);
    const WindowPosition at =
        StartPosition(m_machine.Registry(), area.width(), area.height(), kWindowWidth, kWindowHeight);
    move(at.left, at.top);
    if (request.firstPage != Page::None) {
        ShowPage(request.firstPage);
    }
    // "/t FILE": the theme loaded for preview on the "Icons & Cursors" page, not applied.
    if (request.mode == StartMode::PreviewTheme) {
        OpenTheme(request.argument);
    }
    if (request.mode == StartMode::OpenFolder) {
        m_folders->ShowFolder(request.argument);
    }
}

Main::~Main() = default;

DisplayCaps Main::DisplayNow() const {
    const QScreen* screen = this->screen() != nullptr ? this->screen() : QGuiApplication::primaryScreen();
    if (screen == nullptr) {
        return {};
    }
    return DisplayCaps{screen->depth(), screen->geometry().width(), screen->geometry().height()};
}

QWidget* Main::BuildPageBar() {
    m_vMenu = new QTreeWidget(this);
    m_vMenu->setObjectName(QStringLiteral("vMenu"));
    m_vMenu->setHeaderHidden(true);
    m_vMenu->setRootIsDecorated(false);
    m_vMenu->setIconSize(QSize(24, 24));
    m_vMenu->setFixedWidth(150);
    for (const PageGroup& group : PageGroups()) {
        auto* top = new QTreeWidgetItem(m_vMenu, {QString::fromUtf8(group.caption)});
        top->setData(0, Qt::UserRole, QString::fromUtf8(group.key));
        QFont bold = top->font(0);
        bold.setBold(true);
        top->setFont(0, bold);
        top->setFlags(Qt::ItemIsEnabled);
        int index = 0;
        for (const QString& caption : group.items) {
            auto* item = new QTreeWidgetItem(top, {caption});
            item->setIcon(0,
                          WindowPicture(group.page == Page::IconsAndCursors && index == 6 ? Picture::Cursors
                                                                                          : group.picture));
            item->setData(0, Qt::UserRole, static_cast<int>(group.page));
            item->setData(0, Qt::UserRole + 1, index++);
        }
    }
    m_vMenu->expandAll();
    connect(m_vMenu, &QTreeWidget::itemClicked, this, [this](QTreeWidgetItem* item, int) {
        if (item->parent() != nullptr) {
            ShowPage(static_cast<Page>(item->data(0, Qt::UserRole).toInt()),
                     item->data(0, Qt::UserRole + 1).toInt());
        }
    });
    return m_vMenu;
}

QWidget* Main::UnavailablePage(const char* containerName, const char* tabName, const QStringList& tabs,
                               const QStringList& controls) {
    auto* page = new QWidget(m_pages);
    page->setObjectName(QString::fromUtf8(containerName));
    auto* tabBar = new QTabBar(page);
    tabBar->setObjectName(QString::fromUtf8(tabName));
    for (const QString& tab : tabs) {
        tabBar->addTab(tab);
    }
    auto* layout = new QVBoxLayout(page);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(tabBar);
    auto* note = new QLabel(QStringLiteral("This page is not part of this build of Glyphmoor yet."), page);
    note->setAlignment(Qt::AlignCenter);
    note->setEnabled(false);
    layout->addWidget(note, 1);
    // The page's controls exist by name, disabled, until their part of the program lands.
    for (const QString& name : controls) {
        auto* control = new QWidget(page);
        control->setObjectName(name);
        control->setEnabled(false);
        control->hide();
    }
    return page;
}

void Main::ShowPage(Page page, int item) {
    if (page == Page::None) {
        return;
    }
    if (page == Page::IconsAndCursors) {
        m_icons->EnsureLoaded();
        m_icons->ShowGroup(item + 1);
    }
    if (page == Page::Themes) {
        m_themes->EnsureLoaded();
    }
    if (page == Page::Folders) {
        m_folders->EnsureLoaded();
    }
    QWidget* container = m_pages->widget(static_cast<int>(page) - 1);
    if (page == Page::TweakShell) {
        m_tweakPage->EnsureLoaded(DisplayNow());
        if (auto* tabs = container->findChild<QTabBar*>(QStringLiteral("tabShell"))) {
            tabs->setCurrentIndex(item);
        }
    }
    m_pages->setCurrentWidget(container);
    container->setFocus();
    // The page bar follows.
    const auto groupIndex = static_cast<int>(page) - 1;
    if (QTreeWidgetItem* top = m_vMenu->topLevelItem(groupIndex);
        top != nullptr && item < top->childCount()) {
        m_vMenu->setCurrentItem(top->child(item));
    }
}

Page Main::CurrentPage() const {
    return static_cast<Page>(m_pages->currentIndex() + 1);
}

void Main::PendingChanged() {
    m_cmdApply->setEnabled(m_state.applyEnabled);
    RefreshCaption();
}

MsgContext Main::Messages() {
    return {*m_prompt, m_machine.Registry(), m_machine.Sys(), m_app, m_state};
}

void Main::RefreshCaption() {
    setWindowTitle(QString::fromStdString(m_state.caption));
}

void Main::ApplyChanges() {
    // The order is fixed: a loaded theme marks every icon group, the icons
    // are written, (the tweaks, boot options and start-up lists follow here
    // when their parts of the program are built in), then the icon cache is
    // rebuilt and a needed restart is offered.
    const BusyPointer busy;
    const bool overlayMayChange = m_tweaks.GroupChanged("Explorer");
    ApplyIconsAndTweaks(m_catalogue, m_tweaks, m_machine, m_state, m_names);
    if (m_tweaks.Loaded()) {
        m_tweakPage->Refresh();
    }
    if (overlayMayChange && m_catalogue.Built()) {
        m_icons->RefreshAll();
    }
    if (m_state.rebuildPending) {
        RebuildIcons();
        // Rebuilt: a later Apply of pointers alone does not rebuild again,
        // even when "Dialog Rebuild" kept the notice (and its clearing) away.
        m_state.rebuildPending = false;
    }
    if (m_state.restartNeeded) {
        MsgContext messages = Messages();
        PromptRestart(messages);
    }
    if (!SaveMachine()) {
        m_state.applyEnabled = true;
    }
    PendingChanged();
}

bool Main::SaveMachine() {
    const Status saved = m_machine.Save();
    if (!saved.ok()) {
        m_prompt->SetPromptText("Glyphmoor could not write the changes to the machine:\n\n" + saved.reason());
        m_prompt->ShowPrompt("", "", "OK", static_cast<std::int16_t>(PromptIcon::Stop), 0, "");
    }
    return saved.ok();
}

void Main::RebuildIconsAndSave() {
    RebuildIcons();
    static_cast<void>(SaveMachine());  // a failure has been shown
}

void Main::RebuildIcons() {
    MsgContext messages = Messages();
    RebuildHooks hooks;
    hooks.desktopUpdateShell = [this] {
        if (!m_catalogue.Detected()) {
            m_catalogue.DetectShellIcons(true);
        }
        return m_catalogue.State().newShell;
    };
    hooks.refreshIconLists = [this] {
        if (m_catalogue.Built()) {
            m_icons->RefreshAll();
        }
    };
    RebuildIconCache(messages, hooks);
}

void Main::closeEvent(QCloseEvent* event) {
    MsgContext messages = Messages();
    std::optional<int> answer;
    if (AsksBeforeClosing(m_state)) {
        answer = MsgSaveBeforeClosing(messages);
    }
    switch (CloseActionFor(m_state, answer)) {
        case CloseAction::Cancel:
            event->ignore();
            return;
        case CloseAction::ApplyThenClose:
            ApplyChanges();
            break;
        case CloseAction::Close:
            break;
    }
    if (Unload(m_machine.Registry(), m_state, {x(), y()}).showNextStartNotice) {
        ShowNextStartNotice(messages);
    }
    // The window closes either way: the failure has been shown.
    static_cast<void>(SaveMachine());
    event->accept();
}

}  // namespace glyphmoor
