// frmChangeIcon: picks one icon out of an icon file, program or library.
//
// The icons of the file in `txtFilename` stand in a grid (`lstMain`) inside
// a container, four to a column, filled column by column; the scroll bar
// `Scroll` shifts the grid left by its value in pixels. OK hands back the
// file and the zero-based index of the chosen icon.
#pragma once

#include "foundation/Environment.h"
#include "foundation/RegistryStore.h"
#include "ui/icons/IconPictures.h"

#include <QDialog>
#include <QWidget>

#include <functional>
#include <memory>
#include <optional>
#include <string>

class QComboBox;
class QPushButton;
class QScrollBar;
class QTimer;

namespace glyphmoor {

// The grid's geometry in pixels.
inline constexpr int kIconPitch = 38;
inline constexpr int kIconMargin = 3;
inline constexpr int kIconsPerColumn = 4;
inline constexpr int kGridHeight = kIconsPerColumn * kIconPitch + 4;
// The container shows eight whole columns: 32 icons fit, 33 need the scroll bar.
inline constexpr int kGridVisibleWidth = 8 * kIconPitch + 2;

// The grid: draws only the cells that can be seen, each icon decoded the
// first time it is drawn.
class IconGrid final : public QWidget {
    Q_OBJECT
public:
    explicit IconGrid(QWidget* parent);

    void SetSource(IconSource* source);
    [[nodiscard]] int Count() const { return m_source != nullptr ? m_source->Count() : 0; }
    [[nodiscard]] int Selected() const { return m_selected; }
    // Selects the cell under a point of the grid, as a left button press does.
    void PressAt(QPoint point);
    void Select(int index);
    // Where icon `index` is drawn.
    static QPoint CellOrigin(int index);

signals:
    void selectionChanged(int index);
    void activated();

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;

private:
    IconSource* m_source = nullptr;
    int m_selected = -1;
};

class frmChangeIcon final : public QDialog {  // NOLINT(readability-identifier-naming)
    Q_OBJECT
public:
    // The registry keeps the file history; the machine maps Windows paths to
    // its files (null: Windows paths are host paths).
    frmChangeIcon(RegistryStore& registry, const Environment& machine, QWidget* parent = nullptr);
    ~frmChangeIcon() override;

    // Lists the file's icons and pre-selects `index`, scrolling so that its
    // column is the last one seen when it lies beyond the right edge.
    void Prepare(const std::string& file, int index);
    // Prepare, then shows the dialog modally; on OK `file` and `index` hold
    // the choice and the result is true.
    bool Open(std::string& file, int& index);

    [[nodiscard]] std::string ChosenFile() const;
    // The listed file's icons; null before a file is listed.
    [[nodiscard]] const IconSource* Source() const { return m_source.get(); }
    [[nodiscard]] int ChosenIndex() const;

    // Where the stock message box goes (tests take it); and what the browse
    // button asks for a file (a Windows path, nothing on Cancel).
    void SetStockMessage(std::function<void(const QString&)> show) { m_stockMessage = std::move(show); }
    void SetFilePicker(std::function<std::optional<std::string>()> pick) { m_pickFile = std::move(pick); }

    // Lists the icons of the file in txtFilename anew; a file without icons
    // is reported by the stock message.
    void ListIcons();
    // How long typing pauses before the typed file is listed.
    static constexpr int kTypingPauseMs = 700;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void accept() override;

private:
    // The constructor's steps.
    void MakeControls();
    void LayOutControls();
    void ConnectControls();
    void List(bool report);
    // Puts the listed file's icons in the grid.
    void ShowSource();
    // Lists the file in txtFilename when the list belongs to another file.
    void ListTypedFile(bool report);
    void Browse();
    void MoveSelection(int step);
    void EnsureVisible(int index);
    std::optional<std::string> PickWithDialog();

    RegistryStore& m_registry;
    const Environment& m_machine;
    std::unique_ptr<IconSource> m_source;
    QComboBox* m_txtFilename;
    QPushButton* m_cmdBrowse;
    QWidget* m_container;
    IconGrid* m_lstMain;
    QScrollBar* m_scroll;
    QPushButton* m_cmdOK;
    QPushButton* m_cmdCancel;
    QTimer* m_typingPause;
    std::string m_listedFile;  // the file the grid lists (OK is for it alone)
    std::function<void(const QString&)> m_stockMessage;
    std::function<std::optional<std::string>()> m_pickFile;
};

}  // namespace glyphmoor
