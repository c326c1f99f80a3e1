#include "display/mainview.h"

#include "shell/appcontext.h"

MainView::MainView(AppContext& app)
    : QObject()
    , m_app(app) {}

void MainView::ShowData() {}

void MainView::Help_Table(int, int, const QString&) {}

void MainView::Form_Load() {}

void MainView::onClicked(const QString&) {}

void MainView::setUnitChecks() {}
