#pragma once

#include <QString>

/// A spreadsheet (.xlsx) of one sheet, right to left, that is written row by row; rows and columns count from 0. False:
/// it could not be written.
class TWorkbook {
public:
    virtual ~TWorkbook() = default;
    /// Before all else. Characters that a sheet's name may not have are left out of the title.
    virtual bool addSheet(const QString &title) = 0;
    /// A column's caption, in row 0, and its width in pixels.
    virtual bool setCaption(int column, const QString &caption, int width) = 0;
    virtual bool setText(int row, int column, const QString &text) = 0;
    /// An amount is shown in groups of three digits.
    virtual bool setNumber(int row, int column, double number, bool amount) = 0;
    /// How many texts could not be written as they are: cut to the longest that a cell holds, or with signs replaced that
    /// the format forbids.
    virtual int alteredTexts() const = 0;
    /// The file is complete only after this.
    virtual bool close() = 0;
};

/// The function that the library of spreadsheets exports as "NewWorkbook". The caller deletes the workbook; it holds
/// the file from here on.
using TNewWorkbook = TWorkbook *(const QString &fileName);
