#pragma once

#include "calcmethod/CalcMethod_Mapper.h"
#include "common/DataModule_UNT.h"
#include "host/Export.h"

/// The database work of the calculation methods (CalcMethod, CalcMethod_VW).
///
/// Operations that return a success answer false after a database error; all others throw TDatabaseError.
/// CalcMethod_GetById comes before CalcMethod_Insert and CalcMethod_Update: they work on the row that it opened.
class KETEBIONPAP_CORE TCalcMethod_DM : public TDataModule {
    Q_OBJECT
public:
    explicit TCalcMethod_DM(QObject *owner);

    TQuery *const List_QUR; ///< the methods, with the titles of their tax tables
    TQuery *const List_DS;  ///< what a grid of the methods is bound to
    TQuery *const Temp_QUR; ///< one-off statements
    TQuery *const Get_QUR;  ///< the method under edit

    /// Gives the list its statement; the search manager runs it.
    void CalcMethod_Get();
    /// Opens a method and copies the row into the record; an unknown code gives an empty record, and Get_QUR stays
    /// open on no row, ready for CalcMethod_Insert.
    void CalcMethod_GetById(const QVariant &code, TCalcMethod_Mapper &method);
    /// Whether a method has this code.
    bool CalcMedtho_GetCode(const QVariant &code);
    /// One more than the highest code, 1 for an empty table.
    int CalcMethod_GetNewCode();
    [[nodiscard]] bool CalcMethod_Insert(const TCalcMethod_Mapper &method);
    /// Changes the method that CalcMethod_GetById opened, its code included.
    [[nodiscard]] bool CalcMethod_Update(const TCalcMethod_Mapper &method);
    /// False also when other records refer to the method.
    [[nodiscard]] bool CalcMethod_Delete(int code);
};

/// The one instance, made and freed by the entry points.
extern KETEBIONPAP_CORE TCalcMethod_DM *CalcMethod_DM;
