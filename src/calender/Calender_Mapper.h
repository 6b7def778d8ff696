#pragma once

#include <QString>

/// One day of the work calendar.
struct TCalenderMapper {
    QString _Title;   ///< at most 30 characters are stored
    QString _Date;    ///< "1404/01/05"
    int _Day = 0;     ///< 0 = Saturday to 6 = Friday
    int _Type = 1;    ///< 1 working day, 2 weekly holiday, 3 official holiday
    QString _Comment; ///< at most 50 characters are stored
};
