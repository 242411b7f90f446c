// What the page view may reach: the files of one help folder, read only, and nothing kept.
#pragma once

#include <memory>

#include <QByteArray>
#include <QWebEngineProfile>
#include <QWebEngineUrlRequestInterceptor>
#include <QWebEngineUrlSchemeHandler>

#include "FolderItem.h"

// Turns away every address that is not of the book: no network, no "file:".
class OutsideBlocker final : public QWebEngineUrlRequestInterceptor {
public:
    using QWebEngineUrlRequestInterceptor::QWebEngineUrlRequestInterceptor;
    void interceptRequest(QWebEngineUrlRequestInfo& info) override;
};

// Answers with the files of the book.
class BookFiles final : public QWebEngineUrlSchemeHandler {
public:
    explicit BookFiles(FolderItem helpFolder) : m_helpFolder(std::move(helpFolder)) {}

    // The next answer for that file is this text in its place; every other file is answered as it is.
    void putInPlace(const FolderItem& file, const QString& html);
    void requestStarted(QWebEngineUrlRequestJob* job) override;

private:
    FolderItem m_helpFolder;
    FolderItem m_replaced;
    QByteArray m_replacement;
};

// Off the record: nothing of it reaches the disk.
class BookProfile final : public QWebEngineProfile {
public:
    explicit BookProfile(const FolderItem& helpFolder);
    ~BookProfile() override;

    BookFiles& files() { return m_files; }

private:
    BookFiles m_files;
    OutsideBlocker m_blocker;
};
