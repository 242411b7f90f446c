// Every operation of a session with what it needs, for tests that go through all of them.
#pragma once

#include "SessionBench.h"

struct OperationCase {
    const char* name;
    bool isOneShot;
    // Names and folders the operation works on are those that prepareServer and prepareLocal make.
    void (*start)(FTPSessionClass& session);
    const char* success;
};

inline void PrintTo(const OperationCase& operation, std::ostream* out) {
    *out << operation.name;
}

// All of it lies in a folder "work": some servers do not let their top folder be changed.
inline void prepareServer(const QString& root) {
    const QString work = root + QStringLiteral("/work");
    writeFile(work + QStringLiteral("/a.txt"), "alpha");
    writeFile(work + QStringLiteral("/b c.txt"), "beta gamma");
    writeFile(work + QStringLiteral("/up.txt"), "part");
    writeFile(work + QStringLiteral("/pub/one.txt"), "one");
    writeFile(work + QStringLiteral("/pub/two.txt"), "two");
    writeFile(work + QStringLiteral("/pub/sub/three.txt"), "three");
    QDir().mkpath(work + QStringLiteral("/hollow"));
}

inline void prepareLocal(const QString& root) {
    writeFile(root + QStringLiteral("/up.txt"), "part and the rest");
    writeFile(root + QStringLiteral("/b c.txt"), "beta");
    writeFile(root + QStringLiteral("/tree/four.txt"), "four");
    writeFile(root + QStringLiteral("/tree/branch/five.txt"), "five");
}

// Opens the session that an immediate operation runs on.
template <typename Bench>
void logOnTo(Bench& bench) {
    EXPECT_EQ(bench.run(&FTPSessionClass::Logon), "ok: Connected to Tessarin server.");
    EXPECT_EQ(bench.runIn(QStringLiteral("/work"), &FTPSessionClass::ChangeDir),
              "ok: Directory Change Complete.");
}

inline void sendTreeOf(FTPSessionClass& s) {
    s.LocalDirectory += QStringLiteral("tree/");
}

// clang-format off
inline const std::vector<OperationCase> AllOperations{
    {"Logon",                true,  [](auto& s) { s.Logon(); }, "Connected to Tessarin server."},
    {"Logoff",               false, [](auto& s) { s.Logoff(); }, "Logoff Complete."},
    {"ChangeDir",            false, [](auto& s) { s.ServerDirectory = QStringLiteral("/work/pub"); s.ChangeDir(); }, "Directory Change Complete."},
    {"ParentDir",            false, [](auto& s) { s.ParentDir(); }, "Directory Change Complete."},
    {"GetWorkingDir",        false, [](auto& s) { s.GetWorkingDir(); }, "The working directory has been transferred."},
    {"MakeDir",              false, [](auto& s) { s.ServerDirectory = QStringLiteral("/work/made"); s.MakeDir(); }, "Directory Created."},
    {"RemoveDir",            false, [](auto& s) { s.ServerDirectory = QStringLiteral("/work/hollow"); s.RemoveDir(); }, "Empty Directory Removed."},
    {"DeleteSingleFile",     false, [](auto& s) { s.AddFileName(QStringLiteral("a.txt")); s.DeleteSingleFile(); }, "File has been deleted."},
    {"RenameSingleFile",     false, [](auto& s) { s.Files = QStringList{QStringLiteral("new"), QStringLiteral("a.txt")}; s.RenameSingleFile(); }, "File Rename Complete."},
    {"ChmodSingleFile",      false, [](auto& s) { s.ChmodMask = QStringLiteral("600"); s.AddFileName(QStringLiteral("a.txt")); s.ChmodSingleFile(); }, "Chmod Command Complete."},
    {"GetSystemInfo",        false, [](auto& s) { s.GetSystemInfo(); }, "System information received."},
    {"GetStatus",            false, [](auto& s) { s.GetStatus(); }, "System information received."},
    {"SITECommand",          false, [](auto& s) { s.SITECommand(QStringLiteral("HELP")); }, "FTP SITE command complete"},
    {"DirectCommand",        false, [](auto& s) { s.DirectCommand(QStringLiteral("TYPE A")); }, "FTP Direct Command complete"},
    {"AbortTransfer",        false, [](auto& s) { s.AbortTransfer(); }, "Transfer Aborted"},
    {"GetSingleFile",        false, [](auto& s) { s.AddFileName(QStringLiteral("a.txt")); s.GetSingleFile(); }, "File Transfer Complete."},
    {"PutSingleFile",        false, [](auto& s) { s.AddFileName(QStringLiteral("up.txt")); s.PutSingleFile(); }, "File Transfer Complete."},
    {"RestartGetSingleFile", false, [](auto& s) { s.AddFileName(QStringLiteral("b c.txt")); s.RestartGetSingleFile(); }, "File Transfer Complete."},
    {"RestartPutSingleFile", false, [](auto& s) { s.AddFileName(QStringLiteral("up.txt")); s.RestartPutSingleFile(); }, "File Transfer Complete."},
    {"GetDirList",           false, [](auto& s) { s.GetDirList(); }, "The file list has been transferred."},
    {"GetDir",               false, [](auto& s) { s.ServerDirectory = QStringLiteral("/work/pub"); s.GetDir(); }, "Directory Transfer Complete."},
    {"PutDir",               false, [](auto& s) { sendTreeOf(s); s.PutDir(); }, "Directory Transfer Complete."},
    {"DeleteDir",            false, [](auto& s) { s.ServerDirectory = QStringLiteral("/work/pub"); s.DeleteDir(); }, "The directory has been deleted."},
    {"StartGetFile",         true,  [](auto& s) { s.Files = QStringList{QStringLiteral("two.txt"), QStringLiteral("one.txt")}; s.ServerDirectory = QStringLiteral("/work/pub"); s.StartGetFile(); }, "File Transfer Complete."},
    {"StartPutFile",         true,  [](auto& s) { s.Files = QStringList{QStringLiteral("b c.txt"), QStringLiteral("up.txt")}; s.ServerDirectory = QStringLiteral("/work"); s.StartPutFile(); }, "File Transfer Complete."},
    {"StartDeleteFile",      true,  [](auto& s) { s.Files = QStringList{QStringLiteral("b c.txt"), QStringLiteral("a.txt")}; s.ServerDirectory = QStringLiteral("/work"); s.StartDeleteFile(); }, "File has been deleted."},
    {"StartRenameFile",      true,  [](auto& s) { s.Files = QStringList{QStringLiteral("n2"), QStringLiteral("b c.txt"), QStringLiteral("n1"), QStringLiteral("a.txt")}; s.ServerDirectory = QStringLiteral("/work"); s.StartRenameFile(); }, "File Rename Complete."},
    {"StartGetDirList",      true,  [](auto& s) { s.ServerDirectory = QStringLiteral("/work/pub"); s.StartGetDirList(); }, "The file list has been transferred."},
    {"StartGetDir",          true,  [](auto& s) { s.ServerDirectory = QStringLiteral("/work/pub"); s.StartGetDir(); }, "Directory Transfer Complete."},
    {"StartPutDir",          true,  [](auto& s) { sendTreeOf(s); s.ServerDirectory = QStringLiteral("/work/sent"); s.StartPutDir(); }, "Directory Transfer Complete."},
    {"StartDeleteDir",       true,  [](auto& s) { s.ServerDirectory = QStringLiteral("work/pub"); s.StartDeleteDir(); }, "The directory has been deleted."},
};
// clang-format on
