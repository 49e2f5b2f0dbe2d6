#pragma once

#include <QIcon>

namespace tessivo {

/// The program's sign for title bars and task lists, in the sizes that these take: a setlist.
/// Needs a QGuiApplication.
QIcon windowIcon();

}  // namespace tessivo
