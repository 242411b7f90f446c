// A scripted walk through the program that leaves a picture of each tab.
#pragma once

#include <QString>

#include "App.h"

class Vlx720;

class Tour {
public:
    // Pictures go to `folder`, which is made.
    Tour(Clock& clock, App& app, Vlx720& amplifier, QString folder)
        : m_clock(clock), m_app(app), m_amplifier(amplifier), m_folder(std::move(folder)) {}

    // Ends when the last picture is taken. False when a picture could not be written.
    Task<bool> run();

private:
    Task<> showTab(Tab tab, QString pictureName);
    Task<> operate();
    Task<> watchTrends();
    Task<> readNotes();
    Task<> readHelp();
    Task<> copyFirmware();
    Task<> loadFirmware();
    Task<> typeCommand();
    void choose(const QString& menuItem);
    void press(const QString& buttonName);
    void takePicture(QWidget* window, const QString& name);
    void save(const QPixmap& picture, const QString& name);

    Clock& m_clock;
    App& m_app;
    Vlx720& m_amplifier;
    QString m_folder;
    bool m_isComplete = true;
};
