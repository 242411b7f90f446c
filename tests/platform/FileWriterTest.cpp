#include "FileWriter.h"

#include <sys/stat.h>

#include <QDir>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include "DiskLimit.h"

namespace {

class FileWriterTest : public testing::Test {
protected:
    QString path(const char* name) const { return m_world.filePath(QString::fromLatin1(name)); }
    void give(const char* name, const QByteArray& contents) const {
        QFile file(path(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(contents);
    }
    QByteArray read(const char* name) const {
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("none");
    }
    QStringList names() const {
        return QDir(m_world.path())
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    }

    QTemporaryDir m_world{QDir::tempPath() + QStringLiteral("/vlx files é XXXXXX")};
    QString m_failure;
};

TEST_F(FileWriterTest, DiskThatIsFullAtAnyByteLeavesTheOldFile) {
    const QByteArray contents(300, 'x');
    give("a", "old");
    for (qsizetype room = 0; room < contents.size(); ++room) {
        const DiskLimit limit(static_cast<rlim_t>(room));
        EXPECT_FALSE(writeFile(path("a"), contents, m_failure)) << room;
        EXPECT_EQ(m_failure, QStringLiteral("Cannot write %1: File too large").arg(path("a")));
        EXPECT_EQ(read("a"), "old") << room;
    }
    EXPECT_EQ(names(), QStringList("a"));
    EXPECT_TRUE(writeFile(path("a"), contents, m_failure));
    EXPECT_EQ(read("a"), contents);
    EXPECT_EQ(m_failure, QString());
}

TEST_F(FileWriterTest, WhatStaysOnDiskStaysAsFarAsItCame) {
    FileWriter file;
    {
        const DiskLimit limit(4);
        EXPECT_TRUE(file.create(path("a"), FileWriter::Failed::StaysOnDisk));
        EXPECT_FALSE(file.write("sixsix"));
    }
    EXPECT_FALSE(file.finish());
    EXPECT_EQ(read("a"), "sixs");
    EXPECT_NE(file.takeFailure(), QString());
    EXPECT_EQ(file.takeFailure(), QString()) << "told once";
}

TEST_F(FileWriterTest, RefusesWhatIsNoFile) {
    ASSERT_EQ(mkfifo(QFile::encodeName(path("pipe")).constData(), 0600), 0);
    QDir().mkdir(path("folder"));
    QFile::link(QStringLiteral("/dev/null"), path("link to a device"));
    const QStringList before = names();
    for (const char* name : {"pipe", "folder", "link to a device"})
        for (const auto failed : {FileWriter::Failed::LeavesNoFile, FileWriter::Failed::StaysOnDisk}) {
            FileWriter file;
            EXPECT_FALSE(file.create(path(name), failed)) << name;
            EXPECT_EQ(file.takeFailure(),
                      QStringLiteral("Cannot create %1: Not a regular file").arg(path(name)));
            EXPECT_FALSE(file.write("x"));
            EXPECT_FALSE(file.finish());
        }
    EXPECT_EQ(names(), before);
    EXPECT_FALSE(writeFile(path("nowhere/a"), "x", m_failure));
    EXPECT_TRUE(m_failure.startsWith(QStringLiteral("Cannot create "))) << m_failure.toStdString();
}

TEST_F(FileWriterTest, ALinkMeansTheFileBehindIt) {
    give("a", "old");
    QFile::link(path("a"), path("link"));
    QFile::link(path("new"), path("link to nothing"));
    EXPECT_TRUE(writeFile(path("link"), "x", m_failure));
    EXPECT_TRUE(writeFile(path("link to nothing"), "y", m_failure));
    EXPECT_TRUE(QFileInfo(path("link")).isSymLink());
    EXPECT_EQ(read("a"), "x");
    EXPECT_EQ(read("new"), "y");
}

}  // namespace
