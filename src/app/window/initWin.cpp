#include "initWin.h"

#include <QCloseEvent>
#include <QVBoxLayout>

#include "Naming.h"

initWin::initWin() : StaticText1(named(new QLabel, QStringLiteral("StaticText1"), tr("Progress"))) {
    setObjectName(QStringLiteral("initWin"));
    setWindowTitle(QStringLiteral("VLX Utility"));
    StaticText1->setAlignment(Qt::AlignCenter);
    auto* rows = new QVBoxLayout(this);
    rows->addWidget(StaticText1);
    resize(220, 70);
}

void initWin::closeEvent(QCloseEvent* event) {
    QWidget::closeEvent(event);
    if (event->spontaneous())
        Q_EMIT closedByUser();
}
