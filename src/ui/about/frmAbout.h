// frmAbout: the about box. The product's name and version, the host's total
// and available physical memory (the available figure refreshed every
// second), and two labels that open the support mail address and the web
// site. Close and Escape close it.
#pragma once

#include <QDialog>

#include <array>
#include <functional>
#include <string_view>

class QLabel;
class QTimer;

namespace glyphmoor {

inline constexpr std::string_view kWebSite = "http://www.veltrane.com/glyphmoor/";
inline constexpr std::string_view kSupportMail = "glyphmoor@veltrane.com";
inline constexpr std::string_view kMoreThemes = "http://www.veltrane.com/glyphmoor/themes/";

class frmAbout final : public QDialog {
    Q_OBJECT
public:
    // `open` opens an address with the desktop's handler.
    explicit frmAbout(std::function<void(std::string_view)> open, QWidget* parent = nullptr);

    // The labels by index, as the form numbers them: 0 the title, 1 the
    // version, 2 what the program does, 3 and 4 the memory figures, 5 the mail address, 6 the web site.
    [[nodiscard]] QLabel* Label(int index) const { return m_label.at(static_cast<std::size_t>(index)); }
    // A timer tick: the available memory read again.
    void RefreshMemory();

private:
    void BuildLayout();
    void LabelClicked(int index);

    std::function<void(std::string_view)> m_open;
    std::array<QLabel*, 7> m_label{};
    QTimer* m_timer = nullptr;
};

}  // namespace glyphmoor
