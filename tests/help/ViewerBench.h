// The help window on a bench: a small book, a scripted page view, answered dialogs, recorded addresses.
#pragma once

#include <QAbstractButton>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QTreeWidget>

#include "Child.h"
#include "HelpFiles.h"
#include "HTMLViewer.h"
#include "ScriptedDialogs.h"
#include "SimClock.h"
#include "UniHelpEngine.h"
#include "UniHelpViewer.h"

// Shows nothing and writes down what it was asked to show. A test plays the user's clicks with it.
class ScriptedView final : public HTMLViewer {
public:
    ScriptedView(QStringList& shown, const FolderItem& folder, QWidget* parent)
        : m_shown(shown), m_folder(folder), m_control(new QWidget(parent)) {}
    ~ScriptedView() override { delete m_control; }

    QWidget* control() override { return m_control; }
    void LoadPage(const FolderItem& file, const QString& anchor) override {
        load(file, anchor.isEmpty() ? QString() : u'#' + anchor);
    }
    void LoadPage(const QString& html, const FolderItem& base) override { load(base, u'*' + html); }

    // A click on a link of the page.
    void click(const QString& url) {
        if (!CancelLoad(url))
            DocumentComplete(url);
    }
    void clickFile(const QString& path) { click(url(m_folder.AbsolutePath() + u'/' + path)); }

private:
    static QString url(const QString& path) { return QStringLiteral("file://") + path; }
    void load(const FolderItem& file, const QString& marked) {
        m_shown += file.Name() + marked;
        if (!CancelLoad(url(file.AbsolutePath())))
            DocumentComplete(url(file.AbsolutePath()));
    }

    QStringList& m_shown;
    FolderItem m_folder;
    QWidget* m_control;
};

class ScriptedLibrary final : public HTMLViewerLibrary {
public:
    bool isAvailable() override { return available; }
    std::unique_ptr<HTMLViewer> make(const FolderItem& helpFolder, QWidget* parent) override {
        auto made = std::make_unique<ScriptedView>(shown, helpFolder, parent);
        view = made.get();
        return made;
    }

    bool available = true;
    QStringList shown;  // what pages were loaded, "*" and the text behind a marked one
    ScriptedView* view = nullptr;
};

class ViewerBench : public testing::Test {
protected:
    ViewerBench() {
        files.writeContents(
            "<page name='Home' source='VLXUtility.htm'/>"
            "<chapter name='In/Out'><page name='Port' source='port.htm'/>"
            "<chapter name='Deep'><page name='Bottom' source='sub/bottom.htm'/></chapter></chapter>"
            "<chapter name='Empty'/>"
            "<page name='Heading' source='#'/><page name='Web' source='http://a.example/'/>"
            "<page name='Script' source='UHScript:say%20&apos;x&apos;'/><page name='Gone' source='gone.htm'/>"
            "<page name='Notes' source='notes.txt'/><page name='Photo' source='photo.png'/>");
        files.writeIndex(
            "<topic name='Antenna' source='port.htm'/><topic name='Band' source='sub/bottom.htm'/>"
            "<topic name='bias' source='gone.htm'/>");
        for (const char* page : {"VLXUtility.htm", "port.htm", "sub/bottom.htm", "notes.txt", "photo.png"})
            files.write(QString::fromLatin1(page), QByteArray("<body>text of ") + page + "</body>");
        globals.ShowURL = [this](const QString& url) { said += QStringLiteral("url ") + url; };
        engine.RunScript = [this](const QString& script) { said += QStringLiteral("script ") + script; };
        globals.onError = [this](const std::exception_ptr&) { ++errors; };
    }

    void open() { open(engine.HelpFolder.Child(engine.HomePage)); }
    template <typename First>
    void open(const First& first) {
        engine.Run(first);
        clock.advance(std::chrono::seconds(1));
    }
    QWidget& window() const {
        for (QWidget* widget : QApplication::topLevelWidgets())
            if (widget->objectName() == QStringLiteral("UniHelpViewer") && widget->isVisible())
                return *widget;
        ADD_FAILURE() << "there is no help window";
        return *new QWidget;
    }
    int windows() const {
        int count = 0;
        for (const QWidget* widget : QApplication::topLevelWidgets())
            count += widget->objectName() == QStringLiteral("UniHelpViewer") ? 1 : 0;
        return count;
    }
    template <typename Control>
    Control& control(const char* name) const {
        return *child<Control>(window(), QString::fromLatin1(name));
    }
    void press(const char* button) const { control<QAbstractButton>(button).click(); }
    QTreeWidget& contents() const { return control<QTreeWidget>("HelpList"); }
    // The visible rows, chapters with a mark for open or closed.
    QString rows() const {
        QStringList texts;
        for (QTreeWidgetItem* row = contents().topLevelItem(0); row; row = contents().itemBelow(row)) {
            const bool isChapter = row->childIndicatorPolicy() == QTreeWidgetItem::ShowIndicator;
            texts +=
                (isChapter ? (row->isExpanded() ? QStringLiteral("-") : QStringLiteral("+")) : QString()) +
                row->text(0);
        }
        return texts.join(u' ');
    }
    QString selectedRow() const {
        const auto selected = contents().selectedItems();
        return selected.isEmpty() ? QString() : selected.front()->text(0);
    }
    // A click on the row of that text.
    void clickRow(const QString& text) const {
        const auto found = contents().findItems(text, Qt::MatchExactly | Qt::MatchRecursive);
        ASSERT_FALSE(found.isEmpty()) << text.toStdString();
        contents().setCurrentItem(found.front());
        Q_EMIT contents().itemClicked(found.front(), 0);
    }
    QString status() const { return child<QLabel>(window(), QStringLiteral("StatusLabel"))->text(); }
    void search(const QString& text) {
        control<QLineEdit>("SearchField").setText(text);
        typeKey(control<QLineEdit>("SearchField"), QStringLiteral("\r"), Qt::Key_Return);
        clock.advance(std::chrono::seconds(1));
    }
    QStringList results() const { return texts(control<QListWidget>("SearchList")); }
    static QStringList texts(const QListWidget& list) {
        QStringList result;
        for (int i = 0; i < list.count(); ++i)
            result += list.item(i)->text();
        return result;
    }
    QStringList takeShown() { return std::exchange(library.shown, {}); }

    HelpFiles files;
    SimClock clock;
    ScriptedDialogs dialogs{clock};
    UniHelpGlobals globals{clock, dialogs};
    ScriptedLibrary library;
    UniHelpEngine engine{globals, {{}, {}, files.outside(QStringLiteral("tmp")), files.world.path()}, [this] {
                             return std::make_unique<UniHelpViewer>(globals, library);
                         }};
    QStringList said;
    int errors = 0;
};
