#pragma once

#include <array>
#include <memory>

#include <QIcon>
#include <QObject>
#include <QSystemTrayIcon>

class AppShell;
class Form;

// The notification-area icon as the start window's model describes it: the element
// "trayIcon" is visible while the icon is added, and its value 0 to 3 picks the picture
// (bit 0 receiving, bit 1 sending). On a desktop without a notification area there is
// simply no icon.
class TrayIcon : public QObject {
    Q_OBJECT

public:
    TrayIcon(Form& startWindow, AppShell& shell, QObject* parent = nullptr);
    ~TrayIcon() override;

    // The icon on the desktop; null while none is shown or none can be.
    QSystemTrayIcon* systemIcon() const { return m_icon.get(); }
    // The picture the model asks for, 0 to 3.
    int state() const;

private:
    void sync();
    bool wanted() const;
    void onActivated(QSystemTrayIcon::ActivationReason reason);

    AppShell& m_shell;
    Form& m_form;
    std::array<QIcon, 4> m_images;
    std::unique_ptr<QSystemTrayIcon> m_icon;
    bool m_desktopHasNoTray = false;
};
