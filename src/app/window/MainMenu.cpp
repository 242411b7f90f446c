#include "MainMenu.h"

#include <QAction>
#include <QKeySequence>
#include <QMenu>
#include <QMenuBar>

namespace {

QMenu* menu(QMenuBar& bar, const QString& name, const QString& text) {
    QMenu* result = bar.addMenu(text);
    result->setObjectName(name);
    return result;
}

QAction* item(QMenu& parent, const QString& name, const QString& text) {
    QAction* result = parent.addAction(text);
    result->setObjectName(name);
    result->setMenuRole(QAction::NoRole);
    return result;
}

}  // namespace

MainMenu::MainMenu(QMenuBar& MenuBar1) {
    MenuBar1.setObjectName(QStringLiteral("MenuBar1"));
    QMenu* FileMenu = menu(MenuBar1, QStringLiteral("FileMenu"), QStringLiteral("&File"));
    QMenu* ViewMenu = menu(MenuBar1, QStringLiteral("ViewMenu"), QStringLiteral("&View"));
    QMenu* HelpMenu = menu(MenuBar1, QStringLiteral("HelpMenu"), QStringLiteral("&Help"));

    FileQuit = item(*FileMenu, QStringLiteral("FileQuit"), QStringLiteral("&Quit"));
    FileQuit->setShortcut(QKeySequence(QStringLiteral("Ctrl+Q")));
    FileQuit->setMenuRole(QAction::QuitRole);

    ViewTraceMenu = item(*ViewMenu, QStringLiteral("ViewTraceMenu"), QStringLiteral("&Trace"));
    ViewTraceMenu->setCheckable(true);
    ViewPortByName = item(*ViewMenu, QStringLiteral("ViewPortByName"), QStringLiteral("&Port by Name"));
    ViewPortByName->setCheckable(true);
    ViewTrends = item(*ViewMenu, QStringLiteral("ViewTrends"), QStringLiteral("T&rends"));

    HelpVLXUtilHelp =
        item(*HelpMenu, QStringLiteral("HelpVLXUtilHelp"), QStringLiteral("VLX Utility &Help..."));
    HelpVLXUtilHelp->setShortcut(QKeySequence(QStringLiteral("Ctrl+?")));
    HelpReleaseNotes =
        item(*HelpMenu, QStringLiteral("HelpReleaseNotes"), QStringLiteral("VLX Firmware &Release Notes..."));
    HelpSaveReport = item(*HelpMenu, QStringLiteral("HelpSaveReport"), QStringLiteral("&Save Report..."));
    HelpAboutVLXUtil =
        item(*HelpMenu, QStringLiteral("HelpAboutVLXUtil"), QStringLiteral("&About VLX Utility..."));
    HelpAboutVLXUtil->setMenuRole(QAction::AboutRole);
}
