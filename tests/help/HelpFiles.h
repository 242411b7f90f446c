// A help book in a temporary folder with an awkward name.
#pragma once

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include "FolderItem.h"

class HelpFiles {
public:
    HelpFiles() { QDir().mkpath(HelpFolder.AbsolutePath()); }

    void write(const QString& path, const QByteArray& contents) const {
        const QString whole = HelpFolder.AbsolutePath() + u'/' + path;
        QDir().mkpath(QFileInfo(whole).path());
        QFile file(whole);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(contents);
    }
    void writeContents(const QByteArray& rows) const {
        write(QStringLiteral("uhtoc.xml"), "<helpbook>" + rows + "</helpbook>");
    }
    void writeIndex(const QByteArray& rows) const {
        write(QStringLiteral("uhindex.xml"), "<helpindex>" + rows + "</helpindex>");
    }
    FolderItem file(const QString& path) const { return HelpFolder.Descendant(path.split(u'/')); }
    QString outside(const QString& name) const { return world.filePath(name); }

    QTemporaryDir world{QDir::tempPath() + QStringLiteral("/vlx help Ä XXXXXX")};
    FolderItem HelpFolder{world.filePath(QStringLiteral("Help"))};
};
