// Files on their way from the server: whole and verified before they are seen in the firmware folder.
#pragma once

#include <QString>

#include "Globals.h"
#include "IntelHexReader.h"
#include "Platform.h"
#include "Task.h"

// They lie in a folder of their own inside the firmware folder, so that a check of versions, or a start
// after a crash, never takes a part of an image for the newest one. That folder is there only while
// something is fetched.
class FetchedFiles {
public:
    // More than this is no firmware image and no notes, in bytes; and most of a server's name list.
    static constexpr qint64 MaxSize = 16 * 1024 * 1024;
    static constexpr qint64 MaxListing = 4 * 1024 * 1024;

    FetchedFiles(Platform& platform, Globals& globals) : m_globals(globals), m_reader(platform, globals) {}
    FetchedFiles(const FetchedFiles&) = delete;
    FetchedFiles& operator=(const FetchedFiles&) = delete;
    ~FetchedFiles() { end(); }

    // A run into this firmware folder, whose path ends in the separator.
    void begin(const QString& firmwareFolder);
    // Throws away what was not kept.
    void end();
    // Throws away what a run that was broken off left in a firmware folder.
    static void sweep(const QString& firmwareFolder);

    // Makes the folder that files are to be fetched into; false when it cannot be had.
    bool makeFolder();
    // Its path with the separator; empty outside of a run.
    QString path() const { return m_folder; }
    bool has(const QString& name) const;
    // How much has come in all, in bytes.
    qint64 size() const;
    // Moves a whole file to its name in the firmware folder, in place of any other; false when it cannot.
    bool keep(const QString& name);
    // A whole file under another name than its own takes its own.
    void rename(const QString& from, const QString& to) const;

    // Verifies an image, logs the result, and deletes what fails.
    Task<bool> HexVerify(QString name);
    // Whether the image verified last had its end record: one that was cut off between two records has not.
    bool hasEndRecord() const { return m_reader.state().m_fIsEndOfFile; }

    void tellFailure(const QString& name);

private:
    void deleteFile(const QString& name);

    Globals& m_globals;
    // Not the loader's: a load may run at the same time.
    IntelHexReader m_reader;
    QString m_firmwareFolder;
    QString m_folder;
};
