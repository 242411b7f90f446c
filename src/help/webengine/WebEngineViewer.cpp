#include "WebEngineViewer.h"

#include <QMenu>
#include <QWebEngineHistory>
#include <QWebEngineLoadingInfo>

#include "BookUrl.h"

namespace {

// As the help window expects it of a page view: words, and the address between double quotes.
QString statusOf(const QString& url) {
    return url.isEmpty() ? QString() : QStringLiteral("Open \"%1\"").arg(url);
}

}  // namespace

WebEngineViewer::WebEngineViewer(const FolderItem& helpFolder, QWidget* parent)
    : m_helpFolder(helpFolder),
      m_profile(helpFolder),
      m_page(&m_profile, nullptr),
      m_view(new QWebEngineView(parent)) {
    m_view->setPage(&m_page);
    m_page.mayGoTo = [this](const QUrl& url) { return mayGoTo(url); };
    QObject::connect(&m_page, &QWebEnginePage::loadingChanged, m_view,
                     [this](const QWebEngineLoadingInfo& info) { loadingChanged(info); });
    QObject::connect(&m_page, &QWebEnginePage::linkHovered, m_view, [this](const QString& url) {
        StatusChanged(statusOf(BookUrl::told(QUrl(url), m_helpFolder)));
    });
    QObject::connect(&m_page, &QWebEnginePage::renderProcessTerminated, m_view,
                     [this](QWebEnginePage::RenderProcessTerminationStatus, int code) {
                         Error(code, QStringLiteral("The page view ended."));
                     });
    m_view->setContextMenuPolicy(Qt::CustomContextMenu);
    QObject::connect(m_view, &QWidget::customContextMenuRequested, m_view,
                     [this](const QPoint& point) { showContextMenu(point); });
}

WebEngineViewer::~WebEngineViewer() {
    m_page.disconnect(m_view);
    delete m_view;
}

void WebEngineViewer::LoadPage(const FolderItem& file, const QString& anchor) {
    m_profile.files().putInPlace(FolderItem(), QString());
    QUrl url = BookUrl::of(file, m_helpFolder);
    if (!anchor.isEmpty())
        url.setFragment(anchor);
    load(url);
}

void WebEngineViewer::LoadPage(const QString& html, const FolderItem& base) {
    m_profile.files().putInPlace(base, html);
    load(BookUrl::of(base, m_helpFolder));
}

void WebEngineViewer::load(const QUrl& url) {
    m_chosen = url;
    m_view->load(url);
}

// A link to a page that is not there leads nowhere: the page stays. The engine asks late, and a page that was
// chosen meanwhile goes with the link that is turned down.
bool WebEngineViewer::mayGoTo(const QUrl& url) {
    const bool may =
        !CancelLoad(BookUrl::told(url, m_helpFolder)) && BookUrl::file(url, m_helpFolder).isFile();
    if (!may && m_chosen.isValid() && url != m_chosen)
        QMetaObject::invokeMethod(m_view, [this] { m_view->load(m_chosen); }, Qt::QueuedConnection);
    return may;
}

void WebEngineViewer::loadingChanged(const QWebEngineLoadingInfo& info) {
    if (info.isErrorPage())
        return;
    if (info.status() == QWebEngineLoadingInfo::LoadSucceededStatus) {
        m_chosen.clear();
        // Going back and forward is the help window's.
        m_page.history()->clear();
        DocumentComplete(BookUrl::told(info.url(), m_helpFolder));
    } else if (info.status() == QWebEngineLoadingInfo::LoadFailedStatus &&
               info.url().scheme() == QLatin1String(BookUrl::Scheme)) {
        // An address that was handed on counts as failed, too.
        m_chosen.clear();
        Error(info.errorCode(), info.errorString());
    }
}

void WebEngineViewer::showContextMenu(const QPoint& point) {
    auto* menu = new QMenu(m_view);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    QAction* copy = m_page.action(QWebEnginePage::Copy);
    copy->setEnabled(m_page.hasSelection());
    menu->addAction(copy);
    menu->addAction(m_page.action(QWebEnginePage::SelectAll));
    menu->popup(m_view->mapToGlobal(point));
}
