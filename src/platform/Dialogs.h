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

enum class MessageKind {
    Caution,   // closing the dialog counts as its action button
    Question,  // closing the dialog counts as its alternate button
};

// A caution dialog with two answers and no cancel button.
struct MessageRequest {
    QString message;
    QString explanation;
    QString actionButton;
    QString alternateButton;
    MessageKind kind = MessageKind::Caution;
};

// A failure carries a warning sign.
enum class BoxKind { Failure, Notice };

class Dialogs {
public:
    Dialogs() = default;
    Dialogs(const Dialogs&) = delete;
    Dialogs& operator=(const Dialogs&) = delete;
    virtual ~Dialogs() = default;

    virtual void Beep() = 0;
    // Ends when the user has closed the box. One that goes away unread cancels its flow, here and below.
    virtual Task<> MsgBox(QString text, BoxKind kind) = 0;
    Task<> MsgBox(QString text) { return MsgBox(std::move(text), BoxKind::Failure); }
    // True for the action button, false for the alternate one.
    virtual Task<bool> askCaution(MessageRequest request) = 0;
    // The chosen absolute path; empty when the user cancelled. The extension is appended if it is missing.
    virtual Task<QString> saveFile(SaveFileRequest request) = 0;
    virtual Task<QString> openFile(OpenFileRequest request) = 0;
    virtual Task<QString> selectFolder(SelectFolderRequest request) = 0;
};
