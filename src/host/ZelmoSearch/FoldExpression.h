#pragma once

#include <QString>

/// The SQL expression that folds a field for searching on a server, by the same rule as PersianText::fold and compared
/// by code points. The embedded engine has a function of its own (zelmo_finds).
QString FoldExpression(const QString &field);
