#pragma once

#include <QString>

/// Which table an operation on earnings and deductions works on.
enum TEntityDataset : int { edFiscal = 0, edDeduction = 1, edFiscalGrp = 2, edDeductionGrp = 3 };

/// One earning or deduction. Account parts and cost travel as text; an empty text is no value.
struct TFiscalDeducation_Mapper {
    int _code = 0;
    int _Grpcode = 0;
    /// 0 amount, 1 percent; 2 is monthly for an earning and fixed for a deduction; 3 fixed (earnings only).
    int _CalcType = 0;
    QString _title;          ///< at most 50 characters are stored
    QString _Kol;            ///< total account, 16 bits
    QString _Moin;           ///< assistant account, 16 bits
    QString _Tafzili;        ///< detail account, 32 bits for an earning, 16 bits for a deduction
    QString _cost;           ///< decimal number without grouping separators
    bool _Insurance = false; ///< earnings only
    bool _Tax = false;       ///< earnings only
    QString _comment;        ///< at most 500 characters are stored

    bool operator==(const TFiscalDeducation_Mapper &) const = default;
};
