// What is known of an image before it is sent: which blocks it gives, and what is odd about them.
#pragma once

#include <QByteArray>
#include <QCryptographicHash>
#include <QString>

#include "ImageBlock.h"
#include "IntelHexReader.h"

// Fed with the records of one pass through the file, in their order.
class ImagePlan {
public:
    // What is sent; below lies the bootstrap loader itself.
    static constexpr std::uint32_t Begin = 0x800;
    static constexpr std::uint32_t End = 0x1FD80;

    static bool isInWindow(std::uint32_t address) { return address >= Begin && address < End; }

    // A data record; `isTaken` when it goes into a block.
    void addRecord(const IntelHexState& record, bool isTaken);
    // The block that the last record has filled, not sealed yet.
    void addBlock(const ImageBlock& block) { m_digest.addData(block.bytes().left(ImageBlock::Length - 1)); }
    // After the last record.
    void end(bool hasEndRecord);

    // What speaks against sending the image, in plain words; empty when it is fit.
    const QString& objection() const { return m_objection; }
    // Tells one sequence of blocks from another.
    QByteArray digest() const { return m_digest.result(); }

private:
    void object(const QString& reason);

    std::uint32_t m_next = Begin;  // where the next record is expected
    QString m_objection;
    QCryptographicHash m_digest{QCryptographicHash::Sha256};
};
