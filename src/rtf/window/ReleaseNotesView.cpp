#include "ReleaseNotesView.h"

#include <QFontDatabase>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QScopeGuard>

#include "Naming.h"
#include "RtfEditField.h"

namespace {

constexpr QSize DesignSize(765, 500);
constexpr QRect FieldPlace(13, 14, 739, 438);
constexpr QRect ButtonPlace(672, 464, 80, 22);
constexpr int Gap = 8;
constexpr qint64 ChunkLength = 1 << 18;

const QString Damaged =
    QStringLiteral("The file is damaged: it closes more than it opens, and its text cannot be shown.");
const QString Broken = QStringLiteral("The file is damaged, and its text cannot be shown.");
const QString Ended = QStringLiteral("The reading was ended: this is only the beginning.");
const QString TooLong = QStringLiteral("The text is too long: this is only the beginning.");

// The toolkit finds a font of the same kind for each of these.
const QStringList StandIns{QStringLiteral("Times"), QStringLiteral("Helvetica"), QStringLiteral("Courier")};

Task<QByteArray> load(QFile& file, Clock& clock) {
    QByteArray bytes;
    for (QByteArray chunk = file.read(ChunkLength); !chunk.isEmpty() && bytes.size() < RtfStream::LargestFile;
         chunk = file.read(ChunkLength)) {
        bytes += chunk;
        co_await clock.breathe();
    }
    co_return bytes;
}

}  // namespace

ReleaseNotesView::ReleaseNotesView(Platform& platform, Globals& globals, Flows::ErrorHandler onError)
    : QDialog(nullptr, Qt::Window),
      m_clock(platform.clock),
      m_globals(globals),
      RtfEditField1(named(new RtfEditField(platform.clock, platform.dialogs, this),
                          QStringLiteral("RtfEditField1"), tr("Release notes"))),
      BevelButton1(named(new QPushButton(QStringLiteral("Close"), this), QStringLiteral("BevelButton1"),
                         tr("Close the release notes"))),
      StaticText1(named(new QLabel(this), QStringLiteral("StaticText1"), tr("Remark"))),
      m_flows(platform.clock, std::move(onError)) {
    setObjectName(QStringLiteral("ReleaseNotesView"));
    setAttribute(Qt::WA_DeleteOnClose);
    setAttribute(Qt::WA_QuitOnClose, false);
    resize(DesignSize);
    setMinimumSize(DesignSize / 2);
    RtfEditField1->setGeometry(FieldPlace);
    StaticText1->setWordWrap(true);
    BevelButton1->setDefault(true);
    connect(BevelButton1, &QPushButton::clicked, this, &QDialog::close);
}

void ReleaseNotesView::Show(std::unique_ptr<QFile> file, const QString& title) {
    m_flows.cancelAll();
    m_isCancelled = false;
    m_globals.m_showReleaseNotes = true;
    RtfEditField1->clear();
    StaticText1->clear();
    setWindowTitle(title);
    show();
    raise();
    activateWindow();
    RtfEditField1->setFocus();
    m_flows.start(read(std::move(file)));
}

Task<> ReleaseNotesView::read(std::unique_ptr<QFile> file) {
    QByteArray bytes = co_await load(*file, m_clock);
    RtfStream stream(std::move(bytes), m_clock);
    const RtfParser::Ending ending = co_await readInto(stream);
    if (ending == RtfParser::Ending::TooManyEnds)
        StaticText1->setText(Damaged);
    else if (ending == RtfParser::Ending::Cancelled)
        StaticText1->setText(Ended);
    else if (RtfEditField1->isCut())
        StaticText1->setText(TooLong);
    if (ending != RtfParser::Ending::TooManyEnds)
        co_await RtfEditField1->layOut();
}

Task<RtfParser::Ending> ReleaseNotesView::readInto(RtfStream& stream) {
    m_isReading = true;
    const auto ended = qScopeGuard([this] { m_isReading = false; });
    const InstalledFonts installed(QFontDatabase::families() + StandIns);
    RtfParser parser(m_clock, installed, [this] { return m_isCancelled; });
    try {
        const RtfParser::Ending ending = co_await parser.Parse(stream, *RtfEditField1);
        co_return ending;
    } catch (...) {
        StaticText1->setText(Broken);
        throw;
    }
}

// Every way of closing comes through here: the button, the close box, Escape.
void ReleaseNotesView::done(int result) {
    m_flows.cancelAll();
    m_globals.m_showReleaseNotes = false;
    QDialog::done(result);
}

void ReleaseNotesView::keyPressEvent(QKeyEvent* event) {
    if (m_isReading && event->key() == Qt::Key_Escape)
        m_isCancelled = true;
    else
        QDialog::keyPressEvent(event);
}

void ReleaseNotesView::resizeEvent(QResizeEvent* event) {
    QDialog::resizeEvent(event);
    const QSize grown = size() - DesignSize;
    RtfEditField1->resize(FieldPlace.size() + grown);
    RtfEditField1->stayAway();
    const QSize button = BevelButton1->sizeHint().expandedTo(ButtonPlace.size());
    const QPoint corner = ButtonPlace.bottomRight() + QPoint(grown.width(), grown.height());
    BevelButton1->setGeometry(QRect(corner - QPoint(button.width() - 1, button.height() - 1), button));
    const int left = FieldPlace.left();
    StaticText1->setGeometry(left, BevelButton1->y(), BevelButton1->x() - Gap - left, button.height());
}
