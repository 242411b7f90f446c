#include "FaultTableWindow.h"

#include <algorithm>
#include <array>

#include <QHBoxLayout>
#include <QHeaderView>
#include <QPushButton>
#include <QScopeGuard>
#include <QShortcut>
#include <QTreeWidget>
#include <QVBoxLayout>

#include "Naming.h"
#include "Placement.h"

namespace {

constexpr QSize DesignSize(560, 360);
constexpr std::array<int, 3> ColumnWidths{90, 90, 50};

}  // namespace

FaultTableWindow::FaultTableWindow(Clock& clock, Flows::ErrorHandler onError, FaultTable& table,
                                   QWidget& mainWindow)
    : QDialog(&mainWindow),
      m_table(table),
      m_mainWindow(mainWindow),
      m_closed(clock),
      Listbox1(
          named(new QTreeWidget, QStringLiteral("Listbox1"), QStringLiteral("Faults, newest at the top"))),
      SaveToFileButton(named(new QPushButton(QStringLiteral("Save to File")),
                             QStringLiteral("SaveToFileButton"),
                             QStringLiteral("Save the fault table to a file"))),
      CloseButton(named(new QPushButton(QStringLiteral("Close")), QStringLiteral("CloseButton"),
                        QStringLiteral("Close the fault table"))),
      m_flows(clock, std::move(onError)) {
    setObjectName(QStringLiteral("FaultTableWindow"));
    setWindowTitle(QStringLiteral("Fault Table (Newest Entry at Top)"));
    // Not to the whole program: the manual is read beside it.
    setWindowModality(Qt::WindowModal);
    resize(DesignSize);
    layOut();
    offerHelp();
    SaveToFileButton->setEnabled(false);
    CloseButton->setDefault(true);
    connect(SaveToFileButton, &QPushButton::clicked, this, &FaultTableWindow::SaveToFileButton_Action);
    connect(CloseButton, &QPushButton::clicked, this, &FaultTableWindow::close);
}

void FaultTableWindow::layOut() {
    Listbox1->setRootIsDecorated(false);
    Listbox1->setUniformRowHeights(true);
    Listbox1->setAlternatingRowColors(true);
    Listbox1->setHeaderLabels({QStringLiteral("Timestamp"), QStringLiteral("Fault Code"),
                               QStringLiteral("Data"), QStringLiteral("Description")});
    for (int column = 0; column < static_cast<int>(ColumnWidths.size()); ++column)
        Listbox1->setColumnWidth(column, ColumnWidths[static_cast<std::size_t>(column)]);
    auto* const buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(SaveToFileButton);
    buttons->addWidget(CloseButton);
    auto* const rows = new QVBoxLayout(this);
    rows->addWidget(Listbox1);
    rows->addLayout(buttons);
}

void FaultTableWindow::offerHelp() {
    Listbox1->setToolTip(tr("Double click or F1: what a fault means"));
    connect(Listbox1, &QTreeWidget::itemDoubleClicked, this, &FaultTableWindow::askForHelp);
    auto* const key = new QShortcut(QKeySequence(Qt::Key_F1), this);
    connect(key, &QShortcut::activated, this, &FaultTableWindow::askForHelp);
}

void FaultTableWindow::askForHelp() {
    const QTreeWidgetItem* const row = Listbox1->currentItem();
    if (helpWanted)
        helpWanted(row ? std::optional(row->data(0, Qt::UserRole).toInt()) : std::nullopt);
}

Task<> FaultTableWindow::Run() {
    placeBelowTop(*this, m_mainWindow);
    show();
    m_flows.start(m_table.Begin(*this));
    co_await m_closed.wait();
}

void FaultTableWindow::showWaitCursor(bool isShown) {
    if (isShown) {
        setCursor(Qt::WaitCursor);
    } else {
        unsetCursor();
        // The list is complete by now.
        widenColumns();
    }
}

// The design widths are those of one font size.
void FaultTableWindow::widenColumns() {
    for (int column = 0; column < static_cast<int>(ColumnWidths.size()); ++column) {
        const int width = Listbox1->columnWidth(column);
        Listbox1->resizeColumnToContents(column);
        Listbox1->setColumnWidth(column, std::max(width, Listbox1->columnWidth(column)));
    }
}

void FaultTableWindow::addRow(const FaultTableRow& row) {
    auto* const item = new QTreeWidgetItem({row.timestamp, row.faultCode, row.data, row.description});
    item->setData(0, Qt::UserRole, row.code);
    Listbox1->addTopLevelItem(item);
}

void FaultTableWindow::enableSaveToFileButton() {
    SaveToFileButton->setEnabled(true);
}

void FaultTableWindow::SaveToFileButton_Action() {
    m_flows.start(saveToFile());
}

Task<> FaultTableWindow::saveToFile() {
    setSaving(true);
    const auto saved = qScopeGuard([this] { setSaving(false); });
    co_await m_table.SaveToFile();
}

void FaultTableWindow::setSaving(bool isSaving) {
    m_isSaving = isSaving;
    SaveToFileButton->setEnabled(!isSaving);
    CloseButton->setEnabled(!isSaving);
}

// Every way of closing comes through here: the button, the close box, Escape.
void FaultTableWindow::done(int result) {
    if (m_isSaving)
        return;
    QDialog::done(result);
    m_closed.open();
}
