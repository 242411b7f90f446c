// How the program knows the plug-in of the page view.
#pragma once

#include <QtPlugin>

#include "HTMLViewer.h"

#define VLX_HTML_VIEWER_LIBRARY "example.tessarin.VLXUtility.HTMLViewerLibrary/1"
Q_DECLARE_INTERFACE(HTMLViewerLibrary, VLX_HTML_VIEWER_LIBRARY)
