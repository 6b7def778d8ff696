#pragma once

#include <QString>

/// One calculation method, with its fields in the order of the table.
struct TCalcMethod_Mapper {
    int _Code = 0;
    QString _Title;          ///< at most 50 characters are stored
    double _StaffIns = 0;    ///< percent
    double _EmployerIns = 0; ///< percent
    int _OverTime = 0;       ///< hours, 0 to 1000
    int _TaxMainCode = 0;    ///< a tax table; 0: none
    double _DailyIns = 0;    ///< money
    bool _DecTax = false;
    int _Maskok = 0;       ///< rounding digits of the net pay, 0 to 6
    double _LeaveCeil = 0; ///< days a month
    double _OutPut = 0;    ///< hours a day, 0 to 1000
    QString _Comment;      ///< at most 100 characters are stored
    bool _Insurance = false;
    bool _Tax = false;
    bool _BedBes = false;
    bool _Loan = false;
    bool _OverDis = false; ///< basis of overtime and short time: false daily, true monthly
    QString _Entrance;     ///< "08:00"
    QString _Exit;         ///< "16:00"
};
