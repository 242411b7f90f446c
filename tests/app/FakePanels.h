// Panels without windows: they keep what they were told.
#pragma once

#include <map>

#include <QList>
#include <QStringList>

#include "FakeFirmwarePanel.h"
#include "OperatePanel.h"
#include "PortPanel.h"

struct FakePortPanel final : PortPanel {
    void setSerialPortMenuRows(const QStringList& names) override { rows = names; }
    void setSerialPortMenuIndex(int newIndex) override { index = newIndex < rows.size() ? newIndex : -1; }
    QString serialPortMenuText() const override { return rows.value(index); }
    QString portFieldText() const override { return field; }
    void showByNamePort(bool shown) override { isByNameShown = shown; }

    QStringList rows;
    int index = -1;
    QString field;
    bool isByNameShown = false;
};

struct FakeOperatePanel final : OperatePanel {
    void setReadOut(ReadOut readOut, const QString& text) override { readOuts[readOut] = text; }
    void setCurrentFault(const QString& shortName) override { fault = shortName; }
    void setMode(Mode newMode) override {
        mode = newMode;
        if (mode != Mode::Other)
            operStby = mode == Mode::Standby ? QStringLiteral("Operate") : QStringLiteral("Standby");
    }
    void markBand(int newBand) override { band = newBand; }
    QString bandCaption(int index) const override {
        return QStringList{"1.8", "3.5", "5", "7", "10", "14", "18", "21", "24", "28", "50"}.at(index);
    }
    QString onOffCaption() const override { return onOff; }
    void setOnOffCaption(const QString& caption) override { onOff = caption; }
    QString operStbyCaption() const override { return operStby; }
    void enableReadOuts(bool enabled) override { areReadOutsEnabled = enabled; }
    void enableOnOff(bool enabled) override { isOnOffEnabled = enabled; }

    QString at(ReadOut readOut) const {
        const auto found = readOuts.find(readOut);
        return found == readOuts.end() ? QString() : found->second;
    }

    std::map<ReadOut, QString> readOuts;
    QString fault;
    Mode mode = Mode::Other;
    int band = -1;
    QString onOff = QStringLiteral("ON");
    QString operStby = QStringLiteral("Operate");
    bool areReadOutsEnabled = false;
    bool isOnOffEnabled = false;
};
