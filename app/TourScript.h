#pragma once

#include <QList>
#include <QString>

/// One step of the guided tour.
struct TTourStep {
    enum Action {
        Await,   ///< until the screen `what` is on top
        Press,   ///< the key combination `what`
        Click,   ///< the button `what`
        Type,    ///< `text` over what the input `what` holds
        Picture, ///< of the screen on top, into the file `what`.png
        Message  ///< the next message is shown and goes into the file `what`.png
    };
    Action action;
    QString what;
    QString text;
};

namespace TourScript {
/// What the tour does in the screens of an entry point, from its showing to its end.
QList<TTourStep> of(const char *entry);

/// One item of the application's own menus, by its objectName.
struct TItem {
    const char *name;
    QList<TTourStep> steps;
};
/// The items in the order of the tour. `backup`: where the backup goes.
QList<TItem> items(const QString &backup);
} // namespace TourScript
