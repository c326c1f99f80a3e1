#pragma once

#include <functional>

#include <QHash>
#include <QObject>
#include <QString>

class AppContext;

// The main view frmDisplay: its load, menus and context help, and the refresh of its
// pages from the value store.
class MainView : public QObject {
    Q_OBJECT

public:
    explicit MainView(AppContext& app);

    // Redraws every page from the value store.
    void ShowData();

    // Mouse button 1 shows what would be opened, any other opens the help.
    void Help_Table(int Button, int Topic, const QString& Text);

private:
    void Form_Load();
    void onClicked(const QString& element);

    AppContext& m_app;
    QHash<QString, std::function<void()>> m_menuHandlers;
};
