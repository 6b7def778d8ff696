#pragma once

#include "host/Export.h"

#include <QString>

/// A number typed by a person: Persian, Arabic and Latin digits, grouping separators and both decimal
/// points. Text that is no number gives 0.
KETEBIONPAP_CORE double StrToFloat_ZLM(const QString &text);
/// The shortest decimal text of a number with at most 15 significant digits: Latin digits, a point, no
/// exponent, no grouping; an SQL-safe literal.
KETEBIONPAP_CORE QString FloatToStr_ZLM(double number);
/// Decimal places that amounts are shown and rounded with: as many as the tables keep, so that a record that is opened
/// and saved again loses nothing.
KETEBIONPAP_CORE int NumericPrecisionCount_ZLM();
/// `number` rounded to so many decimal places (halves away from zero, by its decimal digits), as FloatToStr_ZLM writes it.
KETEBIONPAP_CORE QString RoundedText_ZLM(double number, int places = NumericPrecisionCount_ZLM());
