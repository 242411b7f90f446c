#include "OperateTab.h"

#include <QFontInfo>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

#include "Focus.h"
#include "Lamp.h"
#include "Naming.h"
#include "PolledValues.h"
#include "SendButton.h"
#include "ValueLabel.h"

namespace {

// The amplifier's bands in MHz; the index is its band number.
const std::array<QString, OperatePanel::BandCount> BandCaptions{
    QStringLiteral("1.8"), QStringLiteral("3.5"), QStringLiteral("5"),  QStringLiteral("7"),
    QStringLiteral("10"),  QStringLiteral("14"),  QStringLiteral("18"), QStringLiteral("21"),
    QStringLiteral("24"),  QStringLiteral("28"),  QStringLiteral("50"),
};

struct BandPlace {
    int row;
    int column;
};

// Bands 0, 1, 3, 5, 7, 9 stand in the upper row; 2, 4, 6, 8, 10 in the lower one from the second column on.
BandPlace placeOfBand(int band) {
    if (band == 0)
        return {0, 0};
    return band % 2 == 1 ? BandPlace{0, (band + 1) / 2} : BandPlace{1, band / 2};
}

// The band in use: its button is checked, and a press alone neither checks nor unchecks it.
class BandButton final : public SendButton {
public:
    explicit BandButton(const QString& caption) : SendButton(caption) { setCheckable(true); }

protected:
    void nextCheckState() override {}
};

constexpr int FirstStaticText = 24;
constexpr int MarkedSize = 18;
const QColor OperateColour(0xB0, 0x20, 0x20);
const QColor StandbyColour(0x1E, 0x6E, 0x34);

QFont scaledFont(const QWidget& widget, double factor, bool bold) {
    QFont font = widget.font();
    font.setPointSizeF(QFontInfo(font).pointSizeF() * factor);
    font.setBold(bold);
    return font;
}

// Room for the longest text and no more: a label whose size is fixed changes its text without laying out the
// window anew.
void holdSize(QLabel& label, const QString& longest) {
    const QFontMetrics metrics(label.font());
    label.setFixedSize(metrics.horizontalAdvance(longest), metrics.height());
}

}  // namespace

OperateTab::OperateTab(Clock& clock)
    : GroupBox4(named(new QGroupBox(QStringLiteral("Current Fault")), QStringLiteral("GroupBox4"))),
      GroupBox5(named(new QGroupBox(QStringLiteral("Band Selected")), QStringLiteral("GroupBox5"))),
      CurrentFault(named(new ValueLabel(tr("Current fault")), QStringLiteral("CurrentFault"))),
      ClearCurrentFault(named(new SendButton(QStringLiteral("Clear")), QStringLiteral("ClearCurrentFault"))),
      Oper(named(new Lamp(QStringLiteral("Oper"), tr("Operate"), OperateColour), QStringLiteral("Oper"))),
      Stby(named(new Lamp(QStringLiteral("Stby"), tr("Standby"), StandbyColour), QStringLiteral("Stby"))),
      OperStby(named(new SendButton(QStringLiteral("Operate")), QStringLiteral("OperStby"))),
      OnOff(named(new SendButton(QStringLiteral("ON")), QStringLiteral("OnOff"))),
      m_announcer(clock, *this) {
    setObjectName(QStringLiteral("OperateTab"));
    OnOff->setToolTip(tr("Switch the amplifier on or off"));
    OperStby->setToolTip(tr("Go to operate or standby"));

    auto* grid = new QGridLayout(this);
    grid->addWidget(readOutGroup(), 0, 0, 2, 1);
    grid->addWidget(faultGroup(), 0, 1);
    grid->addWidget(modeRow(), 1, 1);
    grid->addWidget(bandGroup(), 2, 0, 1, 2);
    grid->addWidget(OnOff, 3, 0, 1, 2, Qt::AlignRight);
    grid->setColumnStretch(0, 1);
    grid->setColumnStretch(1, 1);
    grid->setRowStretch(1, 1);
    enableReadOuts(false);
    enableOnOff(false);

    connect(OperStby, &SendButton::clicked, this, &OperateTab::OperStby_Action);
    connect(ClearCurrentFault, &SendButton::clicked, this, &OperateTab::ClearCurrentFault_Action);
    connect(OnOff, &SendButton::clicked, this, &OperateTab::OnOff_Action);
}

QWidget* OperateTab::readOutGroup() {
    auto* group = new QWidget;
    auto* grid = new QGridLayout(group);
    for (int row = 0; row < ReadOutCount; ++row) {
        const auto readOut = static_cast<ReadOut>(row);
        const PolledValue& shown = polledValueOf(readOut);
        const QString caption = shown.label.toString();
        auto* label = named(new QLabel(caption), QStringLiteral("StaticText%1").arg(FirstStaticText + row));
        auto* value = named(new ValueLabel(caption.chopped(1)), shown.control.toString());
        value->setFont(scaledFont(*value, 1.6, true));
        holdSize(*value, QStringLiteral("00000 MHz"));
        grid->addWidget(label, row, 0, Qt::AlignRight | Qt::AlignVCenter);
        grid->addWidget(value, row, 1);
        m_readOuts[readOut] = value;
        m_readOutLabels.push_back(label);
    }
    grid->setColumnStretch(1, 1);
    return group;
}

QWidget* OperateTab::faultGroup() {
    CurrentFault->setFont(scaledFont(*CurrentFault, 1.6, true));
    CurrentFault->setMinimumWidth(
        QFontMetrics(CurrentFault->font()).horizontalAdvance(QStringLiteral("PWRIN HI W")));
    ClearCurrentFault->setToolTip(tr("Clear the current fault"));
    auto* row = new QHBoxLayout(GroupBox4);
    row->addWidget(CurrentFault);
    row->addStretch();
    row->addWidget(ClearCurrentFault);
    return GroupBox4;
}

QWidget* OperateTab::modeRow() {
    auto* group = new QWidget;
    auto* grid = new QGridLayout(group);
    grid->addWidget(Oper, 0, 0);
    grid->addWidget(Stby, 0, 1);
    grid->addWidget(OperStby, 1, 0, 1, 2);
    grid->setRowStretch(2, 1);
    return group;
}

QWidget* OperateTab::bandGroup() {
    auto* grid = new QGridLayout(GroupBox5);
    for (int band = 0; band < BandCount; ++band) {
        const QString& caption = BandCaptions[static_cast<std::size_t>(band)];
        auto* button = named(new BandButton(caption), QStringLiteral("BandSelected%1").arg(band));
        button->setAccessibleDescription(tr("Band in MHz"));
        button->setProperty("index", band);
        button->setMinimumHeight(48);
        button->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
        connect(button, &SendButton::clicked, this, [this, band] { Q_EMIT BandSelected_Action(band); });
        const BandPlace place = placeOfBand(band);
        grid->addWidget(button, place.row, place.column);
        grid->setColumnStretch(place.column, 1);
        BandSelected[static_cast<std::size_t>(band)] = button;
    }
    return GroupBox5;
}

void OperateTab::setReadOut(ReadOut readOut, const QString& text) {
    if (ValueLabel* label = m_readOuts.at(readOut); label->text() != text)
        label->setValue(text);
    Q_EMIT readOutShown(readOut, text);
}

void OperateTab::setCurrentFault(const QString& shortName) {
    if (CurrentFault->text() != shortName) {
        CurrentFault->setValue(shortName);
        m_announcer.announce(shortName.isEmpty() ? tr("No fault") : tr("Fault %1").arg(shortName));
    }
    Q_EMIT faultShown(shortName);
}

void OperateTab::setMode(Mode mode) {
    Q_EMIT modeShown(mode);
    if (mode == m_shownMode)
        return;
    m_shownMode = mode;
    Stby->setLit(mode == Mode::Standby);
    Oper->setLit(mode == Mode::Operate);
    setEnabledOnPage(*OperStby, mode != Mode::Other, *this);
    if (mode == Mode::Other)
        return;
    OperStby->setText(mode == Mode::Standby ? QStringLiteral("Operate") : QStringLiteral("Standby"));
    m_announcer.announce(mode == Mode::Standby ? tr("Standby") : tr("Operate"));
}

void OperateTab::markBand(int band) {
    if (band == m_markedBand)
        return;
    if (m_markedBand >= 0)
        styleBand(m_markedBand, false);
    styleBand(band, true);
    m_markedBand = band;
}

void OperateTab::styleBand(int band, bool isMarked) {
    SendButton* button = BandSelected[static_cast<std::size_t>(band)];
    QFont newFont;
    if (isMarked) {
        newFont.setPointSize(MarkedSize);
        newFont.setBold(true);
    }
    button->setFont(newFont);
    button->setChecked(isMarked);
    QPalette colours;
    if (isMarked && m_isDim)
        colours.setColor(QPalette::ButtonText, colours.color(QPalette::Disabled, QPalette::ButtonText));
    button->setPalette(colours);
}

QString OperateTab::bandCaption(int band) const {
    return BandSelected[static_cast<std::size_t>(band)]->text();
}

QString OperateTab::onOffCaption() const {
    return OnOff->text();
}

void OperateTab::setOnOffCaption(const QString& caption) {
    OnOff->setText(caption);
}

QString OperateTab::operStbyCaption() const {
    return OperStby->text();
}

void OperateTab::enableReadOuts(bool enabled) {
    // The lamps follow the group until the next answer tells the mode.
    m_shownMode.reset();
    m_areReadOutsEnabled = enabled;
    for (QLabel* label : m_readOutLabels)
        label->setEnabled(enabled);
    showReadOuts();
    for (QWidget* control : {static_cast<QWidget*>(GroupBox4), static_cast<QWidget*>(GroupBox5),
                             static_cast<QWidget*>(OperStby)})
        setEnabledOnPage(*control, enabled, *this);
    Oper->setEnabled(enabled);
    Stby->setEnabled(enabled);
}

void OperateTab::enableOnOff(bool enabled) {
    setEnabledOnPage(*OnOff, enabled, *this);
}

void OperateTab::setDim(bool isDim) {
    m_isDim = isDim;
    showReadOuts();
    Oper->setDim(isDim);
    Stby->setDim(isDim);
    if (m_markedBand >= 0)
        styleBand(m_markedBand, true);
}

void OperateTab::showReadOuts() {
    for (const auto& [readOut, value] : m_readOuts)
        value->setEnabled(m_areReadOutsEnabled && !m_isDim);
    CurrentFault->setEnabled(!m_isDim);
}
