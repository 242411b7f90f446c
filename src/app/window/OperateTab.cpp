#include "OperateTab.h"

#include <QFontInfo>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "Lamp.h"
#include "Naming.h"

namespace {

struct ReadOutRow {
    OperatePanel::ReadOut readOut;
    QString systemName;
    QString label;
};

// In the order of their labels, StaticText24 to StaticText29.
const std::array<ReadOutRow, 6> ReadOutRows{{
    {OperatePanel::ReadOut::PAVoltage, QStringLiteral("PAVoltage"), QStringLiteral("PA Voltage:")},
    {OperatePanel::ReadOut::PACurrent, QStringLiteral("PACurrent"), QStringLiteral("PA Current:")},
    {OperatePanel::ReadOut::Temperature, QStringLiteral("Temperature"), QStringLiteral("Temperature:")},
    {OperatePanel::ReadOut::Band, QStringLiteral("Band"), QStringLiteral("Band:")},
    {OperatePanel::ReadOut::Power, QStringLiteral("Power"), QStringLiteral("Power:")},
    {OperatePanel::ReadOut::SWR, QStringLiteral("SWR"), QStringLiteral("SWR:")},
}};

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

OperateTab::OperateTab()
    : GroupBox4(named(new QGroupBox(QStringLiteral("Current Fault")), QStringLiteral("GroupBox4"),
                      tr("Current fault"))),
      GroupBox5(named(new QGroupBox(QStringLiteral("Band Selected")), QStringLiteral("GroupBox5"),
                      tr("Band selected"))),
      CurrentFault(named(new QLabel, QStringLiteral("CurrentFault"), tr("Current fault"))),
      ClearCurrentFault(named(new QPushButton(QStringLiteral("Clear")), QStringLiteral("ClearCurrentFault"),
                              tr("Clear current fault"))),
      Oper(named(new Lamp(QStringLiteral("Oper"), OperateColour), QStringLiteral("Oper"), tr("Operate"))),
      Stby(named(new Lamp(QStringLiteral("Stby"), StandbyColour), QStringLiteral("Stby"), tr("Standby"))),
      OperStby(named(new QPushButton(QStringLiteral("Operate")), QStringLiteral("OperStby"),
                     tr("Go to operate or standby"))),
      OnOff(named(new QPushButton(QStringLiteral("ON")), QStringLiteral("OnOff"),
                  tr("Switch the amplifier on or off"))) {
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

    connect(OperStby, &QPushButton::clicked, this, &OperateTab::OperStby_Action);
    connect(ClearCurrentFault, &QPushButton::clicked, this, &OperateTab::ClearCurrentFault_Action);
    connect(OnOff, &QPushButton::clicked, this, &OperateTab::OnOff_Action);
}

QWidget* OperateTab::readOutGroup() {
    auto* group = new QWidget;
    auto* grid = new QGridLayout(group);
    int row = 0;
    for (const ReadOutRow& readOut : ReadOutRows) {
        auto* label =
            named(new QLabel(readOut.label), QStringLiteral("StaticText%1").arg(24 + row), readOut.label);
        auto* value = named(new QLabel, readOut.systemName, readOut.label.chopped(1));
        value->setFont(scaledFont(*value, 1.6, true));
        holdSize(*value, QStringLiteral("00000 MHz"));
        grid->addWidget(label, row, 0, Qt::AlignRight | Qt::AlignVCenter);
        grid->addWidget(value, row, 1);
        m_readOuts[readOut.readOut] = value;
        m_readOutLabels[static_cast<std::size_t>(row)] = label;
        ++row;
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
        auto* button = named(new QPushButton(caption), QStringLiteral("BandSelected%1").arg(band),
                             tr("Band %1 MHz").arg(caption));
        button->setProperty("index", band);
        button->setMinimumHeight(48);
        button->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
        connect(button, &QPushButton::clicked, this, [this, band] { Q_EMIT BandSelected_Action(band); });
        const BandPlace place = placeOfBand(band);
        grid->addWidget(button, place.row, place.column);
        grid->setColumnStretch(place.column, 1);
        BandSelected[static_cast<std::size_t>(band)] = button;
    }
    return GroupBox5;
}

void OperateTab::setReadOut(ReadOut readOut, const QString& text) {
    if (QLabel* label = m_readOuts.at(readOut); label->text() != text)
        label->setText(text);
}

void OperateTab::setCurrentFault(const QString& shortName) {
    if (CurrentFault->text() != shortName)
        CurrentFault->setText(shortName);
}

void OperateTab::setMode(Mode mode) {
    if (mode == m_shownMode)
        return;
    m_shownMode = mode;
    Stby->setLit(mode == Mode::Standby);
    Oper->setLit(mode == Mode::Operate);
    OperStby->setEnabled(mode != Mode::Other);
    if (mode != Mode::Other)
        OperStby->setText(mode == Mode::Standby ? QStringLiteral("Operate") : QStringLiteral("Standby"));
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
    QPushButton* button = BandSelected[static_cast<std::size_t>(band)];
    QFont newFont;
    if (isMarked) {
        newFont.setPointSize(MarkedSize);
        newFont.setBold(true);
    }
    button->setFont(newFont);
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
    for (QLabel* label : m_readOutLabels)
        label->setEnabled(enabled);
    for (const auto& [readOut, value] : m_readOuts)
        value->setEnabled(enabled);
    GroupBox4->setEnabled(enabled);
    GroupBox5->setEnabled(enabled);
    OperStby->setEnabled(enabled);
    Oper->setEnabled(enabled);
    Stby->setEnabled(enabled);
}

void OperateTab::enableOnOff(bool enabled) {
    OnOff->setEnabled(enabled);
}
