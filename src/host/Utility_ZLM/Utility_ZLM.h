#pragma once

#include "host/Export.h"

#include <QString>

/// Today in the Persian calendar, "1403/09/01".
KETEBIONPAP_CORE QString NowDate();
/// The time of day, "08:05".
KETEBIONPAP_CORE QString NowTime();
/// Whether a text is a valid Iranian national identity number: ten digits (Persian, Arabic or Latin), not all
/// the same, with the right check digit (weights 10 to 2 over the first nine, modulo 11).
KETEBIONPAP_CORE bool NationalCode_Validation(const QString &text);
/// Whether a text is a postal code: ten digits.
KETEBIONPAP_CORE bool PostCode_Validation(const QString &text);
/// Whether a text has the form of an e-mail address: one "@", and a dot behind it.
KETEBIONPAP_CORE bool Email_Validation(const QString &text);
