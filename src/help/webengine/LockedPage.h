// A page that goes where the help window lets it.
#pragma once

#include <functional>

#include <QWebEnginePage>

class QWebEngineNewWindowRequest;

class LockedPage final : public QWebEnginePage {
    Q_OBJECT

public:
    LockedPage(QWebEngineProfile* profile, QObject* parent);

    // Whether the page, or a frame of it whose link was clicked, may go to an address.
    std::function<bool(const QUrl& url)> mayGoTo;

protected:
    bool acceptNavigationRequest(const QUrl& url, NavigationType type, bool isMainFrame) override;
    QWebEnginePage* createWindow(WebWindowType /*type*/) override { return nullptr; }
    QStringList chooseFiles(FileSelectionMode /*mode*/, const QStringList& /*oldFiles*/,
                            const QStringList& /*types*/) override {
        return {};
    }

private:
    void openInPlace(QWebEngineNewWindowRequest& request);
};
