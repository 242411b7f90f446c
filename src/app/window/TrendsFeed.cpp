#include "TrendsFeed.h"

#include <algorithm>

#include "Text.h"

namespace {

struct Route {
    OperatePanel::ReadOut readOut;
    Trends::Series series;
};

// The band is no curve: its changes are marked.
constexpr auto Routes = std::to_array<Route>({
    // clang-format off
    {OperatePanel::ReadOut::PAVoltage,   Trends::Series::PAVoltage},
    {OperatePanel::ReadOut::PACurrent,   Trends::Series::PACurrent},
    {OperatePanel::ReadOut::Temperature, Trends::Series::Temperature},
    {OperatePanel::ReadOut::Power,       Trends::Series::Power},
    {OperatePanel::ReadOut::SWR,         Trends::Series::SWR},
    // clang-format on
});
static_assert(Routes.size() == Trends::SeriesCount);

void noteReadOut(Trends& trends, OperatePanel::ReadOut readOut, const QString& text) {
    const auto* route = std::find_if(Routes.begin(), Routes.end(),
                                     [readOut](const Route& r) { return r.readOut == readOut; });
    if (route != Routes.end())
        trends.note(route->series, Text::Val(text));
    else
        trends.noteBand(text);
}

QString nameOf(OperatePanel::Mode mode) {
    switch (mode) {
        case OperatePanel::Mode::Standby:
            return QStringLiteral("Standby");
        case OperatePanel::Mode::Operate:
            return QStringLiteral("Operate");
        case OperatePanel::Mode::Other:
            break;
    }
    return {};
}

}  // namespace

void feedTrends(const OperateTab& tab, Trends& trends) {
    QObject::connect(&tab, &OperateTab::readOutShown, &tab,
                     [&trends](OperatePanel::ReadOut readOut, const QString& text) {
                         noteReadOut(trends, readOut, text);
                     });
    QObject::connect(&tab, &OperateTab::faultShown, &tab,
                     [&trends](const QString& name) { trends.noteFault(name); });
    QObject::connect(&tab, &OperateTab::modeShown, &tab,
                     [&trends](OperatePanel::Mode mode) { trends.noteMode(nameOf(mode)); });
}
