// MenuBar1, its menus and items by their names.
#pragma once

class QAction;
class QMenuBar;

struct MainMenu {
    explicit MainMenu(QMenuBar& MenuBar1);

    QAction* FileQuit;
    QAction* ViewTraceMenu;
    QAction* ViewPortByName;
    QAction* ViewTrends;
    QAction* HelpVLXUtilHelp;
    QAction* HelpReleaseNotes;
    QAction* HelpSaveReport;
    QAction* HelpAboutVLXUtil;
};
