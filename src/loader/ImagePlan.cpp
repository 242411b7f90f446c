#include "ImagePlan.h"

#include "Text.h"

namespace {

QString shown(std::uint32_t address) {
    return QStringLiteral("0x") + Text::Hex(address);
}

}  // namespace

void ImagePlan::addRecord(const IntelHexState& record, bool isTaken) {
    const std::uint32_t address = record.m_dwAddress;
    if (!record.m_isOffsetGiven)
        object(QStringLiteral("The firmware file does not begin with an address record."));
    if (!isTaken) {
        if (isInWindow(address) && record.m_bcb > 0)
            object(QStringLiteral(
                       "The firmware file has a record of %1 bytes at address %2, which cannot be sent.")
                       .arg(record.m_bcb)
                       .arg(shown(address)));
        return;
    }
    if (m_next == Begin && address > Begin)
        object(QStringLiteral("The firmware file has no data at address %1, where the firmware begins.")
                   .arg(shown(Begin)));
    else if (address > m_next)
        object(QStringLiteral("The firmware file has a gap from address %1 to %2.")
                   .arg(shown(m_next), shown(address)));
    else if (address < m_next)
        object(QStringLiteral("The firmware file is out of order at address %1.").arg(shown(address)));
    m_next = address + ImageBlock::RecordLength;
}

void ImagePlan::end(bool hasEndRecord) {
    if (m_next == Begin)
        object(QStringLiteral("The firmware file has no data at address %1, where the firmware begins.")
                   .arg(shown(Begin)));
    if (m_next % ImageBlock::DataLength != 0)
        object(QStringLiteral("The firmware file ends with an incomplete block at address %1.")
                   .arg(shown(m_next)));
    if (!hasEndRecord)
        object(QStringLiteral("The firmware file has no end record. It may have been cut off."));
}

// The first of several tells the most: those behind it often follow from it.
void ImagePlan::object(const QString& reason) {
    if (m_objection.isEmpty())
        m_objection = reason;
}
