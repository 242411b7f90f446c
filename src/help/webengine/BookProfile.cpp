#include "BookProfile.h"

#include <QBuffer>
#include <QFile>
#include <QMimeDatabase>
#include <QWebEngineDownloadRequest>
#include <QWebEngineSettings>
#include <QWebEngineUrlRequestInfo>
#include <QWebEngineUrlRequestJob>

#include "BookUrl.h"

namespace {

// Pages have their own say about their encoding in their head; other text is UTF-8.
QByteArray typeOf(const FolderItem& file) {
    static const QMimeDatabase Types;
    const QByteArray type =
        Types.mimeTypeForFile(file.AbsolutePath(), QMimeDatabase::MatchExtension).name().toLatin1();
    if (type == "application/xhtml+xml" || file.Name().contains(u".htm", Qt::CaseInsensitive))
        return "text/html";
    return type == "text/plain" ? type + ";charset=utf-8" : type;
}

void answer(QWebEngineUrlRequestJob& job, const QByteArray& type, std::unique_ptr<QIODevice> contents) {
    if (!contents->open(QIODevice::ReadOnly)) {
        job.fail(QWebEngineUrlRequestJob::RequestDenied);
        return;
    }
    QIODevice* device = contents.release();
    QObject::connect(&job, &QObject::destroyed, device, &QObject::deleteLater);
    job.reply(type, device);
}

void shut(QWebEngineSettings& settings) {
    using Settings = QWebEngineSettings;
    for (const auto attribute :
         {Settings::JavascriptEnabled, Settings::JavascriptCanOpenWindows,
          Settings::JavascriptCanAccessClipboard, Settings::LocalStorageEnabled,
          Settings::LocalContentCanAccessRemoteUrls, Settings::LocalContentCanAccessFileUrls,
          Settings::PluginsEnabled, Settings::PdfViewerEnabled, Settings::FullScreenSupportEnabled,
          Settings::ScreenCaptureEnabled, Settings::WebGLEnabled, Settings::HyperlinkAuditingEnabled,
          Settings::DnsPrefetchEnabled, Settings::AutoLoadIconsForPage, Settings::AllowRunningInsecureContent,
          Settings::AllowGeolocationOnInsecureOrigins, Settings::NavigateOnDropEnabled})
        settings.setAttribute(attribute, false);
    settings.setAttribute(Settings::PlaybackRequiresUserGesture, true);
    settings.setAttribute(Settings::FocusOnNavigationEnabled, false);
    // The page is asked only about those it may follow; it hands them to the help window and follows none.
    settings.setUnknownUrlSchemePolicy(Settings::AllowUnknownUrlSchemesFromUserInteraction);
    settings.setDefaultTextEncoding(QStringLiteral("UTF-8"));
}

}  // namespace

void OutsideBlocker::interceptRequest(QWebEngineUrlRequestInfo& info) {
    const QString scheme = info.requestUrl().scheme();
    // A "data:" address brings its own contents.
    if (scheme != QLatin1String(BookUrl::Scheme) && scheme != QStringLiteral("data"))
        info.block(true);
}

void BookFiles::putInPlace(const FolderItem& file, const QString& html) {
    m_replaced = file;
    m_replacement = html.toUtf8();
}

void BookFiles::requestStarted(QWebEngineUrlRequestJob* job) {
    const FolderItem file = BookUrl::file(job->requestUrl(), m_helpFolder);
    if (file.isNil() || job->requestMethod() != "GET") {
        job->fail(QWebEngineUrlRequestJob::UrlNotFound);
    } else if (file == m_replaced) {
        auto buffer = std::make_unique<QBuffer>();
        buffer->setData(std::exchange(m_replacement, {}));
        m_replaced = FolderItem();
        answer(*job, "text/html;charset=utf-8", std::move(buffer));
    } else {
        answer(*job, typeOf(file), std::make_unique<QFile>(file.AbsolutePath()));
    }
}

BookProfile::BookProfile(const FolderItem& helpFolder) : m_files(helpFolder) {
    setHttpCacheType(NoCache);
    setPersistentCookiesPolicy(NoPersistentCookies);
    setSpellCheckEnabled(false);
    shut(*settings());
    setUrlRequestInterceptor(&m_blocker);
    installUrlSchemeHandler(BookUrl::Scheme, &m_files);
    connect(this, &QWebEngineProfile::downloadRequested, this,
            [](QWebEngineDownloadRequest* download) { download->cancel(); });
}

BookProfile::~BookProfile() {
    removeAllUrlSchemeHandlers();
    setUrlRequestInterceptor(nullptr);
}
