// The window that shows the release notes.
#pragma once

#include <memory>

#include <QDialog>
#include <QFile>

#include "Flows.h"
#include "Globals.h"
#include "Platform.h"
#include "RtfParser.h"

class QLabel;
class QPushButton;
class RtfEditField;

// Stands beside the other windows and does not keep the program running. Closing it ends a read; Escape
// ends a read and shows what was read until then, or closes the window.
class ReleaseNotesView final : public QDialog {
    Q_OBJECT

public:
    // Errors of a document go to `onError`; the window stays.
    ReleaseNotesView(Platform& platform, Globals& globals, Flows::ErrorHandler onError);

    // Shows the window and reads the open file into it, in place of what it shows.
    void Show(std::unique_ptr<QFile> file, const QString& title);

    void done(int result) override;

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    Task<> read(std::unique_ptr<QFile> file);
    Task<RtfParser::Ending> readInto(RtfStream& stream);

    Clock& m_clock;
    Globals& m_globals;
    bool m_isReading = false;
    bool m_isCancelled = false;

    RtfEditField* RtfEditField1;
    QPushButton* BevelButton1;
    // Says below the field what is wrong with the document.
    QLabel* StaticText1;
    Flows m_flows;
};
