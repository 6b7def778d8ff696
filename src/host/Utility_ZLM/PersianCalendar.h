#pragma once

#include "host/Export.h"

#include <QDate>
#include <QString>
#include <optional>

/// A day of the Persian (solar Hijri) calendar, right in every year from 1300 to 1500: leap years by the
/// 33-year rule, (25y + 11) mod 33 < 8, which agrees with the equinox in all of them.
struct KETEBIONPAP_CORE TPersianDate {
    int year = 0;
    int month = 0; ///< 1 to 12
    int day = 0;   ///< 1 to 31

    static bool isLeap(int year);
    static int daysInMonth(int year, int month);
    static QString monthName(int month); ///< "فروردین" for 1
    static bool isValid(int year, int month, int day);
    static TPersianDate fromGregorian(const QDate &date);
    static TPersianDate today();
    /// A date as typed: "1404/1/5", "14040105", "04/01/05" is refused; Persian and Arabic digits, "/", "-" or "."
    /// between the parts. Empty when it is no date of the calendar.
    static std::optional<TPersianDate> parse(const QString &text);
    /// For a text that would be a date if its month had more days: how many it has, as a Persian sentence. Empty for
    /// every other text.
    static QString monthNote(const QString &text);

    QDate toGregorian() const;
    /// 0 = Saturday to 6 = Friday.
    int weekday() const;
    TPersianDate addDays(int days) const;
    /// "1404/01/05".
    QString toText() const;
    bool operator==(const TPersianDate &) const = default;
};
