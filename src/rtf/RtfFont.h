// The font table of an RTF document, and the fonts of the system that stand in for those it names.
#pragma once

#include <cstdint>
#include <unordered_map>
#include <vector>

#include <QByteArray>
#include <QSet>
#include <QStringList>

#include "RtfStream.h"
#include "Task.h"

// The fonts of the system, known by name without letter case.
class InstalledFonts {
public:
    explicit InstalledFonts(const QStringList& names);
    bool contains(const QByteArray& name) const { return m_names.contains(name.toLower()); }

private:
    QSet<QByteArray> m_names;
};

class RtfFont {
public:
    // Of a larger table the last entry stands for the rest.
    static constexpr std::size_t MostFonts = 1 << 20;

    struct Entry {
        std::int32_t id = 0;
        QByteArray family{};  // "froman" and so on; empty when not told
        QByteArray name{};
        std::int32_t charset = -1;  // -1 when not told
    };

    explicit RtfFont(const InstalledFonts& installed) : m_installed(installed) {}

    // Reads the table behind "fonttbl", up to its "}". False when the file ends in it.
    Task<bool> parse(RtfStream& stream);

    std::int32_t count() const { return static_cast<std::int32_t>(m_entries.size()) - 1; }
    // Entries count from 1.
    const Entry& entry(std::int32_t index) const { return m_entries[static_cast<std::size_t>(index)]; }
    // The installed font to take for a font number: that of the document, else one by its family, else
    // "System".
    QByteArray getfont(std::int32_t fontid) const;
    // 0 for a number that is not in the table.
    std::int32_t getcharset(std::int32_t fontid) const;
    // 0 for a name that is not in the table.
    std::int32_t getid(const QByteArray& fontname) const;
    void addfont(const QByteArray& fontname);
    // The table as RTF.
    QByteArray getstring() const;

private:
    void act(std::string_view word, std::int32_t parameter);
    void append(Entry entry);
    const Entry* find(std::int32_t fontid) const;

    const InstalledFonts& m_installed;
    std::vector<Entry> m_entries{Entry{}};
    // The first entry of each number.
    std::unordered_map<std::int32_t, std::int32_t> m_indexes;
};
