#pragma once

#include <QString>

/// Today in the Persian calendar, "1403/09/01".
QString NowDate();
/// The time of day, "08:05".
QString NowTime();
/// Whether a text is a valid Iranian national identity number: ten digits (Persian, Arabic or Latin), not all
/// the same, with the right check digit (weights 10 to 2 over the first nine, modulo 11).
bool NationalCode_Validation(const QString &text);
/// Whether a text is a postal code: ten digits.
bool PostCode_Validation(const QString &text);
/// Whether a text has the form of an e-mail address: one "@", and a dot behind it.
bool Email_Validation(const QString &text);
