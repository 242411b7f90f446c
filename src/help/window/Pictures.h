// The pictures of the help window, by name.
#pragma once

#include <QIcon>
#include <QPixmap>
#include <QString>

namespace Pictures {

// Has its own transparency.
QIcon icon(const QString& name);
// A picture drawn through a mask, of which only the black shows.
QPixmap masked(const QString& name, const QString& mask);

}  // namespace Pictures
