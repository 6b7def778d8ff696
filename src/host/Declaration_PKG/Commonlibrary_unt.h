#pragma once

#include "host/Declaration_PKG/Softwareparts_unt.h"

#include <QString>
#include <QVariant>

class QWidget;
class TQuery;

/// Takes (otLock) or gives up (otUnlock) the lock on a code. True when the operation has its effect: false
/// means somebody else holds the code: another workstation, or another running program of this one. Safe between
/// processes; a lock that this program holds already, or that a program of this workstation left when it died, is
/// taken again. Throws TDatabaseError.
bool OperationOnLockCode_SoftwarePart(const QString &code, TSoftwarePart part, int comIndex,
                                      TOperationType operation, bool flag);
/// True when the code is locked: open in an editor of any workstation. What a program of this workstation left when
/// it died is open nowhere. Throws TDatabaseError.
bool LocateLockCode_SoftwarePart(const QString &code, TSoftwarePart part, int comIndex, bool flag);

/// The result column of the row whose key column equals the value, as text; empty when there is none.
QString ScalerQuery(const QString &table, const QString &resultColumn, const QString &keyColumn,
                    const QVariant &keyValue);
/// What a table's column keeps of a text: all of it, or as many characters as the column is wide. Texts are compared
/// with stored ones in this form. Throws TDatabaseError.
QString AsStored(const QString &table, const QString &column, const QString &text);
/// Resets a list query: drops its pages and keys, so that the next search reads anew.
void ResetDataset(TQuery *query);

/// A number typed by a person: Persian, Arabic and Latin digits, grouping separators and both decimal
/// points. Text that is no number gives 0.
double StrToFloat_ZLM(const QString &text);
/// The shortest decimal text of a number with at most 15 significant digits: Latin digits, a point, no
/// exponent, no grouping; an SQL-safe literal.
QString FloatToStr_ZLM(double number);
/// Decimal places that amounts are shown and rounded with: as many as the tables keep, so that a record that is opened
/// and saved again loses nothing.
int NumericPrecisionCount_ZLM();
/// `number` rounded to so many decimal places (halves away from zero, by its decimal digits), as FloatToStr_ZLM writes it.
QString RoundedText_ZLM(double number, int places = NumericPrecisionCount_ZLM());

bool VarIsNull_ZLM(const QVariant &value);
/// Lays a control out right to left.
void SetWinControlRightAlign(QWidget *control);
