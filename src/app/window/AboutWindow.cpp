#include "AboutWindow.h"

#include <QFontInfo>
#include <QGridLayout>
#include <QGroupBox>
#include <QIcon>
#include <QLabel>
#include <QMouseEvent>
#include <QPushButton>
#include <QVBoxLayout>

#include "Naming.h"
#include "ShortVersion.h"

AboutWindow::AboutWindow(QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("AboutWindow"));
    setWindowTitle(QStringLiteral("About"));
    resize(398, 213);

    auto* group = new QGroupBox;
    auto* grid = new QGridLayout(group);
    auto* icon = new QLabel;
    icon->setPixmap(windowIcon().pixmap(64, 64));
    auto* name = new QLabel(QStringLiteral("Tessarin VLX Utility"));
    QFont large = name->font();
    large.setPointSizeF(QFontInfo(large).pointSizeF() * 1.4);
    large.setBold(true);
    name->setFont(large);
    grid->addWidget(icon, 0, 0, 3, 1, Qt::AlignTop);
    grid->addWidget(name, 0, 1);
    grid->addWidget(
        named(new QLabel(QStringLiteral("Version ") + ShortVersion()), QStringLiteral("VersionText")), 1, 1);
    auto* credits = new QLabel(tr("Operates the VLX720 RF power amplifier, keeps its firmware and its "
                                  "configuration. Built with Qt %1.")
                                   .arg(QString::fromLatin1(qVersion())));
    credits->setWordWrap(true);
    grid->addWidget(credits, 2, 1);
    grid->setColumnStretch(1, 1);

    auto* ok = named(new QPushButton(QStringLiteral("Ok")), QStringLiteral("OkButton"));
    ok->setDefault(true);
    connect(ok, &QPushButton::clicked, this, &QDialog::accept);
    auto* rows = new QVBoxLayout(this);
    rows->addWidget(group, 1);
    rows->addWidget(ok, 0, Qt::AlignRight);
}

void AboutWindow::mousePressEvent(QMouseEvent* event) {
    event->accept();
}

void AboutWindow::mouseReleaseEvent(QMouseEvent* event) {
    event->accept();
    accept();
}
