// A row of the history list.
#pragma once

#include <QAction>

#include "FolderItem.h"

class UniHelpHistory final : public QAction {
public:
    UniHelpHistory(const QString& title, FolderItem file, QObject* parent)
        : QAction(QString(title).replace(u'&', QStringLiteral("&&")), parent),
          mPageTitle(title),
          mPageFile(std::move(file)) {
        setCheckable(true);
    }

    const QString mPageTitle;
    const FolderItem mPageFile;
};
