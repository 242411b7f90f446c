// The two ways in which the release notes of the firmware reach the screen.
#pragma once

#include <QPointer>
#include <QWidget>

#include "Flows.h"
#include "Globals.h"
#include "Platform.h"

class ReleaseNotesView;

// They are never shown by themselves.
class ReleaseNotes {
public:
    // Errors of a document go to `onError`.
    ReleaseNotes(Platform& platform, Globals& globals, Flows::ErrorHandler onError)
        : m_platform(platform), m_globals(globals), m_onError(std::move(onError)) {}
    ReleaseNotes(const ReleaseNotes&) = delete;
    ReleaseNotes& operator=(const ReleaseNotes&) = delete;
    ~ReleaseNotes();

    // Help > VLX Firmware Release Notes...
    Task<> _HelpReleaseNotes_Action();
    // Tells of new firmware over the main window; ends when the user has closed the message.
    Task<> showMessageWindow(QWidget& mainWindow);

private:
    Task<> MessageWindow_BevelButton1_Action();
    Task<> show(QString name, QString otherName);

    Platform& m_platform;
    Globals& m_globals;
    Flows::ErrorHandler m_onError;
    // One at a time; none while it is closed.
    QPointer<ReleaseNotesView> m_view;
};
