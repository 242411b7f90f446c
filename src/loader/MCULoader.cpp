#include "MCULoader.h"

#include "Text.h"

namespace {

// Characters of the file per unit of the bar, and addresses of the image: a record of about 45 characters
// holds 16 bytes.
constexpr std::uint32_t CharactersPerUnit = 128;
constexpr std::uint32_t AddressesPerUnit = 46;
constexpr std::uint32_t AddressesPerUpdate = 256;

constexpr std::uint8_t HighestBank = 1;

// Stands in place of the image's checksum word until the final block brings it.
constexpr std::uint8_t Unfinished = 0xAA;

constexpr std::int32_t VersionRetries = 10;

QString quoted(const QString& name) {
    return u'"' + name + u'"';
}

QString hexWord(std::uint16_t word) {
    return Text::Hex(word).rightJustified(4, u'0');
}

}  // namespace

// A load's working state.
struct MCULoader::Image {
    ImagePlan plan;  // of what has been read so far
    ImageBlock block;
    ImageBlock finalBlock;           // the first block once more
    std::uint16_t checksumWord = 0;  // as the file has it; 0: to be worked out
    std::uint16_t runningSum = 0;    // of the image's words
    std::uint16_t blockNumber = 0;   // blocks sent so far
};

MCULoader::MCULoader(Platform& platform, Globals& globals, FirmwarePanel& panel, RadioState& radioState,
                     LineOwner& line, const VersionedFilename& versionedFilename)
    : m_dialogs(platform.dialogs),
      m_globals(globals),
      m_panel(panel),
      m_radioState(radioState),
      m_line(line),
      m_versionedFilename(versionedFilename),
      m_reader(platform, globals),
      m_link(platform, globals) {}

Task<bool> MCULoader::ValidateIntelHex(QString filename) {
    const bool ok = co_await Verify(m_globals.m_FolderPath + filename);
    m_globals.SetStatusText(
        ok ? QStringLiteral("VLX firmware file ") + quoted(filename) + QStringLiteral(" verified")
           : QStringLiteral("Verification of VLX firmware file ") + quoted(filename) +
                 QStringLiteral(" failed"),
        false);
    co_return ok;
}

Task<bool> MCULoader::Load(LoadView& view) {
    const QString filename = m_versionedFilename.m_mstrPath;
    bool ok = co_await ValidateIntelHex(filename);
    if (ok) {
        view.setProgressBar1Maximum(
            static_cast<int>(m_reader.state().m_dwcbSumOfAllFiles / CharactersPerUnit));
        ok = co_await Load2(filename, view);
    }
    if (!ok)
        m_globals.SetStatusText(
            QStringLiteral("VLX programming failed.\n\nRemove power and re-try the firmware load."), false);
    co_return ok;
}

Task<bool> MCULoader::Load2(QString filename, LoadView& view) {
    const auto guard = m_line.take();
    m_link.m_dwTotalBlockRetries = 0;
    m_link.m_dwHighestBlockRetries = 0;
    m_link.TellLongWait = [&view](const QString& what, std::chrono::seconds left) {
        view.showLongWait(what, left);
    };
    const bool ok = co_await exchange(filename, view);
    m_reader.close();
    m_panel.setMCUinstalledText(m_globals.m_strMcuVersion);
    co_return ok;
}

Task<bool> MCULoader::exchange(QString filename, LoadView& view) {
    const QString path = m_globals.m_FolderPath + filename;
    Plan plan;
    const bool isPlanned = co_await makePlan(path, plan);
    if (!isPlanned || !m_reader.OpenPass(path))
        co_return false;
    const bool isInDownloadMode = co_await m_link.EnterDownloadMode();
    if (!isInDownloadMode)
        co_return false;
    m_panel.setMCUinstalledText(QStringLiteral("Loading"));
    m_globals.SetStatusText(
        QStringLiteral("Sending firmware file ") + quoted(filename) + QStringLiteral(" to VLX"), false);
    // A failed block does not keep the final block back: that is what the load then fails on. A file that is
    // not the verified one does.
    Image image;
    const bool areSent = co_await sendBlocks(image, view);
    if (areSent && !isAsPlanned(image, plan))
        co_return false;
    const bool isCommitted = co_await sendFinalBlock(image, view);
    if (!isCommitted)
        co_return false;
    co_await m_link.LeaveDownloadMode();
    co_return co_await readBackVersion();
}

// A pass without the line: which blocks the file gives, and whether the user wants them.
Task<bool> MCULoader::makePlan(QString path, Plan& plan) {
    plan.hasEndRecord = m_reader.state().m_fIsEndOfFile;  // as the verification has left it
    if (!m_reader.OpenPass(path))
        co_return false;
    Image image;
    for (bool isBlock = true; isBlock;)
        isBlock = co_await nextBlock(image, End::IsNoFault);
    image.plan.end(plan.hasEndRecord);
    plan.digest = image.plan.digest();
    const QString objection = image.plan.objection();
    if (objection.isEmpty())
        co_return true;
    co_return co_await isWantedAllTheSame(objection);
}

Task<bool> MCULoader::isWantedAllTheSame(QString objection) {
    const MessageRequest request{.message = objection,
                                 .explanation = QStringLiteral("Send it anyway?"),
                                 .actionButton = QStringLiteral("No"),
                                 .alternateButton = QStringLiteral("Yes")};
    const bool isRefused = co_await m_dialogs.askCaution(request);
    if (isRefused)
        m_globals.SetStatusText(objection + QStringLiteral(" It was not sent."), false);
    co_return !isRefused;
}

bool MCULoader::isAsPlanned(const Image& image, const Plan& plan) {
    const bool isReadWhole = m_reader.state().m_fIsReadOK || !plan.hasEndRecord;
    const bool isSame = isReadWhole && image.plan.digest() == plan.digest;
    if (!isSame)
        m_globals.SetStatusText(
            QStringLiteral("The firmware file is no longer as it was verified. VLX was not told to use it."),
            false);
    return isSame;
}

// Blocks are formed by counting records: a record that is not sent is left out without a word, and the
// next one takes its place. False at the end of the image.
Task<bool> MCULoader::nextBlock(Image& image, End end) {
    for (;;) {
        if (end == End::IsNoFault && m_reader.isAtEnd())
            co_return false;
        const bool hasRecord = co_await m_reader.ReadNext();
        const IntelHexState& record = m_reader.state();
        if (!hasRecord || record.m_fIsEndOfFile || (record.m_dwAddress >> 16 & 0xFF) > HighestBank)
            co_return false;
        const bool isTaken =
            record.m_bcb == ImageBlock::RecordLength && ImagePlan::isInWindow(record.m_dwAddress);
        image.plan.addRecord(record, isTaken);
        if (!isTaken || !image.block.append(record.m_abData.data()))
            continue;
        image.block.setAddressOfLastRecord(record.m_dwAddress);
        image.plan.addBlock(image.block);
        co_return true;
    }
}

// False when a block could not be sent.
Task<bool> MCULoader::sendBlocks(Image& image, LoadView& view) {
    for (;;) {
        const bool isBlock = co_await nextBlock(image, End::IsFault);
        if (!isBlock)
            co_return true;
        const bool isSent = co_await sendBlock(image, view);
        if (!isSent)
            co_return false;
    }
}

Task<bool> MCULoader::sendBlock(Image& image, LoadView& view) {
    const std::uint32_t address =
        m_reader.state().m_dwAddress - (ImageBlock::DataLength - ImageBlock::RecordLength);
    const bool isFirst = address == ImagePlan::Begin;
    if (isFirst) {
        image.checksumWord = image.block.word(0);
        m_globals.SetStatusText(
            QStringLiteral("VLX firmware file checksum word is x") + hexWord(image.checksumWord), true);
        if (image.checksumWord == 0)
            image.block.setByte(0, Unfinished);
    }
    const bool isWordLeftOut = isFirst && image.checksumWord == 0;
    image.runningSum =
        static_cast<std::uint16_t>(image.runningSum + image.block.sumOfWords(isWordLeftOut ? 2 : 0));
    if (isFirst)
        image.finalBlock = image.block;
    image.block.seal();

    m_link.m_dwAddress = m_reader.state().m_dwAddress;
    const bool isSent = co_await m_link.WriteBlockToRadio(image.block.bytes(), ImageBlock::Length,
                                                          image.blockNumber, QStringLiteral("A"));
    if (!isSent) {
        m_globals.SetStatusText(QStringLiteral("VLX Block write failed at address: ") + Text::Str(address),
                                false);
        co_return false;
    }
    ++image.blockNumber;
    if (address % AddressesPerUpdate == 0)
        view.setProgressBar1Value(static_cast<int>(address / AddressesPerUnit));
    co_return true;
}

Task<bool> MCULoader::sendFinalBlock(Image& image, LoadView& view) {
    view.setProgressBar1Maximum(0);
    if (image.checksumWord == 0) {
        if (image.runningSum == 0) {
            m_globals.SetStatusText(QStringLiteral("VLX checksum error"), false);
            co_return false;
        }
        image.checksumWord = static_cast<std::uint16_t>(0x10000 - image.runningSum);
        image.finalBlock.setWord(0, image.checksumWord);
        m_globals.SetStatusText(
            QStringLiteral("VLX checksum was replaced with computed value 0x") + hexWord(image.checksumWord),
            true);
    }
    image.finalBlock.markFinal();
    image.finalBlock.seal();
    m_link.m_dwAddress = m_reader.state().m_dwAddress;
    const bool isCommitted = co_await m_link.WriteBlockToRadio(image.finalBlock.bytes(), ImageBlock::Length,
                                                               image.blockNumber, QStringLiteral("B"));
    if (!isCommitted) {
        m_globals.SetStatusText(QStringLiteral("VLX firmware final block load failed."), false);
        co_return false;
    }
    ++image.blockNumber;
    co_return true;
}

Task<bool> MCULoader::readBackVersion() {
    bool ok = co_await m_radioState.Refresh(VersionRetries);
    const QString expected = m_panel.MCUavailableText();
    const QString loaded = Text::Format(m_globals.m_dwMcuVersion, u"00\\.00");
    m_globals.SetStatusText(QStringLiteral("Loaded VLX firmware version ") + expected +
                                QStringLiteral("\nVLX responded with version ") + loaded,
                            false);
    if (Text::equal(expected, loaded)) {
        m_globals.SetStatusText(QStringLiteral("VLX firmware load is complete"), false);
        ok = true;
    } else {
        m_globals.SetStatusText(QStringLiteral("VLX verification failed. Reload VLX firmware."), false);
    }
    co_return ok;
}
