// What a session knows, and what follows from that alone: the fields that steps and callers read and write.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include <QByteArray>
#include <QFileInfo>
#include <QString>
#include <QStringConverter>
#include <QStringList>

#include "FTPDirectoryClass.h"

class FTPCommandSocket;
class FTPDataSocket;

class FTPSessionState {
public:
    // Most directories in the tree of a walk.
    static constexpr std::size_t MaxDirectories = 100'000;

    FTPSessionState() = default;
    FTPSessionState(const FTPSessionState&) = delete;
    FTPSessionState& operator=(const FTPSessionState&) = delete;

    QString ServerAddress;
    QString ServerUserID;
    QString ServerPassword;
    QString ServerDirectory;
    QString LocalDirectory;  // with its trailing delimiter
    QStringList Files;       // a stack: the last element goes first
    QByteArray Buffer;       // control text received and not yet consumed
    std::int32_t SendBufferSize = 2048;
    std::int32_t BytesReceived = 0;  // kept by no flow
    std::int32_t CurrentDirectoryIndex = 0;
    std::int32_t CurrentFileIndex = 0;
    QString DirectoryFileList;
    std::vector<FTPDirectoryClass> DirList;
    bool NT = false;
    QStringList Paths;
    std::int32_t DataPortStart = 30003;
    std::int32_t DataPortEnd = 30100;
    std::int32_t DataPort = 0;
    std::int32_t Timeout = 20000;  // milliseconds without any traffic
    bool UseNameList = false;
    QString ChmodMask;
    QStringConverter::Encoding ServerTextEncoding = QStringConverter::Latin1;
    bool ShowInvisible = false;
    std::int32_t CommandPort = 21;
    std::int32_t PassivePort = 0;
    bool IgnoreCancel = false;
    QString FTPCoreCRLF = QStringLiteral("\r\n");
    QString FTPSessionType;
    QString FileDelimiter = QStringLiteral(":");
    std::int32_t FileCount = 0;
    QString DeleteDirectory;
    FTPDataSocket* DataSocket = nullptr;  // owned by the session, as is CommandSocket
    QString CurrentWorkingDirectory;
    QString CurrentFTPStep;
    FTPCommandSocket* CommandSocket = nullptr;
    QString ID;
    bool PassiveMode = true;
    QString FTPTransferType = QStringLiteral("I");
    std::vector<QFileInfo> FileFolderItems;
    double SessionStartTime = 0;  // microseconds
    std::int32_t RestartByteCount = 0;
    // The text of a SITE or direct command. (`DirectCommand` is the operation.)
    QString DirectCommandText;
    bool FTPS = false;

    QByteArray encode(const QString& text) const;
    QString decode(const QByteArray& bytes) const;

    // The last index of Files: -1 when it is empty.
    std::int32_t GetFileCount() const { return static_cast<std::int32_t>(Files.size()) - 1; }
    // Takes the last element off; empty, or no item, when there is none.
    QString GetNextFileName();
    std::optional<QFileInfo> GetNextFolderItem();

    // The data port.
    void SetDataPortRange(std::int32_t first, std::int32_t last);
    void NextDataPort();
    // Whether the server is reached by IPv6. PASV and PORT cannot name such an address: EPSV and EPRT stand
    // in for them.
    bool IsIPv6() const;
    QString PassiveCommand() const;
    QString PortCommand() const;
    QString BuildPortString() const;
    std::int32_t CalculatePassivePort(const QString& reply) const;
    QString CalculatePassiveAddress(const QString& reply) const;
    // Connects to the port that the reply names on the host of the control connection, never to another
    // host. False for a reply without a usable port.
    bool CalcSetPassivePort(const QString& reply);
    void SetPassivePort(std::int32_t port);

    // Local paths.
    QString GetDirFromPath(const QString& path) const;
    QString UpOneLocalDirectory(const QString& path) const;
    QString GetFileFromPath(const QString& path) const;
    // Deletes a local file if there is one, silently.
    void DeleteLocalFile(const QString& path) const;

    // The trees of the walks. Each gives false when it cannot be done.
    //
    // The place of the directory in DirList, or -1.
    std::int32_t GetCurrentDirectoryIndex(const QString& path) const;
    // Puts what a line of a listing names into DirList. A name that cannot be used here is told in Skipped.
    bool AddListingLine(const QString& line);
    // Puts a folder's tree into Files and Paths: "*name" for a folder, "*UP" behind its items. A folder that
    // is itself called "UP" has a "/" behind its name. What cannot be sent is told in Skipped.
    bool GetFiles(const QString& prefix, const QString& path);
    // Makes the folder for a server directory in LocalDirectory, and makes it the new LocalDirectory. A walk
    // begins with the folder of ServerDirectory and never leaves it.
    bool MakeTopFolder();
    bool MakeLocalFolder(const QString& serverPath);
    bool LeaveLocalFolder();
    QStringList Skipped;

private:
    void addFile(const QFileInfo& item);
    bool isSkipped(const QFileInfo& item);

    QString m_walkRoot;  // the walk makes nothing outside this local folder
};
