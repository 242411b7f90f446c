// What the program asks of the user through dialogs. All of them are awaited; the event loop goes on.
#pragma once

#include <QString>

#include "Task.h"

// A file dialog's kind of file: shown name, and extension with its leading dot.
struct FileType {
    QString name;
    QString extension;
};

struct SaveFileRequest {
    QString title;
    QString prompt;
    QString initialFolder;
    QString suggestedName;
    FileType type;
};

struct OpenFileRequest {
    QString title;
    QString initialFolder;
    FileType type;
};

struct SelectFolderRequest {
    QString initialFolder;
    QString actionButtonCaption;
};

// A caution dialog with two answers and no cancel button.
struct MessageRequest {
    QString message;
    QString explanation;
    QString actionButton;
    QString alternateButton;
};

class Dialogs {
public:
    Dialogs() = default;
    Dialogs(const Dialogs&) = delete;
    Dialogs& operator=(const Dialogs&) = delete;
    virtual ~Dialogs() = default;

    virtual void Beep() = 0;
    // Ends when the user has closed the box.
    virtual Task<> MsgBox(QString text) = 0;
    // True for the action button, false for the alternate one.
    virtual Task<bool> askCaution(MessageRequest request) = 0;
    // The chosen absolute path; empty when the user cancelled. The extension is appended if it is missing.
    virtual Task<QString> saveFile(SaveFileRequest request) = 0;
    virtual Task<QString> openFile(OpenFileRequest request) = 0;
    virtual Task<QString> selectFolder(SelectFolderRequest request) = 0;
};
