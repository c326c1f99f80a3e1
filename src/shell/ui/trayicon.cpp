#include "shell/ui/trayicon.h"

#include "common/formmodel.h"
#include "common/ui/artwork.h"
#include "shell/appshell.h"
#include "shell/startwindow_elements.h"

#include <algorithm>
#include <cmath>

namespace {
const QString kElement = frmMQ27D::trayIcon;
// The notification area's tip holds 63 characters.
constexpr int kTipLength = 63;
} // namespace

TrayIcon::TrayIcon(Form& startWindow, AppShell& shell, QObject* parent)
    : QObject(parent)
    , m_shell(shell)
    , m_form(startWindow) {
    for (int state = 0; state < 4; ++state)
        m_images[state] = artwork::trayIcon(state);
    connect(&m_form, &Form::elementChanged, this, [this](const QString& element) {
        if (element == kElement) sync();
    });
    connect(&m_form, &Form::windowChanged, this, [this](Form::WindowChange change) {
        if (change == Form::WindowChange::Title) sync();
    });
    sync();
}

TrayIcon::~TrayIcon() = default;

int TrayIcon::state() const {
    const double value = m_form.value(kElement);
    return std::isnan(value) ? 0 : static_cast<int>(std::clamp(value, 0.0, 3.0));
}

bool TrayIcon::wanted() const {
    return m_form.has(kElement) && m_form.isVisible(kElement);
}

void TrayIcon::sync() {
    if (!wanted()) {
        m_icon.reset();
        m_desktopHasNoTray = false; // asked again at the next adding
        return;
    }
    if (!m_icon) {
        if (m_desktopHasNoTray || !QSystemTrayIcon::isSystemTrayAvailable()) {
            m_desktopHasNoTray = true;
            return;
        }
        m_icon = std::make_unique<QSystemTrayIcon>();
        connect(m_icon.get(), &QSystemTrayIcon::activated, this, &TrayIcon::onActivated);
    }
    m_icon->setIcon(m_images[static_cast<std::size_t>(state())]);
    m_icon->setToolTip(m_form.title().left(kTipLength));
    m_icon->show();
}

void TrayIcon::onActivated(QSystemTrayIcon::ActivationReason reason) {
    if (reason == QSystemTrayIcon::Trigger || reason == QSystemTrayIcon::DoubleClick)
        m_shell.TrayIconActivated();
}

#include "moc_trayicon.cpp"
