#include "record/ui/frmprotocol.h"

#include "common/ui/formview.h"
#include "common/ui/windowparts.h"
#include "record/protocol.h"
#include "record/record_elements.h"
#include "record/recordlayout.h"
#include "record/ui/recordprint.h"

#include <QApplication>
#include <QFontMetrics>
#include <QGroupBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPrintDialog>
#include <QPrinter>
#include <QPushButton>
#include <QScrollBar>
#include <QTabWidget>
#include <QTextOption>
#include <QVBoxLayout>

using namespace windowparts;
namespace pr = frmProtocol;

namespace {

// Strings of the three views' tabs, by index of rtxtProtocol.
constexpr int kViewTitles[] = {655, 653, 654};

QPlainTextEdit* pageView(int index) {
    auto* edit = named<QPlainTextEdit>(pr::rtxtProtocol[index]);
    edit->setReadOnly(true);
    edit->setLineWrapMode(QPlainTextEdit::NoWrap);
    edit->setFont(recordprint::recordFont());
    // A right-to-left comment must not turn its line round: the grid reads left to right.
    QTextOption option = edit->document()->defaultTextOption();
    option.setTextDirection(Qt::LeftToRight);
    edit->document()->setDefaultTextOption(option);
    edit->setTextInteractionFlags(Qt::TextSelectableByKeyboard | Qt::TextSelectableByMouse);
    const QFontMetrics metrics(edit->font());
    edit->setMinimumWidth(metrics.horizontalAdvance(QString(record::PageWidth + 2, u'M')) +
                          edit->verticalScrollBar()->sizeHint().width() + 16);
    edit->setMinimumHeight(metrics.lineSpacing() * 30);
    return edit;
}

// Printing to a file makes one file: both pages go into it rather than the second
// overwriting the first.
bool printsToFile(const QPrinter& printer) {
    return !printer.outputFileName().isEmpty();
}

} // namespace

frmProtocolWindow::frmProtocolWindow(Form& form, Protocol& logic, std::function<QString(int)> text,
                                     QWidget* parent)
    : QDialog(parent)
    , m_text(std::move(text)) {
    setObjectName(form.name());
    m_views = new QTabWidget;
    // The tab bar takes the focus and names the pages; the widget around it need not.
    m_views->setFocusPolicy(Qt::NoFocus);
    for (const int index : {1, 2, 0}) {
        // The view sits on a page of its own: a tab page's caption is the tab's text.
        auto* page = new QWidget;
        auto* layout = new QVBoxLayout(page);
        layout->setContentsMargins(0, 0, 0, 0);
        layout->addWidget(pageView(index));
        m_views->addTab(page, QString());
    }

    auto* root = new QVBoxLayout(this);
    root->addWidget(m_views, 1);
    auto* pdf = button(pr::cmdPdf);
    auto* row = buttonRow({button(pr::cmdSave), button(pr::cmdPrint), button(pr::cmdSavePrint), pdf,
                           button(pr::cmdCancel)});
    root->addLayout(row);
    resize(minimumSizeHint().width(), 900);

    m_view = std::make_unique<FormView>(form, this);
    m_view->setEscapeElement(pr::cmdCancel);
    applyTexts();
    connect(&form, &Form::windowChanged, this, [this](Form::WindowChange change) {
        if (change == Form::WindowChange::Shown || change == Form::WindowChange::Title)
            applyTexts();
    });
    connect(&logic, &Protocol::PrintRequested, this,
            [this, &logic](const QStringList& pages) { logic.Printed(print(pages)); });
    connect(&logic, &Protocol::PdfRequested, this,
            [this, &logic](const QString& path, const QStringList& pages) {
                QApplication::setOverrideCursor(Qt::WaitCursor);
                const QString failure = recordprint::writePdf(path, pages, windowTitle());
                QApplication::restoreOverrideCursor();
                logic.PdfWritten(path, failure);
            });
}

frmProtocolWindow::~frmProtocolWindow() = default;

void frmProtocolWindow::applyTexts() {
    const int order[] = {1, 2, 0};
    for (int tab = 0; tab < 3; ++tab) {
        const QString title = m_text(kViewTitles[order[tab]]);
        m_views->setTabText(tab, title);
        m_views->widget(tab)->findChild<QPlainTextEdit*>()->setAccessibleName(title);
    }
}

QString frmProtocolWindow::print(const QStringList& pages) {
    QPrinter printer(QPrinter::HighResolution);
    printer.setDocName(windowTitle());
    QPrintDialog dialog(&printer, this);
    dialog.setOption(QAbstractPrintDialog::PrintToFile, true);
    if (dialog.exec() != QDialog::Accepted) return {};
    if (!printer.isValid()) return m_text(652);

    QApplication::setOverrideCursor(Qt::WaitCursor);
    bool done = true;
    if (printsToFile(printer)) {
        done = recordprint::paintPages(printer, pages);
    } else {
        for (const QString& page : pages)
            done = recordprint::paintPages(printer, {page}) && done;
    }
    QApplication::restoreOverrideCursor();
    return done ? QString() : m_text(656);
}

frmProtocolCommentWindow::frmProtocolCommentWindow(Form& form, QWidget* parent)
    : QDialog(parent) {
    namespace cl = frmProtocolComment;
    setObjectName(form.name());
    auto* frame = named<QGroupBox>(cl::fraComment);
    auto* lines = new QVBoxLayout(frame);
    for (const QString& name : {QString(cl::txtComment1), QString(cl::txtComment2)}) {
        auto* line = named<QLineEdit>(name);
        line->setMaxLength(record::PrintWidth);
        line->setFont(recordprint::recordFont());
        line->setMinimumWidth(
            QFontMetrics(line->font()).horizontalAdvance(QString(record::PrintWidth + 2, u'M')));
        lines->addWidget(line);
    }
    auto* root = new QVBoxLayout(this);
    root->addWidget(frame);
    root->addLayout(buttonRow({button(cl::cmdOK, true)}));
    m_view = std::make_unique<FormView>(form, this);
    m_view->setEscapeElement(cl::cmdOK);
    const auto nameLines = [this, &form] {
        const QString title = form.caption(cl::fraComment);
        findChild<QLineEdit*>(cl::txtComment1)->setAccessibleName(title + QStringLiteral(" 1"));
        findChild<QLineEdit*>(cl::txtComment2)->setAccessibleName(title + QStringLiteral(" 2"));
    };
    nameLines();
    connect(&form, &Form::elementChanged, this,
            [nameLines](const QString& element, ElementProperty) {
                if (element == cl::fraComment) nameLines();
            });
}

frmProtocolCommentWindow::~frmProtocolCommentWindow() = default;

#include "moc_frmprotocol.cpp"
