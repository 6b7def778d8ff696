#include "Ketebionpap_Interface.h"

#include "calcmethod/CalcMethodList_UNT.h"
#include "calcmethod/CalcMethod_DM_UNT.h"
#include "host/Declaration_PKG/Dynamic_method_declare_unt.h"
#include "host/Declaration_PKG/Permission_logs_unt.h"
#include "host/Declaration_PKG/Specialmessages.h"

#include <QApplication>
#include <QThread>

namespace {

void tell(const TDatabaseError &error)
{
    try {
        MsgDatabaseError(error);
    } catch (...) {
        // The user cannot be told; the host goes on all the same.
    }
}

/// Runs an entry point's work where a screen can be shown, and keeps every exception from the host.
template <class Work>
int enter(Work work) noexcept
{
    const QCoreApplication *application = QCoreApplication::instance();
    if (!qobject_cast<const QApplication *>(application) || QThread::currentThread() != application->thread())
        return 0;
    try {
        if (!DM.ADOConnection1)
            throw TDatabaseError(TFault::ConnectionLost, QStringLiteral("the host has no connection"));
        return work();
    } catch (const TDatabaseError &error) {
        tell(error);
    } catch (const std::exception &error) {
        tell(TDatabaseError(TFault::Other, QString::fromUtf8(error.what())));
    } catch (...) {
        tell(TDatabaseError(TFault::Other, QStringLiteral("an unknown exception")));
    }
    return 0;
}

bool mayOpen(TSoftwarePart part)
{
    return HavePermission(UserInfo, part, cpOpen, true, true, {});
}

/// The screens reach their data module through its variable; one that an earlier call left there is used again.
template <class Module>
void make(Module *&variable)
{
    if (variable)
        return;
    variable = new Module(QCoreApplication::instance());
    QObject::connect(variable, &QObject::destroyed, [&variable] { variable = nullptr; });
}

/// Only the normal way through an entry point comes here: after an error the data module waits for the next call.
template <class Module>
void release(Module *&variable)
{
    delete variable;
}

/// A screen in its variable, as long as it is shown.
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

} // namespace

void Open_CalculatingMethods(void) noexcept
{
    enter([] {
        // Made before the right is asked: after a refusal it stays for the next call.
        make(CalcMethod_DM);
        if (!mayOpen(cspCalcMethod))
            return 0;
        browse(CalcMethodList_FRM);
        release(CalcMethod_DM);
        return 0;
    });
}

int Select_StaffGroup(void) noexcept
{
    return enter([] { return Select_GroupList(cspStaffGroup, {}); });
}

int Select_CalculatingMethods(void) noexcept
{
    return enter([] {
        if (!mayOpen(cspCalcMethod))
            return 0;
        make(CalcMethod_DM);
        const int code = choose(CalcMethodList_FRM);
        release(CalcMethod_DM);
        return code;
    });
}
