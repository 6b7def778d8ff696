#pragma once

#include <QString>

/// The SQL expression that folds a field for searching, by the same rule as PersianText::fold. On the embedded engine
/// it is the function zelmo_fold; a server gets an expression of its own functions, compared by code points.
QString FoldExpression(const QString &field, bool onServer);
