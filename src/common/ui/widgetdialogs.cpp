#include "common/ui/widgetdialogs.h"

#include <QApplication>
#include <QFileDialog>
#include <QMessageBox>

namespace {

struct AnswerButton {
    UserDialogs::Answer answer;
    QMessageBox::StandardButton button;
};

constexpr AnswerButton kAnswerButtons[] = {
    {UserDialogs::Answer::Ok, QMessageBox::Ok},
    {UserDialogs::Answer::Yes, QMessageBox::Yes},
    {UserDialogs::Answer::No, QMessageBox::No},
    {UserDialogs::Answer::Abort, QMessageBox::Abort},
    {UserDialogs::Answer::Retry, QMessageBox::Retry},
    {UserDialogs::Answer::Ignore, QMessageBox::Ignore},
};

QMessageBox::StandardButton buttonFor(UserDialogs::Answer answer) {
    for (const AnswerButton& pair : kAnswerButtons)
        if (pair.answer == answer) return pair.button;
    return QMessageBox::NoButton;
}

QMessageBox::StandardButtons buttonsFor(UserDialogs::Buttons buttons) {
    switch (buttons) {
    case UserDialogs::Buttons::Ok:
        return QMessageBox::Ok;
    case UserDialogs::Buttons::YesNo:
        return QMessageBox::Yes | QMessageBox::No;
    case UserDialogs::Buttons::AbortRetryIgnore:
        return QMessageBox::Abort | QMessageBox::Retry | QMessageBox::Ignore;
    }
    return QMessageBox::Ok;
}

QMessageBox::Icon iconFor(UserDialogs::Icon icon) {
    switch (icon) {
    case UserDialogs::Icon::None:
        return QMessageBox::NoIcon;
    case UserDialogs::Icon::Information:
        return QMessageBox::Information;
    case UserDialogs::Icon::Question:
        return QMessageBox::Question;
    case UserDialogs::Icon::Warning:
        return QMessageBox::Warning;
    case UserDialogs::Icon::Critical:
        return QMessageBox::Critical;
    }
    return QMessageBox::NoIcon;
}

// The tool's patterns are separated by semicolons, Qt's by blanks.
QString qtPattern(const QString& pattern) {
    return pattern.split(QLatin1Char(';'), Qt::SkipEmptyParts).join(QLatin1Char(' ')).trimmed();
}

QString qtNameFilter(QString description, const QString& pattern) {
    const QString named = QLatin1Char('(') + pattern + QLatin1Char(')');
    if (!pattern.isEmpty() && description.contains(named))
        description = description.remove(named).simplified();
    const QString patterns = pattern.isEmpty() ? QStringLiteral("*") : qtPattern(pattern);
    if (description.isEmpty()) description = patterns;
    return description + QStringLiteral(" (") + patterns + QLatin1Char(')');
}

QWidget* dialogParent() {
    return QApplication::activeWindow();
}

} // namespace

UserDialogs::Answer WidgetDialogs::messageBox(const QString& text, const QString& title,
                                              Buttons buttons, Icon icon, Answer defaultAnswer) {
    QString plain = text;
    plain.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    QMessageBox box(iconFor(icon), title, plain, buttonsFor(buttons), dialogParent());
    box.setTextFormat(Qt::PlainText);
    if (box.standardButtons().testFlag(buttonFor(defaultAnswer)))
        box.setDefaultButton(buttonFor(defaultAnswer));
    if (buttons == Buttons::YesNo) box.setEscapeButton(QMessageBox::No);
    box.exec();
    const auto clicked = box.standardButton(box.clickedButton());
    for (const AnswerButton& pair : kAnswerButtons)
        if (pair.button == clicked) return pair.answer;
    return defaultAnswer;
}

std::optional<QString> WidgetDialogs::saveFileName(const QString& initialName,
                                                   const QString& filter) {
    QFileDialog dialog(dialogParent());
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setFileMode(QFileDialog::AnyFile);
    dialog.setOption(QFileDialog::DontConfirmOverwrite);
    dialog.setNameFilter(qtFilter(filter));
    dialog.setDefaultSuffix(firstSuffix(filter));
    if (!initialName.isEmpty()) dialog.selectFile(initialName);
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return {};
    return dialog.selectedFiles().constFirst();
}

std::optional<QString> WidgetDialogs::openFileName(const QString& filter,
                                                   const QString& defaultSuffix) {
    QFileDialog dialog(dialogParent());
    dialog.setAcceptMode(QFileDialog::AcceptOpen);
    dialog.setFileMode(QFileDialog::ExistingFile);
    dialog.setNameFilter(qtFilter(filter));
    dialog.setDefaultSuffix(defaultSuffix);
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return {};
    return dialog.selectedFiles().constFirst();
}

QString WidgetDialogs::qtFilter(const QString& toolFilter) {
    const QStringList parts = toolFilter.split(QLatin1Char('|'));
    QStringList filters;
    for (qsizetype i = 0; i < parts.size(); i += 2) {
        const QString description = parts[i].trimmed();
        const QString pattern = parts.value(i + 1).trimmed();
        if (description.isEmpty() && pattern.isEmpty()) continue;
        filters << qtNameFilter(description, pattern);
    }
    return filters.join(QStringLiteral(";;"));
}

QString WidgetDialogs::firstSuffix(const QString& toolFilter) {
    const QString pattern =
        toolFilter.section(QLatin1Char('|'), 1, 1).section(QLatin1Char(';'), 0, 0);
    if (!pattern.startsWith(QLatin1String("*."))) return {};
    const QString suffix = pattern.mid(2).trimmed();
    const bool plain = !suffix.isEmpty() && !suffix.contains(QLatin1Char('*')) &&
                       !suffix.contains(QLatin1Char('?')) && !suffix.contains(QLatin1Char('.'));
    return plain ? suffix : QString();
}
