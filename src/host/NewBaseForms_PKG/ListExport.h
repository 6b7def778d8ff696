#pragma once

#include "host/Export.h"
#include "host/NewBaseForms_PKG/ListDoor.h"

#include <QString>

#include <functional>

class QWidget;
class TSmartGrid_ZLM;

/// Told each step (1-based) of a long work; answers false to stop.
using TProgress = std::function<bool(int step)>;

/// Asks for the file to write; the title, made fit for a file name, is proposed. Empty when the user gave up.
KETEBIONPAP_HOST QString AskFileToWrite(QWidget *parent, const QString &caption, const QString &title,
                                        const QString &suffix);

/// Runs work of so many steps under a progress box with a cancel button that appears when it takes longer. A database
/// error is told to the user. False: failed, or stopped.
KETEBIONPAP_HOST bool RunWithProgress(QWidget *parent, const QString &caption, int steps,
                                      const std::function<bool(const TProgress &)> &work);

/// Puts a finished file in the place of the one that is there, if any. False: could not; the unfinished one is gone.
bool ReplaceFile(const QString &unfinished, const QString &fileName);

/// Writes the whole list as a spreadsheet (.xlsx): the visible columns in the order on the screen, captions in the first
/// row, right to left; amounts and integers as numbers, all else as text. Rows are read and written one after the other.
/// The file is the user's alone; one that is there is replaced only by a complete one. False: the file could not be written, or it was stopped.
/// Throws TDatabaseError when a row cannot be read. At most SpreadsheetRows rows. `altered` gets the number of texts that a
/// cell could not hold as they are.
KETEBIONPAP_HOST bool WriteSpreadsheet(const TSmartGrid_ZLM *grid, const QString &title,
                                       const QString &fileName, const TProgress &progress = {},
                                       int *altered = nullptr);

/// Rows that a sheet holds below its captions (Office Open XML).
constexpr int SpreadsheetRows = 1048575;

/// Asks for a file, writes the list there and tells the user how it went, when the door lets it out.
void ExportSpreadsheet(const TSmartGrid_ZLM *grid, const TListDoor &door, QWidget *parent);
