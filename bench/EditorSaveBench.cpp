#include "bench/QuietDesk.h"
#include "calcmethod/CalcMethodGet_UNT.h"
#include "calcmethod/CalcMethod_DM_UNT.h"
#include "host/NewBaseForms_PKG/Groups_UNT.h"

#include <QTimer>

#include <benchmark/benchmark.h>

using namespace Qt::Literals::StringLiterals;

// A save that stays in its editor (Shift+F3): what is typed, checked, stored, recorded in the event log and read back. One
// editor holds a lock on its record, the other one none.

namespace {

/// Saves again and again in one open editor.
void saveAgainAndAgain(benchmark::State &state, QuietDesk &desk, TBaseEditor &editor, TSmartEdit_ZLM *input)
{
    bool saved = true;
    int round = 0;
    int statements = 0;
    QTimer::singleShot(0, &editor, [&] {
        desk.connection.setStatementHook([&](const TStatement &) { ++statements; });
        for (auto _ : state) {
            input->SetText(QString::number(++round));
            saved = saved && editor.Save(svSave);
        }
        desk.connection.setStatementHook({});
        editor.SetIsSaved(true);
        static_cast<QDialog &>(editor).done(QDialog::Rejected);
    });
    editor.exec();
    if (!saved || round == 0 || desk.failures > 0)
        state.SkipWithError("the save was refused");
    else
        state.counters["statements"] = double(statements) / round;
}

void SaveOfAnEditorWithoutALock(benchmark::State &state)
{
    QuietDesk desk;
    desk.connection.execute(TStatement("insert into TaxMain(Code, Title, Comment) values(1, 'table', '')"));
    desk.connection.execute(
        TStatement("insert into CalcMethod(Code, Title, StaffIns, EmployerIns, DailyIns, TaxMainCode, "
                   "Insurance, Tax, Comment) values(1, 'method', 7, 20, 3, 1, 0, 0, '')"));
    CalcMethod_DM = new TCalcMethod_DM(nullptr);
    {
        TCalcMethodGet_FRM editor(cspCalcMethod, 1, fmEdit, false);
        saveAgainAndAgain(state, desk, editor, editor.Comment_EDT);
    }
    delete CalcMethod_DM;
    CalcMethod_DM = nullptr;
}

void SaveOfAnEditorWithALock(benchmark::State &state)
{
    QuietDesk desk;
    desk.connection.execute(TStatement("insert into StaffGroup(Code, Name) values(50, 'group')"));
    TGroupGet_FRM editor(*GroupKindOf(cspStaffGroup), 50);
    saveAgainAndAgain(state, desk, editor, editor.Name_EDT);
}

} // namespace

BENCHMARK(SaveOfAnEditorWithoutALock)->Unit(benchmark::kMicrosecond)->UseRealTime();
BENCHMARK(SaveOfAnEditorWithALock)->Unit(benchmark::kMicrosecond)->UseRealTime();
