// The demo's own files: the user's folders and the maker's server.
#pragma once

#include <optional>

#include <QTemporaryDir>

#include "FirmwareServer.h"
#include "FtpServer.h"
#include "SpecialFolders.h"

// Nothing of it reaches the user's files, and all of it goes at the end. Its images are for the simulated
// amplifier alone: with a real one there are none, and new firmware comes from the real server.
class DemoWorld {
public:
    explicit DemoWorld(bool isSimulated);

    SpecialFolders folders() const;
    FirmwareServer firmwareServer() const;
    // Null beside a real amplifier.
    FtpServer* server() { return m_server ? &*m_server : nullptr; }

private:
    void write(const QString& path, const QByteArray& bytes) const;

    QTemporaryDir m_folder;
    std::optional<FtpServer> m_server;
};
