#pragma once

class PageParts;
class QWidget;

// The content of each page of the main view, below its header.
QWidget* buildStatusPage(PageParts& parts);
QWidget* buildMeasurementPage(PageParts& parts);
QWidget* buildMessagesPage(PageParts& parts);
QWidget* buildSettingsPage(PageParts& parts);
QWidget* buildRelaysPage(PageParts& parts);
QWidget* buildLocalisationPage(PageParts& parts);
// Modules `first` to `first` + 4.
QWidget* buildModulesPage(PageParts& parts, int first);
