#include "app/Session.h"

#include "app/Ask.h"
#include "app/ServerWait.h"
#include "host/Declaration_PKG/DM_UNT.h"
#include "host/Declaration_PKG/Dynamic_method_declare_unt.h"
#include "host/Declaration_PKG/Specialmessages.h"
#include "host/NewBaseForms_PKG/OpenCodes.h"
#include "host/database/Backup.h"

using namespace Qt::Literals::StringLiterals;

TSession::TSession()
{
    DM.ADOConnection1 = &m_connection;
    registerPickers();
}

TSession::~TSession()
{
    OpenCodes::giveUpNow();
    DM.ADOConnection1 = nullptr;
}

void TSession::open(const TDatabaseChoice &choice)
{
    m_connection.close();
    if (choice.onServer())
        m_connection.openOdbc(choice.odbc);
    else
        m_connection.openFile(choice.file, choice.missing);
    m_choice = choice;
    // From here on a file that is gone is told, not made anew.
    m_choice.missing = TConnection::Missing::Refuse;
    if (!choice.onServer())
        Backup::removeLeftovers(choice.file);
}

void TSession::reconnect()
{
    open(TDatabaseChoice(m_choice));
}

bool TSession::ensureConnected()
{
    try {
        if (m_connection.isOpen()) {
            m_connection.scalar(TStatement("select 1"));
            return true;
        }
    } catch (const TDatabaseError &error) {
        if (!IsLineLost(error.fault())) {
            MsgDatabaseError(error);
            return false;
        }
    }
    QString why = u"ارتباط با پایگاه داده قطع شده است."_s;
    if (m_choice.onServer() && m_connection.isOpen()) {
        try {
            waitForServer();
            return true;
        } catch (const TDatabaseError &error) {
            why = error.userText();
        }
    }
    while (Ask(why + u"\nدوباره وصل شود؟"_s)) {
        try {
            reconnect();
            return true;
        } catch (const TDatabaseError &error) {
            why = error.userText();
        }
    }
    return false;
}

void TSession::waitForServer()
{
    TServerWait window(m_choice);
    window.Run([this] { m_connection.scalar(TStatement("select 1")); });
}

int TSession::callEntry(const TEntryPoint &entry, const QStringList &arguments)
{
    bool missing = false;
    const int result = m_module.call(entry, arguments, &missing);
    if (missing) {
        ShowSmartMessage(u"ماژول اطلاعات پایه حقوق و دستمزد در دسترس نیست. برنامه را دوباره نصب کنید."_s,
                         m_module.errorText(), miError);
    }
    return result;
}

// The tax tables and the lists of earnings and deductions are the module's, and the host library does not know it.
void TSession::registerPickers()
{
    const auto reachedBy = [this](const char *name, const QStringList &arguments) {
        return [this, entry = EntryPoints::find(QLatin1String(name)), arguments](const QString &) {
            return callEntry(*entry, arguments);
        };
    };
    RegisterEntityPicker(cspTax, reachedBy("Select_TaxInfo", {}));
    RegisterEntityPicker(cspFiscal, reachedBy("Select_FiscalList", {"4", ""}));
    RegisterEntityPicker(cspDeduction, reachedBy("Select_DeductionList", {"4", ""}));
}
