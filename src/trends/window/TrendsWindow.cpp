#include "TrendsWindow.h"

#include <QBuffer>
#include <QDir>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "Naming.h"
#include "SaveAs.h"
#include "TrendsCsv.h"
#include "TrendsView.h"

namespace {

constexpr double ButtonZoom = 2;

QPushButton* button(const QString& caption, const QString& name) {
    auto* result = named(new QPushButton(caption), name, QString(caption).remove(u'&'));
    result->setAutoDefault(false);
    return result;
}

}  // namespace

TrendsWindow::TrendsWindow(Platform& platform, Flows::ErrorHandler onError, Trends& trends)
    : m_dialogs(platform.dialogs),
      m_clock(platform.clock),
      m_trends(trends),
      m_view(named(new TrendsView(trends), QStringLiteral("TrendsView"), tr("Trends of the last hour"))),
      m_readOut(new QLabel(m_view->readOut())),
      m_pause(button(tr("&Pause"), QStringLiteral("PauseTrends"))),
      m_zoomIn(button(tr("Zoom &In"), QStringLiteral("ZoomInTrends"))),
      m_zoomOut(button(tr("Zoom &Out"), QStringLiteral("ZoomOutTrends"))),
      m_saveTable(button(tr("Save as &CSV..."), QStringLiteral("SaveTrendsTable"))),
      m_savePicture(button(tr("Save as PN&G..."), QStringLiteral("SaveTrendsPicture"))),
      m_flows(platform.clock, std::move(onError)) {
    setObjectName(QStringLiteral("TrendsWindow"));
    setWindowTitle(tr("Trends"));
    // The main window is the program: this one does not keep it running.
    setAttribute(Qt::WA_QuitOnClose, false);
    m_readOut->setObjectName(QStringLiteral("TrendsReadOut"));
    m_readOut->setWordWrap(true);
    // Nothing moves when a longer text comes.
    m_readOut->setMinimumHeight(2 * fontMetrics().lineSpacing());
    m_pause->setCheckable(true);
    layOut();
    connectButtons();
    m_trends.Changed = [this] { m_view->refresh(); };
}

TrendsWindow::~TrendsWindow() {
    m_trends.Changed = {};
}

void TrendsWindow::layOut() {
    auto* buttons = new QHBoxLayout;
    for (QPushButton* each : {m_pause, m_zoomIn, m_zoomOut})
        buttons->addWidget(each);
    buttons->addStretch();
    for (QPushButton* each : {m_saveTable, m_savePicture})
        buttons->addWidget(each);
    auto* rows = new QVBoxLayout(this);
    rows->addWidget(m_view, 1);
    rows->addWidget(m_readOut);
    rows->addLayout(buttons);
    m_view->setFocus();
}

void TrendsWindow::connectButtons() {
    connect(m_view, &TrendsView::readOutChanged, m_readOut, &QLabel::setText);
    connect(m_pause, &QPushButton::toggled, m_view, &TrendsView::setPaused);
    connect(m_zoomIn, &QPushButton::clicked, this, [this] { m_view->zoom(1 / ButtonZoom); });
    connect(m_zoomOut, &QPushButton::clicked, this, [this] { m_view->zoom(ButtonZoom); });
    connect(m_saveTable, &QPushButton::clicked, this, [this] { m_flows.start(saveTable()); });
    connect(m_savePicture, &QPushButton::clicked, this, [this] { m_flows.start(savePicture()); });
}

SaveFileRequest TrendsWindow::request(const QString& title, const QString& extension) const {
    const QString time = m_clock.wallClock().toString(QStringLiteral("yyyy-MM-dd HHmm"));
    return {.title = title,
            .prompt = {},
            .initialFolder = QDir::homePath(),
            .suggestedName = QStringLiteral("VLX Trends %1%2").arg(time, extension),
            .type = {tr("Trends"), extension}};
}

Task<> TrendsWindow::saveTable() {
    return saveAs(m_dialogs, request(tr("Save trends as a table"), QStringLiteral(".csv")),
                  trendsCsv(m_trends));
}

Task<> TrendsWindow::savePicture() {
    QBuffer picture;
    picture.open(QIODevice::WriteOnly);
    m_view->grab().save(&picture, "PNG");
    return saveAs(m_dialogs, request(tr("Save trends as a picture"), QStringLiteral(".png")), picture.data());
}
