#pragma once

#include "host/Export.h"

#include <QString>

/// Text as people type it, made comparable.
namespace PersianText {

/// For searching: both forms of yeh and kaf become the Persian one, Persian and Arabic digits Latin, half-space
/// and diacritics go, case is folded, runs of blanks become one. The same rule runs in SQL as zelmo_finds.
KETEBIONPAP_CORE QString fold(const QString &text);
/// The same, but capitals stay what they are.
QString oneForm(const QString &text);
/// Persian and Arabic-Indic digits to Latin; nothing else changes.
KETEBIONPAP_CORE QString latinDigits(const QString &text);
/// A typed code to plain form: Latin digits, no blanks and no direction marks or half-spaces at its ends.
KETEBIONPAP_CORE QString plainCode(const QString &text);
/// Whether a text has nothing that can be seen: no characters, or blanks and such marks only.
KETEBIONPAP_CORE bool isBlank(const QString &text);
/// A typed number to plain form: Latin digits, "-" first, one ".", separators and blanks gone. Null when the text
/// is no number. Empty stays empty.
QString plainNumber(const QString &text);
/// "1234567.5" to "1,234,567.5"; a text that is no number comes back unchanged.
KETEBIONPAP_CORE QString grouped(const QString &plainNumber);
/// At most `width` characters of a column, which counts a letter beyond the basic plane as two; never half of one. 0: no
/// limit. What a column keeps of a text is this, wherever it is cut.
KETEBIONPAP_CORE QString cut(const QString &text, int width);
/// Compares in the order of the Persian alphabet, for lists that the program sorts itself.
int compare(const QString &a, const QString &b);

} // namespace PersianText
