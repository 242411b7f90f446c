// The window of the recorded hour.
#pragma once

#include <QWidget>

#include "Flows.h"
#include "Platform.h"
#include "Trends.h"

class QLabel;
class QPushButton;
class TrendsView;

class TrendsWindow final : public QWidget {
    Q_OBJECT

public:
    // `trends` calls this window for as long as it is there.
    TrendsWindow(Platform& platform, Flows::ErrorHandler onError, Trends& trends);
    ~TrendsWindow() override;

private:
    void layOut();
    void connectButtons();
    Task<> saveTable();
    Task<> savePicture();
    SaveFileRequest request(const QString& title, const QString& extension) const;

    Dialogs& m_dialogs;
    Clock& m_clock;
    Trends& m_trends;
    TrendsView* m_view;
    QLabel* m_readOut;
    QPushButton* m_pause;
    QPushButton* m_zoomIn;
    QPushButton* m_zoomOut;
    QPushButton* m_saveTable;
    QPushButton* m_savePicture;
    Flows m_flows;
};
