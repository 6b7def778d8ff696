#include "tax/TaxRows.h"

#include "host/Declaration_PKG/Inioptionfile_unt.h"
#include "host/Declaration_PKG/WorkingRows_unt.h"
#include "tax/Tax_DM_UNT.h"

QStringList TTaxRows::LeftCodes()
{
    return Tax_DM->TmpTax_GetRecoverysCode(cspTax, IniOptions.Com_Index);
}

int TTaxRows::Count(const QString &code)
{
    return Tax_DM->TmpTax_Count(code);
}

// A copy of the saved brackets is nothing to recover.
bool TTaxRows::AreLeft(const QString &code)
{
    return WorkingRowsDiffer(cspTax, code);
}

void TTaxRows::TakeUp(const QString &leftCode, const QString &newCode)
{
    Tax_DM->TmpTax_MoveToCode(leftCode.toInt(), newCode.toInt());
    Discard(leftCode); // the note of who opened them
}

void TTaxRows::Discard(const QString &code)
{
    DiscardWorkingRows(cspTax, code);
}

void TTaxRows::DiscardAll()
{
    Tax_DM->TmpTax_DeleteAllRecovery(cspTax, IniOptions.Com_Index);
}

bool TTaxRows::Changed(const QString &code)
{
    return Tax_DM->DetailList_QUR->active() && Tax_DM->TmpTax_Changed(code);
}

void TTaxRows::PutBack(const QString &code)
{
    Tax_DM->TmpTax_PutBack(code);
    NoteWorkingRows(cspTax, code, IniOptions.Com_Index);
}

void TTaxRows::Move(const QString &from, const QString &to, bool own)
{
    m_hadRows = !Tax_DM->DetailList_QUR->isEmpty();
    InOneUnit(DM.ADOConnection1, [&] {
        NoteWorkingRows(cspTax, to, IniOptions.Com_Index);
        if (own)
            Tax_DM->TmpTax_MoveToCode(from.toInt(), to.toInt());
        else
            Tax_DM->TmpTax_PutBack(to);
        ForgetWorkingRows(cspTax, from);
    });
}

bool TTaxRows::HaveMoved(const QString &from, const QString &to)
{
    if (!m_hadRows)
        return false;
    try {
        if (Tax_DM->TmpTax_Count(from) > 0 || Tax_DM->TmpTax_Count(to) == 0)
            return false;
    } catch (const TDatabaseError &) {
        return false; // the line is still gone
    }
    Show(to);
    return true;
}

void TTaxRows::Show(const QString &code)
{
    Tax_DM->TmpTax_OpenList(code);
}
