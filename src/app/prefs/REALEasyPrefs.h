// Named settings in one plain text file, a line for the name and a line for its value.
#pragma once

#include <cstdint>

#include <QString>
#include <QStringList>

// Read once at start-up, changed in memory, written once on quitting: InitPrefFile, then getters and
// setters, then WritePrefsFile. No failure is reported: a file that cannot be read counts as empty, one
// that cannot be written stays as it was. A file that is not UTF-8 is read as Latin 1; of a damaged one a
// copy is kept beside it, called by its date.
class REALEasyPrefs {
public:
    // What is read of a file at most, in bytes. The program's own file has about a thousand.
    static constexpr qint64 FileLimit = 1 << 20;

    explicit REALEasyPrefs(QString preferencesFolder) : m_folder(std::move(preferencesFolder)) {}

    // Reads the file of that name in the preferences folder, or creates it empty.
    void InitPrefFile(const QString& fileName);

    // Names are matched without letter case; the first entry of a name counts.
    QString GetPrefString(const QString& name, const QString& otherwise) const;
    // A value without digits is 0, not the default.
    std::int32_t GetPrefNumber(const QString& name, std::int32_t otherwise) const;
    bool GetPrefBoolean(const QString& name, bool otherwise) const;

    // A line end in a value would end its entry: it is stored as a blank.
    void SetPrefString(const QString& name, const QString& value);
    void SetPrefNumber(const QString& name, std::int32_t value);
    void SetPrefBoolean(const QString& name, bool value);

    // All entries as "name = value".
    QStringList lines() const;

    // Writes all entries, old ones first, in the order of their first appearance; the whole file or nothing.
    void WritePrefsFile() const;

private:
    void keepAside() const;
    void readEntries(const QString& text);
    qsizetype indexOf(const QString& name) const;

    QString m_folder;
    QString prefFile;
    // Parallel; index 0 is never used.
    QStringList prefNames{QString()};
    QStringList prefItems{QString()};
};
