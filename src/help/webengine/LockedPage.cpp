#include "LockedPage.h"

#include <QWebEngineNewWindowRequest>
#if QT_VERSION >= QT_VERSION_CHECK(6, 8, 0)
#include <QWebEnginePermission>
#endif

#include "BookUrl.h"

LockedPage::LockedPage(QWebEngineProfile* profile, QObject* parent) : QWebEnginePage(profile, parent) {
#if QT_VERSION >= QT_VERSION_CHECK(6, 8, 0)
    connect(this, &QWebEnginePage::permissionRequested, this,
            [](const QWebEnginePermission& permission) { permission.deny(); });
#else
    connect(this, &QWebEnginePage::featurePermissionRequested, this,
            [this](const QUrl& origin, Feature feature) {
                setFeaturePermission(origin, feature, PermissionDeniedByUser);
            });
#endif
    connect(this, &QWebEnginePage::newWindowRequested, this, &LockedPage::openInPlace);
}

bool LockedPage::acceptNavigationRequest(const QUrl& url, NavigationType type, bool isMainFrame) {
    // A page that moves on by itself, sends a form, or goes back by the engine's own history, stays.
    const bool isAsked = type == NavigationTypeLinkClicked || type == NavigationTypeTyped;
    if (isMainFrame || isAsked)
        return isAsked && mayGoTo(url);
    return url.scheme() == QLatin1String(BookUrl::Scheme);
}

// A link that would open a window of its own is a link like any other.
void LockedPage::openInPlace(QWebEngineNewWindowRequest& request) {
    if (request.isUserInitiated() && mayGoTo(request.requestedUrl()))
        load(request.requestedUrl());
}
