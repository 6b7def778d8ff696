#pragma once

#include "host/Declaration_PKG/Softwareparts_unt.h"
#include "host/Export.h"
#include "host/Utility_ZLM/Decimal.h"

#include <QString>
#include <QVariant>

class TQuery;

/// Takes (otLock) or gives up (otUnlock) the lock on a code. True when the operation has its effect: false
/// means somebody else holds the code: another workstation, or another running program of this one. Safe between
/// processes; a lock that this program holds already, or that a program of this workstation left when it died, is
/// taken again. Throws TDatabaseError.
KETEBIONPAP_CORE bool OperationOnLockCode_SoftwarePart(const QString &code, TSoftwarePart part, int comIndex,
                                                       TOperationType operation, bool flag);
/// True when the code is locked: open in an editor of any workstation. What a program of this workstation left when
/// it died is open nowhere. Throws TDatabaseError.
KETEBIONPAP_CORE bool LocateLockCode_SoftwarePart(const QString &code, TSoftwarePart part, int comIndex,
                                                  bool flag);

/// The result column of the row whose key column equals the value, as text; empty when there is none.
KETEBIONPAP_CORE QString ScalerQuery(const QString &table, const QString &resultColumn,
                                     const QString &keyColumn, const QVariant &keyValue);
/// What a table's column keeps of a text: all of it, or as many characters as the column is wide. Texts are compared
/// with stored ones in this form. Throws TDatabaseError.
KETEBIONPAP_CORE QString AsStored(const QString &table, const QString &column, const QString &text);
/// Resets a list query: drops its pages and keys, so that the next search reads anew.
KETEBIONPAP_CORE void ResetDataset(TQuery *query);

bool VarIsNull_ZLM(const QVariant &value);
