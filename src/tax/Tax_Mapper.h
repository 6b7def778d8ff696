#pragma once

#include <QString>

/// One tax table's header (TaxMain).
struct TTax_Mapper {
    int _Code = 0;
    QString _Title;   ///< at most 50 characters are stored
    QString _Comment; ///< at most 100 characters are stored
};

/// One salary bracket under edit (TmpTax). Both bounds belong to it.
struct TTmpTax_Mapper {
    int _TaxMainCode = 0;
    double _FromSalary = 0; ///< money
    double _ToSalary = 0;   ///< money
    double _Percent = 0;    ///< 0 to 100
    QString _Comment;       ///< at most 50 characters are stored

    bool operator==(const TTmpTax_Mapper &) const = default;
};
