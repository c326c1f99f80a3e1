#pragma once

#include <functional>

#include <QHash>
#include <QObject>
#include <QString>

class AppState;
class DeviceFiles;
class DeviceSearch;

// The main view frmDisplay: its load, its menus that reach the parts below it, the units
// of temperature and smoke, context help, and the refresh of its pages from the value
// store. The menus that belong to the whole tool (load, exit, port, language, About) are
// the shell's.
class MainView : public QObject {
    Q_OBJECT

public:
    MainView(AppState& state, DeviceFiles& files, DeviceSearch& search);

    // Redraws every page from the value store.
    void ShowData();

    // Store the unit unconditionally; a value other than 1 and 2 is stored but used as 1.
    void SwitchToTemperature(int unit);
    void SwitchToSmokeUnit(int unit);

    // Mouse button 1 shows what would be opened, any other opens the help.
    void Help_Table(int Button, int Topic, const QString& Text);

Q_SIGNALS:
    // Help file of `device`, opened (mode 1) or described (mode 2) at `topic`.
    void helpRequested(int device, int mode, int topic, const QString& text);

private:
    void Form_Load();
    // The unit menus checked as gTemperatureUnit and gSmokeUnit say.
    void checkUnitMenus();
    void onClicked(const QString& element);

    AppState& m_state;
    QHash<QString, std::function<void()>> m_menuHandlers;
};
