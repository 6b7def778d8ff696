#pragma once

#include "host/Export.h"

#include <QFileDialog>
#include <QString>

/// The suite's way to ask for a file: every screen, open or save. Qt's own dialog looks into the files of the folder for
/// their types; opening the database's file and closing it again would drop the locks that this process holds on it,
/// and another program would then delete the log with the rows in it. These dialogs show files by their kind alone.
namespace FileDialogs {

/// What is asked.
struct TWanted {
    QString caption;
    QString filter;             ///< "PDF (*.pdf)"
    QString suffix = {};        ///< added to a typed name without one
    QString name = {};          ///< proposed; with or without its folder
    bool confirmReplace = true; ///< asks by itself before the name of a file that is there is taken
};

/// The dialog; Qt's own outside and not yet shown.
KETEBIONPAP_HOST QFileDialog *Make(QWidget *parent, const QString &caption, const QString &filter,
                                   QFileDialog::AcceptMode mode);
/// The file to read; empty when the user gave up.
KETEBIONPAP_HOST QString AskToOpen(QWidget *parent, const TWanted &wanted);
/// The file to write; empty when the user gave up. A file that this program has open is refused with a message.
KETEBIONPAP_HOST QString AskToSave(QWidget *parent, const TWanted &wanted);

/// The name of a file that may be there or not, and that is not written here; empty when the user gave up.
KETEBIONPAP_HOST QString AskForName(QWidget *parent, const TWanted &wanted);

} // namespace FileDialogs
