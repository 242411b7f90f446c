#include "BootstrapLoader.h"

#include <numeric>
#include <utility>

namespace {

constexpr qsizetype MessageLimit = 256;
// The rest of a message that was cut off, or noise, does not spoil the next command for ever.
constexpr Clock::Microseconds MessageTimeOut = std::chrono::seconds(1);

constexpr std::uint8_t HighestPage = 1;
constexpr std::uint8_t FinalMark = 2;

}  // namespace

// 64 bytes of data, address with the low byte first, checksum.
struct BootstrapLoader::Block {
    QByteArray bytes;

    std::uint8_t at(qsizetype i) const { return static_cast<std::uint8_t>(bytes[i]); }
    QByteArray data() const { return bytes.left(BlockDataSize); }
    bool isFinal() const { return at(66) == FinalMark; }
    std::uint32_t address() const {
        const std::uint32_t page = isFinal() ? 0 : at(66);
        return at(64) + 0x100U * at(65) + 0x10000U * page;
    }
    bool isSound() const {
        const int sum = std::accumulate(bytes.begin(), bytes.end(), 0,
                                        [](int s, char byte) { return s + static_cast<std::uint8_t>(byte); });
        return sum % 256 == 0 && at(66) <= FinalMark && hasPlace();
    }
    // The final block repeats the first one and has no other place.
    bool hasPlace() const {
        return isFinal() ? address() == Flash::Begin
                         : at(66) <= HighestPage && Flash::isInWindow(address(), BlockDataSize);
    }
};

BootstrapLoader::BootstrapLoader(Board& board)
    : m_board(board), m_busy(board.clock(), Clock::Microseconds(0), [this] { finishPending(); }) {}

void BootstrapLoader::start() {
    m_mode = Mode::Commands;
    m_message.clear();
    m_block.clear();
    m_blocksTaken = 0;
}

void BootstrapLoader::stop() {
    m_mode = Mode::Stopped;
    m_busy.stop();
    m_pendingAnswer = 0;
    if (!m_writing.isEmpty()) {
        const Block block{std::exchange(m_writing, {})};
        program(block.address(), block.data().left(BlockDataSize / 2));
    }
}

void BootstrapLoader::hear(const QByteArray& bytes) {
    if (m_board.clock().now() - m_lastHeard > MessageTimeOut)
        m_message.clear();
    m_lastHeard = m_board.clock().now();
    QByteArrayView rest = bytes;
    while (!rest.isEmpty() && m_mode != Mode::Stopped) {
        if (m_mode == Mode::Blocks) {
            rest = rest.sliced(hearBlockBytes(rest));
        } else {
            hearCommandByte(rest.front());
            rest = rest.sliced(1);
        }
    }
}

void BootstrapLoader::hearCommandByte(char byte) {
    if (byte == Echo && m_message.isEmpty()) {
        m_mode = Mode::Blocks;
        m_isEraseDue = true;
        m_isFinalTaken = false;
        answerAfter(m_timing.echo, Echo);
    } else if (byte == ';') {
        obey(std::exchange(m_message, {}));
    } else if (m_message.size() < MessageLimit) {
        m_message += byte;
    }
}

void BootstrapLoader::obey(const QByteArray& message) {
    if (message.isEmpty())
        m_board.answer(";");
    else if (message == "I")
        m_board.answer("VLX720BOOT1.02;");
    else if (message == "^BN")
        m_board.answer("^BN;");
    else if (message == "P")
        startImage();
}

void BootstrapLoader::startImage() {
    m_mode = Mode::Commands;
    if (m_board.flash().isImageValid())
        m_board.startMainFirmware();
}

qsizetype BootstrapLoader::hearBlockBytes(QByteArrayView bytes) {
    // Byte by byte where a command may stand.
    const qsizetype wanted = m_isFinalTaken && m_block.size() < 2 ? 1 : BlockSize - m_block.size();
    const qsizetype count = std::min(wanted, bytes.size());
    m_block += bytes.first(count);
    if (m_isFinalTaken && m_block == "P;") {
        m_block.clear();
        startImage();
    } else if (m_block.size() == BlockSize) {
        takeBlock({std::exchange(m_block, {})});
    }
    return count;
}

void BootstrapLoader::takeBlock(const Block& block) {
    finishPending();
    if (!block.isSound())
        return answerAfter(Clock::Microseconds(0), Refused);
    m_writing = block.bytes;
    answerAfter(m_timing.blockWrite, block.isFinal() ? ImageTaken : BlockTaken);
}

// The first block of a load takes the former firmware away, also when power goes in the middle of it.
void BootstrapLoader::program(std::uint32_t address, const QByteArray& data) {
    if (std::exchange(m_isEraseDue, false))
        m_board.flash().erase();
    m_board.flash().write(address, data);
}

void BootstrapLoader::store(const Block& block) {
    ++m_blocksTaken;
    program(block.address(), block.data());
    if (!block.isFinal())
        return;
    m_board.flash().commit();
    m_board.setFirmwareVersion(m_board.flash().stampedVersion().value_or(m_board.firmwareVersion()));
    m_isFinalTaken = true;
}

void BootstrapLoader::answerAfter(Clock::Microseconds delay, char answer) {
    m_pendingAnswer = answer;
    if (delay == Clock::Microseconds(0))
        return finishPending();
    m_busy.setPeriod(delay);
    m_busy.start(ClockTimer::Mode::Single);
}

void BootstrapLoader::finishPending() {
    m_busy.stop();
    if (!m_writing.isEmpty())
        store({std::exchange(m_writing, {})});
    if (m_pendingAnswer != 0)
        m_board.answer(QByteArray(1, std::exchange(m_pendingAnswer, '\0')));
}
