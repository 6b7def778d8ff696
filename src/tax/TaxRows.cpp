#include "tax/TaxRows.h"

#include "host/Declaration_PKG/Inioptionfile_unt.h"
#include "host/Declaration_PKG/WorkingRows_unt.h"
#include "tax/Tax_DM_UNT.h"

namespace {

class TTaxRows : public TRecordRows {
public:
    bool DroppedOnOpening() const override { return true; }
    int Count(const QString &code) override { return Tax_DM->TmpTax_Count(code); }

    // A copy of the saved brackets is nothing to recover.
    bool AreLeft(const QString &code) override { return WorkingRowsDiffer(cspTax, code); }

    void TakeUp(const QString &leftCode, const QString &newCode) override
    {
        Tax_DM->TmpTax_MoveToCode(leftCode.toInt(), newCode.toInt());
        Discard(leftCode); // the note of who opened them
    }

    void Discard(const QString &code) override { DiscardWorkingRows(cspTax, code); }

    void DiscardAll() override { Tax_DM->TmpTax_DeleteAllRecovery(cspTax, IniOptions.Com_Index); }

    bool Changed(const QString &code) override
    {
        return Tax_DM->DetailList_QUR->active() && Tax_DM->TmpTax_Changed(code);
    }

    void PutBack(const QString &code) override
    {
        Tax_DM->TmpTax_PutBack(code);
        NoteWorkingRows(cspTax, code, IniOptions.Com_Index);
    }

    void Move(const QString &from, const QString &to, bool own) override
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

    bool HaveMoved(const QString &from, const QString &to) override
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

    void Show(const QString &code) override { Tax_DM->TmpTax_OpenList(code); }

private:
    bool m_hadRows = false; ///< there was something to move
};

} // namespace

std::unique_ptr<TRecordRows> BracketRows()
{
    return std::make_unique<TTaxRows>();
}
