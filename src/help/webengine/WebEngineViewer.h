// The page view of the help window on Qt WebEngine.
#pragma once

#include <QPointer>
#include <QWebEngineView>

#include "BookProfile.h"
#include "HTMLViewer.h"
#include "LockedPage.h"

class QWebEngineLoadingInfo;

class WebEngineViewer final : public HTMLViewer {
public:
    WebEngineViewer(const FolderItem& helpFolder, QWidget* parent);
    ~WebEngineViewer() override;

    QWidget* control() override { return m_view; }
    void LoadPage(const FolderItem& file, const QString& anchor) override;
    void LoadPage(const QString& html, const FolderItem& base) override;

private:
    void load(const QUrl& url);
    bool mayGoTo(const QUrl& url);
    void loadingChanged(const QWebEngineLoadingInfo& info);
    void showContextMenu(const QPoint& point);

    FolderItem m_helpFolder;
    // In the order in which they must outlive each other.
    BookProfile m_profile;
    LockedPage m_page;
    QPointer<QWebEngineView> m_view;
    QUrl m_chosen;  // from its choice until it is shown
};
