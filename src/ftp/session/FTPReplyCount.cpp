#include "FTPReplyCount.h"

#include <algorithm>
#include <utility>

namespace {

constexpr qsizetype CodeLength = 3;

bool startsWithCode(const QByteArray& line) {
    return line.size() >= CodeLength &&
           std::all_of(line.begin(), line.begin() + CodeLength, [](char c) { return c >= '0' && c <= '9'; });
}

}  // namespace

void FTPReplyCount::onConnect() {
    *this = FTPReplyCount();
    m_owed = 1;
}

void FTPReplyCount::forsake(bool isAbort) {
    m_forsaken = m_owed;
    m_isAbort = isAbort;
}

void FTPReplyCount::forsakeUpToNOOP() {
    m_owed = 1;
    m_forsaken = 0;
    m_awaitsNOOP = true;
}

bool FTPReplyCount::takesOff(const QByteArray& line) {
    m_length += line.size();
    m_isText = m_isInside && !startsWithCode(line);
    return isFinal(line) ? takesOffFinal(line) : m_awaitsNOOP || m_forsaken > 0;
}

bool FTPReplyCount::takesOffFinal(const QByteArray& line) {
    if (m_awaitsNOOP && !line.startsWith("200"))
        return true;
    const bool isOwn = m_isAbort && line.startsWith('2');
    const bool isForsaken = std::exchange(m_awaitsNOOP, false) || (m_forsaken > 0 && !isOwn);
    m_owed = std::max(m_owed - 1, 0);
    m_forsaken = isOwn ? 0 : std::max(m_forsaken - 1, 0);
    return isForsaken;
}

// Whether the line ends a reply that is no preliminary one ("150 ...").
bool FTPReplyCount::isFinal(const QByteArray& line) {
    if (!startsWithCode(line))
        return false;
    m_isInside = line.size() > CodeLength && line[CodeLength] == '-';
    return !m_isInside && line[0] != '1';
}
