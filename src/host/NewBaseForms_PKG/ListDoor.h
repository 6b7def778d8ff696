#pragma once

#include "host/Declaration_PKG/Softwareparts_unt.h"
#include "host/Export.h"

#include <QString>

#include <functional>

/// The door through which a list leaves the program: as a spreadsheet, a preview, a PDF file, on paper, over the
/// clipboard. It opens to those who hold the right to print on the list's part, and whoever takes a list out is named in
/// the event log, with the list and how many rows it had.
struct KETEBIONPAP_HOST TListDoor {
    TSoftwarePart part = TSoftwarePart(0); ///< 0: of no part; all users may take it out
    QString title;                         ///< of the list, for the event log
    bool forAdministrators = false;

    /// Asks the right at the moment; a refusal is told and noted.
    [[nodiscard]] bool mayTakeOut() const;
    /// Writes the line of the event log. What cannot be recorded does not leave: throws TDatabaseError. `where`: a file.
    void note(const QString &how, qlonglong rows, const QString &where = {}) const;
    /// Both; an error is told. True: the list may go.
    [[nodiscard]] bool letOut(const QString &how, qlonglong rows, const QString &where = {}) const;
};
