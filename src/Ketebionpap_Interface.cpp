#include "Ketebionpap_Interface.h"

#include "calcmethod/CalcMethodList_UNT.h"
#include "calcmethod/CalcMethod_DM_UNT.h"
#include "calender/Calender_List_UNT.h"
#include "entity/FiscalDeducation_List_UNT.h"
#include "host/Declaration_PKG/Guarded_unt.h"
#include "host/Declaration_PKG/Permission_logs_unt.h"
#include "host/NewBaseForms_PKG/GroupPickers_UNT.h"
#include "host/NewBaseForms_PKG/HostWindows_UNT.h"
#include "payrollinfo/PayrollInfoGet_UNT.h"
#include "payrollinfo/PayrollInfo_DM_UNT.h"
#include "staff/StaffList_UNT.h"
#include "staff/Staff_DM_UNT.h"
#include "tax/TaxList_UNT.h"

#include <QApplication>
#include <QThread>

using namespace Qt::Literals::StringLiterals;

namespace {

/// The settings' editor while it is shown.
TPayrollInfoGet_FRM *PayrollInfoGet_FRM = nullptr;

constexpr int earnings = 0;
constexpr int deductions = 1;
constexpr int itemsChosen = 406; // a choice that is not one item's code

/// Runs an entry point's work where a screen can be shown, and keeps every exception from the host.
template <class Work>
int enter(Work work) noexcept
{
    const QCoreApplication *application = QCoreApplication::instance();
    if (!qobject_cast<const QApplication *>(application) || QThread::currentThread() != application->thread())
        return 0;
    int answer = 0;
    try {
        Guarded([&] {
            SetUpHostWindows();
            if (!DM.ADOConnection1)
                throw TDatabaseError(TFault::ConnectionLost, u"the host has no connection"_s);
            answer = work();
        });
    } catch (...) {
        // The user cannot be told; the host goes on all the same.
    }
    return answer;
}

bool mayOpen(TSoftwarePart part)
{
    return HavePermission(UserInfo, part, cpOpen, true, true, {});
}

// Data modules are freed on the normal way through an entry point only: after an error they wait for the next call.

/// A screen in its variable, as long as it is shown. It is freed after an error, too, unlike the data modules: one that
/// stayed visible would have no owner, and the next call would show a second one beside it.
template <class Screen>
class TShown {
public:
    TShown(Screen *&variable, Screen *screen) : m_variable(variable) { m_variable = screen; }
    ~TShown()
    {
        delete m_variable;
        m_variable = nullptr;
    }
    Q_DISABLE_COPY_MOVE(TShown)
    Screen *operator->() const { return m_variable; }

private:
    Screen *&m_variable;
};

template <class Screen>
void browse(Screen *&variable)
{
    TShown screen(variable, new Screen(fmBrowse, QString()));
    screen->exec();
}

template <class Screen>
int choose(Screen *&variable)
{
    TShown screen(variable, new Screen(fmSelect, QString()));
    return screen->exec() == QDialog::Accepted ? screen->SelectedCode : 0;
}

void openItems(int kind)
{
    enter([kind] {
        if (!mayOpen(kind == earnings ? cspFiscal : cspDeduction))
            return 0;
        TShown screen(FiscalDeducation_List_FRM,
                      new TFiscalDeducation_List_FRM(fmBrowse, QVariant(kind), QString()));
        screen->exec();
        return 0;
    });
}

int chooseItems(int kind, int selectType, const char16_t *filter, const char *whenEmpty)
{
    return enter([&] {
        // The right on earnings guards the deductions here too.
        if (!mayOpen(cspFiscal))
            return 0;
        const QString text = filter && *filter ? QString::fromUtf16(filter) : QString::fromLatin1(whenEmpty);
        const QString value = u"%1;%2;%3"_s.arg(QString::number(kind), QString::number(selectType), text);
        TShown screen(FiscalDeducation_List_FRM, new TFiscalDeducation_List_FRM(fmSelect, value, QString()));
        if (screen->exec() != QDialog::Accepted)
            return 0;
        return selectType == 1 || selectType == 4 || selectType == 5 ? screen->SelectedCode : itemsChosen;
    });
}

int editSettings()
{
    MakeDataModule(PayrollInfo_DM); // stays for the life of the process
    TShown screen(PayrollInfoGet_FRM, new TPayrollInfoGet_FRM(cspPayrollInfo, 0, fmEdit, false));
    if (!screen->NotShowable)
        screen->exec();
    return 0;
}

} // namespace

void Open_PayRollInfo(void) noexcept
{
    enter(editSettings);
}

void Open_TaxList(void) noexcept
{
    enter([] {
        if (mayOpen(cspTax))
            browse(TaxList_FRM);
        return 0;
    });
}

void Open_WorkCalender(void) noexcept
{
    enter([] {
        if (mayOpen(cspCalender))
            browse(Calender_List_FRM);
        return 0;
    });
}

void Open_FiscalList(void) noexcept
{
    openItems(earnings);
}

void Open_DeductionList(void) noexcept
{
    openItems(deductions);
}

void Open_CalculatingMethods(void) noexcept
{
    enter([] {
        // Made before the right is asked: after a refusal it stays for the next call.
        MakeDataModule(CalcMethod_DM);
        if (!mayOpen(cspCalcMethod))
            return 0;
        browse(CalcMethodList_FRM);
        FreeDataModule(CalcMethod_DM);
        return 0;
    });
}

void Open_StaffList(void) noexcept
{
    enter([] {
        if (!mayOpen(cspStaff))
            return 0;
        MakeDataModule(Staff_DM);
        browse(StaffList_FRM);
        FreeDataModule(Staff_DM);
        return 0;
    });
}

int Select_StaffGroup(void) noexcept
{
    return enter([] { return Select_GroupList(cspStaffGroup, {}); });
}

int Select_Staff(void) noexcept
{
    return enter([] {
        if (!mayOpen(cspStaff))
            return 0;
        MakeDataModule(Staff_DM);
        const int code = choose(StaffList_FRM);
        FreeDataModule(Staff_DM);
        return code;
    });
}

int Select_CalculatingMethods(void) noexcept
{
    return enter([] {
        if (!mayOpen(cspCalcMethod))
            return 0;
        MakeDataModule(CalcMethod_DM);
        const int code = choose(CalcMethodList_FRM);
        FreeDataModule(CalcMethod_DM);
        return code;
    });
}

int Select_TaxInfo(void) noexcept
{
    return enter([] { return mayOpen(cspTax) ? choose(TaxList_FRM) : 0; });
}

int Select_FiscalList(int SelectType, const char16_t *Filter) noexcept
{
    return chooseItems(earnings, SelectType, Filter, "0");
}

int Select_DeductionList(int SelectType, const char16_t *Filter) noexcept
{
    return chooseItems(deductions, SelectType, Filter, "0");
}

int Select_FiscalDeducation(int Kind, int SelectType, const char16_t *Filter) noexcept
{
    return chooseItems(Kind, SelectType, Filter, "");
}
