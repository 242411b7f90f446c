// Where the main window stood: position of the frame, size of the content.
#pragma once

class QWidget;
class REALEasyPrefs;

// Restores "winLEFT", "winWIDTH", "winTOP", "winHEIGHT". A window that would be off every screen goes back
// onto the primary one.
void restoreGeometry(QWidget& window, const REALEasyPrefs& prefs);
void saveGeometry(const QWidget& window, REALEasyPrefs& prefs);
