#include "ui/favorites/frmAddFav.h"

#include "foundation/AppEnvironment.h"
#include "themes/Favorites.h"
#include "ui/favorites/frmAddFolder.h"

#include <QGridLayout>

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>
#include <filesystem>

namespace glyphmoor {

namespace {

constexpr int kPathRole = Qt::UserRole;

std::string BaseName(std::string_view path) {
    const auto slash = path.rfind('\\');
    std::string name(slash == std::string_view::npos ? path : path.substr(slash + 1));
    return name.substr(0, name.rfind('.'));
}

}  // namespace

frmAddFav::frmAddFav(Machine& machine, Prompt& prompt, std::string theme, QWidget* parent)
    : QDialog(parent), m_machine(machine), m_prompt(prompt), m_theme(std::move(theme)) {
    setObjectName(QStringLiteral("frmAddFav"));
    setWindowTitle(QStringLiteral("Add Favorite"));
    m_runFolderDialog = [](frmAddFolder& dialog) { return dialog.exec(); };

    auto* layout = new QVBoxLayout(this);
    auto* text =
        new QLabel(QStringLiteral("This will add a shortcut of your Icon Theme to your favorites folder."));
    text->setWordWrap(true);
    layout->addWidget(text);
    auto* grid = new QGridLayout;
    auto* nameLabel = new QLabel(QStringLiteral("&Name:"));
    m_txtShortcut = new QLineEdit(QString::fromStdString(BaseName(m_theme)));
    m_txtShortcut->setObjectName(QStringLiteral("txtShortcut"));
    m_txtShortcut->selectAll();
    nameLabel->setBuddy(m_txtShortcut);
    grid->addWidget(nameLabel, 0, 0);
    grid->addWidget(m_txtShortcut, 0, 1);
    auto* buttons = new QVBoxLayout;
    auto* ok = new QPushButton(QStringLiteral("OK"));
    ok->setObjectName(QStringLiteral("cmdOK"));
    ok->setDefault(true);
    auto* cancel = new QPushButton(QStringLiteral("Cancel"));
    cancel->setObjectName(QStringLiteral("cmdCancel"));
    m_cmdCreatein = new QPushButton(QStringLiteral("&Create in >>"));
    m_cmdCreatein->setObjectName(QStringLiteral("cmdCreatein"));
    m_cmdNew = new QPushButton(QStringLiteral("N&ew Folder..."));
    m_cmdNew->setObjectName(QStringLiteral("cmdNew"));
    m_cmdNew->setEnabled(false);
    for (QPushButton* button : {ok, cancel, m_cmdCreatein, m_cmdNew}) {
        buttons->addWidget(button);
    }
    buttons->addStretch();
    grid->addLayout(buttons, 0, 2, 3, 1);
    auto* inLabel = new QLabel(QStringLiteral("Create &in:"));
    inLabel->setObjectName(QStringLiteral("lblCreatein"));
    m_tvExplorer = new QTreeWidget;
    m_tvExplorer->setObjectName(QStringLiteral("tvExplorer"));
    m_tvExplorer->setHeaderHidden(true);
    inLabel->setBuddy(m_tvExplorer);
    inLabel->setVisible(false);
    m_tvExplorer->setVisible(false);
    grid->addWidget(inLabel, 1, 0, 1, 2);
    grid->addWidget(m_tvExplorer, 2, 0, 1, 2);
    layout->addLayout(grid);

    connect(ok, &QPushButton::clicked, this, &frmAddFav::Create);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    connect(m_cmdCreatein, &QPushButton::clicked, this, [this, inLabel] {
        inLabel->setVisible(true);
        ShowTree();
    });
    connect(m_cmdNew, &QPushButton::clicked, this, &frmAddFav::NewFolder);
    resize(420, sizeHint().height());
}

void frmAddFav::ShowTree() {
    FillTree(FavoritesFolder(InitEnvironment(m_machine.Env())));
    m_tvExplorer->setVisible(true);
    m_cmdNew->setEnabled(true);
    m_cmdCreatein->setEnabled(false);
    resize(width(), sizeHint().height() + 160);
}

void frmAddFav::FillTree(const std::string& select) {
    const AppEnvironment app = InitEnvironment(m_machine.Env());
    m_tvExplorer->clear();
    const std::string root = FavoritesFolder(app);
    auto* top = new QTreeWidgetItem(m_tvExplorer, {QStringLiteral("Favorites")});
    top->setData(0, kPathRole, QString::fromStdString(root));
    std::vector<QTreeWidgetItem*> parents = {top};
    QTreeWidgetItem* selected = top;
    for (const FavoriteItem& item : FavoritesMenu(app)) {
        if (item.kind != FavoriteItem::Kind::Folder) {
            continue;
        }
        parents.resize(static_cast<std::size_t>(item.depth) + 1);
        auto* node = new QTreeWidgetItem(parents.back(), {QString::fromStdString(item.caption)});
        node->setData(0, kPathRole, QString::fromStdString(item.path));
        parents.push_back(node);
        if (item.path == select) {
            selected = node;
        }
    }
    m_tvExplorer->expandAll();
    m_tvExplorer->setCurrentItem(selected);
}

std::string frmAddFav::SelectedFolder() const {
    const QTreeWidgetItem* item = !m_tvExplorer->isHidden() ? m_tvExplorer->currentItem() : nullptr;
    return item == nullptr ? std::string() : item->data(0, kPathRole).toString().toStdString();
}

void frmAddFav::NewFolder() {
    frmAddFolder dialog(m_machine, SelectedFolder(), this);
    if (m_runFolderDialog(dialog) == QDialog::Accepted && !dialog.Made().empty()) {
        FillTree(dialog.Made());
    }
}

void frmAddFav::Create() {
    const std::string folder = SelectedFolder();
    const std::string name = m_txtShortcut->text().toStdString();
    const AppEnvironment app = InitEnvironment(m_machine.Env());
    Replace replace = Replace::No;
    const auto link = FavoriteLinkPath(app, m_theme, folder, name);
    std::error_code ec;
    if (link.ok() && std::filesystem::exists(m_machine.Env().HostPath(*link), ec)) {
        m_prompt.SetPromptText("There is a favourite " + *link + " already.\n\nDo you want to replace it?");
        constexpr std::int16_t kYes = 1;  // "&No", Command(0), is the safe answer
        if (m_prompt.ShowPrompt("", "&Yes", "&No", static_cast<std::int16_t>(PromptIcon::Question), 0, "") !=
            kYes) {
            return;
        }
        replace = Replace::Yes;
    }
    const auto made = AddFavorite(m_machine, m_theme, folder, name, replace);
    if (!made.ok()) {
        m_prompt.SetPromptText("The favourite was not added: " + made.reason() + ".");
        m_prompt.ShowPrompt("", "", "OK", static_cast<std::int16_t>(PromptIcon::Exclamation), 0, "");
        return;
    }
    m_made = made.value();
    accept();
}

}  // namespace glyphmoor
